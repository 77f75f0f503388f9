#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/platform.h"
#include "smbconf/shell_escape.h"
#include "support/debug.h"
#include "support/linked_list.h"
#include "support/text.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

using namespace nasshare;

namespace {

constexpr std::string_view root = "/etc/dfsroot";

using Command = Text<2 * path_width>; // every character of the four values may take a backslash

void run(const Command &command) {
  static_cast<void>(std::system(command.c_str())); // the shell's own message is all that shows a failure
}

void make_root() {
  run({"rm -rf ", root});
  Text<32> path{root};
  mkdir(path.c_str(), 0777);
  static_cast<void>(chmod(path.c_str(), 0777)); // whatever the umask is
}

// The test sees the escaped name, the shell makes the plain one: for a group with such characters the
// commands run for every link, which does no harm.
void make_group(std::string_view group) {
  Text<path_width> path{root, "/", group};
  if (access(path.c_str(), F_OK) != 0) {
    run({"mkdir ", path.view()});
    run({"chmod 777 ", path.view()});
  }
}

void make_link(const smb_dfs_node &link) {
  auto host = shell_escaped(view(link.host));
  auto share = shell_escaped(view(link.share));
  auto local = shell_escaped(view(link.local));
  auto group = shell_escaped(view(link.group));
  make_group(group.view());
  // The shell makes one backslash of the two.
  Command command{"ln -s msdfs:", host.view(), "\\\\",       share.view(), " ",
                  root,           "/",         group.view(), "/",          local.view()};
  trace_debug("dfs link cmd [%s]\n", command.c_str());
  run(command);
}

} // namespace

void create_dfs_link(void) {
  pss->dfs_enable = xml_get_int("/system_mgr/samba/dfs_enable");
  if (pss->dfs_enable != 1) {
    return; // the old tree stays
  }
  get_dfs_info();
  make_root();
  for (const auto &link : each(*pdfs)) {
    make_link(link);
  }
  dfs_remove_all();
}
