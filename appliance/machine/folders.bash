# shellcheck shell=bash
# The machine's own empty folders, and the folders of the host that stay reachable below them.

covered=(/mnt /tmp /run /home /var/lib/samba /var/cache/samba /var/log/samba)

is_covered() {
  local folder
  for folder in "${covered[@]}" /etc /dev /var/run /var/lock; do
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

cover_folders() {
  local folder options
  [[ -L /var/run || ! -d /var/run ]] || covered+=(/var/run)
  for folder in "${covered[@]}" /dev /etc; do
    [[ -d $folder ]] || continue
    options=mode=0755
    [[ $folder != /tmp ]] || options=mode=1777
    mount -t tmpfs -o "$options" appliance "$folder" || fail "$folder cannot be covered"
  done
}
