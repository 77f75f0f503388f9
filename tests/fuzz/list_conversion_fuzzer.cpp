// Words such as "ads", the domain, then a list: what stands in smb.conf for it.
#include "lists.h"

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  Parts parts(input);
  pss->ads_enable = contains(parts.next(), "ads") ? 1 : 0;
  assign(pss->ads_workgroup, parts.next_string());
  auto list = repeated(parts.next());

  auto share = std::make_unique<smb_share>();
  std::memset(static_cast<void *>(share.get()), 'n', sizeof *share);
  assign(share->write_list, list);
  convert_list(share->write_list);
  require(terminated(share->write_list), "a converted list ends within its field");
  require(share->read_list[sizeof share->read_list - 1] == 'n' && share->invalid_users[0] == 'n',
          "the fields around the list stay");

  auto converted = view(share->write_list);
  require(contains(view(pss->ads_workgroup), "#") || !contains(converted, "#"),
          "no mark of the stored form is left");
  bool quoted_already = contains(list, "\"") || contains(view(pss->ads_workgroup), "\"");
  if (well_formed(list) && !quoted_already) {
    require(std::ranges::count(converted, '"') % 2 == 0, "quotes come in pairs");
    require(converted.empty() || (converted.front() == '"' && converted.back() == '"'),
            "every name is quoted");
  }
  if (pss->ads_enable != 1) {
    require(converted.size() == list.size(), "local names stay as they are");
  }
}

} // namespace nasshare::fuzzing
