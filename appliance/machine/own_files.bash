# shellcheck shell=bash disable=SC2154
# What lies in the machine's own folders: the skeleton beside this file, and what programs need of the host's /etc and
# /dev. $skeleton, $host_etc and $host_dev are descriptors of these.

make_folders() {
  private=()
  [[ ! -d /var/lib/samba ]] || private=(/var/lib/samba/private)
  mkdir -p /etc/samba /etc/NAS_CFG /run/lock /run/samba /run/appliance/disks /run/appliance/arrays "${private[@]}"
}

# The modes are those of the machine, whatever they are in the clone.
copy_skeleton() {
  cp -dR --no-preserve=mode "/proc/self/fd/$skeleton/." /
  chmod a+x /run/appliance/bin/*
  chmod -R go= /etc/shadow "${private[@]}"
}

# What dynamic programs need.
take_from_host_etc() {
  local host=/proc/self/fd/$host_etc name copied=()
  for name in ld.so.cache ld.so.conf ld.so.conf.d pam.d localtime services protocols; do
    [[ ! -e $host/$name ]] || copied+=("$host/$name")
  done
  ((${#copied[@]} == 0)) || cp -dR --preserve=mode "${copied[@]}" /etc || fail '/etc cannot be filled'
}

# Root of the host copies the devices; root of a user namespace may only bind them.
make_nodes() {
  local host=/proc/self/fd/$host_dev node nodes=(null zero full random urandom tty)
  cp -a "${nodes[@]/#/$host/}" /dev 2>"$host/null" || :
  if ! { [[ -c /dev/null ]] && : >/dev/null; } 2>"$host/null"; then
    for node in "${nodes[@]}"; do
      rm -f "/dev/$node"
      : >"/dev/$node"
      mount --no-canonicalize --bind "$host/$node" "/dev/$node" || fail "/dev/$node cannot be made"
    done
  fi
}

fill_folders() {
  make_folders
  copy_skeleton
  take_from_host_etc
  make_nodes
}
