// What all work with libxml2 has in common: owners for what it hands out, and its errors.
#pragma once

#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <memory>
#include <string_view>

namespace nasshare {

struct FreeDocument {
  void operator()(xmlDoc *document) const { xmlFreeDoc(document); }
};
using XmlDocument = std::unique_ptr<xmlDoc, FreeDocument>;

struct FreeXmlText {
  void operator()(xmlChar *text) const { xmlFree(text); }
};
using XmlText = std::unique_ptr<xmlChar, FreeXmlText>;

// libxml2's characters are the bytes of UTF-8.
inline const xmlChar *as_xml(const char *text) {
  return reinterpret_cast<const xmlChar *>(text);
}
inline std::string_view as_text(const xmlChar *text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char *>(text);
}
inline std::string_view view(const XmlText &text) {
  return as_text(text.get());
}

// While libxml2 works, the program's error handler is put aside: errors of character conversion come without
// a context, past the parser's options, and nothing is to be printed. Short of memory libxml2 often goes on
// with less than it was given, and tells only the handler; that is noted as doubt.
class QuietLibrary {
public:
  QuietLibrary();
  QuietLibrary(const QuietLibrary &) = delete;
  QuietLibrary &operator=(const QuietLibrary &) = delete;
  ~QuietLibrary();

  void see_shortage() { is_short_of_memory_ = true; }
  [[nodiscard]] bool is_short_of_memory() const { return is_short_of_memory_; }

private:
  bool is_short_of_memory_ = false;
  void *context_;
  xmlStructuredErrorFunc handler_;
};

} // namespace nasshare
