// Loading the catalogue of shares, for the time of a block, and explaining the end that the library makes of
// the process when there is nothing to load from.
#include "loaded_catalogue.h"

#include "arguments.h"
#include "model/domain_mode.h"
#include "nasshare/smbconf.h"

#include <cstdio>
#include <cstdlib>

namespace nasshare::cli {
namespace {

bool is_loading = false;

} // namespace

void explain_end_while_loading() {
  std::atexit([] {
    if (is_loading) {
      std::fputs("nasshare: no data volume is mounted, or no disk is in a bay\n", stderr);
    }
  });
}

LoadingMark::LoadingMark() {
  is_loading = true;
}

LoadingMark::~LoadingMark() {
  is_loading = false;
}

LoadedCatalogue::LoadedCatalogue(void (*load)()) {
  with_catalogue(load);
}

LoadedCatalogue::~LoadedCatalogue() {
  Free_All_List();
}

const smb_share &LoadedCatalogue::share(const std::string &name) {
  const auto *const listed = check_smb_share_name(name.c_str());
  if (listed == nullptr) {
    throw Refusal("no share is named \"" + name + "\"");
  }
  return *listed;
}

// What is taken for a share's own may come back to the disks.
std::unique_ptr<smb_share> load_share(const std::string &name) {
  const LoadedCatalogue catalogue;
  if (nasshare_load_trouble() > 1) {
    throw Refusal("settings or accounts cannot be read, so lists may be short; try again");
  }
  auto copy = std::make_unique<smb_share>(LoadedCatalogue::share(name));
  copy->next = nullptr;
  return copy;
}

bool tells_whole_list() {
  const bool is_whole = nasshare_load_trouble() == 0;
  if (!is_whole) {
    std::fputs("nasshare: not everything can be read: shares may be missing\n", stderr);
  }
  return is_whole;
}

bool is_configured_domain_mode() {
  read_global_setting();
  return is_domain_mode();
}

} // namespace nasshare::cli
