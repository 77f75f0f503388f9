// How the output of the domain tools is classified: by fixed phrases, tested in order.
#pragma once

#include "support/text.h"

#include <optional>
#include <span>
#include <string_view>

namespace nasshare {

struct Phrase {
  std::string_view text;
  int code;
};

// The code of the first phrase that the line contains.
inline std::optional<int> code_of_line(std::string_view line, std::span<const Phrase> phrases) {
  for (const auto &phrase : phrases) {
    if (contains(line, phrase.text)) {
      return phrase.code;
    }
  }
  return std::nullopt;
}

} // namespace nasshare
