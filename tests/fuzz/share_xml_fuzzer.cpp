// The share XML of a volume: words that describe the volume, then the file.
#include "lists.h"
#include "volume.h"

#include "catalogue/share_xml.h"

#include <algorithm>

namespace nasshare::fuzzing {
namespace {

// Values in which "&" stands are markup to the writer, and come back as what they stand for; what XML cannot
// hold comes back as U+FFFD.
bool is_plain(const smb_share &share) {
  return std::ranges::all_of(texts(share),
                             [](auto text) { return !contains(text, "&") && can_xml_hold(text); });
}

bool is_stored(const smb_share &share) {
  return !contains(view(share.name), "USBDisk1");
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  int volume = describe_volume(parts.next());
  const std::string path = "/mnt/HD_a4/.systemfile/" + std::string(share_xml_name());
  machine::file(path, parts.next());

  read_HD_xml(volume);
  require_catalogue();
  for (const auto &share : each(*pss)) {
    require(contains(view(share.path), SMB_VOL_NAME[volume]), "a share lies on its volume");
  }
  auto loaded = listed_shares();
  read_HD_xml(volume);
  require(listed_shares().size() == loaded.size(), "a file that is read again adds nothing");

  std::erase_if(loaded, [](const smb_share &share) { return !is_stored(share); });
  require(create_HD_xml("/mnt/stored") == 0, "a loaded catalogue can be stored");
  Free_All_List();
  if (loaded.empty()) {
    require(!machine::content("/mnt/stored"), "an empty catalogue leaves other files alone");
    return;
  }
  machine::file(path, *machine::content("/mnt/stored"));
  read_HD_xml(volume);
  require_catalogue();
  if (std::ranges::all_of(loaded, is_plain)) {
    require(std::ranges::equal(listed_shares(), loaded, same), "a stored catalogue comes back as it was");
  }
}

} // namespace nasshare::fuzzing
