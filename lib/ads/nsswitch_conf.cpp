// nsswitch.conf (nsswitch.conf(5)): where accounts and hosts are looked up, with a domain and without.
#include "ads/nsswitch_conf.h"

#include "base/in_place.h"
#include "model/domain_mode.h"
#include "nasshare/ads.h"

namespace nasshare {
namespace {

// Local names are looked up in the files first, a domain's names at its own server first.
constexpr const char *local_sources = "passwd:     files\n"
                                      "shadow:     files\n"
                                      "group:      files\n"
                                      "hosts:      files dns\n"
                                      "ethers:     files\n"
                                      "netmasks:   files\n"
                                      "networks:   files\n"
                                      "protocols:  files\n"
                                      "services:   files\n";

constexpr const char *domain_sources = "passwd:     files winbind\n"
                                       "shadow:     files\n"
                                       "group:      files winbind\n"
                                       "hosts:      dns files\n"
                                       "ethers:     files\n"
                                       "netmasks:   files\n"
                                       "networks:   files\n"
                                       "protocols:  files\n"
                                       "services:   files\n";

} // namespace
} // namespace nasshare

using namespace nasshare;

void ads_create_nsswitch_conf(void) {
  InPlaceFile file(nsswitch_conf_path);
  if (file.is_open() && file.text() != nullptr) {
    std::fputs(is_plainly_local() ? local_sources : domain_sources, file.text());
    static_cast<void>(file.commit()); // it has no result: the join shows what the file holds
  }
}
