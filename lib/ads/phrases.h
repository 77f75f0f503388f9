// How the output of the domain tools is classified: by fixed phrases, tested in order.
#pragma once

#include "base/text.h"

#include <optional>

namespace nasshare {

struct Phrase {
  std::string_view text;
  int code;
};

// The code of the first phrase that the line contains.
inline std::optional<int> code_of_line(std::string_view line, std::span<const Phrase> phrases) {
  const auto found =
      std::ranges::find_if(phrases, [line](const Phrase &phrase) { return contains(line, phrase.text); });
  return found == phrases.end() ? std::nullopt : std::optional(found->code);
}

} // namespace nasshare
