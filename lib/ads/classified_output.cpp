// How the output of the domain tools is classified: by fixed phrases, tested in order; the first line that
// tells decides.
#include "ads/classified_output.h"

#include "ads/codes.h"
#include "base/lines.h"

namespace nasshare {

std::optional<int> code_of_line(std::string_view line, std::span<const Phrase> phrases) {
  const auto found =
      std::ranges::find_if(phrases, [line](const Phrase &phrase) { return contains(line, phrase.text); });
  return found == phrases.end() ? std::nullopt : std::optional(found->code);
}

int code_of_command(const char *command, CodeOfLine code_of, int otherwise) {
  CommandLines lines(command);
  if (!lines.has_started()) {
    return join_not_started;
  }
  std::optional<int> code;
  for (const auto line : lines) { // to the end, so that the command is not cut off
    code = code ? code : code_of(line);
  }
  return code.value_or(otherwise);
}

} // namespace nasshare
