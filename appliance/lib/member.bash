# shellcheck shell=bash
# Runs a command in the appliance once its interface egiga0 is cabled to the domain controller. It then has a
# command "controller start|stop" for the controller at the other end.
# Arguments: folder of the controller's fifos, the controller's address, command and its arguments.
set -u
control=$1
server=$2
shift 2

until ip link set egiga0 up 2>/dev/null; do
  sleep 0.02
done
ip address add "${server%.*}.2/24" dev egiga0 || exit 125
printf '%s\n' "nameserver $server" 'search corp.lan' >/etc/resolv.conf

cat >/run/appliance/bin/controller <<END
#!/bin/sh
echo "\$1" >"$control/requests"
read -r status <"$control/answers"
exit "\$status"
END
chmod +x /run/appliance/bin/controller
exec "$@"
