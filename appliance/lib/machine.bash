# shellcheck shell=bash disable=SC1091,SC2034,SC2154
# Process 1 of the private machine: makes the machine, runs the command as a child and reaps every orphan.
# Arguments: folder of the appliance's files, number of kept folders, kept folders, command and its arguments.
appliance=$1
kept=("${@:3:$2}")
shift $((2 + $2))
. "$appliance/lib/pass_on.bash"
. "$appliance/lib/folders.bash"
. "$appliance/lib/etc.bash"
. "$appliance/lib/dev.bash"

fail() {
  printf 'appliance: %s\n' "$1" >&2
  exit 125
}

umask 022
working_folder=$PWD
hold_kept_folders
exec {host_etc}</etc {host_dev}</dev

mount -t proc proc /proc || fail 'a private /proc is refused (in a container: /proc must not be masked)'
cover_folders
make_dev
make_etc
restore_kept_folders
describe_machine
exec {host_etc}<&- {host_dev}<&-

{ printf 'tarvo\n' >/proc/sys/kernel/hostname; } 2>/dev/null || hostname tarvo
ip link set lo up || fail 'the loopback interface cannot be set up (Debian: package iproute2)'

export PATH=/run/appliance/bin:$PATH:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root TMPDIR=/tmp
cd "$working_folder" 2>/dev/null || cd /
run_and_pass_on "$@"
exit "$status"
