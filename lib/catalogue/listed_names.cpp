// Which shares are listed already: the names, in a table beside the list.
#include "catalogue/listed_names.h"

#include "base/linked_list.h"
#include "base/text.h"
#include "catalogue/share_list.h"

namespace nasshare {

ListedNames::ListedNames() {
  for (const auto &share : each(*pss)) {
    remember_or_note(view(share.name));
  }
}

// What is not remembered may be listed twice.
void ListedNames::remember_or_note(std::string_view name) {
  if (!names_.insert(name)) {
    note_doubt();
  }
}

void ListedNames::insert_share_or_note(const smb_share &record) {
  const auto name = view(record.name);
  if (!names_.contains(name) && append_share_or_note(record) != nullptr) {
    remember_or_note(name);
  }
}

} // namespace nasshare
