#include "ads/phrases.h"
#include "nasshare/ads.h"
#include "support/debug.h"
#include "support/lines.h"
#include "support/text.h"

using namespace nasshare;

namespace {

constexpr int obtained = 100;
constexpr int other_error = 105;
constexpr int not_started = 56;

constexpr Phrase phrases[] = {
    {"Kinit successful", obtained},
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
  return line.empty() ? obtained : code_of_line(line, phrases).value_or(other_error);
}

} // namespace

int ads_kinit(void) {
  Text<4 * name_width> command{"echo '", view(pss->ads_password), "' | kinit '", view(pss->ads_username),
                               "@",      view(pss->ads_realm),    "' 2>&1"};
  trace_debug("kinit : [%s]\n", command.c_str());
  CommandOutput kinit(command.c_str());
  if (!kinit) {
    return not_started;
  }
  std::optional<int> code;
  for (CommandLines lines(kinit.get()); lines.next();) { // to the end, so that the command is not cut off
    code = code ? code : code_of_ticket_line(lines.line());
  }
  return code.value_or(obtained);
}
