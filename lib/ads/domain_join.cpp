// Joining the domain, and what "net ads join" says of it (net(8)).
#include "ads/classified_output.h"
#include "ads/codes.h"
#include "base/debug.h"
#include "nasshare/ads.h"

namespace nasshare {
namespace {

std::optional<int> code_of_join_line(std::string_view line) {
  // In this order: a line may hold several of them.
  static constexpr Phrase phrases[] = {
      {"Time difference at domain controller", 51},
      {"Logon failure", 52},
      {"Improperly formed account name", 53},
      {"Failed to set servicePrincipalNames", 53},
      {"Failed to join domain", 55},
      {"Failed", join_not_started},
  };
  return code_of_line(line, phrases);
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int ads_join_domain(void) {
  const Text<3 * name_width> command{"net ads join -U '", view(pss->ads_username), "%",
                                     view(pss->ads_password), "' 2>&1"};
  trace_debug("ads join cmd : [%s]\n", command.c_str());
  return code_of_command(command.c_str(), code_of_join_line, joined);
}
