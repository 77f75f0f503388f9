# shellcheck shell=bash
# How a process stands in for the command that it runs.

# run_and_pass_on COMMAND [ARGUMENT]...: runs the command as a child with the caller's standard input, passes SIGTERM,
# SIGINT and SIGHUP on to it, and returns its exit status. The child gets back the signals that a shell ignores in
# background commands.
run_and_pass_on() {
  local child signal status interrupted=yes
  (trap - INT QUIT && exec "$@") <&0 &
  child=$!
  for signal in TERM INT HUP; do
    # shellcheck disable=SC2064
    trap "interrupted=yes; kill -$signal $child 2>/dev/null || :" "$signal"
  done
  while [[ $interrupted ]]; do
    interrupted=
    status=0
    wait "$child" || status=$?
  done
  return "$status"
}
