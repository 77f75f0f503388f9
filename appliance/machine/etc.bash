# shellcheck shell=bash disable=SC2154
# The machine's own /etc: what dynamic programs need of the host's, and the appliance's own accounts and names.
# $host_etc is a descriptor of the host's.

cover_etc() {
  local host=/proc/self/fd/$host_etc name copied=()
  for name in ld.so.cache ld.so.conf ld.so.conf.d alternatives pam.d localtime services protocols; do
    [[ ! -e $host/$name ]] || copied+=("$host/$name")
  done
  mount -t tmpfs -o mode=0755 appliance /etc || fail '/etc cannot be covered'
  ((${#copied[@]} == 0)) || cp -dR --preserve=mode "${copied[@]}" /etc || fail '/etc cannot be filled'
}

make_accounts() {
  printf '%s\n' root:x:0:0:root:/root:/bin/sh nobody:x:65534:65534:nobody:/:/bin/false \
    alice:x:1000:500::/home/alice:/bin/sh bob:x:1001:500::/home/bob:/bin/sh carol:x:1002:500::/home/carol:/bin/sh \
    >/etc/passwd
  printf '%s\n' root:x:0: nogroup:x:65534: allaccount:x:500:alice,bob,carol staff:x:501:alice,bob >/etc/group
  (umask 077 && printf '%s:*:19000::::::\n' root nobody alice bob carol >/etc/shadow)
}

make_names() {
  printf '%s\n' 'passwd: files' 'group: files' 'shadow: files' 'hosts: files' 'services: files' \
    'protocols: files' >/etc/nsswitch.conf
  printf '%s\n' '127.0.0.1 localhost' '::1 localhost' '127.0.1.1 tarvo' >/etc/hosts
  printf 'tarvo\n' >/etc/hostname
  printf 'multi on\n' >/etc/host.conf
  : >/etc/resolv.conf
}

make_etc() {
  cover_etc
  mkdir /etc/samba /etc/NAS_CFG
  ln -s /proc/self/mounts /etc/mtab
  make_accounts
  make_names
}
