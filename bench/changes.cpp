// Whole changes. add_share is divided by the commands and the sync that it runs, bare, and by two reads and
// one store of the same files by libxml2; acnt_mod_share by add_share.
#include "appliance.h"
#include "libxml2.h"
#include "machine.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "paths.h"
#include "rows.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <unistd.h>

namespace nasshare::bench {
namespace {

using tests::Appliance;

constexpr Size small{64, 50};
constexpr std::uint32_t to_write = 2; // the account list's code

void require(bool condition, const char *what) {
  if (!condition) {
    throw std::runtime_error(what);
  }
}

// What the files of the machine hold, to be put back before each change.
class StoredShares {
public:
  void remember() { text_ = tests::read_file(tests::first_share_file); }
  void put_back() const { Appliance{}.shares(text_); }

private:
  std::string text_;
};

void run_commands_of_a_change() {
  FILE *const scan = ::popen("sg_scan /dev/sda /dev/sdb /dev/sdc /dev/sdd /dev/sde /dev/sdf /dev/sdg /dev/sdh"
                             " /dev/sdi /dev/sdj /dev/sdk /dev/sdl /dev/sdm /dev/sdn /dev/sdo /dev/sdp",
                             "re");
  require(scan != nullptr, "sg_scan");
  std::array<char, 4096> lines{};
  while (std::fread(lines.data(), 1, lines.size(), scan) != 0) {
  }
  require(::pclose(scan) == 0, "sg_scan");
  ::sync();
  require(run_smbcom() == 0, "smbcom");
}

void read_twice_and_store() {
  read_by_libxml2(tests::first_share_file);
  read_by_libxml2(tests::second_share_file);
  store_by_libxml2(tests::temporary_share_file);
}

Row add_row(const Size &size, const Floor &floor) {
  const auto stored = std::make_shared<StoredShares>();
  const auto record = std::make_shared<smb_share>();
  const auto prepare = [=] {
    describe(size);
    Appliance{}.folder("/mnt/HD/HD_a2/s" + std::to_string(size.shares));
    stored->remember();
  };
  const auto before_each = [=] {
    stored->put_back();
    *record = described_share(size.shares, size.accounts, Lists::usual);
  };
  return {.name = row_name("add_share", size),
          .floors = {floor},
          .prepare = prepare,
          .before_each = before_each,
          .call = [=] { require(add_share(record.get()) == 1, "the share was not added"); }};
}

Row permit_row() {
  const auto stored = std::make_shared<StoredShares>();
  const auto prepare = [=] {
    describe(small);
    stored->remember();
  };
  const auto before_each = [=] {
    stored->put_back();
    for (int i = 0; i < small.shares; ++i) {
      insert_acnt_node(share_name(i).c_str(), to_write);
    }
  };
  return {.name = row_name("acnt_mod_share", small),
          .floors = {{row_name("add_share", small)}},
          .prepare = prepare,
          .before_each = before_each,
          .call = [] { require(acnt_mod_share("u0000") == 1, "the account was not changed"); }};
}

} // namespace

Rows change_rows() {
  const std::string commands = row_name("commands_and_sync", {0, 50});
  const std::string files = row_name("libxml2_read_and_store", {1000, 50});
  Rows rows{{.name = commands,
             .prepare =
                 [] {
                   describe({0, 50});
                 },
             .call = run_commands_of_a_change},
            {.name = files,
             .prepare =
                 [] {
                   describe_and_load({1000, 50});
                 },
             .call = read_twice_and_store}};
  rows.push_back(add_row(small, {commands, "wall"}));
  for (const int accounts : {50, 5000}) {
    rows.push_back(add_row({1000, accounts}, {files}));
  }
  rows.push_back(permit_row());
  return rows;
}

} // namespace nasshare::bench
