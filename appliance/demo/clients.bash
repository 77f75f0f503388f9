# shellcheck shell=bash
# What an account can do on the shares, tried with smbclient. An account's password is the first word of its name and
# "-password"; nobody is the guest.

# Whose accounts they are; empty for those of the appliance itself.
domain=

# set_passwords ACCOUNT...: for accounts of the appliance.
set_passwords() {
  local account
  for account; do
    printf '%s\n' "$account-password" "$account-password" |
      smbpasswd -c /run/samba/smbd.conf -s -a "$account" >/dev/null 2>&1
  done
}

# client SHARE ACCOUNT COMMANDS
client() {
  local login=(-U "${domain:+$domain/}$2%${2%% *}-password")
  [[ $2 != nobody ]] || login=(-N)
  smbclient -s /dev/null "${login[@]}" "//127.0.0.1/$1" -c "$3" 2>&1
}

# access SHARE ACCOUNT [FOLDER]: write, read, denied, absent, or what smbclient says.
access() {
  local answer folder=${3:-.}
  rm -f /tmp/got
  if ! answer=$(client "$1" "$2" "cd \"$folder\"; get welcome.txt /tmp/got"); then
    case $answer in
    *'tree connect failed: NT_STATUS_ACCESS_DENIED'*) echo denied ;;
    *'tree connect failed: NT_STATUS_BAD_NETWORK_NAME'*) echo absent ;;
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
