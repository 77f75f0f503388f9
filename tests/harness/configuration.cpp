// Appliance::config: the key's path as nested elements of /etc/NAS_CFG/config.xml.
#include "appliance.h"
#include "files.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace nasshare::tests {

namespace {

constexpr const char *database = "/etc/NAS_CFG/config.xml";

struct FreeDocument {
  void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

const xmlChar *xml(const std::string &text) {
  return reinterpret_cast<const xmlChar *>(text.c_str());
}

Document stored_or_empty() {
  if (exists(database)) {
    if (Document document(xmlReadFile(database, nullptr, XML_PARSE_NOBLANKS)); document != nullptr) {
      return document;
    }
  }
  Document document(xmlNewDoc(xml("1.0")));
  xmlDocSetRootElement(document.get(), xmlNewNode(nullptr, xml("config")));
  return document;
}

xmlNode *child(xmlNode *parent, const std::string &name) {
  for (xmlNode *node = parent->children; node != nullptr; node = node->next) {
    if (xmlStrEqual(node->name, xml(name)) != 0) {
      return node;
    }
  }
  return xmlNewChild(parent, nullptr, xml(name), nullptr);
}

} // namespace

Appliance &Appliance::config(const std::string &key, const std::string &value) {
  const Document document = stored_or_empty();
  xmlNode *node = xmlDocGetRootElement(document.get());
  for (std::size_t start = 1; start <= key.size();) {
    const std::size_t end = std::min(key.find('/', start), key.size());
    node = child(node, key.substr(start, end - start));
    start = end + 1;
  }
  xmlNodeSetContent(node, nullptr);
  xmlNodeAddContent(node, xml(value));
  files::make_folder_above(database);
  files::require(xmlSaveFormatFileEnc(database, document.get(), "UTF-8", 1) > 0, database);
  return *this;
}

} // namespace nasshare::tests
