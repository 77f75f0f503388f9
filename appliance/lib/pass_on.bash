# shellcheck shell=bash disable=SC2034
# Runs the command as a child with the caller's standard input, passes SIGTERM, SIGINT and SIGHUP on to it, and
# leaves its exit status in $status. The child gets back the signals that a shell ignores in background commands.
run_and_pass_on() {
  local signal interrupted
  env --default-signal=INT,QUIT -- "$@" <&0 &
  child=$!
  for signal in TERM INT HUP; do
    # shellcheck disable=SC2064
    trap "interrupted=yes; kill -$signal $child 2>/dev/null" "$signal"
  done
  while :; do
    interrupted=
    wait "$child"
    status=$?
    [[ $interrupted ]] || return
  done
}
