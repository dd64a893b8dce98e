# What every verb of `run` shares. `root` is the folder of the project.

jobs=$(nproc)
current_step=

say() { printf '%s\n' "$*"; }

# step NAME COMMAND...: runs the command between a heading and the time it took.
step() {
  local start=$SECONDS
  current_step=$1
  shift
  printf '\n== %s\n' "$current_step"
  "$@"
  printf -- '-- %s: %d s\n' "$current_step" $((SECONDS - start))
  current_step=
}

# quiet LOG COMMAND...: output goes to LOG and is shown only when the command fails.
quiet() {
  local log=$1 status=0
  shift
  mkdir -p "$(dirname "$log")"
  "$@" >"$log" 2>&1 || status=$?
  if [ "$status" != 0 ]; then
    cat "$log" >&2
    say "failed with $status: $*" >&2
  fi
  return "$status"
}
