#include "support/xml.h"

#include "support/owners.h"
#include "support/shared_folder.h"
#include "support/store.h"
#include "support/text.h"
#include "support/trouble.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace nasshare {

namespace {

const xmlChar *xml(const char *text) {
  return reinterpret_cast<const xmlChar *>(text);
}

// The parser's own messages never reach the program's standard error.
constexpr int parse_options =
    XML_PARSE_NOBLANKS | XML_PARSE_NODICT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET;

// While libxml2 works, the program's error handler is put aside: errors of character conversion come without
// a context, past the options, and nothing is to be printed. Short of memory libxml2 often goes on with less
// than it was given, and tells only the handler.
class QuietLibrary {
public:
  QuietLibrary() { xmlSetStructuredErrorFunc(&short_of_memory_, see); }
  QuietLibrary(const QuietLibrary &) = delete;
  QuietLibrary &operator=(const QuietLibrary &) = delete;
  ~QuietLibrary() {
    xmlSetStructuredErrorFunc(context_, handler_);
    if (short_of_memory_) {
      note_trouble();
    }
  }

  void see_shortage() { short_of_memory_ = true; }
  [[nodiscard]] bool short_of_memory() const { return short_of_memory_; }

private:
  // The error is const in newer releases of libxml2.
  template <class Error> static void see(void *short_of_memory, Error error) {
    if (error->code == XML_ERR_NO_MEMORY) {
      *static_cast<bool *>(short_of_memory) = true;
    }
  }

  bool short_of_memory_ = false;
  void *context_ = xmlStructuredErrorContext;
  xmlStructuredErrorFunc handler_ = xmlStructuredError;
};

struct FreeParser {
  void operator()(xmlParserCtxt *parser) const { xmlFreeParserCtxt(parser); }
};
using ParserContext = std::unique_ptr<xmlParserCtxt, FreeParser>;

struct FreeBytes {
  void operator()(char *bytes) const { std::free(bytes); }
};

// A regular file, read whole.
class FileText {
public:
  explicit FileText(const char *path) {
    Descriptor file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0) {
      note_file_error();
    } else if (S_ISREG(status.st_mode) && status.st_size <= INT_MAX) { // the parser takes no more
      read_from(file.get(), static_cast<std::size_t>(status.st_size));
    }
  }
  [[nodiscard]] std::string_view view() const { return {bytes_.get(), size_}; }

private:
  void read_from(int fd, std::size_t size) {
    bytes_.reset(static_cast<char *>(std::malloc(size + 1)));
    while (bytes_ && size_ < size) {
      auto count = read(fd, bytes_.get() + size_, size - size_);
      if (count == 0) {
        return;
      }
      if (count > 0) {
        size_ += static_cast<std::size_t>(count);
      } else if (errno != EINTR) {
        bytes_.reset();
      }
    }
    if (!bytes_) {
      size_ = 0;
      note_file_error();
    }
  }

  std::unique_ptr<char, FreeBytes> bytes_;
  std::size_t size_ = 0;
};

// Whether the document has entities of its own, which can make gigabytes of a few lines and which no file of
// the appliance has.
bool declares_entities(const xmlDoc *document) {
  const auto *declarations = document == nullptr ? nullptr : document->intSubset;
  const auto *node = declarations == nullptr ? nullptr : declarations->children;
  while (node != nullptr &&
         (node->type != XML_ENTITY_DECL ||
          reinterpret_cast<const xmlEntity *>(node)->etype != XML_INTERNAL_GENERAL_ENTITY)) {
    node = node->next;
  }
  return node != nullptr;
}

XmlDocument parse_once(std::string_view text) {
  QuietLibrary library;
  const ParserContext parser(xmlNewParserCtxt());
  XmlDocument document(parser ? xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()),
                                                  nullptr, nullptr, parse_options)
                              : nullptr);
  if (!parser || parser->errNo == XML_ERR_NO_MEMORY) {
    library.see_shortage();
  }
  return library.short_of_memory() || declares_entities(document.get()) ? nullptr : std::move(document);
}

} // namespace

