# Fuzzing with libFuzzer. What it finds interesting is kept under build/fuzz/corpus between runs.

# fuzz SECONDS [FUZZER...]: shares the seconds among the fuzzers named, or all.
fuzz() {
  local seconds=$1 program programs=()
  shift
  build fuzz fuzzers
  while read -r program; do
    if [ $# = 0 ] || [[ " $* " == *" $(basename "$program") "* ]]; then programs+=("$program"); fi
  done <"$root/build/fuzz/fuzz/programs.txt"
  if [ ${#programs[@]} = 0 ]; then
    say "there is no fuzzer of this name" >&2
    exit 2
  fi
  local share=$(((seconds + ${#programs[@]} - 1) / ${#programs[@]}))
  for program in "${programs[@]}"; do fuzz_one "$program" "$share"; done
}

fuzz_one() {
  local program=$1 seconds=$2 name work log
  name=$(basename "$program")
  work=$root/build/fuzz/corpus/$name
  log=$root/build/fuzz/$name.log
  mkdir -p "$work" "$root/build/fuzz/found"
  if ! "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="$root/build/fuzz/found/$name-" "$work" "$root/fuzz/corpus/$name" >"$log" 2>&1; then
    tail -n 60 "$log" >&2
    say "$name failed; the input stands in build/fuzz/found. To replay it:" \
      "build/asan/fuzz/$name build/fuzz/found/FILE" >&2
    return 1
  fi
  say "$name: $(awk '/^stat::number_of_executed_units/ { print $2 }' "$log") inputs in $seconds s, none failed"
}
