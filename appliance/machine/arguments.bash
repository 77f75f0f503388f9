# shellcheck shell=bash disable=SC2034
# What every program on the way into a private machine is given, from the caller's command to the machine's first process:
# [--keep FOLDER]... [--] COMMAND [ARGUMENT]... Read with "." by programs that set $caller to the name that messages begin with.

fail() {
  printf '%s: %s\n' "${caller:?}" "$1" >&2
  exit 125
}

# read_arguments [ARGUMENT]...: sets the lists kept (the folders), keep_options (the same as options) and command.
read_arguments() {
  local usage="usage: ${caller:?} [--keep FOLDER]... -- COMMAND [ARGUMENT]..."
  kept=() keep_options=()
  while [[ ${1-} == -* ]]; do
    case $1 in
    --keep)
      (($# > 1)) || fail '--keep needs a folder'
      [[ -d $2 ]] || fail "--keep $2: no such folder"
      kept+=("$2")
      keep_options+=(--keep "$2")
      shift 2
      ;;
    --)
      shift
      break
      ;;
    *) fail "unknown option $1; $usage" ;;
    esac
  done
  (($# > 0)) || fail "no command; $usage"
  command=("$@")
}
