// The tree of DFS links that Samba serves: a folder per group, and in it a symbolic link "msdfs:HOST\SHARE"
// per link ("msdfs root" in smb.conf(5)).
#include "base/debug.h"
#include "base/linked_list.h"
#include "base/owners.h"
#include "base/program_lock.h"
#include "base/shell_escape.h"
#include "dfs/dfs_root.h"
#include "model/dfs_switch.h"
#include "nasshare/dfs.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {
namespace {

// Held while the tree is built: two that build at once would take each other's folders away.
constexpr const char *dfs_tree_lock = "/run/nasshare-dfs-tree.lock";

using Command = Text<2 * path_width>; // every character of the four values may take a backslash

void run(const Command &command) {
  static_cast<void>(std::system(command.c_str())); // the shell's own message is all that shows a failure
}

void set_root_mode(mode_t mode) {
  const Descriptor folder(open(dfs_root, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  static_cast<void>(fchmod(folder.get(), mode)); // whatever the umask is; there may be no folder
}

bool is_root_empty() {
  const Directory root(opendir(dfs_root));
  const dirent *entry = nullptr;
  while (root && (entry = readdir(root.get())) != nullptr) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") {
      return false;
    }
  }
  return true;
}

// While it is built, the tree is closed to everybody else: the commands follow links, and nobody may plant
// one below their paths. An old tree that somebody keeps from going is no ground to build on.
bool make_closed_root() {
  set_root_mode(0700);
  run({"rm -rf ", dfs_root});
  mkdir(dfs_root, 0700);
  return is_root_empty();
}

// The test asks for the escaped name, while the shell makes the plain one: wanted. A group whose name has
// such characters is made again for each of its links, which leaves it as it is.
void make_group(std::string_view escaped_group) {
  const Text<path_width> path{dfs_root, "/", escaped_group};
  if (access(path.c_str(), F_OK) != 0) {
    run({"mkdir ", path.view()});
    run({"chmod 777 ", path.view()});
  }
}

void make_link_in_tree(const smb_dfs_node &link) {
  const auto host = shell_escaped(view(link.host));
  const auto share = shell_escaped(view(link.share));
  const auto local = shell_escaped(view(link.local));
  const auto group = shell_escaped(view(link.group));
  make_group(group.view());
  // The shell makes one backslash of the two.
  const Command command{"ln -s msdfs:", host.view(), "\\\\",       share.view(), " ",
                        dfs_root,       "/",         group.view(), "/",          local.view()};
  trace_debug("dfs link cmd [%s]\n", command.c_str());
  run(command);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void create_dfs_link(void) {
  read_dfs_switch_or_note();
  if (!is_dfs_on()) {
    return; // the old tree stays: wanted
  }
  ProgramLock lock(dfs_tree_lock);
  lock.share_with_commands();
  get_dfs_info();
  if (make_closed_root()) {
    std::ranges::for_each(each(*pdfs), make_link_in_tree);
  }
  set_root_mode(0777);
  dfs_remove_all();
}
