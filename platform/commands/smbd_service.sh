# shellcheck shell=sh disable=SC2034,SC2154
# What the service commands share: the files of the Samba service and the smbd that "smb start" started.
# Read with "." by the commands beside it, which set $here to their folder.

smb_conf=/etc/samba/smb.conf          # generated from the catalogue, never changed here
smbd_conf=/run/samba/smbd.conf        # what smbd reads, derived from it
smb_passwd=/etc/samba/smbpasswd       # the accounts ("smb passwd file")
service_file=/run/samba/nasshare-smbd # "<pid> <mark>" of the smbd that was started; "- <mark>" while it starts
service_lock=/run/nasshare-service.lock
in_place_lock=/run/nasshare-in-place.lock # held while smb.conf is written

# Whatever the starter's mask: nobody else writes what these commands make, and everybody may read it.
umask 022

complain() { echo "${0##*/}: $*" >&2; }

# Whoever may read a lock can hold it, and keep every change from being published.
make_private() { (umask 077 && : >>"$1") && chmod 0600 "$1"; }

# One of these commands at a time loads, publishes and tells smbd, so that what was loaded first never replaces
# what was loaded later. The lock goes with the last process that has descriptor 9.
lock_service() {
  make_private "$service_lock"
  exec 9>"$service_lock"
  flock 9
}

# The folders of the Samba service and the printers section's spool folder.
prepare_folders() {
  mkdir -p /etc/samba /run/samba /run/lock /var/cache/samba /var/log/samba /var/lib/samba/private &&
    chmod 0700 /var/lib/samba/private || return
  for hidden in /mnt/HD_*; do
    [ -d "$hidden" ] || continue
    [ -d "$hidden/.lpd" ] || mkdir -m 1777 "$hidden/.lpd"
    break
  done
}

# Lists the options of the file that this Samba does not know, one per line. Fails for a file that it refuses.
unknown_options() {
  answer=$(testparm -s "$1" 2>&1 >/dev/null </dev/null) || return
  printf '%s\n' "$answer" | sed -n 's/^Ignoring unknown parameter "\(.*\)"$/\1/p' | sort -u
}

# Whether the file holds more than empty lines, which are all that a writer leaves that was killed over a new file.
has_text() { grep -qs '[^[:space:]]' "$1"; }

# Copies smb.conf as it stands between two that write it, and fails unless that is all of it: in half a file, shares
# are without the lists of those who may enter and who are denied.
copy_smb_conf() {
  make_private "$in_place_lock" &&
    (flock 8 && cat "$smb_conf" >"$1" && cmp -s "$smb_conf" "$1") 8>>"$in_place_lock" 2>/dev/null
}

# Samba takes the blanks of "[ Music ]" for a part of the name, and keeps accounts elsewhere unless told. A file
# that it refuses does not replace the one that it has.
derive_smbd_conf() {
  trap 'rm -f "$smbd_conf.text.$$" "$smbd_conf.new.$$" "$smbd_conf.unknown.$$"' EXIT
  copy_smb_conf "$smbd_conf.text.$$" || {
    complain "$smb_conf cannot be read whole"
    return 1
  }
  if has_text "$smbd_conf.text.$$" &&
    LC_ALL=C awk -f "$here/smbd_conf.awk" "$smbd_conf.text.$$" >"$smbd_conf.new.$$" &&
    unknown_options "$smbd_conf.new.$$" >"$smbd_conf.unknown.$$" &&
    LC_ALL=C awk -v command="${0##*/}" -v unknown="$smbd_conf.unknown.$$" -f "$here/smbd_conf.awk" \
      "$smbd_conf.text.$$" >"$smbd_conf.new.$$"; then
    mv "$smbd_conf.new.$$" "$smbd_conf"
  else
    complain "Samba cannot take $smb_conf (see testparm $smb_conf)"
    return 1
  fi
}

# Every process that came of "smb start" carries its mark in the environment, the helpers that leave smbd's
# session and process group included.
marked_processes() {
  grep -lszxF "NASSHARE_SMBD=$1" /proc/[0-9]*/environ | sed 's/[^0-9]//g'
}

# The helpers that winbindd started. They outlive it and keep the state folders busy.
winbindd_helpers() {
  grep -lszxF NASSHARE_WINBINDD=yes /proc/[0-9]*/environ | sed 's/[^0-9]//g' | while read -r pid; do
    case $(readlink "/proc/$pid/exe") in
    '' | */winbindd) ;;
    *) echo "$pid" ;;
    esac
  done
}

# Sets smbd_pid and smbd_mark of the service file; empty when there is none.
read_service_file() {
  smbd_pid='' smbd_mark=''
  [ ! -s "$service_file" ] || read -r smbd_pid smbd_mark <"$service_file"
}

is_running() {
  read_service_file
  [ -n "$smbd_mark" ] && marked_processes "$smbd_mark" | grep -qx "$smbd_pid"
}

# Has the running smbd read its file anew, and waits until it has: it answers the ping after the signal.
reload_smbd() {
  kill -HUP "$smbd_pid" && timeout 5 smbcontrol -s "$smbd_conf" "$smbd_pid" ping >/dev/null 2>&1
}
