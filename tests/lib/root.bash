# shellcheck shell=bash
# For runs of the tests that only root can make.

# become_root WHY SCRIPT [ARGUMENT]...: unless root runs it already, starts the script anew as root.
become_root() {
  local why=$1
  shift
  ((EUID != 0)) || return 0
  if ! type -P sudo >/dev/null; then
    echo "$1 needs root, $why" >&2
    exit 1
  fi
  exec sudo "$@"
}
