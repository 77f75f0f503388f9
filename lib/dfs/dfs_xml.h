// The frame of both DFS files: <config><dfs><item>...</item>...</dfs></config>, UTF-8.
//
// The exported writers take what is in the lists as markup, since host programs hand over escaped values. The
// operations of this library keep values as they were given, loaded ones included, and store them as text: a
// value is escaped once per write, however often it has been loaded.
#pragma once

#include "support/trouble.h"
#include "support/xml.h"

#include <string_view>

namespace nasshare {

enum class Form { text, markup };

inline bool add_value(xmlNode *item, const char *name, std::string_view value, Form form) {
  return form == Form::text ? add_text(item, name, value) : add_markup(item, name, value);
}

// Calls read(item) for every item of the file; nothing for a file that is no such file.
template <class Read> void each_dfs_item(const char *path, Read read) {
  auto document = load_xml(path);
  auto *dfs = child_element(document ? xmlDocGetRootElement(document.get()) : nullptr, "dfs");
  for (auto *item = child_element(dfs, "item"); item != nullptr; item = element_from(item->next)) {
    read(item);
  }
  if (document) {
    free_xml_memory(document.release());
  }
}

// Replaces the file with one item per node of the list, filled by fill(item, node). False, and the old file
// untouched, on failure and when the list was not loaded whole.
template <class Nodes, class Fill> bool store_dfs_items(const char *path, const Nodes &nodes, Fill fill) {
  if (load_was_troubled()) {
    return false;
  }
  auto document = new_xml("config");
  auto *dfs = document ? add_element(xmlDocGetRootElement(document.get()), "dfs") : nullptr;
  if (dfs == nullptr) {
    return false;
  }
  for (const auto &node : nodes) {
    auto *item = add_element(dfs, "item");
    if (item == nullptr || !fill(item, node)) {
      return false;
    }
  }
  return store_xml(document.get(), path);
}

// Whether a value fits its field once escaped, and XML can hold it.
bool is_storable(std::string_view value);

} // namespace nasshare
