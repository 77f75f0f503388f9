// create_smb_conf, divided by what it takes to write the same lines once more; with NFS on, also by itself
// with NFS off.
#include "appliance.h"
#include "machine.h"
#include "nasshare/catalogue.h"
#include "nasshare/smbconf.h"
#include "paths.h"
#include "rows.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace nasshare::bench {
namespace {

constexpr Size size{1000, 50};
constexpr const char *lines_row = "smb_conf_lines/1000/50";
constexpr const char *nfs_off_row = "create_smb_conf/1000/50";
constexpr const char *nfs_on_row = "create_smb_conf_nfs/1000/50";
constexpr int exported_shares = 20;

void switch_nfs_on() {
  std::string exports;
  for (int i = 0; i < exported_shares; ++i) {
    exports +=
        std::string("\"") + described_share(i, size.accounts, Lists::usual).record().path + "\" *(rw)\n";
  }
  tests::Appliance{}.config("/system_mgr/nfs/enable", "1").exports(exports);
}

void write_smb_conf() {
  if (create_smb_conf() != 0) {
    throw std::runtime_error("smb.conf was not written");
  }
}

void write_lines(const std::vector<std::string> &lines) {
  const std::unique_ptr<FILE, int (*)(FILE *)> file(std::fopen("/etc/samba/lines", "w"), std::fclose);
  for (const std::string &line : lines) {
    std::fprintf(file.get(), "%s\n", line.c_str());
  }
}

void expect_oplocks_off(int shares) {
  if (std::ranges::count(tests::lines_of(tests::read_file(tests::smb_conf)), "oplocks = no") != shares) {
    throw std::runtime_error("other shares than those that are exported have oplocks off");
  }
}

void prepare_without_nfs() {
  describe(size);
  get_samba_info2();
  write_smb_conf();
  expect_oplocks_off(0);
}

void prepare_with_nfs() {
  describe(size);
  switch_nfs_on();
  get_samba_info2();
  write_smb_conf();
  expect_oplocks_off(exported_shares);
}

// The lists are converted by the first call, so each has them loaded anew.
Row smb_conf_row(const std::string &name, std::vector<Floor> floors, const std::function<void()> &prepare) {
  return {.name = name,
          .floors = std::move(floors),
          .prepare = prepare,
          .before_each = get_samba_info2,
          .call = write_smb_conf};
}

} // namespace

Rows smb_conf_rows() {
  const auto lines = std::make_shared<std::vector<std::string>>();
  return {{.name = lines_row,
           .prepare =
               [=] {
                 prepare_without_nfs();
                 *lines = tests::lines_of(tests::read_file(tests::smb_conf));
               },
           .call = [=] { write_lines(*lines); }},
          smb_conf_row(nfs_off_row, {{lines_row}}, prepare_without_nfs),
          smb_conf_row(nfs_on_row, {{lines_row}, {nfs_off_row}}, prepare_with_nfs)};
}

} // namespace nasshare::bench
