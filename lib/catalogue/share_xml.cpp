// Which files are parsed, and how texts of share XML items are read.
#include "catalogue/share_xml.h"

#include "acl/access_list.h"
#include "base/text.h"
#include "base/watch.h"
#include "catalogue/ampersands.h"
#include "nasshare/catalogue.h"

#include <utility>

namespace nasshare {

xmlNode *ShareXmlFiles::read_or_note(const char *path) {
  WholeFile file(path);
  if (file.error() != 0) {
    note_file_error(file.error());
  }
  if (!document_ || file.text() != file_->text()) {
    forget();
    document_ = file.text().empty() ? nullptr : parse_or_note(file.text());
  }
  file_.emplace(std::move(file));
  return child_element(root_of(document_), "samba");
}

void ShareXmlFiles::forget() {
  if (document_) {
    free_xml_memory(document_.release());
  }
}

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
