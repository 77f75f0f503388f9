// The file of the DFS links.
#include "lists.h"
#include "machine.h"

#include "nasshare/dfs.h"

#include <algorithm>

namespace nasshare::fuzzing {
namespace {

constexpr const char *link_file = "/etc/NAS_CFG/smbdfs.xml";

std::array<std::string_view, 4> values(const smb_dfs_node &link) {
  return {view(link.host), view(link.share), view(link.local), view(link.group)};
}

std::vector<smb_dfs_node> loaded_links() {
  get_dfs_info();
  require_whole(*pdfs);
  std::vector<smb_dfs_node> links;
  for (const auto &link : each(*pdfs)) {
    require(terminated(link.host) && terminated(link.share) && terminated(link.local) &&
                terminated(link.group),
            "every value ends within its field");
    require(std::ranges::all_of(values(link), can_xml_hold), "no cut breaks a character");
    require(dfs_check_node(&link) != nullptr, "a link is found by its group and name");
    links.push_back(link);
  }
  return links;
}

} // namespace

void fuzz(std::string_view input) {
  machine::file(link_file, input);
  auto links = loaded_links();

  // No file holds such a group.
  require(del_dfs_node_by_group("\x01") == 1, "loaded links can be stored");
  auto stored = loaded_links();
  auto same_values = [](const auto &a, const auto &b) { return values(a) == values(b); };
  require(std::ranges::equal(links, stored, same_values), "stored links come back as they were");

  write_DFS_xml();
  require(loaded_links().size() == links.size(), "links that are taken as markup can be read");
}

} // namespace nasshare::fuzzing
