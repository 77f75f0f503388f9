#include "config_tree.h"

#include <libxml/tree.h>

namespace platform {
namespace {

const xmlChar *as_xml(const std::string &text) {
  return reinterpret_cast<const xmlChar *>(text.c_str());
}

xmlNode *ensure_child(xmlNode *parent, const std::string &name) {
  xmlNode *child = nasshare::child_element(parent, name.c_str());
  return child != nullptr ? child : nasshare::add_element(parent, name.c_str());
}

bool is_blank(const std::string &text) {
  return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

// The element's own text, without that of its child elements. Blanks that only set child elements apart are
// no text.
std::string own_text(const xmlNode *element) {
  std::string text;
  for (const xmlNode *node = element->children; node != nullptr; node = node->next) {
    const bool holds_text = node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
    if (holds_text && node->content != nullptr) {
      text += reinterpret_cast<const char *>(node->content);
    }
  }
  const bool has_children = nasshare::element_from(element->children) != nullptr;
  return has_children && is_blank(text) ? std::string() : text;
}

void remove_own_text(xmlNode *element) {
  for (xmlNode *node = element->children; node != nullptr;) {
    xmlNode *next = node->next;
    if (node->type != XML_ELEMENT_NODE) {
      xmlUnlinkNode(node);
      xmlFreeNode(node);
    }
    node = next;
  }
}

// A text node holds '&' and '<' as they are; composing escapes them.
bool set_own_text(xmlNode *element, const std::string &value) {
  remove_own_text(element);
  if (value.empty()) {
    return true;
  }
  xmlNode *text = nasshare::new_text(element->doc, value.c_str());
  if (text == nullptr) {
    return false;
  }
  if (element->children != nullptr) {
    xmlAddPrevSibling(element->children, text);
  } else {
    xmlAddChild(element, text);
  }
  return true;
}

} // namespace

std::vector<std::string> key_path(std::string_view key) {
  std::vector<std::string> path;
  if (key.empty() || key.front() != '/' || !nasshare::xml_can_hold(key)) {
    return {};
  }
  while (!key.empty()) {
    key.remove_prefix(1);
    std::string name(key.substr(0, key.find('/')));
    if (xmlValidateNCName(as_xml(name), 0) != 0) {
      return {};
    }
    key.remove_prefix(name.size());
    path.push_back(std::move(name));
  }
  return path;
}

std::optional<std::string> find_value(xmlDoc *database, const std::vector<std::string> &path) {
  xmlNode *element = xmlDocGetRootElement(database);
  for (const std::string &name : path) {
    element = nasshare::child_element(element, name.c_str());
    if (element == nullptr) {
      return std::nullopt;
    }
  }
  return own_text(element);
}

bool store_value(xmlDoc *database, const std::vector<std::string> &path, const std::string &value) {
  xmlNode *element = xmlDocGetRootElement(database);
  for (const std::string &name : path) {
    element = ensure_child(element, name);
    if (element == nullptr) {
      return false;
    }
  }
  return set_own_text(element, value);
}

} // namespace platform
