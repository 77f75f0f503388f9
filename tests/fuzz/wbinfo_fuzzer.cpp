// The appliance's own name, an account, an access list, then the accounts that wbinfo lists.
#include "lists.h"
#include "machine.h"

#include "acl/access_list.h"
#include "nasshare/ads.h"
#include "smbconf/domain_users.h"

namespace nasshare::fuzzing {
namespace {

void require_parsed(std::string_view line) {
  if (auto user = domain_user_of_line(line)) {
    require(!user->name.empty() && contains(line, user->name), "a name stands in its line");
    require(user->name.find_first_of(" \t\n") == std::string_view::npos, "a name has no blank");
  }
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  assign(pss->netbios_name, parts.next_string());
  auto account = parts.next_string();
  auto list = repeated(parts.next());
  auto output = std::string(parts.next());
  machine::command("wbinfo", output);

  if (ads_check_user(account.c_str()) == 1 || ads_check_group(account.c_str()) == 1) {
    require(contains(output, account), "a known account is listed");
  }
  std::vector<char> field(list_width);
  assign(field, list);
  auto before = std::string(field.data());
  ads_run_check_samba_list(field.data());
  auto after = view(field);
  require(after == before || after == "##," || well_formed(after), "a checked list is well-formed");
  auto once = std::string(after);
  ads_run_check_samba_list(field.data());
  require(view(field) == once, "checking twice equals once");

  while (!output.empty()) {
    auto line = output.substr(0, output.find('\n'));
    require_parsed(line);
    output.erase(0, line.size() + 1);
  }
}

} // namespace nasshare::fuzzing
