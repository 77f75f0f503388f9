// The NetBIOS name of an appliance that has none yet, made of its network address.
#include "base/owners.h"
#include "base/text.h"
#include "model/network_interface.h"
#include "nasshare/smbconf.h"

#include <cstdio>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

using namespace nasshare;

void Get_Mac_Str(char *destination) {
  const Descriptor socket_fd(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (!socket_fd) {
    std::puts("IOCTL API: Create socket fail");
    return;
  }
  ifreq request{};
  assign(request.ifr_name, appliance_interface);
  ioctl(socket_fd.get(), SIOCGIFHWADDR, &request); // a missing interface reads as address 0
  if (destination != nullptr) {
    const auto byte = [&request](int i) {
      return static_cast<unsigned>(static_cast<unsigned char>(request.ifr_hwaddr.sa_data[i]));
    };
    // Without padding, which is wanted: hosts are known by these names of 7 to 12 characters.
    constexpr std::size_t width = 16;
    std::snprintf(destination, width, "tarvo-%x%x%x", byte(3), byte(4), byte(5));
  }
}
