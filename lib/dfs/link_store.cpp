#include "dfs/link_store.h"

#include "nasshare/dfs.h"
#include "support/linked_list.h"
#include "support/presence.h"
#include "support/text.h"
#include "support/trouble.h"

using namespace nasshare;

namespace {

constexpr const char *link_file = "/etc/NAS_CFG/smbdfs.xml";

void read_link(xmlNode *item) {
  smb_dfs_node link{};
  read_child(item, "host", link.host);
  read_child(item, "share", link.share);
  read_child(item, "local", link.local);
  read_child(item, "group", link.group);
  dfs_add_node(&link);
}

} // namespace

bool nasshare::store_links(Form form) {
  return store_dfs_items(link_file, each(*pdfs), [form](xmlNode *item, const smb_dfs_node &link) {
    return add_value(item, "host", view(link.host), form) &&
           add_value(item, "share", view(link.share), form) &&
           add_value(item, "local", view(link.local), form) &&
           add_value(item, "group", view(link.group), form);
  });
}

bool nasshare::links_can_be_loaded() {
  read_DFS_xml();
  bool loaded = !load_was_troubled();
  dfs_remove_all();
  return loaded;
}

void read_DFS_xml(void) {
  load_begins();
  if (is_there(link_file)) {
    dfs_remove_all();
    each_dfs_item(link_file, read_link);
  }
}

void write_DFS_xml(void) {
  store_links(Form::markup);
}

void get_dfs_info(void) {
  dfs_remove_all();
  read_DFS_xml();
  dfs_print_all();
}