XmlDocument parse_xml(std::string_view text) {
  if (text.size() > INT_MAX) {
    return nullptr;
  }
  auto document = parse_once(text);
  // Short of memory the parser may see an error of syntax where there is none.
  return document ? std::move(document) : parse_once(text);
}

XmlDocument load_xml(const char *path) {
  const FileText text(path);
  return text.view().empty() ? nullptr : parse_xml(text.view());
}

xmlNode *child_element(xmlNode *parent, const char *name) {
  auto *node = parent == nullptr ? nullptr : element_from(parent->children);
  while (node != nullptr && xmlStrcmp(node->name, xml(name)) != 0) {
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
  if (auto *child = child_element(parent, name)) {
    QuietLibrary library;
    text_.reset(xmlNodeGetContent(child));
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

void read_child_list(xmlNode *parent, const char *name, std::span<char> field) {
  assign_list(field, ChildText(parent, name).view());
}

namespace {

// libxml2 hands out elements without a name and texts without a content when memory is short.
xmlNode *new_element(const char *name) {
  const QuietLibrary library;
  auto *element = xmlNewNode(nullptr, xml(name));
  if (element != nullptr && element->name == nullptr) {
    xmlFreeNode(element);
    return nullptr;
  }
  return element;
}

XmlDocument empty_document() {
  const QuietLibrary library;
  return XmlDocument(xmlNewDoc(xml("1.0")));
}

} // namespace

XmlDocument new_xml(const char *root) {
  auto document = empty_document();
  auto *element = document ? new_element(root) : nullptr;
  if (element == nullptr) {
    return nullptr;
  }
  xmlDocSetRootElement(document.get(), element);
  return document;
}

namespace {

// Characters that XML 1.0 allows (section 2.2 of the recommendation).
bool is_xml_character(char32_t c) {
  return c == '\t' || c == '\n' || c == '\r' || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

// Length of the UTF-8 character (RFC 3629) at the start of the text when XML allows it, else 0.
std::size_t xml_character_length(std::string_view text) {
  auto first = static_cast<unsigned char>(text.front());
  std::size_t length = first < 0x80   ? 1
                       : first < 0xC2 ? 0
                       : first < 0xE0 ? 2
                       : first < 0xF0 ? 3
                       : first < 0xF5 ? 4
                                      : 0;
  if (length == 0 || length > text.size()) {
    return 0;
  }
  char32_t code = length == 1 ? first : first & (0x7FU >> length);
  for (auto byte : text.substr(1, length - 1)) {
    auto bits = static_cast<unsigned char>(byte);
    if ((bits & 0xC0U) != 0x80U) {
      return 0;
    }
    code = (code << 6U) | (bits & 0x3FU);
  }
  constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
  return code >= smallest[length] && is_xml_character(code) ? length : 0;
}

struct Reference {
  char32_t character;
  std::size_t length; // from "&" to ";"
};

std::optional<char32_t> character_number(std::string_view digits) {
  char32_t base = 10;
  if (digits.starts_with('x')) {
    base = 16;
    digits.remove_prefix(1);
  }
  if (digits.empty()) {
    return std::nullopt;
  }
  char32_t code = 0;
  for (char c : digits) {
    char32_t digit = c >= '0' && c <= '9'   ? static_cast<char32_t>(c - '0')
                     : c >= 'a' && c <= 'f' ? static_cast<char32_t>(c - 'a' + 10)
                     : c >= 'A' && c <= 'F' ? static_cast<char32_t>(c - 'A' + 10)
                                            : 99;
    if (digit >= base || code > 0x10FFFF) {
      return std::nullopt;
    }
    code = code * base + digit;
  }
  return is_xml_character(code) ? std::optional(code) : std::nullopt;
}

// The reference at the start of the markup, if there is one that XML knows.
std::optional<Reference> reference_at(std::string_view markup) {
  auto end = markup.find(';');
  if (!markup.starts_with('&') || end == std::string_view::npos) {
    return std::nullopt;
  }
  auto name = markup.substr(1, end - 1);
  if (name.starts_with('#')) {
    auto code = character_number(name.substr(1));
    return code ? std::optional(Reference{*code, end + 1}) : std::nullopt;
  }
  struct Entity {
    std::string_view name;
    char character;
  };
  constexpr std::array<Entity, 5> entities{
      {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
  for (auto entity : entities) {
    if (entity.name == name) {
      return Reference{static_cast<char32_t>(entity.character), end + 1};
    }
  }
  return std::nullopt;
}

using ContentText = Text<3 * list_width>; // every byte of a list may become U+FFFD

void append_character(ContentText &text, char32_t code) {
  std::array<xmlChar, 5> bytes{};
  auto length = xmlCopyCharMultiByte(bytes.data(), static_cast<int>(code));
  text.append(
      std::string_view(reinterpret_cast<const char *>(bytes.data()), static_cast<std::size_t>(length)));
}

// Takes the character at the front of the rest, or what stands for one that XML cannot hold.
void move_character(std::string_view &rest, ContentText &content) {
  auto length = xml_character_length(rest);
  content.append(length == 0 ? "\xEF\xBF\xBD" : rest.substr(0, length));
  rest.remove_prefix(length == 0 ? 1 : length);
}

bool add_content(xmlNode *parent, const char *name, const ContentText &content) {
  auto *element = add_element(parent, name);
  if (element == nullptr || content.empty()) {
    return element != nullptr; // an empty field is an empty element, without a text in it
  }
  auto *text = new_text(element->doc, content.c_str());
  return text != nullptr && xmlAddChild(element, text) != nullptr;
}

} // namespace

bool xml_can_hold(std::string_view text) {
  while (!text.empty()) {
    auto length = xml_character_length(text);
    if (length == 0) {
      return false;
    }
    text.remove_prefix(length);
  }
  return true;
}

xmlNode *add_element(xmlNode *parent, const char *name) {
  auto *element = new_element(name);
  return element == nullptr ? nullptr : xmlAddChild(parent, element);
}

xmlNode *new_text(xmlDoc *document, const char *content) {
  const QuietLibrary library;
  auto *text = xmlNewDocText(document, xml(content));
  if (text != nullptr && text->content == nullptr) {
    xmlFreeNode(text);
    return nullptr;
  }
  return text;
}

bool add_text(xmlNode *parent, const char *name, std::string_view text) {
  ContentText content;
  while (!text.empty()) {
    move_character(text, content);
  }
  return add_content(parent, name, content);
}

bool add_markup(xmlNode *parent, const char *name, std::string_view markup) {
  ContentText content;
  while (!markup.empty()) {
    if (auto reference = reference_at(markup)) {
      append_character(content, reference->character);
      markup.remove_prefix(reference->length);
    } else {
      move_character(markup, content);
    }
  }
  return add_content(parent, name, content);
}

bool add_number(xmlNode *parent, const char *name, std::int32_t value) {
  return add_text(parent, name, decimal_text(value).view());
}

XmlText compose_xml(xmlDoc *document) {
  const QuietLibrary library;
  xmlChar *bytes = nullptr;
  int size = 0;
  xmlDocDumpFormatMemoryEnc(document, &bytes, &size, "UTF-8", 1);
  XmlText text(bytes);
  return library.short_of_memory() ? nullptr : std::move(text);
}

bool store_xml(xmlDoc *document, const char *path) {
  auto text = compose_xml(document);
  // Short of memory the composer may stop midway.
  if (!text || !parse_xml(view(text))) {
    return false;
  }
  keep_broken_xml_aside(path);
  return store_file(path, view(text));
}

void keep_broken_xml_aside(const char *path) {
  if (is_in_shared_folder(path)) {
    return; // whatever lies there, nobody has stored it
  }
  const FileText text(path);
  bool holds_records = contains(text.view(), "<item>");
  if (!holds_records || parse_xml(text.view()) || load_was_troubled()) {
    return;
  }
  const Text<path_width> aside{path, ".bad"};
  unlink(aside.c_str());
  static_cast<void>(link(path, aside.c_str())); // a folder that takes no second name does not keep the change
}

} // namespace nasshare
