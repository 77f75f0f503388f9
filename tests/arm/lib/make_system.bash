#!/usr/bin/env bash
# Makes the ARM system in the folder $system: a Debian with this machine's own programs and ARM's libraries and
# development files, which beside this machine's own would remove its compiler.
# Arguments: the Debian release, the packages.
set -euo pipefail
# shellcheck source=tests/arm/lib/namespace.bash
. "${here:?}/lib/namespace.bash"
system=${system:?}
suite=$1
shift

# The first of this machine's package sources that holds the suite; nothing where there is none.
mirror() {
  apt-get indextargets --format "\$(RELEASE) \$(COMPONENT) \$(REPO_URI)" 'Created-By: Packages' |
    awk -v suite="$suite" '$1 == suite && $2 == "main" && $3 ~ /^(https?|file):/ && !found { print $3; found = 1 }'
}

# By way of the proxy that this machine's apt uses. In namespaces of its own, so that its mounts stay there, but as
# root of this machine, since no other may make devices.
bootstrap() {
  local mirror http_proxy=${http_proxy:-} https_proxy=${https_proxy:-}
  mirror=$(mirror)
  eval "$(apt-config shell http_proxy Acquire::http::Proxy https_proxy Acquire::https::Proxy)"
  export http_proxy https_proxy
  rm -rf "$system.new"
  unshare --mount --pid --fork --kill-child debootstrap --variant=minbase --arch="$(dpkg --print-architecture)" \
    "$suite" "$system.new" ${mirror:+"$mirror"}
  mv "$system.new" "$system"
}

# This machine's way to its package sources: proxies, accounts, keys and names. Not its apt's hooks.
carry_package_access() {
  local name
  apt-config dump Acquire | grep -v '^Acquire::IndexTargets' >"$system/etc/apt/apt.conf.d/90machine"
  printf '%s\n' 'Apt::Install-Recommends "false";' 'Acquire::Languages "none";' >"$system/etc/apt/apt.conf.d/91small"
  for name in apt/auth.conf apt/auth.conf.d apt/keyrings apt/trusted.gpg apt/trusted.gpg.d resolv.conf hosts; do
    [[ ! -e /etc/$name ]] || cp -RLT "/etc/$name" "$system/etc/$name"
  done
}

install_packages() {
  in_arm_system sh -ec '
    export DEBIAN_FRONTEND=noninteractive
    printf "#!/bin/sh\nexit 101\n" >/usr/sbin/policy-rc.d # no services
    : >/usr/bin/smbclient                                 # tests mount a stand-in over it
    chmod 0755 /usr/sbin/policy-rc.d /usr/bin/smbclient
    dpkg --add-architecture armhf
    apt-get update -qq
    apt-get install -y -qq "$@"
    apt-get clean' sh "$@"
}

[[ -d $system ]] || bootstrap
carry_package_access
install_packages "$@"
