// Building and changing small XML trees, when memory is short too.
#include "base/xml_writer.h"

namespace nasshare {
namespace {

// libxml2 hands out elements without a name and texts without a content when memory is short.
xmlNode *new_element_or_note(const char *name) {
  const QuietLibrary library;
  auto *const element = xmlNewNode(nullptr, as_xml(name));
  if (element != nullptr && element->name == nullptr) {
    xmlFreeNode(element);
    return nullptr;
  }
  return element;
}

XmlDocument empty_document_or_note() {
  const QuietLibrary library;
  return XmlDocument(xmlNewDoc(as_xml("1.0")));
}

} // namespace

XmlDocument new_xml_or_note(const char *root) {
  auto document = empty_document_or_note();
  auto *const element = document ? new_element_or_note(root) : nullptr;
  if (element == nullptr) {
    return nullptr;
  }
  xmlDocSetRootElement(document.get(), element);
  return document;
}

xmlNode *add_element(xmlNode *parent, const char *name) {
  auto *const element = new_element_or_note(name);
  return element == nullptr ? nullptr : xmlAddChild(parent, element);
}

xmlNode *new_text_or_note(xmlDoc *document, const char *content) {
  const QuietLibrary library;
  auto *const text = xmlNewDocText(document, as_xml(content));
  if (text != nullptr && text->content == nullptr) {
    xmlFreeNode(text);
    return nullptr;
  }
  return text;
}

XmlText compose_or_note(xmlDoc *document) {
  const QuietLibrary library;
  xmlChar *bytes = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(document, &bytes, &size, "UTF-8", 1);
  XmlText text(bytes);
  return library.is_short_of_memory() ? nullptr : std::move(text);
}

} // namespace nasshare
