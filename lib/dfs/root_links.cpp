#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"
#include "nasshare/platform.h"
#include "smbconf/shell_escape.h"
#include "support/debug.h"
#include "support/linked_list.h"
#include "support/owners.h"
#include "support/text.h"

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace nasshare;

namespace {

constexpr const char *root_path = "/etc/dfsroot";

using Command = Text<2 * path_width>; // every character of the four values may take a backslash

void run(const Command &command) {
  static_cast<void>(std::system(command.c_str())); // the shell's own message is all that shows a failure
}

void set_root_mode(mode_t mode) {
  const Descriptor folder(open(root_path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  static_cast<void>(fchmod(folder.get(), mode)); // whatever the umask is
}

int is_in_tree(const dirent *entry) {
  auto name = std::string_view(entry->d_name);
  return name != "." && name != ".." ? 1 : 0;
}

bool has_old_tree() {
  dirent **entries = nullptr;
  int count = scandir(root_path, &entries, is_in_tree, nullptr);
  for (int i = 0; i < count; ++i) {
    std::free(entries[i]);
  }
  std::free(entries);
  return count > 0;
}

// While it is built, the tree is closed to everybody else: the commands follow links, and nobody may plant
// one below their paths. An old tree that somebody keeps from going is no ground to build on.
bool make_closed_root() {
  set_root_mode(0700);
  run({"rm -rf ", root_path});
  mkdir(root_path, 0700);
  return !has_old_tree();
}

// The test sees the escaped name, the shell makes the plain one: for a group with such characters the
// commands run for every link, which does no harm.
void make_group(std::string_view group) {
  Text<path_width> path{root_path, "/", group};
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
                  root_path,      "/",         group.view(), "/",          local.view()};
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
  if (make_closed_root()) {
    for (const auto &link : each(*pdfs)) {
      make_link(link);
    }
  }
  set_root_mode(0777);
  dfs_remove_all();
}
