// Joining the domain, and what "net ads join" says of it.
#include "ads/codes.h"
#include "ads/phrases.h"
#include "base/debug.h"
#include "base/lines.h"
#include "nasshare/ads.h"

namespace nasshare {
namespace {

// In this order: a line may hold several of them.
constexpr Phrase join_phrases[] = {
    {"Time difference at domain controller", 51},
    {"Logon failure", 52},
    {"Improperly formed account name", 53},
    {"Failed to set servicePrincipalNames", 53},
    {"Failed to join domain", 55},
    {"Failed", 56},
};

} // namespace
} // namespace nasshare

using namespace nasshare;

int ads_join_domain(void) {
  const Text<3 * name_width> command{"net ads join -U '", view(pss->ads_username), "%",
                                     view(pss->ads_password), "' 2>&1"};
  trace_debug("ads join cmd : [%s]\n", command.c_str());
  CommandLines net(command.c_str());
  if (!net.has_started()) {
    return join_not_started;
  }
  std::optional<int> code;
  for (const auto line : net) { // to the end, so that the command is not cut off
    code = code ? code : code_of_line(line, join_phrases);
  }
  return code.value_or(joined);
}
