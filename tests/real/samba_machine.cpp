// A private machine with the real Samba.
#include "samba_machine.h"

#include "appliance.h"
#include "nasshare/catalogue.h"
#include "text.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <sys/stat.h>

namespace nasshare::tests {

namespace {

constexpr const char *commands = PROJECT_FOLDER "/platform/commands";
constexpr const char *welcome = "welcome to this share\n";

bool is_installed(const std::string &program) {
  return shell("command -v " + program).status == 0;
}

std::string missing_program() {
  for (const char *program : {"smbd", "smbclient", "smbpasswd", "testparm", "smbcontrol"}) {
    if (!is_installed(program)) {
      return program;
    }
  }
  return "";
}

bool is_on_ci() {
  const char *value = std::getenv("CI");
  return value != nullptr && std::string(value) == "true";
}

// The service commands before everything else, and a nasshare that gets the kernel's answers.
void install_commands(Appliance &machine) {
  const std::string path = std::string(commands) + ":" + std::getenv("PATH");
  setenv("PATH", path.c_str(), 1);
  machine.script("nasshare", "LD_PRELOAD=" STAND_INS
                             " ASAN_OPTIONS=verify_asan_link_order=0 exec " NASSHARE_CLI " \"$@\"");
}

std::string quoted(const std::string &text) {
  std::string word = "'";
  for (const char character : text) {
    word += character == '\'' ? "'\\''" : std::string(1, character);
  }
  return word + "'";
}

std::string login(const std::string &account) {
  return account.empty() ? "-N" : "-U " + quoted(account + "%" + account + "-password");
}

} // namespace

void SambaMachine::SetUp() {
  const std::string missing = missing_program();
  if (!missing.empty()) {
    ASSERT_FALSE(is_on_ci()) << missing << " has to be installed here";
    GTEST_SKIP() << missing << " is not installed (Debian: packages samba, samba-vfs-modules and smbclient)";
  }
  Appliance machine = Appliance::mirror();
  machine.mount("/dev/sdb3", "/mnt/HD/HD_b2");
  install_commands(machine);
}

void SambaMachine::TearDown() {
  if (missing_program().empty()) {
    EXPECT_EQ(shell("smb stop").status, 0);
  }
}

void SambaMachine::folder(const std::string &path) {
  Appliance{}.folder(path).file(path + "/welcome.txt", welcome);
  ASSERT_EQ(chmod(path.c_str(), 0777), 0);
}

void SambaMachine::add(const Share &share) {
  folder(share.record().path);
  ASSERT_EQ(add_share(share), 1);
}

void SambaMachine::serve(const Share &share) {
  add(share);
  start();
}

void SambaMachine::start() {
  const Ended started = shell("smb start");
  ASSERT_EQ(started.status, 0) << started.err;
  const Ended set = shell("for name in alice bob carol; do printf '%s\\n' $name-password $name-password |"
                          " smbpasswd -c /run/samba/smbd.conf -s -a $name || exit; done");
  ASSERT_EQ(set.status, 0) << set.err;
}

Ended client(const std::string &account, const std::string &share, const std::string &line) {
  return shell("smbclient -s /dev/null " + login(account) + " " + quoted("//127.0.0.1/" + share) + " -c " +
               quoted(line));
}

std::string access(const std::string &account, const std::string &share) {
  const Ended reading = client(account, share, "get welcome.txt /tmp/got");
  if (contains(reading.out, "tree connect failed: NT_STATUS_ACCESS_DENIED")) {
    return "denied";
  }
  if (contains(reading.out, "tree connect failed: NT_STATUS_BAD_NETWORK_NAME")) {
    return "no such share";
  }
  if (reading.status != 0 || read_file("/tmp/got") != welcome) {
    return reading.out + reading.err;
  }
  const Ended writing = client(account, share, "put /tmp/got new.txt; rm new.txt");
  if (writing.status == 0) {
    return "write";
  }
  return contains(writing.out, "NT_STATUS_ACCESS_DENIED opening remote file") ? "read"
                                                                              : writing.out + writing.err;
}

Names served_shares() {
  constexpr std::string_view label = "Disk|";
  Names names;
  for (const std::string &line : lines_beginning(shell("smbclient -s /dev/null -gNL 127.0.0.1").out, label)) {
    names.push_back(line.substr(label.size(), line.find('|', label.size()) - label.size()));
  }
  std::ranges::sort(names);
  return names;
}

} // namespace nasshare::tests
