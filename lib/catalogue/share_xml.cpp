// How texts of share XML items are read.
#include "catalogue/share_xml.h"

#include "acl/access_list.h"
#include "base/text.h"
#include "catalogue/ampersands.h"

namespace nasshare {

void read_recovered(xmlNode *item, const char *name, std::span<char> field) {
  Text<list_width> content{ChildText(item, name).view()};
  recover_ampersands(content.field());
  assign(field, view(content.field()));
}

void read_list(xmlNode *item, const char *name, std::span<char> field) {
  assign_list(field, ChildText(item, name).view());
}

void read_denied_or_note(xmlNode *item, std::span<char> field) {
  assign_denied_or_note(field, ChildText(item, "invalid_users").view());
}

} // namespace nasshare
