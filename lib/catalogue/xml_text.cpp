#include "catalogue/xml_text.h"

#include "nasshare/catalogue.h"
#include "support/text.h"

#include <array>
#include <charconv>
#include <cstring>

using namespace nasshare;

namespace {

constexpr std::string_view escaped = "&amp;";

using EscapedText = Text<escaped.size() * path_width>;

void escape(std::span<char> field, std::string_view text) {
  EscapedText result;
  for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&')) {
    result.append(text.substr(0, at));
    result.append(escaped);
    text.remove_prefix(at + 1);
  }
  result.append(text);
  assign(field, result.view());
}

} // namespace

void nasshare::escape_ampersands(std::span<char> field) {
  if (contains(view(field), "&")) {
    escape(field, view(field));
  }
}

void nasshare::recover_ampersands(std::span<char> field) {
  auto text = view(field);
  char *to = field.data();
  for (auto at = text.find(escaped); at != std::string_view::npos; at = text.find(escaped)) {
    std::memmove(to, text.data(), at + 1); // up to and with the "&"
    to += at + 1;
    text.remove_prefix(at + escaped.size());
  }
  if (to != field.data()) {
    std::memmove(to, text.data(), text.size());
    to[text.size()] = '\0';
  }
}

void convert_xml_special_char(char *text) {
  if (text != nullptr && std::strchr(text, '&') != nullptr) {
    escape({text, path_width}, text);
  }
}

void recover_special_char(char *text) {
  if (text != nullptr) {
    recover_ampersands({text, std::strlen(text) + 1});
  }
}

char *itoa(int32_t value) {
  static std::array<char, 32> text;
  *std::to_chars(text.data(), text.data() + text.size() - 1, value).ptr = '\0';
  return text.data();
}
