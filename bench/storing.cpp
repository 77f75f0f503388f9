// create_HD_xml, divided by what libxml2 takes to make and save the same document.
#include "libxml2.h"
#include "machine.h"
#include "nasshare/catalogue.h"
#include "paths.h"
#include "rows.h"

#include <stdexcept>

namespace nasshare::bench {
namespace {

void store() {
  if (create_HD_xml(tests::temporary_share_file) != 0) {
    throw std::runtime_error("the shares were not stored");
  }
}

void add_rows(Rows &rows, const std::string &suffix, const Size &size, Lists lists) {
  const std::string floor = row_name("libxml2_store" + suffix, size);
  const auto prepare = [=] { describe_and_load(size, lists); };
  rows.push_back({.name = floor, .prepare = prepare, .call = [] { store_by_libxml2("/tmp/libxml2.xml"); }});
  rows.push_back({.name = row_name("create_HD_xml" + suffix, size),
                  .floors = {{floor}},
                  .prepare = prepare,
                  .call = store});
}

} // namespace

Rows storing_rows() {
  Rows rows;
  add_rows(rows, "", {1000, 50}, Lists::usual);
  add_rows(rows, "_full_lists", {16, 5000}, Lists::full);
  add_rows(rows, "_full_lists", {64, 5000}, Lists::full);
  return rows;
}

} // namespace nasshare::bench
