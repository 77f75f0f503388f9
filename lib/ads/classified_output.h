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
std::optional<int> code_of_line(std::string_view line, std::span<const Phrase> phrases);

using CodeOfLine = std::optional<int> (*)(std::string_view line);

// Runs the shell command to its end. The code of the first of its lines that has one, or `otherwise`;
// join_not_started when the command cannot be started.
int code_of_command(const char *command, CodeOfLine code_of, int otherwise);

} // namespace nasshare
