// Obtaining a Kerberos ticket, and what kinit(1) says of it.
#include "ads/classified_output.h"
#include "ads/codes.h"
#include "base/debug.h"
#include "nasshare/ads.h"

namespace nasshare {
namespace {

// The first line that is no prompt decides.
std::optional<int> code_of_ticket_line(std::string_view line) {
  static constexpr Phrase phrases[] = {
      {"Kinit successful", ticket_obtained},
      {"Clock skew too great", 101},
      {"Preauthentication failed", 102},
      {"Client not found in Kerberos database", 103},
      {"Cannot resolve network address for KDC in requested realm", 104},
  };
  if (contains(line, "Password for")) {
    return std::nullopt;
  }
  return line.empty() ? ticket_obtained : code_of_line(line, phrases).value_or(other_ticket_error);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int ads_kinit(void) {
  const Text<4 * name_width> command{
      "echo '", view(pss->ads_password), "' | kinit '", view(pss->ads_username),
      "@",      view(pss->ads_realm),    "' 2>&1"};
  trace_debug("kinit : [%s]\n", command.c_str());
  return code_of_command(command.c_str(), code_of_ticket_line, ticket_obtained);
}
