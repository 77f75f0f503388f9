# shellcheck shell=bash disable=SC2154
# The machine's own empty folders, and the folders of the host that stay reachable below them. $host_etc is a descriptor of
# the host's /etc.

covered=(/mnt /tmp /home /var/lib/samba /var/cache/samba /var/log/samba)

is_covered() {
  local folder
  for folder in "${covered[@]}" /etc /dev /run /var/run /var/lock; do
    [[ $1 == "$folder"/* ]] && return 0
  done
  return 1
}

# hold_kept_folders FOLDER...: an open descriptor still leads to a folder once something is mounted above it, as long as
# mount(8) does not resolve it to a path first.
hold_kept_folders() {
  local folder place descriptor
  held_places=() held_descriptors=()
  for folder; do
    place=$(cd -P "$folder" && pwd) || fail "$folder cannot be entered"
    is_covered "$place" || continue
    exec {descriptor}<"$place"
    held_places+=("$place") held_descriptors+=("$descriptor")
  done
}

restore_kept_folders() {
  local i descriptor
  for i in "${!held_places[@]}"; do
    mkdir -p "${held_places[i]}"
    mount --no-canonicalize --rbind "/proc/self/fd/${held_descriptors[i]}" "${held_places[i]}" ||
      fail "${held_places[i]} cannot be kept reachable"
    descriptor=${held_descriptors[i]}
    exec {descriptor}<&-
  done
}

# print_mounts SOURCE: lines of fstab(5) for all but /run.
print_mounts() {
  local source=$1 folder mode
  echo "$source /proc proc"
  for folder in "${covered[@]}" /dev /etc; do
    [[ -d $folder ]] || continue
    mode=0755
    [[ $folder != /tmp ]] || mode=1777
    echo "$source $folder tmpfs mode=$mode"
  done
  echo "$source /dev/shm tmpfs mode=1777,X-mount.mkdir"
  echo "$source /dev/pts devpts newinstance,ptmxmode=0666,mode=620,X-mount.mkdir"
  # The links of the alternatives are too many to copy for every test.
  [[ ! -d /proc/self/fd/$host_etc/alternatives ]] ||
    echo "/proc/self/fd/$host_etc/alternatives /etc/alternatives none bind,ro,X-mount.mkdir"
}

# Two calls of mount(8) for all, since every test case makes a machine. The second passes over what is mounted already
# from the same source, so that a machine within a machine needs a source of its own.
cover_folders() {
  local source=appliance-$SRANDOM
  [[ -L /var/run || ! -d /var/run ]] || covered+=(/var/run)
  mount -t tmpfs -o mode=0755 "$source" /run || fail '/run cannot be covered'
  print_mounts "$source" >/run/fstab
  mount --all --no-canonicalize --fstab /run/fstab ||
    fail 'the folders above cannot be covered (in a container: /proc must not be masked)'
}
