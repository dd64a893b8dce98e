# Configuring, building, testing and counting.

# build PRESET [TARGET...], in the folder build/PRESET.
build() {
  local preset=$1 folder=$root/build/$1 stamp=$root/build/$1/configured
  shift
  mkdir -p "$folder"
  (
    flock 9 # two builds in one folder would harm each other
    if [ ! -f "$stamp" ] || [ "$root/CMakePresets.json" -nt "$stamp" ]; then
      quiet "$folder/configure.log" cmake -S "$root" --preset "$preset"
      : >"$stamp"
    fi
    cmake --build "$folder" --parallel "$jobs" ${1:+--target "$@"} -- --quiet
  ) 9>"$folder/lock"
}

# run_ctest PRESET [SWITCHES]: runs the preset's tests; how many passed and failed goes to build/results.
run_ctest() {
  local preset=$1 status=0 logs=$root/build/$1/Testing/Temporary
  shift
  rm -f "$logs"/LastTest*.log
  (cd "$root" && ctest --preset "$preset" --parallel "$jobs" "$@") || status=$?
  mkdir -p "$root/build/results"
  "$root/tools/count_tests" "$logs" >"$root/build/results/$preset"
  return "$status"
}

# closing_line STATUS FILE...: "N passed, N failed" over these results; a failure that no test
# counted, such as a build's, counts as one.
closing_line() {
  local status=$1
  shift
  { cat "$@" 2>/dev/null || :; } | awk -v status="$status" '
    { passed += $1; failed += $2; skipped += $3 }
    END {
      if (status != 0 && failed == 0) failed = 1
      if (skipped) print skipped " skipped"
      print passed + 0 " passed, " failed + 0 " failed"
    }'
}
