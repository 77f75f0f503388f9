// An access list in Samba's form ("valid users" in smb.conf(5)): names in double quotes, domain accounts as
// "DOMAIN+name".
#include "acl/samba_form.h"

#include "acl/access_list.h"
#include "acl/accounts.h"
#include "acl/everyone.h"
#include "model/domain_mode.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

namespace nasshare {
namespace {

void add_group(ListBuilder &list, std::string_view name) {
  if (!group_exists_or_note(name)) {
    return;
  }
  const Text<name_width + 8> domain{"\"+", view(pss->ads_workgroup), "+"};
  list.add_entry(domain.view(), name == "allaccount" ? "Domain Users" : name, "\"");
}

void add_user(ListBuilder &list, std::string_view name) {
  if (!user_exists_or_note(name)) {
    return;
  }
  const Text<name_width + 8> domain{"\"", view(pss->ads_workgroup), "+"};
  list.add_entry(name == guest ? "\"" : domain.view(), name, "\"");
}

bool convert_domain_list_or_note(std::span<char> list) {
  ListBuilder converted;
  for (const auto token : Tokens(view(list))) {
    if (is_group(token)) {
      add_group(converted, token.substr(1));
    } else {
      add_user(converted, token);
    }
  }
  assign(list, converted.view());
  return converted.is_whole();
}

} // namespace

bool convert_list_or_note(char *list) {
  if (is_domain_mode()) {
    return convert_domain_list_or_note(list_field(list));
  }
  std::ranges::replace(std::span(list, std::string_view(list).size()), '#', '"');
  return true;
}

} // namespace nasshare

using namespace nasshare;

void convert_list(char *list) {
  if (is_given(list)) {
    const LoadWatch watch;
    static_cast<void>(convert_list_or_note(list)); // the list is the answer
  }
}
