// A private machine with the real Samba: a mirror as Volume_1, a single-disk volume as Volume_2, accounts
// with passwords for alice, bob and carol, and the appliance's own service commands on PATH.
#pragma once

#include "output.h"
#include "share.h"
#include "text.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {

class SambaMachine : public testing::Test {
protected:
  // Skips the case where Samba is not installed; under CI it fails.
  void SetUp() override;
  void TearDown() override;

  // A share folder that everyone may use, with the file welcome.txt.
  static void folder(const std::string &path);
  // The folder, and the share added by the library.
  static void add(const Share &share);
  // "smb start", and passwords for the accounts.
  void start();
  // Both.
  void serve(const Share &share);
};

// smbclient's commands on //127.0.0.1/SHARE. The guest gives no name, the others their password.
Ended client(const std::string &account, const std::string &share, const std::string &commands);

inline constexpr const char *guest = "";

// What the account can really do on the share: "write" (and read), "read", "denied", "no such share";
// anything else is an output of smbclient's that means none of these.
std::string access(const std::string &account, const std::string &share);

// The disk shares that the guest sees listed, sorted.
Names served_shares();

} // namespace nasshare::tests
