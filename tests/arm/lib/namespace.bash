# shellcheck shell=bash disable=SC2154
# A command as root of the ARM system: in namespaces of its own for users, mounts and processes. The kernel keeps a
# list of foreign program formats per user namespace (6.7 and later), so that whatever runs in there, shells and
# system() included, starts ARM programs, and this machine's own list is left alone.

# in_arm_system COMMAND [ARGUMENT]...
in_arm_system() {
  local pipes child map status=0
  unshare --user --mount true || {
    echo "This machine refuses user namespaces." >&2
    return 1
  }
  pipes=$(mktemp -d)
  mkfifo "$pipes/entered" "$pipes/mapped"
  unshare --user "$here/wait_for_root" "$pipes" \
    setpriv --pdeathsig KILL unshare --mount --pid --fork --kill-child \
    "$here/enter_system" "$system" "$project" "$@" <&0 &
  child=$!
  read -r <"$pipes/entered"
  # Every account is itself, as packages and tests own files as more than root; only root may arrange that.
  for map in uid_map gid_map; do
    awk '{ print $1, $1, $3 }' "/proc/self/$map" >"/proc/$child/$map"
  done
  echo >"$pipes/mapped"
  rm -r "$pipes"
  wait "$child" || status=$?
  return "$status"
}
