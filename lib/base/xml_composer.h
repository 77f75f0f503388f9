// Composing small XML documents of elements alone: the same bytes as libxml2 gives their trees (indented,
// UTF-8), without a tree.
#pragma once

#include "base/owners.h"
#include "base/xml_content.h"

#include <array>
#include <cstdint>

namespace nasshare {

class XmlComposer {
public:
  // Opens the root. Names are the program's own, and stay.
  explicit XmlComposer(std::string_view root);

  // Begins an element within the one that is open, and ends it.
  void open(std::string_view name);
  void close();

  // An element within the one that is open, with that content.
  void add(std::string_view name, std::string_view content, Form form = Form::text);
  void add_number(std::string_view name, std::int32_t value);

  // Closes what is open. False when memory was too short for the whole, which has been noted.
  [[nodiscard]] bool finish();
  [[nodiscard]] std::string_view text() const { return {bytes_.get(), size_}; }

private:
  void begin_line();
  void append(std::string_view bytes);
  [[nodiscard]] bool make_room(std::size_t size);

  static constexpr std::size_t deepest = 4;
  std::array<std::string_view, deepest> open_{};
  std::size_t depth_ = 0;
  bool is_empty_ = false; // the innermost open element, whose start is not ended yet
  bool is_short_ = false;

  Allocated<char> bytes_;
  std::size_t size_ = 0;
  std::size_t room_ = 0;
};

} // namespace nasshare
