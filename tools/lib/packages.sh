# Which Debian packages each task needs, and how they come onto the machine. "COMMAND=PACKAGE" asks
# for the package only where no such command exists, whoever installed it.

packages_build="g++ cmake ninja-build ccache pkg-config=pkgconf
  libpugixml-dev libutf8proc-dev nlohmann-json3-dev libcli11-dev libncurses-dev"
packages_geometry="libocct-data-exchange-dev libtbb-dev libfontconfig-dev"
packages_vault="libsoci-dev libboost-dev libsqlite3-dev libpq-dev libssl-dev"
packages_office="libreoffice-calc-nogui libreoffice-dev"
packages_test="libgmock-dev postgresql"
packages_bench="libbenchmark-dev"
packages_pictures="xvfb libgl1-mesa-dri"
packages_data="npm=npm"
packages_fuzz="clang-16 libclang-rt-16-dev"
packages_check="clang-format-14 clang-tidy-16 shellcheck python3=python3"
packages_windows="g++ g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools wine64 libwine-dev nsis fonts-wine xvfb
  googletest dpkg-dev make=make tclsh=tcl python3=python3 cmake ninja-build ccache nlohmann-json3-dev"

# missing_packages GROUP...: the packages of these groups that are not installed.
missing_packages() {
  local group list wanted=() entry
  for group in "$@"; do
    list=packages_$group
    for entry in ${!list}; do
      if [[ $entry != *=* ]]; then
        wanted+=("$entry")
      elif ! command -v "${entry%%=*}" >/dev/null; then
        say "${entry#*=}"
      fi
    done
  done
  [ ${#wanted[@]} != 0 ] || return 0
  local installed
  # shellcheck disable=SC2016 # the field is dpkg-query's, not the shell's
  installed=$(dpkg-query -W -f='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null |
    awk '$2 == "installed" { print $1 }') || :
  comm -23 <(printf '%s\n' "${wanted[@]}" | sort -u) <(sort -u <<<"$installed")
}

# Whether this user is root or may become it.
can_be_root() {
  [ "$(id -u)" = 0 ] || { command -v sudo >/dev/null && { [ -t 0 ] || sudo -n true 2>/dev/null; }; }
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

apt_get() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 "$@"
}

install_packages() {
  apt_get install -y --no-install-recommends "$@" && return
  apt_get update && apt_get install -y --no-install-recommends "$@"
}

# need GROUP...: installs what is missing of these groups; ends the run with 2 where it can't.
need() {
  local missing log=$root/build/packages.log
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} != 0 ] || return 0
  mkdir -p "$root/build"
  if can_be_root; then
    say "installing ${missing[*]}" >&2
    ! install_packages "${missing[@]}" >"$log" 2>&1 || return 0
    tail -n 15 "$log" >&2
  fi
  say "These Debian packages are missing and could not be installed: ${missing[*]}" >&2
  exit 2
}
