// The shares that another host offers, as "smbclient -gNL" lists them (smbclient(1)); they become the name
// records.
#include "base/argument.h"
#include "base/debug.h"
#include "base/lines.h"
#include "nasshare/acl.h"
#include "nasshare/special.h"

#include <unistd.h>

namespace nasshare {
namespace {

constexpr const char *smbclient = "/usr/bin/smbclient";
constexpr std::string_view disk_mark = "Disk|";

// No host is called otherwise. These characters mean something to the shell between double quotes too.
bool is_host(std::string_view name) {
  return name.size() < path_width && name.find_first_of("\"$`\\\n\r") == std::string_view::npos;
}

// A refused session is no failed connection: the listing goes on.
bool is_connection_failure(std::string_view line) {
  return contains(line, "fail") && !contains(line, "session");
}

// The share name of a line "Disk|name|comment"; what follows it remains.
std::string_view take_share_name(std::string_view &line) {
  line.remove_prefix(disk_mark.size());
  const auto name = line.substr(0, line.find('|'));
  line.remove_prefix(std::min(name.size() + 1, line.size()));
  return name;
}

void read_listing_line(std::string_view line) {
  if (!contains(line, disk_mark) || contains(line, "web_page")) {
    return;
  }
  auto name = take_share_name(line);
  // Behind a hidden share's name the same line may list another share.
  if (contains(name, "$") && contains(line, disk_mark)) {
    name = take_share_name(line);
  }
  if (!contains(name, "$") && !contains(name, "print")) {
    Insert_Name_Node(Text<name_width>{name}.c_str());
  }
}

} // namespace
} // namespace nasshare

using namespace nasshare;

int get_host_share_name(const char *host) {
  if (access(smbclient, F_OK) != 0 || !is_given(host)) {
    trace_debug("/usr/bin/smbclient not exist!\n");
    return 0;
  }
  const Argument name(host);
  if (!is_host(name.view())) {
    return 0;
  }
  Free_Name_List();
  const Text<2 * path_width> command{smbclient, " -gNL \"", name.view(), "\" 2>&1"};
  trace_debug("cmd = [%s]\n", command.c_str());
  CommandLines listing(command.c_str());
  if (!listing.has_started()) {
    return 0;
  }
  for (const auto line : listing) {
    trace_debug("\t[%s]\n", Text<name_width>{line}.c_str());
    if (is_connection_failure(line)) {
      trace_debug("connect %s fail!\n", name.c_str());
      listing.close();
      Free_Name_List();
      return 0;
    }
    read_listing_line(line);
  }
  listing.close();
  Print_Name_List();
  return 1;
}
