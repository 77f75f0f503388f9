#include "acl/list_text.h"
#include "nasshare/acl.h"
#include "support/debug.h"

using namespace nasshare;

void list_item_compare(char *list) {
  if (!given(list)) {
    return;
  }
  ListBuilder kept;
  for (auto token : Tokens(list)) {
    Text<list_width> name{token};
    list_debug(" read from LIST = %s\n", name.c_str());
    if (Check_Name_Node(name.c_str()) != nullptr) {
      pss->list_changed = 1;
    } else {
      kept.add(token);
    }
  }
  assign(list_field(list), kept.view());
}
