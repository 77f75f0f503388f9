// Every hidden system partition gets the whole catalogue, so that any disk alone knows its shares.
#include "catalogue/spreading.h"

#include "base/file_replacement.h"
#include "base/xml_store.h"
#include "catalogue/hidden_folders.h"
#include "catalogue/share_xml.h"
#include "catalogue/temporary_share_xml.h"
#include "model/system_file.h"
#include "nasshare/support.h"

#include <unistd.h>

namespace nasshare {
namespace {

// A new file each time, with the mode of the temporary one; a copy that fails leaves the old file.
bool copy_to(const SystemFile &target) {
  const SystemFile successor{target.view(), successor_suffix};
  unlink(successor.c_str());
  if (cp(temporary_share_xml, successor.c_str()) != 0) {
    unlink(successor.c_str());
    return false;
  }
  keep_broken_xml_aside(target.c_str());
  return put_in_place(successor.c_str(), target.c_str());
}

bool has_system_folder(const HiddenFolder &folder) {
  return access(HiddenFolder{folder.view(), system_folder}.c_str(), F_OK) == 0 || errno != ENOENT;
}

struct Copies {
  int made = 0;
  int failed = 0; // where there is a folder for it
};

void copy_into(const HiddenFolder &folder, Copies &copies) {
  if (copy_to(system_file(folder.view(), share_xml_name()))) {
    ++copies.made;
  } else if (has_system_folder(folder)) {
    ++copies.failed;
  }
}

} // namespace

bool spread_catalogue() {
  Copies copies;
  return is_own_temporary_share_xml() &&
         each_hidden_folder([&copies](const HiddenFolder &folder) { copy_into(folder, copies); }) &&
         (copies.made > 0 || copies.failed == 0);
}

} // namespace nasshare

using namespace nasshare;

void cp_xml_to_hidden(void) {
  static_cast<void>(spread_catalogue()); // it has no result
}

void remove_hidden_smbxml(void) {
  static_cast<void>(each_hidden_folder([](const HiddenFolder &folder) { // nor has this
    unlink(system_file(folder.view(), share_xml_name()).c_str());
  }));
}
