// get_samba_info from two volumes, divided by what libxml2 takes to read the two files; Samba's own reader of
// smb.conf is measured by bench/processes.
#include "libxml2.h"
#include "machine.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "rows.h"

namespace nasshare::bench {
namespace {

std::string read_row(int shares) {
  return row_name("libxml2_read", {shares, 50});
}

void read_both() {
  read_by_libxml2(tests::first_share_file);
  read_by_libxml2(tests::second_share_file);
}

Row load_row(const Size &size) {
  Row row{.name = row_name("get_samba_info", size),
          .floors = {{read_row(size.shares)}},
          .prepare = [=] { describe_and_load(size); },
          .call = get_samba_info,
          .tells_memory = size.accounts == 50};
  if (size.shares == 1000) {
    row.floors.push_back({row_name("samba_loadparm", {1000, 50})});
  }
  return row;
}

} // namespace

Rows loading_rows() {
  Rows rows;
  for (const int shares : {16, 64, 256, 1000}) {
    const auto prepare = [=] { describe({shares, 50}); };
    rows.push_back({.name = read_row(shares), .prepare = prepare, .call = read_both});
    for (const int accounts : {50, 500, 5000}) {
      rows.push_back(load_row({shares, accounts}));
    }
  }
  return rows;
}

} // namespace nasshare::bench
