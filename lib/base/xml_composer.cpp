// Composing XML as libxml2 saves it with indentation (xmlSaveFormatFileEnc): two blanks a level, an element
// without content as "<name/>".
#include "base/xml_composer.h"

#include "base/decimal.h"
#include "base/watch.h"

#include <cstdlib>
#include <utility>

namespace nasshare {
namespace {

// What stands in the file for a piece of content; a carriage return would be read as a line feed.
std::string_view escaped(std::string_view piece) {
  return piece == "&"    ? "&amp;"
         : piece == "<"  ? "&lt;"
         : piece == ">"  ? "&gt;"
         : piece == "\r" ? "&#13;"
                         : piece;
}

} // namespace

XmlComposer::XmlComposer(std::string_view root) {
  append("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  open(root);
}

bool XmlComposer::make_room(std::size_t size) {
  constexpr std::size_t first_room = 16384;
  if (size <= room_ - size_) {
    return true;
  }
  const auto room = std::max({first_room, 2 * room_, size_ + size});
  auto *const bytes = is_short_ ? nullptr : static_cast<char *>(std::realloc(bytes_.get(), room));
  if (bytes == nullptr) {
    is_short_ = true;
    note_doubt();
    return false;
  }
  static_cast<void>(bytes_.release()); // realloc has taken it
  bytes_.reset(bytes);
  room_ = room;
  return true;
}

void XmlComposer::append(std::string_view bytes) {
  if (make_room(bytes.size())) {
    std::ranges::copy(bytes, bytes_.get() + size_);
    size_ += bytes.size();
  }
}

void XmlComposer::begin_line() {
  if (std::exchange(is_empty_, false)) {
    append(">\n");
  }
  for (std::size_t level = 0; level < depth_; ++level) {
    append("  ");
  }
}

void XmlComposer::open(std::string_view name) {
  begin_line();
  append("<");
  append(name);
  open_.at(depth_++) = name;
  is_empty_ = true;
}

void XmlComposer::close() {
  const auto name = open_.at(--depth_);
  if (std::exchange(is_empty_, false)) {
    append("/>\n");
    return;
  }
  begin_line();
  append("</");
  append(name);
  append(">\n");
}

void XmlComposer::add(std::string_view name, std::string_view content, Form form) {
  begin_line();
  append("<");
  append(name);
  if (content.empty()) {
    append("/>\n");
    return;
  }
  append(">");
  each_piece(content, form, [this](std::string_view piece) { append(escaped(piece)); });
  append("</");
  append(name);
  append(">\n");
}

void XmlComposer::add_number(std::string_view name, std::int32_t value) {
  add(name, decimal_text(value).view());
}

bool XmlComposer::finish() {
  while (depth_ > 0) {
    close();
  }
  return !is_short_;
}

} // namespace nasshare
