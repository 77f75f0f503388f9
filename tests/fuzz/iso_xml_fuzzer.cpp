// The list of mounted images of a volume: words that describe the volume, then the file.
#include "lists.h"
#include "volume.h"

#include "nasshare/special.h"

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  Parts parts(input);
  int volume = describe_volume(parts.next());
  machine::file(pss->ads_enable == 1 ? "/mnt/HD_a4/.systemfile/.iso_mount_ads.xml"
                                     : "/mnt/HD_a4/.systemfile/.iso_mount.xml",
                parts.next());
  isoMount_readXml(volume);
  require_catalogue();
  auto count = pss->count;
  isoMount_readXml(volume);
  require(pss->count == count, "a file that is read again adds nothing");
}

} // namespace nasshare::fuzzing
