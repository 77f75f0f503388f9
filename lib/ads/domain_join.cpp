#include "ads/phrases.h"
#include "nasshare/ads.h"
#include "support/debug.h"
#include "support/lines.h"
#include "support/text.h"

using namespace nasshare;

namespace {

constexpr int joined = 50;
constexpr int not_started = 56;

// In this order: a line may hold several of them.
constexpr Phrase phrases[] = {
    {"Time difference at domain controller", 51},
    {"Logon failure", 52},
    {"Improperly formed account name", 53},
    {"Failed to set servicePrincipalNames", 53},
    {"Failed to join domain", 55},
    {"Failed", 56},
};

} // namespace

int ads_join_domain(void) {
  Text<3 * name_width> command{"net ads join -U '", view(pss->ads_username), "%", view(pss->ads_password),
                               "' 2>&1"};
  trace_debug("ads join cmd : [%s]\n", command.c_str());
  CommandOutput net(command.c_str());
  if (!net) {
    return not_started;
  }
  std::optional<int> code;
  for (CommandLines lines(net.get()); lines.next();) { // to the end, so that the command is not cut off
    code = code ? code : code_of_line(lines.line(), phrases);
  }
  return code.value_or(joined);
}
