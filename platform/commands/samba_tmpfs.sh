#!/bin/sh
# samba_tmpfs.sh 1|0: puts Samba's state and cache folders into memory, or puts them back on the disk. What a
# domain leaves there (the machine's password, caches) begins empty with 1 and is gone after 0. smbd and winbindd
# must not run meanwhile.
folders='/var/lib/samba /var/cache/samba'

# What is mounted last on a folder is what is seen of it.
is_volatile() {
  [ "$(awk -v folder="$1" '$2 == folder { source = $1 } END { print source }' /proc/self/mounts)" = samba_tmpfs ]
}

volatile_on() {
  for folder in $folders; do
    mkdir -p "$folder"
    is_volatile "$folder" || mount -t tmpfs -o mode=0755 samba_tmpfs "$folder" || return
  done
}

volatile_off() {
  status=0
  for folder in $folders; do
    if is_volatile "$folder"; then
      umount "$folder" || status=1
    fi
  done
  return $status
}

here=$(dirname "$(readlink -f "$0")")
case $#:${1-} in
1:1) volatile_on && "$here/smbcv" ;;
1:0) volatile_off && "$here/smbcv" ;;
*)
  echo "usage: samba_tmpfs.sh 0|1" >&2
  exit 2
  ;;
esac
