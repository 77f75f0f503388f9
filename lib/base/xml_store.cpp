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

bool is_broken_xml(std::string_view text) {
  const Watch watch(Watch::Scope::apart); // the text is about to go whatever it holds
  return contains(text, "<item") && !parse_or_note(text) && !watch.seen();
}

void keep_broken_xml_aside(const char *path) {
  const WholeFile file(path);
  if (is_broken_xml(file.text())) {
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
