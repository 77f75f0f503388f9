# shellcheck shell=bash
# For scripts that run in a machine of appliance/domain: the appliance as it is before it joins.

# install_commands BUILD-FOLDER: the programs of the build, with the disks' answers of the private machine, and the
# service commands in front of Samba's own. Where RUN_UNDER names a command, such as a memory checker, that command gets
# the programs and their arguments.
install_commands() {
  local program
  for program in "$1"/tools/nasshare "$1"/appliance/appliance-domain; do
    printf '#!/bin/sh\nLD_PRELOAD=%s ASAN_OPTIONS=verify_asan_link_order=0 exec %s "$@"\n' \
      "$1/appliance/libappliance-stand-ins.so" "${RUN_UNDER:+$RUN_UNDER }$program" >"/run/appliance/bin/${program##*/}"
    chmod +x "/run/appliance/bin/${program##*/}"
  done
  PATH=$(cd -P "${BASH_SOURCE[0]%/*}/../../platform/commands" && pwd):$PATH
  export PATH
}

make_mirror() {
  appliance-disk sda scsi0 WD-TESTDISK0001
  appliance-disk sdb scsi1 WD-TESTDISK0002
  appliance-array md1 raid1 7cc3a0e9:85fa470b:aecd3d11:561a7e11 sda2 sdb2
  appliance-mount /dev/md1 /mnt/HD/HD_a2
  appliance-mount /dev/sda4 /mnt/HD_a4
  mkdir /mnt/HD_a4/.systemfile
}

# make_folder NAME...: folders for shares that every account of the system may use.
make_folder() {
  local name
  for name; do
    mkdir -m 0777 "/mnt/HD/HD_a2/$name"
    echo welcome >"/mnt/HD/HD_a2/$name/welcome.txt"
  done
}

# configure DOMAIN-MODE ACCOUNT PASSWORD
configure() {
  cat >/etc/NAS_CFG/config.xml <<END
<?xml version="1.0" encoding="UTF-8"?>
<config>
  <hw_ver>Two-bay storage</hw_ver>
  <system_mgr>
    <samba>
      <workgroup>workgroup</workgroup>
      <netbios_name>tarvo-a1b2</netbios_name>
      <ads_enable>$1</ads_enable>
      <ads_workgroup>CORP</ads_workgroup>
      <ads_username>$2</ads_username>
      <ads_password>$3</ads_password>
      <ads_realm>CORP.LAN</ads_realm>
      <ads_pwd_server>dc1.corp.lan</ads_pwd_server>
    </samba>
  </system_mgr>
</config>
END
}

# client SHARE USER COMMANDS: as a user of the domain, or as the guest when USER is empty.
client() {
  local login=(-U "CORP/$2%${2%% *}-password")
  [[ $2 ]] || login=(-N)
  smbclient -s /dev/null "${login[@]}" "//127.0.0.1/$1" -c "$3" 2>&1
}

# access SHARE USER: write, read, denied, absent, or what smbclient says.
access() {
  local answer
  rm -f /tmp/got
  if ! answer=$(client "$1" "$2" 'get welcome.txt /tmp/got'); then
    case $answer in
      *'tree connect failed: NT_STATUS_ACCESS_DENIED'*) echo denied ;;
      *'tree connect failed: NT_STATUS_BAD_NETWORK_NAME'*) echo absent ;;
      *) echo "$answer" ;;
    esac
  elif [[ $(cat /tmp/got) != welcome ]]; then
    echo unreadable
  elif client "$1" "$2" 'put /tmp/got note.txt; rm note.txt' >/dev/null; then
    echo write
  else
    echo read
  fi
}

listed_shares() {
  smbclient -s /dev/null -U CORP/dora%dora-password -gL 127.0.0.1 2>/dev/null | sed -n 's/^Disk|\(.*\)|.*/\1/p' | sort
}

# The programs of Samba that run, each once.
samba_processes() {
  pgrep -a . | sed -nE 's/^[0-9]+ ([^ ]*\/)?(smbd|winbindd|samba-dcerpcd|rpcd_[a-z]*).*/\2/p' | sort -u
}
