# shellcheck shell=bash
# Says that the new user namespace is there, waits until it has a root, and runs the command as that root.
# Arguments: folder of the two pipes, command and its arguments.
pipes=$1
shift
echo >"$pipes/entered"
read -r <"$pipes/mapped"
exec "$@"
