// The configuration database: a key's path as nested elements of /etc/NAS_CFG/config.xml.
#include "appliance.h"
#include "files.h"
#include "nasshare/platform.h"
#include "paths.h"
#include "text.h"

#include <array>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>

namespace nasshare::tests {

namespace {

struct FreeDocument {
  void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

const xmlChar *xml(const std::string &text) {
  return reinterpret_cast<const xmlChar *>(text.c_str());
}

Document stored_or_empty() {
  if (exists(config_database)) {
    if (Document document(xmlReadFile(config_database, nullptr, XML_PARSE_NOBLANKS)); document != nullptr) {
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
  for (const std::string &name : pieces_of(std::string_view(key).substr(1), '/')) {
    node = child(node, name);
  }
  xmlNodeSetContent(node, nullptr);
  xmlNodeAddContent(node, xml(value));
  files::make_folder_above(config_database);
  files::require(xmlSaveFormatFileEnc(config_database, document.get(), "UTF-8", 1) > 0, config_database);
  return *this;
}

std::string stored_value(const std::string &key) {
  std::array<char, 512> value{};
  xml_get_str(key.c_str(), value.size(), value.data());
  return value.data();
}

} // namespace nasshare::tests
