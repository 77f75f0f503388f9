#include "acl/account_walk.h"
#include "acl/list_text.h"
#include "acl/name_tokens.h"
#include "nasshare/acl.h"
#include "nasshare/platform.h"

using namespace nasshare;

namespace {

void name_members(std::string_view group_name) {
  each_group([group_name](const group &entry) {
    if (group_name == entry.gr_name) {
      for (char **member = entry.gr_mem; *member != nullptr; ++member) {
        Insert_Name_Node(*member);
      }
    }
  });
}

bool is_named(std::string_view list, const char *name) {
  name_tokens(list);
  Print_Name_List();
  bool named = Check_Name_Node(name) != nullptr;
  Free_Name_List();
  return named;
}

// The name may lie in the name list, which is used as scratch.
bool is_local_entry(std::string_view list, const char *listed_name) {
  const Text<list_width> copy{listed_name};
  const char *name = copy.c_str();
  if (list == everyone) {
    return true;
  }
  if (is_group(name) && contains(list, Text<list_width>{"#", name, "#"}.view())) {
    return true;
  }
  Free_Name_List();
  return is_named(list, name);
}

} // namespace

void retrieve_user_from_group(const char *name) {
  if (name == nullptr) {
    return;
  }
  if (is_group(name)) {
    name_members(name + 1);
  } else {
    Insert_Name_Node(name);
  }
}

void nasshare::name_tokens(std::string_view list) {
  if (list.empty()) {
    return;
  }
  for (auto token : Tokens(list)) {
    retrieve_user_from_group(Text<list_width>{token}.c_str());
  }
}

int check_user_in_list(const char *list, const char *name) {
  if (!given(list) || !given(name)) {
    return 0;
  }
  pss->ads_enable = xml_get_int("/system_mgr/samba/ads_enable");
  bool listed =
      pss->ads_enable == 1 ? list == domain_everyone || contains(list, name) : is_local_entry(list, name);
  return listed ? 1 : 0;
}
