# shellcheck shell=bash disable=SC1091,SC2154
# Stands between the caller and the machine: its first child is process 1 of the machine and ends with it, even
# when this process is killed.
. "$1/lib/pass_on.bash"
run_and_pass_on setpriv --pdeathsig KILL bash "$1/lib/machine.bash" "$@"
exit "$status"
