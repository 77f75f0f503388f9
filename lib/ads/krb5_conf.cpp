#include "nasshare/ads.h"
#include "support/in_place.h"
#include "support/one_line.h"

using namespace nasshare;

namespace {

constexpr const char *example_domain = "example.com"; // of the template, not of the settings

} // namespace

void ads_create_krb5_conf(void) {
  InPlaceFile krb5_conf("/etc/krb5.conf");
  auto *file = krb5_conf.text();
  if (!krb5_conf.is_open() || file == nullptr) {
    return;
  }
  const auto realm_line = one_line(view(pss->ads_realm));
  const auto server_line = one_line(view(pss->ads_pwd_server));
  const char *realm = realm_line.c_str();
  const char *server = server_line.c_str();
  // The logging line stands two blanks further in than all others.
  std::fprintf(file, "[logging]\n        default = FILE:/var/log/krb5.log\n\n");
  std::fprintf(
      file,
      "[libdefaults]\n      default_realm = %s\n      ticket_lifetime = 24000\n      clock_skew = 300\n\n",
      realm);
  std::fprintf(file, "[realms]\n      %s = {\n      kdc = %s:88\n      admin_server = %s:749\n", realm,
               server, server);
  std::fprintf(file, "      default_domain = %s\n      }\n\n", realm);
  std::fprintf(file, "[domain_realms]\n      .%s = %s\n      %s = %s\n\n", example_domain, realm,
               example_domain, realm);
  krb5_conf.commit();
}
