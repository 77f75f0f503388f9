// Loading the catalogue of shares, which ends the process without a word when there is nothing to load from.
#pragma once

#include "nasshare/catalogue.h"

#include <memory>
#include <string>

namespace nasshare::cli {

// From here on, such an end is explained on standard error.
void explain_end_while_loading();

class LoadingMark {
public:
  LoadingMark();
  ~LoadingMark();
  LoadingMark(const LoadingMark &) = delete;
  LoadingMark &operator=(const LoadingMark &) = delete;
};

// Runs an operation that loads the catalogue.
template <typename Operation> auto with_catalogue(Operation operation) {
  const LoadingMark mark;
  return operation();
}

// The catalogue in the share list, for the time of a block.
class LoadedCatalogue {
public:
  explicit LoadedCatalogue(void (*load)() = get_samba_info);
  ~LoadedCatalogue();
  LoadedCatalogue(const LoadedCatalogue &) = delete;
  LoadedCatalogue &operator=(const LoadedCatalogue &) = delete;

  // The listed share. Throws Refusal when there is none of that name.
  static const smb_share &share(const std::string &name);
};

// Whether the load found all shares; complains on standard error when it may not have.
bool tells_whole_list();

// A copy of the listed share. Throws Refusal when there is none of that name, and when its lists may be
// short.
std::unique_ptr<smb_share> load_share(const std::string &name);

// As the configuration says now.
bool is_configured_domain_mode();

} // namespace nasshare::cli
