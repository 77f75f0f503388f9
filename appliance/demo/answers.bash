# shellcheck shell=bash disable=SC2154
# How a demo says what it does, and what it shows of the answers, those of clients.bash among them. An answer that is not
# what it should be is shown with what it should have been, and counted.

differences=0

title() {
  if [[ -t 1 ]]; then
    printf '\n\e[1m%s\e[0m\n' "$1"
  else
    printf '\n== %s\n' "$1"
  fi
}

# run COMMAND [ARGUMENT]...: says and runs a command that has to succeed.
run() {
  printf '$ %s\n' "${*@Q}" | sed "s/'\([[:alnum:]_.:\/,@=-]\{1,\}\)'/\1/g"
  "$@" || {
    echo "demo: this command failed with status $?" >&2
    exit 1
  }
}

# differs EXPECTED FOUND
differs() {
  [[ $1 != "$2" ]] || return 1
  ((++differences))
}

# expect WHAT EXPECTED FOUND
expect() {
  if differs "$2" "$3"; then
    printf '  %s: %s, not %s!\n' "$1" "$3" "$2"
  else
    printf '  %s: %s\n' "$1" "$3"
  fi
}

pad() { printf '%s%*s' "$1" $(($2 - ${#1})) ''; }

# The table of what the accounts of the list $accounts can do: its head, then a share a row.
heads() {
  local account
  pad '' 18
  for account in "${accounts[@]}"; do
    pad "${account/#nobody/guest}" 9
  done
  echo
}

# cells ROW SHARE FOLDER EXPECTED...
cells() {
  local row=$1 share=$2 folder=$3 account found
  shift 3
  pad "  $row" 18
  for account in "${accounts[@]}"; do
    found=$(access "$share" "$account" "$folder")
    if differs "$1" "$found"; then
      found="$found, not $1!"
    fi
    pad "$found" 9
    shift
  done
  echo
}

# The end of a script: fails when an answer was not what it should be.
verdict() {
  if ((differences > 0)); then
    echo "$differences answers are not what they should be"
    return 1
  fi
  echo 'Every answer is what it should be.'
}
