# The Windows half, built with MinGW-w64 and run under Wine.

wine_prefix() {
  local log=$root/build/wine.log
  [ ! -f "$root/build/wine/ready" ] || return 0
  rm -rf "$root/build/wine"
  mkdir -p "$root/build/wine"
  quiet "$log" timeout 300 "$root/tools/wine_run" wineboot -i
  : >"$root/build/wine/ready"
}

windows() {
  need windows
  step "sources of libraries" "$root/tools/fetch_windows_sources" "$root/build/windows-sources"
  step "build (windows)" build windows
  step "Wine" wine_prefix
  step "tests (windows)" run_ctest windows
}
