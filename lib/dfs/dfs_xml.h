// The frame of both DFS files: <config><dfs><item>...</item>...</dfs></config>, UTF-8.
//
// The exported writers take what is in the lists as markup, since host programs hand over escaped values. The
// operations of this library keep values as they were given, loaded ones included, and store them as text: a
// value is escaped once per write, however often it has been loaded.
#pragma once

#include "base/watch.h"
#include "base/xml_composer.h"
#include "base/xml_reader.h"
#include "base/xml_store.h"
#include "nasshare/catalogue.h"

namespace nasshare {

// Calls read(item) for every item of the file; nothing for a file that is no such file.
template <class Read> void each_item_or_note(const char *path, Read read) {
  auto document = load_or_note(path);
  auto *const dfs = child_element(root_of(document), "dfs");
  for (auto *item = child_element(dfs, "item"); item != nullptr; item = element_from(item->next)) {
    read(item);
  }
  if (document) {
    free_xml_memory(document.release());
  }
}

// Replaces the file with one item per node, filled by fill(file, node). False, and the old file untouched, on
// failure, and when the nodes came with trouble, so that some may be missing.
template <class Nodes, class Fill>
[[nodiscard]] bool store_items(const char *path, const Nodes &nodes, const Trouble &came_with, Fill fill) {
  if (came_with) {
    return false;
  }
  XmlComposer file("config");
  file.open("dfs");
  for (const auto &node : nodes) {
    file.open("item");
    fill(file, node);
    file.close();
  }
  return file.finish() && store_xml(file.text(), path);
}

// Whether a value fits its field once escaped, and XML can hold it.
bool is_storable_value(std::string_view value);

} // namespace nasshare
