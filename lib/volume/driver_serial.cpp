// A disk's serial number from the driver of the appliance's network interface, which answers for the bays too
// (SIOCDEVPRIVATE).
#include "base/owners.h"
#include "base/text.h"
#include "base/watch.h"
#include "model/load_verdict.h"
#include "model/network_interface.h"
#include "nasshare/volume.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <linux/sockios.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

namespace nasshare {
namespace {

// What the driver reads from the buffer, before it puts the answer there.
struct SerialRequest {
  std::int32_t command = 2;
  std::int32_t bay = 0;
};

// The answer's 20 characters come last character first, with blanks anywhere.
Text<32> in_reading_order(std::span<const char> answer) {
  std::array<char, 32> serial{};
  auto *next = serial.data();
  for (std::size_t i = 20; i-- > 0;) {
    if (answer[i] != ' ') {
      *next++ = answer[i];
    }
  }
  return {serial.data()};
}

} // namespace
} // namespace nasshare

using namespace nasshare;

void get_serial_number2(char *destination, int slot) {
  if (destination == nullptr) {
    return;
  }
  const LoadWatch watch;
  const Descriptor socket_fd(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (!socket_fd) {
    note_setting_error();
    return;
  }
  const std::span answer(destination, 32);
  std::ranges::fill(answer, '\0');
  const SerialRequest request{.bay = slot};
  std::memcpy(destination, &request, sizeof request);

  ifreq interface_request{};
  assign(interface_request.ifr_name, appliance_interface);
  interface_request.ifr_data = destination;
  ioctl(socket_fd.get(), SIOCDEVPRIVATE, &interface_request); // without the driver the answer reads as empty

  const auto serial = in_reading_order(answer);
  std::ranges::fill(answer, '\0');
  assign(answer, serial.view());
}
