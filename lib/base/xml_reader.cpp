// Reading small XML files: what is taken for a file of the appliance's, and what is found in it.
#include "base/xml_reader.h"

#include "base/decimal.h"
#include "base/text.h"
#include "base/watch.h"
#include "base/whole_file.h"

#include <climits>
#include <libxml/parser.h>

namespace nasshare {
namespace {

// The parser's own messages never reach the program's standard error.
constexpr int parse_options =
    XML_PARSE_NOBLANKS | XML_PARSE_NODICT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET;

struct FreeParser {
  void operator()(xmlParserCtxt *parser) const { xmlFreeParserCtxt(parser); }
};
using Parser = std::unique_ptr<xmlParserCtxt, FreeParser>;

bool is_entity_declaration(const xmlNode &node) {
  return node.type == XML_ENTITY_DECL &&
         reinterpret_cast<const xmlEntity &>(node).etype == XML_INTERNAL_GENERAL_ENTITY;
}

// Entities of its own can make gigabytes of a few lines, and no file of the appliance has any.
bool declares_entities(const xmlDoc *document) {
  const auto *const declarations = document == nullptr ? nullptr : document->intSubset;
  const auto *node = declarations == nullptr ? nullptr : declarations->children;
  while (node != nullptr && !is_entity_declaration(*node)) {
    node = node->next;
  }
  return node != nullptr;
}

XmlDocument parse_once(std::string_view text) {
  QuietLibrary library;
  const Parser parser(xmlNewParserCtxt());
  XmlDocument document(parser ? xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()),
                                                  nullptr, nullptr, parse_options)
                              : nullptr);
  if (!parser || parser->errNo == XML_ERR_NO_MEMORY) {
    library.see_shortage();
  }
  return library.is_short_of_memory() || declares_entities(document.get()) ? nullptr : std::move(document);
}

// The text that is all there is in the element, or null.
const xmlNode *only_text_of(const xmlNode *element) {
  const auto *const first = element == nullptr ? nullptr : element->children;
  return first != nullptr && first->type == XML_TEXT_NODE && first->next == nullptr ? first : nullptr;
}

// Tells that the text declares an entity; all else of it is of no interest.
struct Declarations {
  bool are_any = false;

  static void see(void *parser, const xmlChar *, int type, const xmlChar *, const xmlChar *, xmlChar *) {
    auto &declarations = *static_cast<Declarations *>(static_cast<xmlParserCtxt *>(parser)->_private);
    declarations.are_any = declarations.are_any || type == XML_INTERNAL_GENERAL_ENTITY;
  }
};

bool is_well_formed_once(std::string_view text) {
  QuietLibrary library;
  const Parser parser(xmlNewParserCtxt());
  if (!parser) {
    library.see_shortage();
    return false;
  }
  Declarations declarations;
  *parser->sax = {};
  parser->sax->initialized = XML_SAX2_MAGIC;
  parser->sax->entityDecl = Declarations::see;
  parser->_private = &declarations;
  static_cast<void>(xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr,
                                      nullptr,
                                      parse_options)); // there is none
  if (parser->errNo == XML_ERR_NO_MEMORY) {
    library.see_shortage();
  }
  return parser->wellFormed == 1 && !library.is_short_of_memory() && !declarations.are_any;
}

} // namespace

bool is_well_formed_or_note(std::string_view text) {
  // Short of memory the parser may see an error of syntax where there is none.
  return text.size() <= INT_MAX && (is_well_formed_once(text) || is_well_formed_once(text));
}

XmlDocument parse_or_note(std::string_view text) {
  if (text.size() > INT_MAX) {
    return nullptr;
  }
  auto document = parse_once(text);
  // Short of memory the parser may see an error of syntax where there is none.
  return document ? std::move(document) : parse_once(text);
}

XmlDocument load_or_note(const char *path) {
  const WholeFile file(path);
  if (file.error() != 0) {
    note_file_error(file.error());
  }
  return file.text().empty() ? nullptr : parse_or_note(file.text());
}

xmlNode *root_of(const XmlDocument &document) {
  return document ? xmlDocGetRootElement(document.get()) : nullptr;
}

bool is_named(const xmlNode *element, std::string_view name) {
  return element != nullptr && as_text(element->name) == name;
}

xmlNode *child_element(xmlNode *parent, const char *name) {
  auto *node = parent == nullptr ? nullptr : element_from(parent->children);
  while (node != nullptr && !is_named(node, name)) {
    node = element_from(node->next);
  }
  return node;
}

xmlNode *element_from(xmlNode *node) {
  while (node != nullptr && node->type != XML_ELEMENT_NODE) {
    node = node->next;
  }
  return node;
}

ChildText::ChildText(xmlNode *parent, const char *name) {
  auto *const child = child_element(parent, name);
  if (const auto *const text = only_text_of(child)) {
    view_ = as_text(text->content);
  } else if (child != nullptr && child->children != nullptr) {
    QuietLibrary library;
    text_.reset(xmlNodeGetContent(child));
    view_ = nasshare::view(text_);
    if (!text_) {
      library.see_shortage();
    }
  }
}

std::int32_t ChildText::number() const {
  return decimal(view());
}

void read_child(xmlNode *parent, const char *name, std::span<char> field) {
  assign(field, ChildText(parent, name).view());
}

} // namespace nasshare
