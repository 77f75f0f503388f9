// Reading XML for callers in C: the first child element of a name, and the end of a document.
#include "base/xml_reader.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <libxml/parser.h>
#include <libxml/xmlmemory.h>

using namespace nasshare;

xmlNode *search_xml_children(xmlNode *parent, const char *name, char *text, int size) {
  auto *const child = name == nullptr ? nullptr : child_element(parent, name);
  if (text != nullptr && size > 0) {
    const std::span field(text, static_cast<std::size_t>(size));
    std::ranges::fill(field, '\0');
    if (child != nullptr) {
      read_child(parent, name, field);
    }
  }
  return child;
}

void free_xml_memory(xmlDoc *document) {
  xmlFreeDoc(document);
  xmlCleanupParser();
  xmlMemoryDump();
}
