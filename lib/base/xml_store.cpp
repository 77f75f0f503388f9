// Storing XML files: only a text that reads back is stored, and a broken file with records is kept.
#include "base/xml_store.h"

#include "base/file_replacement.h"
#include "base/keep_aside.h"
#include "base/text.h"
#include "base/watch.h"
#include "base/whole_file.h"
#include "base/xml_reader.h"
#include "base/xml_writer.h"

namespace nasshare {

XmlText compose_whole(xmlDoc *document) {
  auto text = compose_or_note(document);
  // Short of memory the composer may stop midway.
  return text && parse_or_note(view(text)) ? std::move(text) : nullptr;
}

void keep_broken_xml_aside(const char *path) {
  const Watch watch(Watch::Scope::apart); // the old file is about to go whatever it holds
  const WholeFile file(path);
  const bool holds_records = contains(file.text(), "<item>");
  if (holds_records && !parse_or_note(file.text()) && !watch.seen()) {
    static_cast<void>(keep_aside(path)); // a folder that takes no second name does not keep the change
  }
}

bool store_xml(xmlDoc *document, const char *path) {
  const auto text = compose_whole(document);
  if (!text) {
    return false;
  }
  keep_broken_xml_aside(path);
  return store_file(path, view(text));
}

} // namespace nasshare
