# shellcheck shell=bash
# The appliance of the demos, for scripts that run in a private machine: its commands, disks and folders.

# install_commands BUILD-FOLDER: the programs of the build, with the disks' answers of the private machine, and the
# service commands in front of Samba's own. Where RUN_UNDER names a command, such as a memory checker, that command gets
# the programs and their arguments.
install_commands() {
  local program
  for program in "$1"/tools/nasshare{,-diag} "$1"/appliance/appliance-domain; do
    printf '#!/bin/sh\nLD_PRELOAD=%s ASAN_OPTIONS=verify_asan_link_order=0 exec %s "$@"\n' \
      "$1/appliance/libappliance-stand-ins.so" "${RUN_UNDER:+$RUN_UNDER }$program" >"/run/appliance/bin/${program##*/}"
    chmod +x "/run/appliance/bin/${program##*/}"
  done
  PATH=$(cd -P "${BASH_SOURCE[0]%/*}/../../platform/commands" && pwd):$PATH
  export PATH
}

make_mirror() {
  appliance-disk sda scsi0 WD-DEMODISK0001
  appliance-disk sdb scsi1 WD-DEMODISK0002
  appliance-array md1 raid1 7cc3a0e9:85fa470b:aecd3d11:561a7e11 sda2 sdb2
  appliance-mount /dev/md1 /mnt/HD/HD_a2
  appliance-mount /dev/sda4 /mnt/HD_a4
  mkdir /mnt/HD_a4/.systemfile
}

# make_folders FOLDER...: every account of the system may use them, so that what is refused, Samba refuses.
make_folders() {
  local folder
  for folder; do
    mkdir -p "$folder"
    chmod 0777 "$folder"
    echo welcome >"$folder/welcome.txt"
  done
}

# The programs of Samba that run, each once.
samba_processes() {
  pgrep -a . | sed -nE 's/^[0-9]+ ([^ ]*\/)?(smbd|winbindd|samba-dcerpcd|rpcd_[a-z]*).*/\2/p' | sort -u
}
