// The UUID of an array, as "mdadm -D" reports it.
#include "volume/array_uuid.h"

#include "base/lines.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "nasshare/volume.h"

namespace nasshare {
namespace {

// The device comes from /etc/mtab, where whoever may mount names it, and goes into a shell command.
bool is_plain_device(std::string_view device) {
  constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/_.:+@=-";
  return device.find_first_not_of(plain) == std::string_view::npos;
}

} // namespace

std::string_view uuid_of_line(std::string_view line) {
  const bool is_reported = contains(line, "UUID :") && take(line, "UUID") && take(line, ":");
  return is_reported ? take_word(line) : std::string_view();
}

} // namespace nasshare

using namespace nasshare;

int get_raid_uuid(char *destination, const char *device) {
  if (destination == nullptr || device == nullptr || !is_plain_device(device)) {
    return -1;
  }
  const LoadWatch watch;
  const Text<path_width> command{"mdadm -D ", device};
  CommandLines mdadm(command.c_str());
  for (const auto line : mdadm) {
    const auto uuid = uuid_of_line(line);
    if (!uuid.empty()) {
      assign({destination, sizeof smb_catalogue::vol_uuid[0]}, uuid);
    }
  }
  return mdadm.close();
}
