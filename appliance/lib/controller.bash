# shellcheck shell=bash
# Makes the private machine that it runs in the controller dc1 of the domain CORP (corp.lan), and runs a command in
# a second private machine, the appliance, whose interface egiga0 is cabled to it.
# Arguments: folder of the appliance's files, number of kept folders, kept folders, command and its arguments.
set -u
appliance=$1
kept=("${@:3:$2}")
shift $((2 + $2))

address=192.168.77.1
password=Admin-password1
log=/var/log/samba/provision.log

fail() {
  printf 'domain: %s\n' "$1" >&2
  exit 125
}

name_machine() {
  echo dc1 >/proc/sys/kernel/hostname
  printf '%s\n' '127.0.0.1 localhost' "$address dc1.corp.lan dc1" >/etc/hosts
}

# The appliance's end of the cable lies here until the appliance is there.
lay_cable() {
  if ! { ip link add eth0 type veth peer name egiga0 && ip address add "$address/24" dev eth0 &&
    ip link set eth0 up; }; then
    fail 'the network cannot be made'
  fi
}

# The resolver is named afterwards, else the controller takes itself for one that knows what it does not know.
make_domain() {
  samba-tool domain provision --realm=CORP.LAN --domain=CORP --server-role=dc --dns-backend=SAMBA_INTERNAL \
    --adminpass="$password" --host-name=dc1 --host-ip="$address" --use-rfc2307 \
    --option='interfaces = lo eth0' --option='bind interfaces only = yes' \
    --option='server services = s3fs, rpc, ldap, cldap, kdc, winbindd, dns' >"$log" 2>&1 &&
    /usr/bin/python3 "$appliance/lib/controller_accounts.py" >>"$log" 2>&1 &&
    printf '%s\n' "nameserver $address" 'search corp.lan' >/etc/resolv.conf && return
  cat "$log" >&2
  fail 'the domain cannot be made'
}

is_listening() { grep -qs ":$(printf %04X "$1") [0-9A-F]*:0000 0A " /proc/net/tcp /proc/net/tcp6; }

# Names, LDAP, Kerberos, and an administrator's request to the pipe that a join begins with.
answers() {
  host -W 1 -t SRV _ldap._tcp.dc._msdcs.corp.lan "$address" && host -W 1 -t SRV _kerberos._udp.corp.lan "$address" &&
    is_listening 389 && is_listening 88 &&
    rpcclient -s /dev/null -U "CORP/Administrator%$password" -c lsaquery "$address"
} >/dev/null 2>&1

start_controller() {
  local tries
  samba -D || return
  for ((tries = 200; tries > 0; --tries)); do
    if answers; then
      return
    fi
    sleep 0.1
  done
  return 1
}

# Its services end with the first process; the last one to go still answers a moment longer.
stop_controller() {
  local tries
  kill "$(cat /run/samba/samba.pid)" || return
  for ((tries = 100; tries > 0; --tries)); do
    is_listening 389 || is_listening 88 || is_listening 445 || return 0
    sleep 0.1
  done
  return 1
}

# What the appliance's command "controller" asks for, as long as the appliance is there.
serve_requests() {
  local request
  while read -r request <"$control/requests"; do
    case $request in
      start | stop) "${request}_controller" ;;
      *) false ;;
    esac
    echo $? >"$control/answers"
  done
}

# The cable goes to the appliance as soon as that has a network of its own; process $1 is in it.
plug_in() {
  local here tries
  here=$(readlink /proc/self/ns/net)
  for ((tries = 500; tries > 0; --tries)); do
    if [[ $(readlink "/proc/$1/ns/net") != "$here" ]]; then
      ip link set egiga0 netns "$1" && return
    fi
    sleep 0.02
  done
  fail 'the appliance cannot be reached'
}

name_machine
lay_cable
make_domain
start_controller || fail 'the domain controller does not answer'

control=$(mktemp -d) || fail 'no folder can be made'
mkfifo "$control/requests" "$control/answers" || fail 'no fifo can be made'
serve_requests &
options=(--keep "$control")
for folder in "${kept[@]}"; do
  options+=(--keep "$folder")
done
"$appliance/appliance" "${options[@]}" -- bash "$appliance/lib/member.bash" "$control" "$address" "$@" <&0 &
member=$!
plug_in "$member"
wait "$member"
