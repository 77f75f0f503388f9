// The entries of an access list that stand in the name records go: who can write anyway need not be a reader.
#include "acl/access_list.h"
#include "acl/name_records.h"
#include "base/debug.h"
#include "model/load_verdict.h"
#include "nasshare/acl.h"

using namespace nasshare;

void list_item_compare(char *list) {
  if (!is_given(list)) {
    return;
  }
  const LoadWatch watch;
  note(name_trouble());
  ListBuilder kept;
  for (const auto token : Tokens(list)) {
    const Text<list_width> name{token};
    list_debug(" read from LIST = %s\n", name.c_str());
    if (Check_Name_Node(name.c_str()) != nullptr) {
      pss->list_changed = 1;
    } else {
      kept.add(token);
    }
  }
  assign(list_field(list), kept.view());
}
