// Storing XML files: a broken file with records is kept.
#include "base/xml_store.h"

#include "base/file_replacement.h"
#include "base/keep_aside.h"
#include "base/text.h"
#include "base/watch.h"
#include "base/whole_file.h"
#include "base/xml_reader.h"

namespace nasshare {

bool is_broken_xml(std::string_view text) {
  const Watch watch(Watch::Scope::apart); // the text is about to go whatever it holds
  return contains(text, "<item") && !is_well_formed_or_note(text) && !watch.seen();
}

void keep_aside_if_broken(const char *path, std::string_view text) {
  if (is_broken_xml(text)) {
    static_cast<void>(keep_aside(path));
  }
}

bool store_xml(std::string_view text, const char *path) {
  keep_aside_if_broken(path, WholeFile(path).text());
  return store_file(path, text);
}

} // namespace nasshare
