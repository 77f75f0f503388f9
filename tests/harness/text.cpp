// Cutting and joining texts.
#include "text.h"

#include <algorithm>

namespace nasshare::tests {

bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) {
    result += text;
  }
  return result;
}

std::string joined(const std::vector<std::string> &parts, std::string_view between) {
  std::string text;
  std::string_view before;
  for (const std::string &part : parts) {
    text.append(before).append(part);
    before = between;
  }
  return text;
}

std::vector<std::string> pieces_of(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    pieces.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

std::vector<std::string> lines_of(std::string_view text) {
  return pieces_of(text, '\n');
}

std::vector<std::string> lines_beginning(std::string_view text, std::string_view beginning) {
  std::vector<std::string> lines = lines_of(text);
  std::erase_if(lines, [beginning](const std::string &line) { return !line.starts_with(beginning); });
  return lines;
}

} // namespace nasshare::tests
