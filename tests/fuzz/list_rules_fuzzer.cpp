// Readers, writers, denied, names: the rules that lists obey.
#include "lists.h"

#include "acl/known_entries.h"

namespace nasshare::fuzzing {
namespace {

// A record in which everything but the lists is known, so that a changed neighbour shows.
std::unique_ptr<smb_share> record(Parts &parts) {
  auto share = std::make_unique<smb_share>();
  std::memset(static_cast<void *>(share.get()), 'n', sizeof *share);
  assign(share->read_list, repeated(parts.next()));
  assign(share->write_list, repeated(parts.next()));
  assign(share->invalid_users, repeated(parts.next()));
  share->valid_users[0] = '\0';
  return share;
}

bool neighbours_intact(const smb_share &share) {
  constexpr auto lists = offsetof(smb_share, read_list);
  constexpr auto behind = offsetof(smb_share, recycle_enable);
  std::string_view bytes(reinterpret_cast<const char *>(&share), sizeof share);
  return bytes.substr(0, lists).find_first_not_of('n') == std::string_view::npos &&
         bytes.substr(behind).find_first_not_of('n') == std::string_view::npos;
}

void require_lists(const smb_share &share, bool formed) {
  require(terminated(share.read_list) && terminated(share.write_list) && terminated(share.invalid_users) &&
              terminated(share.valid_users),
          "every list ends within its field");
  require(neighbours_intact(share), "the fields around the lists stay");
  if (formed) {
    require(well_formed(share.read_list) && well_formed(share.write_list) &&
                well_formed(share.invalid_users) && well_formed(share.valid_users),
            "well-formed lists stay well-formed");
  }
}

bool knows(std::string_view name) {
  return contains(name, "a");
}

// What the one token of a text of delimiters only becomes.
bool is_empty_name(std::string_view list) {
  return list == "##" || list == "##,";
}

template <class Change> void require_settled(char *list, Change change) {
  auto before = std::string(list);
  change(list);
  auto once = std::string(list);
  require(once == before || is_empty_name(once) || well_formed(once), "a rewritten list is well-formed");
  require(once.size() <= before.size() + 3 || !well_formed(before), "entries only go");
  change(list);
  require(list == once, "a change twice equals once");
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  auto share = record(parts);
  bool formed =
      well_formed(share->read_list) && well_formed(share->write_list) && well_formed(share->invalid_users);

  auto original = std::make_unique<smb_share>(*share);
  rw_list_rule(share.get());
  require_lists(*share, formed);
  require_rules_applied(*share);
  require(share->read_list[0] != '\0' || share->write_list[0] != '\0' || share->invalid_users[0] != '\0',
          "some list says who may enter");
  require(std::string_view(share->read_list) == original->read_list, "the readers stay");

  for (auto name = parts.next_string(); !name.empty(); name = parts.next_string()) {
    Insert_Name_Node(name.c_str());
  }
  auto copy = std::make_unique<smb_share>(*share);
  for (auto *list : {copy->read_list, copy->write_list, copy->invalid_users}) {
    require_settled(list, [](char *entries) { keep_known_entries(entries, knows, knows); });
    require_settled(list, run_check_samba_list);
    require_settled(list, list_item_compare);
  }
  require_lists(*copy, false);

  rebuld_input_data(share.get());
  require_lists(*share, formed);
}

} // namespace nasshare::fuzzing
