#include "catalogue/hidden_folders.h"

#include "catalogue/share_xml.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"
#include "support/shared_folder.h"
#include "support/store.h"
#include "support/xml.h"

#include <cerrno>
#include <unistd.h>

using namespace nasshare;

namespace {

HiddenPath share_xml_in(const HiddenPath &folder) {
  return HiddenPath{folder.view(), "/.systemfile/", share_xml_name()};
}

// A new file each time, with the mode of the temporary one; a copy that fails leaves the old file.
bool copy_to(const HiddenPath &target) {
  HiddenPath fresh{target.view(), fresh_suffix};
  unlink(fresh.c_str());
  if (cp(temporary_share_xml, fresh.c_str()) != 0) {
    unlink(fresh.c_str());
    return false;
  }
  keep_broken_xml_aside(target.c_str());
  return put_in_place(fresh.c_str(), target.c_str());
}

struct Copies {
  int made = 0;
  int failed = 0; // where there is a folder for it
};

void copy_into(const HiddenPath &folder, Copies &copies) {
  if (copy_to(share_xml_in(folder))) {
    ++copies.made;
  } else if (access(HiddenPath{folder.view(), "/.systemfile"}.c_str(), F_OK) == 0 || errno != ENOENT) {
    ++copies.failed;
  }
}

} // namespace

int hidden_filter_dir(const dirent *entry) {
  return entry != nullptr && std::string_view(entry->d_name).starts_with("HD_") ? 1 : 0;
}

bool nasshare::spread_catalogue() {
  // Everybody can write in /tmp: what somebody else put there is no catalogue.
  Copies copies;
  return is_own_file(temporary_share_xml) &&
         each_hidden_folder([&](const HiddenPath &folder) { copy_into(folder, copies); }) &&
         (copies.made > 0 || copies.failed == 0);
}

void cp_xml_to_hidden(void) {
  spread_catalogue();
}

void remove_hidden_smbxml(void) {
  each_hidden_folder([](const HiddenPath &folder) { unlink(share_xml_in(folder).c_str()); });
}
