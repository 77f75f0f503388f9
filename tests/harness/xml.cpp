// XML made of text.
#include "xml.h"

#include "text.h"

namespace nasshare::tests {

namespace {

std::string indent(int depth) {
  return repeated("  ", static_cast<std::size_t>(depth));
}

std::string tag(std::string_view name) {
  return "<" + std::string(name) + ">";
}

std::string end_tag(std::string_view name) {
  return "</" + std::string(name) + ">";
}

} // namespace

std::string escaped(std::string_view text) {
  std::string markup;
  for (const char character : text) {
    switch (character) {
    case '&':
      markup += "&amp;";
      break;
    case '<':
      markup += "&lt;";
      break;
    case '>':
      markup += "&gt;";
      break;
    default:
      markup += character;
    }
  }
  return markup;
}

std::string element(std::string_view name, std::string_view markup) {
  return markup.empty() ? "<" + std::string(name) + "/>" : tag(name) + std::string(markup) + end_tag(name);
}

std::string element_line(int depth, std::string_view name, std::string_view markup) {
  return indent(depth) + element(name, markup) + "\n";
}

std::string element_around(int depth, std::string_view name, std::string_view lines) {
  if (lines.empty()) {
    return element_line(depth, name, lines);
  }
  return indent(depth) + tag(name) + "\n" + std::string(lines) + indent(depth) + end_tag(name) + "\n";
}

std::string config_file(std::string_view lines) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + element_around(0, "config", lines);
}

} // namespace nasshare::tests
