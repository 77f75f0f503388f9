#include "volume/array_uuid.h"

#include "nasshare/volume.h"
#include "support/lines.h"
#include "support/text.h"

#include <algorithm>

using namespace nasshare;

namespace {

// Takes the text off the front of the line, white-space before it included.
bool take(std::string_view &line, std::string_view text) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with(text)) {
    return false;
  }
  line.remove_prefix(text.size());
  return true;
}

} // namespace

std::string_view nasshare::uuid_of_line(std::string_view line) {
  bool reported = contains(line, "UUID :") && take(line, "UUID") && take(line, ":");
  return reported ? take_word(line) : std::string_view();
}

namespace {

// The device comes from /etc/mtab, where whoever may mount names it, and goes into a shell command.
bool is_plain_device(std::string_view device) {
  constexpr std::string_view plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/_.:+@=-";
  return device.find_first_not_of(plain) == std::string_view::npos;
}

} // namespace

int get_raid_uuid(char *destination, const char *device) {
  if (destination == nullptr || device == nullptr || !is_plain_device(device)) {
    return -1;
  }
  Text<path_width> command{"mdadm -D ", device};
  CommandOutput mdadm(command.c_str());
  for (CommandLines lines(mdadm.get()); lines.next();) {
    if (auto uuid = uuid_of_line(lines.line()); !uuid.empty()) {
      assign({destination, sizeof smb_catalogue::vol_uuid[0]}, uuid);
    }
  }
  return mdadm.close();
}
