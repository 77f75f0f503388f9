#include "nasshare/ads.h"
#include "support/in_place.h"

using namespace nasshare;

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

void ads_create_nsswitch_conf(void) {
  InPlaceFile nsswitch_conf("/etc/nsswitch.conf");
  if (!nsswitch_conf.is_open() || nsswitch_conf.text() == nullptr) {
    return;
  }
  std::fputs(pss->ads_enable == 0 ? local_sources : domain_sources, nsswitch_conf.text());
  nsswitch_conf.commit();
}
