// Obtaining a Kerberos ticket, and what kinit(1) says of it.
#include "ads/codes.h"
#include "ads/phrases.h"
#include "base/debug.h"
#include "base/lines.h"
#include "nasshare/ads.h"

namespace nasshare {
namespace {

constexpr Phrase ticket_phrases[] = {
    {"Kinit successful", ticket_obtained},
    {"Clock skew too great", 101},
    {"Preauthentication failed", 102},
    {"Client not found in Kerberos database", 103},
    {"Cannot resolve network address for KDC in requested realm", 104},
};

// The first line that is no prompt decides.
std::optional<int> code_of_ticket_line(std::string_view line) {
  if (contains(line, "Password for")) {
    return std::nullopt;
  }
  return line.empty() ? ticket_obtained : code_of_line(line, ticket_phrases).value_or(other_ticket_error);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int ads_kinit(void) {
  const Text<4 * name_width> command{
      "echo '", view(pss->ads_password), "' | kinit '", view(pss->ads_username),
      "@",      view(pss->ads_realm),    "' 2>&1"};
  trace_debug("kinit : [%s]\n", command.c_str());
  CommandLines kinit(command.c_str());
  if (!kinit.has_started()) {
    return join_not_started;
  }
  std::optional<int> code;
  for (const auto line : kinit) { // to the end, so that the command is not cut off
    code = code ? code : code_of_ticket_line(line);
  }
  return code.value_or(ticket_obtained);
}
