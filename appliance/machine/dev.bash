# shellcheck shell=bash disable=SC2154
# The machine's own /dev. Disks are described later, as plain files in it. $host_dev is a descriptor of the host's.

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

make_dev() {
  mount -t tmpfs -o mode=0755 appliance /dev || fail '/dev cannot be covered'
  mkdir /dev/pts /dev/shm
  chmod 1777 /dev/shm
  make_nodes
  mount -t devpts -o newinstance,ptmxmode=0666,mode=620 devpts /dev/pts || fail '/dev/pts cannot be made'
  ln -s pts/ptmx /dev/ptmx
  ln -s /proc/self/fd /dev/fd
  ln -s /proc/self/fd/0 /dev/stdin
  ln -s /proc/self/fd/1 /dev/stdout
  ln -s /proc/self/fd/2 /dev/stderr
}
