// The section "global" of smb.conf: the appliance's names, how users are known, and the fixed options.
#include "model/automatic_shares.h"
#include "model/dfs_switch.h"
#include "model/domain_mode.h"
#include "smbconf/option_lines.h"
#include "smbconf/recycle_folder.h"
#include "smbconf/sections.h"

namespace nasshare {
namespace {

constexpr const char *winbind_options = R"(template homedir = /home/winnt/%D/%U
template shell = /bin/sh
idmap uid = 10000-20000
idmap gid = 10000-20000
winbind use default domain = yes
winbind enum users = yes
winbind enum groups = yes
winbind separator = +
nt acl support = yes
)";

// As the appliance's Samba has them. That "strict allocate" comes twice, in domain mode "nt acl support" too,
// and the two blanks behind "directory mask", are wanted.
constexpr const char *fixed_options = R"(delete veto files = yes
unix charset = UTF8
encrypt passwords = yes
hide unreadable = yes
map to guest = bad user
null passwords = yes
guest account = nobody
max log size = 10
local master = no
log level = 0
dns proxy = no
ldap ssl = no
use mmap = yes
use spnego = yes
socket options = IPTOS_LOWDELAY TCP_NODELAY SO_RCVBUF=131072 SO_SNDBUF=131072
max xmit = 131072
disable netbios = yes
strict allocate = yes
csc policy = manual
allocation roundup size = 1048576
create mask = 0777
directory mask  = 0777
force create mode = 0777
force directory mode = 0777
use sendfile = yes
deadtime = 10
smb passwd file = /etc/samba/smbpasswd
disable spoolss = yes
nt acl support = yes
acl map full control = yes
strict allocate = no
load printers = yes
printcap name = /usr/local/LPRng/etc/printcap
min print space = 2000
max print jobs = 1000
printing = lprng
print command = /usr/local/LPRng/bin/lpr -P%p -r %s
lpq command = /usr/local/LPRng/bin/lpq -P%p
lprm command = /usr/local/LPRng/bin/lprm -P%p %j
lppause command = /usr/local/LPRng/sbin/lpc hold %p %j
lpresume command = /usr/local/LPRng/sbin/lpc release %p %j
queuepause command = /usr/local/LPRng/sbin/lpc -P%p stop
queueresume command = /usr/local/LPRng/sbin/lpc -P%p start

)";

} // namespace

void write_global_section(FILE *file) {
  write_section(file, "global");
  write_option(file, "netbios name", view(pss->netbios_name));
  write_option(file, "server string", view(pss->server_string));
  std::fprintf(file,
               "veto files = /.AppleDouble/.AppleDB/.bin/.AppleDesktop/Network Trash "
               "Folder/%s/.systemfile/lost+found/Nas_Prog/%s/%s/\n",
               recycle_folder, p2p_name, amule_name);
  if (is_domain_mode()) {
    write_option(file, "workgroup", view(pss->ads_workgroup));
    std::fprintf(file, "security = ads\n");
    write_option(file, "realm", view(pss->ads_realm));
    write_option(file, "password server", view(pss->ads_pwd_server));
    std::fputs(winbind_options, file);
  } else {
    write_option(file, "workgroup", view(pss->workgroup));
    std::fprintf(file, "security = user\n");
  }
  if (is_dfs_on()) {
    std::fprintf(file, "host msdfs = yes\n");
  }
  std::fputs(fixed_options, file);
}

} // namespace nasshare
