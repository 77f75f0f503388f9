#include "loaded_catalogue.h"

#include "arguments.h"
#include "nasshare/smbconf.h"

#include <cstdio>
#include <cstdlib>

namespace cli {
namespace {

bool loading = false;

} // namespace

void explain_end_while_loading() {
  std::atexit([] {
    if (loading) {
      std::fputs("nasshare: no data volume is mounted, or no disk is in a bay\n", stderr);
    }
  });
}

LoadingMark::LoadingMark() {
  loading = true;
}

LoadingMark::~LoadingMark() {
  loading = false;
}

LoadedCatalogue::LoadedCatalogue(void (*load)()) {
  with_catalogue(load);
}

LoadedCatalogue::~LoadedCatalogue() {
  Free_All_List();
}

const smb_share &LoadedCatalogue::share(const std::string &name) {
  const smb_share *listed = check_smb_share_name(name.c_str());
  if (listed == nullptr) {
    throw Refusal("no share is named \"" + name + "\"");
  }
  return *listed;
}

std::unique_ptr<smb_share> load_share(const std::string &name) {
  const LoadedCatalogue catalogue;
  auto copy = std::make_unique<smb_share>(LoadedCatalogue::share(name));
  copy->next = nullptr;
  return copy;
}

bool in_domain_mode() {
  read_global_setting();
  return smbshare.ads_enable == 1;
}

} // namespace cli
