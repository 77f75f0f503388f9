# shellcheck shell=bash
# What the demo says, and what smbclient can do on the shares compared with what it should be. $differences counts
# the answers that are not.
differences=0

title() { printf '\n\e[1m%s\e[0m\n' "$1"; }
[[ -t 1 ]] || title() { printf '\n== %s\n' "$1"; }

# Says and runs a command.
run() {
  printf '$ %s\n' "${*@Q}" | sed "s/'\([[:alnum:]_.:\/,@=-]\{1,\}\)'/\1/g"
  "$@" || {
    echo "demo: this command failed with status $?" >&2
    exit 1
  }
}

# expect WHAT EXPECTED FOUND
expect() {
  if [[ $2 == "$3" ]]; then
    printf '  %s: %s\n' "$1" "$3"
  else
    printf '  %s: %s, not %s!\n' "$1" "$3" "$2"
    ((++differences))
  fi
}

listed() { nasshare show "$1" | sed -n "s/^$2  *//p"; }

allows() { [[ $1 ]] && nasshare allows "$1" "$2" >/dev/null; }

# access_by_catalogue SHARE ACCOUNT
access_by_catalogue() {
  if allows "$(listed "$1" deny)" "$2"; then
    echo denied
  elif allows "$(listed "$1" write)" "$2"; then
    echo write
  elif allows "$(listed "$1" read)" "$2"; then
    echo read
  else
    echo denied
  fi
}

# client SHARE ACCOUNT COMMANDS
client() {
  local login=(-U "$2%$2-password")
  [[ $2 != nobody ]] || login=(-N)
  smbclient -s /dev/null "${login[@]}" "//127.0.0.1/$1" -c "$3" 2>&1
}

# access_by_smbclient SHARE ACCOUNT [FOLDER]
access_by_smbclient() {
  local answer folder=${3:-.}
  rm -f /tmp/got
  if ! answer=$(client "$1" "$2" "cd \"$folder\"; get welcome.txt /tmp/got"); then
    case $answer in
      *NT_STATUS_ACCESS_DENIED*) echo denied ;;
      *NT_STATUS_BAD_NETWORK_NAME*) echo absent ;;
      *) echo "$answer" ;;
    esac
  elif [[ $(cat /tmp/got) != welcome ]]; then
    echo unreadable
  elif client "$1" "$2" "cd \"$folder\"; put /tmp/got note.txt; rm note.txt" >/dev/null; then
    echo write
  else
    echo read
  fi
}

pad() { printf '%s%*s' "$1" $(($2 - ${#1})) ''; }

# cells ROW SHARE FOLDER EXPECTED...: one row of the table; a cell that differs names both.
cells() {
  local row=$1 share=$2 folder=$3 account found
  shift 3
  pad "  $row" 18
  for account in alice bob carol nobody; do
    found=$(access_by_smbclient "$share" "$account" "$folder")
    if [[ $found != "$1" ]]; then
      found="$found, not $1!"
      ((++differences))
    fi
    pad "$found" 9
    shift
  done
  echo
}

heads() { printf '  %-16s%-9s%-9s%-9s%-9s\n' '' alice bob carol guest; }

# access_table SHARE...: what each account can do, compared with the catalogue.
access_table() {
  local share account expected
  heads
  for share; do
    expected=()
    for account in alice bob carol nobody; do
      expected+=("$(access_by_catalogue "$share" "$account")")
    done
    cells "$share" "$share" . "${expected[@]}"
  done
}
