// A host, then what smbclient lists of it.
#include "lists.h"
#include "machine.h"

#include "nasshare/special.h"

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  Parts parts(input);
  auto host = parts.next_string();
  auto listing = parts.next();
  machine::file("/usr/bin/smbclient", "");
  machine::command("/usr/bin/smbclient", listing);

  int done = get_host_share_name(host.c_str());
  require_whole(*pnl);
  require(done == 1 || Is_Name_Empty() == 1, "without an answer there are no names");
  for (const auto &share : each(*pnl)) {
    auto name = view(share.name);
    require(terminated(share.name) && contains(listing, name), "a name is one of the listing");
    require(!contains(name, "$") && !contains(name, "print") && !contains(name, "|"),
            "hidden shares and printers are left out");
  }
}

} // namespace nasshare::fuzzing
