// The output of "net ads join", then that of "kinit".
#include "fuzz.h"
#include "machine.h"

#include "nasshare/ads.h"

#include <cstring>

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  Parts parts(input);
  auto joining = parts.next();
  auto ticket = parts.next();
  machine::command("net", joining);
  machine::command("kinit", ticket);

  int joined = ads_join_domain();
  require(joined == 50 || joined == 51 || joined == 52 || joined == 53 || joined == 55 || joined == 56,
          "a join ends with a known code");
  bool complains = false;
  for (auto phrase : {"Time difference", "Logon failure", "Improperly formed", "Failed"}) {
    complains = complains || contains(joining, phrase);
  }
  require(complains || joined == 50, "a join without a complaint succeeded");

  int obtained = ads_kinit();
  require(obtained >= 100 && obtained <= 105, "a ticket request ends with a known code");
  require(!ticket.empty() || obtained == 100, "a ticket request without a word succeeded");
}

} // namespace nasshare::fuzzing
