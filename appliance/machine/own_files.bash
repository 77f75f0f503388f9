# shellcheck shell=bash disable=SC2154
# What lies in the machine's own folders: the skeleton beside this file, and what programs need of the host's /etc and
# /dev. $skeleton, $host_etc and $host_dev are descriptors of these.

make_folders() {
  mkdir -p /etc/alternatives /etc/samba /etc/NAS_CFG /dev/pts /run/lock /run/samba /run/appliance/disks /run/appliance/arrays
  mkdir -m 1777 /dev/shm
  [[ ! -d /var/lib/samba ]] || mkdir -m 0700 /var/lib/samba/private
}

# The modes are those of the machine, whatever they are in the clone.
copy_skeleton() {
  cp -dR "/proc/self/fd/$skeleton/." /
  chmod -R u=rwX,go=rX /etc /run/appliance
  chmod 0600 /etc/shadow
}

# What dynamic programs need. The links of the alternatives are too many to copy for every test.
take_from_host_etc() {
  local host=/proc/self/fd/$host_etc name copied=()
  for name in ld.so.cache ld.so.conf ld.so.conf.d pam.d localtime services protocols; do
    [[ ! -e $host/$name ]] || copied+=("$host/$name")
  done
  ((${#copied[@]} == 0)) || cp -dR --preserve=mode "${copied[@]}" /etc || fail '/etc cannot be filled'
  if [[ -d $host/alternatives ]]; then
    mount --no-canonicalize -o bind,ro "$host/alternatives" /etc/alternatives || fail '/etc cannot be filled'
  fi
}

# Root of the host copies the devices; root of a user namespace may only bind them.
make_nodes() {
  local host=/proc/self/fd/$host_dev node nodes=(null zero full random urandom tty)
  cp -a "${nodes[@]/#/$host/}" /dev 2>/run/device-errors || :
  if ! { [[ -c /dev/null ]] && : >/dev/null; } 2>/run/device-errors; then
    for node in "${nodes[@]}"; do
      rm -f "/dev/$node"
      : >"/dev/$node"
      mount --no-canonicalize --bind "$host/$node" "/dev/$node" || fail "/dev/$node cannot be made"
    done
  fi
  rm -f /run/device-errors
}

fill_folders() {
  make_folders
  copy_skeleton
  take_from_host_etc
  make_nodes
  mount -t devpts -o newinstance,ptmxmode=0666,mode=620 devpts /dev/pts || fail '/dev/pts cannot be made'
}
