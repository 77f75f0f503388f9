// Other machines: the shares that a host offers, and the Active Directory domain.
#include "base/linked_list.h"
#include "commands.h"
#include "nasshare/acl.h"
#include "nasshare/ads.h"
#include "nasshare/special.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace nasshare::cli {
namespace {

// The host stands in a shell command.
void expect_host(const std::string &host) {
  const auto can_stand = [](unsigned char byte) {
    return std::isalnum(byte) != 0 || byte == '.' || byte == ':' || byte == '-' || byte == '_' || byte == '%';
  };
  if (host.empty() || host.front() == '-' || !std::ranges::all_of(host, can_stand)) {
    throw Refusal("\"" + host + "\" is no host name or address");
  }
}

using Meanings = std::map<int, const char *>;

// The result and what it means; a refusal unless it is 1.
int report(int code, const Meanings &meanings) {
  const auto meaning = meanings.find(code);
  const auto text =
      std::to_string(code) + ": " + (meaning == meanings.end() ? "no known result" : meaning->second);
  if (code != 1) {
    throw Refusal(text);
  }
  std::puts(text.c_str());
  return done;
}

} // namespace

int browse(const Words &words) {
  expect(words, 2, 2, "browse HOST");
  expect_host(words[1]);
  if (get_host_share_name(words[1].c_str()) != 1) {
    throw Refusal("the shares of " + words[1] + " cannot be listed: no connection, or no /usr/bin/smbclient");
  }
  for (const auto &share : each(*pnl)) {
    std::puts(share.name);
  }
  Free_Name_List();
  return done;
}

int join(const Words &words) {
  expect(words, 1, 1, "join");
  static const Meanings meanings{
      {0, "a configuration file is missing after it was written"},
      {1, "joined, ticket obtained, winbind running"},
      {2, "domain mode is not enabled in the configuration"},
      {51, "the clock differs from the domain controller's"},
      {52, "logon failure: user or password wrong"},
      {53, "badly formed account name, or the service principal names could not be set"},
      {55, "the join failed"},
      {56, "another failure, or a command could not be started"},
      {101, "the clock differs too much for a ticket"},
      {102, "pre-authentication failed: wrong password"},
      {103, "the user is not in the Kerberos database"},
      {104, "the domain controller's address cannot be resolved"},
      {105, "another ticket error"},
  };
  return report(ads_start(), meanings);
}

int leave(const Words &words) {
  expect(words, 1, 1, "leave");
  static const Meanings meanings{
      {1, "local accounts; the Samba service is stopped"},
      {3, "the configuration still enables domain mode; nothing was changed"},
  };
  return report(ads_stop(), meanings);
}

} // namespace nasshare::cli
