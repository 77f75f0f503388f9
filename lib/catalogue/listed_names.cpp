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

void ListedNames::remember_or_note(std::string_view name) {
  if (!names_.insert(name)) {
    is_whole_ = false;
    note_doubt();
  }
}

bool ListedNames::contains(const smb_share &record) const {
  return names_.contains(view(record.name)) || (!is_whole_ && check_smb_share_name(record.name) != nullptr);
}

void ListedNames::insert_share_or_note(const smb_share &record) {
  if (!contains(record) && append_share_or_note(record) != nullptr) {
    remember_or_note(view(record.name));
  }
}

} // namespace nasshare
