// What holds for access lists and listed shares, however they came about.
#pragma once

#include "fuzz.h"

#include "base/linked_list.h"
#include "base/xml_characters.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"

#include <array>
#include <cstring>
#include <memory>
#include <vector>

namespace nasshare::fuzzing {

// Entries "#name#" with commas between; the empty list has none. A name has one character at least.
inline bool well_formed(std::string_view list) {
  while (!list.empty()) {
    auto end = list.find('#', 2);
    if (list.front() != '#' || end == std::string_view::npos ||
        list.substr(1, end - 1).find_first_of("#,") != std::string_view::npos) {
      return false;
    }
    list.remove_prefix(end + 1);
    if (!list.empty() && (list.front() != ',' || list.size() == 1)) {
      return false;
    }
    list.remove_prefix(list.empty() ? 0 : 1);
  }
  return true;
}

template <class List> void require_whole(const List &list) {
  decltype(list.count) count = 0;
  for (const auto &node : each(list)) {
    ++count;
    require(node.next != nullptr || &node == list.tail, "the tail is the last node");
    require(count <= list.count, "a list has no more nodes than it counts");
  }
  require(count == list.count, "a list counts its nodes");
}

inline std::array<std::string_view, 9> texts(const smb_share &share) {
  return {view(share.hd_serial), view(share.name),       view(share.comment),
          view(share.path),      view(share.oplocks),    view(share.map_archive),
          view(share.read_list), view(share.write_list), view(share.invalid_users)};
}

inline void require_terminated(const smb_share &share) {
  require(terminated(share.hd_serial) && terminated(share.name) && terminated(share.comment) &&
              terminated(share.path) && terminated(share.browseable) && terminated(share.public_) &&
              terminated(share.oplocks) && terminated(share.map_archive) && terminated(share.read_list) &&
              terminated(share.write_list) && terminated(share.invalid_users) &&
              terminated(share.valid_users),
          "every text ends within its field");
}

inline void require_rules_applied(const smb_share &share) {
  auto again = std::make_unique<smb_share>(share);
  rw_list_rule(again.get());
  require(std::memcmp(again.get(), &share, sizeof share) == 0, "the list rule twice equals once");
}

// A catalogue that was read from XML.
inline void require_catalogue() {
  require_whole(*pss);
  for (const auto &share : each(*pss)) {
    require_terminated(share);
    require(share.name[0] != '\0' && check_smb_share_name(share.name) == &share, "a name is listed once");
    require(view(share.browseable) == "yes" && view(share.public_) == "yes",
            "every listed share is browseable and public");
    require_rules_applied(share);
    for (auto text : texts(share)) {
      // A path that is moved to its volume is overwritten byte by byte.
      bool moved = text.data() == share.path;
      require(moved || can_xml_hold(text), "no cut breaks a character");
    }
  }
}

// The listed shares as they are now.
inline std::vector<smb_share> listed_shares() {
  std::vector<smb_share> shares;
  for (const auto &share : each(*pss)) {
    shares.push_back(share);
  }
  return shares;
}

inline bool same(const smb_share &a, const smb_share &b) {
  return texts(a) == texts(b) && a.volume_raid == b.volume_raid && a.recycle_enable == b.recycle_enable &&
         a.recycle_tree == b.recycle_tree;
}

} // namespace nasshare::fuzzing
