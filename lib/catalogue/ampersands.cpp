// The escaping of names, comments and paths in the stores: "&" stands there as "&amp;".
#include "catalogue/ampersands.h"

#include "base/text.h"
#include "nasshare/catalogue.h"

#include <cstring>

namespace nasshare {
namespace {

constexpr std::string_view escaped = "&amp;";

} // namespace

void escape_ampersands(std::span<char> field) {
  auto text = view(field);
  if (!contains(text, "&")) {
    return;
  }
  Text<escaped.size() * path_width> result;
  for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&')) {
    result.append(text.substr(0, at));
    result.append(escaped);
    text.remove_prefix(at + 1);
  }
  result.append(text);
  assign(field, result.view());
}

void recover_ampersands(std::span<char> field) {
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

} // namespace nasshare

using namespace nasshare;

void convert_xml_special_char(char *text) {
  if (text != nullptr && contains(text, "&")) {
    escape_ampersands({text, path_width});
  }
}

void recover_special_char(char *text) {
  if (text != nullptr) {
    recover_ampersands({text, std::strlen(text) + 1});
  }
}
