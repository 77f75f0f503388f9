// An account, words such as "ads read write deny", readers, writers, denied: what one account's new
// permission makes of a share.
#include "lists.h"

#include "acl/access_list.h"
#include "acl/everyone.h"
#include "acl/list_entry.h"

namespace nasshare::fuzzing {
namespace {

void insert_share(Parts &parts) {
  auto share = std::make_unique<smb_share>();
  assign(share->name, "Share");
  assign(share->read_list, repeated(parts.next()));
  assign(share->write_list, repeated(parts.next()));
  assign(share->invalid_users, repeated(parts.next()));
  Insert_Smb_Node(share.get());
}

std::uint32_t permission(std::string_view words) {
  return contains(words, "read") ? 1U : contains(words, "write") ? 2U : contains(words, "deny") ? 3U : 0U;
}

bool names(std::string_view list, std::string_view account) {
  for (auto token : Tokens(list)) {
    if (token == account) {
      return true;
    }
  }
  return false;
}

bool is_open(const smb_share &share) {
  return share.read_list == everyone || share.write_list == everyone || share.invalid_users == everyone;
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  auto account = parts.next_string();
  auto words = parts.next();
  pss->ads_enable = contains(words, "ads") ? 1 : 0;
  insert_share(parts);
  bool formed = well_formed(pss->head->read_list) && well_formed(pss->head->write_list) &&
                well_formed(pss->head->invalid_users);
  // Of a share that is open to everyone only the open list and the account's new one change.
  bool open = is_open(*pss->head);
  auto type = permission(words);
  insert_acnt_node("Share", type);

  modify_config_permision(account.c_str());
  auto once = listed_shares();
  require_whole(*pss);
  for (const auto &share : once) {
    require_terminated(share);
    require(!formed || (well_formed(share.read_list) && well_formed(share.write_list) &&
                        well_formed(share.invalid_users)),
            "well-formed lists stay well-formed");
    if (is_list_entry(account.c_str()) && account != "nobody" && !open) {
      require(type == 1 || !names(share.read_list, account), "only a reader is among the readers");
      require(type == 2 || !names(share.write_list, account), "only a writer is among the writers");
      require(type == 3 || !names(share.invalid_users, account), "only the denied are among the denied");
    }
  }
  modify_config_permision(account.c_str());
  require(!formed || open || std::ranges::equal(listed_shares(), once, same), "a change twice equals once");
}

} // namespace nasshare::fuzzing
