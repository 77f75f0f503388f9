// The link file: reading it into the link list, and replacing it.
#include "dfs/link_store.h"

#include "base/linked_list.h"
#include "base/presence.h"
#include "base/program_lock.h"
#include "base/text.h"
#include "dfs/link_records.h"
#include "nasshare/dfs.h"

namespace nasshare {
namespace {

constexpr const char *link_file = "/etc/NAS_CFG/smbdfs.xml";

Trouble file_came_with; // when it was last read

void read_link(xmlNode *item) {
  smb_dfs_node link{};
  read_child(item, "host", link.host);
  read_child(item, "share", link.share);
  read_child(item, "local", link.local);
  read_child(item, "group", link.group);
  dfs_add_node(&link);
}

} // namespace

bool store_links(Form form) {
  auto trouble = link_trouble();
  trouble |= file_came_with;
  return store_items(link_file, each(*pdfs), trouble, [form](XmlComposer &file, const smb_dfs_node &link) {
    file.add("host", view(link.host), form);
    file.add("share", view(link.share), form);
    file.add("local", view(link.local), form);
    file.add("group", view(link.group), form);
  });
}

bool can_load_links() {
  read_DFS_xml();
  dfs_remove_all();
  return !file_came_with;
}

} // namespace nasshare

using namespace nasshare;

void read_DFS_xml(void) {
  file_came_with = {};
  const Watch watch(file_came_with);
  if (exists_or_note(link_file)) {
    dfs_remove_all();
    each_item_or_note(link_file, read_link);
  }
}

void write_DFS_xml(void) {
  const ProgramLock lock(dfs_links_lock);
  static_cast<void>(store_links(Form::markup)); // it has no result
}

void get_dfs_info(void) {
  dfs_remove_all();
  read_DFS_xml();
  dfs_print_all();
}
