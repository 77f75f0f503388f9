// The configuration database as a tree: which element a key path names, and what its value is.
#include "config_tree.h"

#include "base/text.h"
#include "base/xml_characters.h"
#include "base/xml_writer.h"

#include <libxml/tree.h>

namespace nasshare::platform {
namespace {

xmlNode *ensure_child(xmlNode *parent, const std::string &name) {
  auto *const child = child_element(parent, name.c_str());
  return child != nullptr ? child : add_element(parent, name.c_str());
}

// The element's own text, without that of its child elements. Blanks that only set child elements apart are
// no text.
std::string own_text(const xmlNode *element) {
  std::string text;
  for (const auto *node = element->children; node != nullptr; node = node->next) {
    if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) {
      text += as_text(node->content);
    }
  }
  const bool has_children = element_from(element->children) != nullptr;
  return has_children && trimmed(text).empty() ? std::string() : text;
}

void remove_own_text(xmlNode *element) {
  for (auto *node = element->children; node != nullptr;) {
    auto *const next = node->next;
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
  auto *const text = new_text_or_note(element->doc, value.c_str());
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

KeyPath key_path(std::string_view key) {
  KeyPath path;
  if (!key.starts_with('/') || !can_xml_hold(key)) {
    return {};
  }
  while (!key.empty()) {
    key.remove_prefix(1);
    std::string name(key.substr(0, key.find('/')));
    if (xmlValidateNCName(as_xml(name.c_str()), 0) != 0) {
      return {};
    }
    key.remove_prefix(name.size());
    path.push_back(std::move(name));
  }
  return path;
}

std::optional<std::string> find_value(xmlDoc *database, const KeyPath &path) {
  auto *element = xmlDocGetRootElement(database);
  for (const auto &name : path) {
    element = child_element(element, name.c_str());
    if (element == nullptr) {
      return std::nullopt;
    }
  }
  return own_text(element);
}

bool store_value(xmlDoc *database, const KeyPath &path, const std::string &value) {
  auto *element = xmlDocGetRootElement(database);
  for (const auto &name : path) {
    element = ensure_child(element, name);
    if (element == nullptr) {
      return false;
    }
  }
  return set_own_text(element, value);
}

} // namespace nasshare::platform
