# The Windows half, built with MinGW-w64 and run under Wine.

windows_steps="sources data build build32 tests package repeat bench"

# windows [STEP...]: these steps, or all but those that take long and are asked for by name.
windows() {
  local part
  [ $# != 0 ] || set -- sources data build build32 tests package
  for part in "$@"; do
    [[ " $windows_steps " == *" $part "* ]] || { say "windows has no step \"$part\"" >&2 && exit 2; }
  done
  results=("$root"/build/results/{windows,windows32,installer})
  rm -f "${results[@]}"
  need windows
  for part in "$@"; do "windows_$part"; done
}

windows_sources() { step "sources of libraries" "$root/tools/fetch_windows_sources" "$root/build/windows-sources"; }

# Reading STEP files takes the geometry kernel, which isn't built for Windows: what runs there works on the parts and
# products that the program of this machine has split an assembly into.
windows_data() {
  need build geometry vault office test bench pictures data
  step "data" fetch_data
  step "build (dev: the program alone)" build dev quintara
}

windows_build() { step "build (windows)" build windows; }

# What is shipped, and what the scripts need that use it.
windows_build32() {
  step "build (windows32)" build windows32 \
    quintara_dll QuintaraHosts quintara_driver box_keeper running_objects show_user_classes
}

windows_tests() {
  step "Wine" wine_prefix wine tools/wine_run wine_desktop
  step "tests (windows)" on_screen run_ctest windows
}

# on_screen FUNCTION ARGUMENTS...: beside a screen in memory, which all programs share, whether they need it or not:
# Wine doesn't go from one screen to another.
on_screen() {
  export root jobs
  # Other shells on the way would not hand exported functions on.
  "$root/tools/with_screen" bash -c "set -euo pipefail; $(declare -f run_ctest); \"\$@\"" on_screen "$@"
}

# wine_prefix NAME RUNNER DESKTOP: makes the prefix build/NAME with the script that runs programs in it, and prepares
# it for windows with the function DESKTOP.
wine_prefix() {
  local folder=$root/build/$1
  [ -f "$folder/ready" ] || new_prefix "$folder" "$root/$2"
  [ -d "$folder/clean" ] || "$3" "$folder" "$root/$2"
  [ -d "$folder/clean" ] || keep_registry "$folder"
}

# The registry as it is before any test, which those copy that compare it; all is in the files once the server ends.
keep_registry() {
  WINEPREFIX=$1 timeout 120 /usr/lib/wine/wineserver64 -w
  mkdir -p "$1/clean.new"
  cp "$1"/{system,user,userdef}.reg "$1/clean.new/"
  mv "$1/clean.new" "$1/clean"
}

new_prefix() {
  local folder=$1 half
  rm -rf "$folder"
  mkdir -p "$folder"
  quiet "$folder.log" timeout 300 "$2" wineboot -i
  # What Windows has from the start, and what it notes at the first script.
  quiet "$folder.log" "$2" reg add 'HKCU\Software\Classes' /f
  printf 'WScript.Echo 1\r\n' >"$folder/first.vbs"
  for half in system32 syswow64; do
    if [ -f "$folder/drive_c/windows/$half/cscript.exe" ]; then
      quiet "$folder.log" "$2" "C:\\windows\\$half\\cscript.exe" //nologo "Z:$folder/first.vbs"
    fi
  done
  : >"$folder/ready"
}

# The 32-bit half of this Wine has no driver for screens: windows are there, but nothing is drawn.
no_screen() {
  quiet "$1.log" "$2" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
}

# wine_desktop FOLDER RUNNER: what windows need in a prefix. Nobody manages them on a screen in memory, and Wine would
# wait for that two seconds each time that one goes. Of its fonts, where Debian has them, it knows nothing.
wine_desktop() {
  quiet "$1.log" "$2" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
  ln -sf /usr/share/wine/fonts/*.ttf "$1/drive_c/windows/Fonts/"
}

windows_package() {
  step "packages" "$root/packaging/package" "$root/build/windows" "$root/build/windows32" "$root/build/packages"
  step "Wine, 32-bit half" fetch_wine32
  [ -d "$root/build/wine32-libraries/i386-windows" ] || return 0
  # Those that no box is clicked in.
  step "scripts (windows32)" run_ctest windows32 --tests-regex '^script_(admin_settings|base64|utils_error|xml)$'
  step "installer" "$root/packaging/test_installer" "$root/build/packages" "$root/build/results/installer"
}

# What can't be fetched is no fault of ours, but it is told.
fetch_wine32() {
  if quiet "$root/build/wine32.log" "$root/tools/fetch_wine32" "$root/build/wine32-libraries"; then
    wine_prefix wine32 tools/wine32_run no_screen
  else
    say "NOT RUN: the 32-bit library and the installer, since the 32-bit half of Wine could not be fetched"
  fi
}

windows_repeat() { step "the same twice" "$root/packaging/check_repeat" "$root/build/windows-again"; }

windows_bench() {
  step "Wine" wine_prefix wine tools/wine_run wine_desktop
  step "build (windows)" build windows windows_bench
  step "figures (windows)" on_screen "$root/tools/wine_run" "$root/build/windows/bench/windows/windows_bench.exe"
}
