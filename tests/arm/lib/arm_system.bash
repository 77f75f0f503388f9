# shellcheck shell=bash
# Process 1 of the namespaces: joins the parts of the ARM system and runs the command in it.
# Arguments: folder of the system, folder of the project, command and its arguments.
set -euo pipefail
system=$1 project=$2
shift 2

# A root folder that is no mount has no mount namespaces below it.
mount --bind "$system" "$system"
mount --rbind /dev "$system/dev"
mount -t proc proc "$system/proc"
mount -t tmpfs -o mode=1777 tmpfs "$system/tmp"
mount -t tmpfs -o mode=0755 tmpfs "$system/run"
mkdir -p "$system$project"
mount --rbind "$project" "$system$project"

# Absent only while the system is being made.
format=$system/usr/lib/binfmt.d/qemu-arm.conf
if [[ -e $format ]]; then
  formats=$system/proc/sys/fs/binfmt_misc
  mount -t binfmt_misc binfmt_misc "$formats" || {
    echo "This kernel gives a user namespace no program formats of its own (Linux 6.7 and later do)." >&2
    exit 1
  }
fi

variables=(PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 "TERM=${TERM:-dumb}")
for name in http_proxy https_proxy no_proxy; do
  [[ ! -v $name ]] || variables+=("$name=${!name}")
done
# shellcheck disable=SC2016
enter=(env -i "${variables[@]}" chroot "$system" /bin/bash -c 'cd "$1" && shift && exec "$@"' bash "$project")
if [[ -e $format ]]; then
  # The interpreter is opened on registration (flag F), thus found wherever a program runs.
  "${enter[@]}" sh -c "cat ${format#"$system"} >/proc/sys/fs/binfmt_misc/register"
fi
"${enter[@]}" "$@"
