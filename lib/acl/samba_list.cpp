#include "acl/accounts.h"
#include "acl/list_text.h"
#include "nasshare/acl.h"

#include <algorithm>
#include <cstring>

using namespace nasshare;

namespace {

void add_group(ListBuilder &list, std::string_view name) {
  if (!group_exists(name)) {
    return;
  }
  Text<name_width + 8> domain{"\"+", view(pss->ads_workgroup), "+"};
  list.add_entry(domain.view(), name == "allaccount" ? "Domain Users" : name, "\"");
}

void add_user(ListBuilder &list, std::string_view name) {
  if (!user_exists(name)) {
    return;
  }
  Text<name_width + 8> domain{"\"", view(pss->ads_workgroup), "+"};
  list.add_entry(name == "nobody" ? "\"" : domain.view(), name, "\"");
}

} // namespace

void convert_list(char *list) {
  if (!given(list)) {
    return;
  }
  if (pss->ads_enable != 1) {
    std::ranges::replace(list, list + std::strlen(list), '#', '"');
    return;
  }
  ListBuilder converted;
  for (auto token : Tokens(list)) {
    if (is_group(token)) {
      add_group(converted, token.substr(1));
    } else {
      add_user(converted, token);
    }
  }
  assign(list_field(list), converted.view());
}
