# shellcheck shell=bash disable=SC2034
# The appliance in the machine of a domain: its settings, and clients with accounts of the domain. Read after
# clients.bash.

domain=CORP

# configure DOMAIN-MODE ACCOUNT PASSWORD
configure() {
  cat >/etc/NAS_CFG/config.xml <<XML
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
XML
}
