// The words of a command line: how many, which options, and what no text of them may hold.
#include "arguments.h"

#include <algorithm>

namespace nasshare::cli {

void expect(const Words &words, std::size_t least, std::size_t most, const char *form) {
  if (words.size() < least || words.size() > most) {
    throw Usage(std::string("usage: nasshare ") + form);
  }
}

Options take_options(const Words &words, std::size_t first, const std::vector<std::string> &known) {
  Options options;
  for (std::size_t i = first; i < words.size(); i += 2) {
    if (std::ranges::find(known, words[i]) == known.end()) {
      throw Usage("\"" + words[i] + "\" is no option of " + words[0]);
    }
    if (i + 1 == words.size()) {
      throw Usage(words[i] + " needs a value");
    }
    if (!options.emplace(words[i], words[i + 1]).second) {
      throw Usage(words[i] + " is given twice");
    }
  }
  return options;
}

void refuse_control_characters(const std::string &text, const std::string &what) {
  const auto is_control = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
  if (std::ranges::any_of(text, is_control)) {
    throw Refusal(what + " holds a line end or another control character");
  }
}

} // namespace nasshare::cli
