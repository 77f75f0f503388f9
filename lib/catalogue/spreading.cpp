// Every hidden system partition gets the whole catalogue, so that any disk alone knows its shares: the new
// file is written beside the old one on all of them first, and put in place where that worked.
#include "catalogue/spreading.h"

#include "catalogue/catalogue_copy.h"
#include "catalogue/next_load.h"
#include "catalogue/share_xml.h"
#include "catalogue/temporary_share_xml.h"
#include "model/volumes.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace nasshare {
namespace {

using Copies = Row<CatalogueCopy>;

bool is_done(const CatalogueCopy &copy) {
  return copy.is_done();
}

bool fill(Copies &copies, const HiddenFolders &folders) {
  for (std::size_t i = 0; i < folders.size(); ++i) {
    if (!copies.make(folders[i])) {
      return false;
    }
  }
  return folders.error() == 0;
}

bool is_of(const CatalogueCopy &copy, int volume) {
  return is_volume(volume) && copy.is_in(view(pss->vol_hidden_path[volume]));
}

void spread(Copies &copies, const TemporaryShareXml &catalogue, int first_volume) {
  for (auto &copy : copies) {
    copy.prepare(catalogue.text(), catalogue.permissions());
  }
  for (const bool is_first : {true, false}) {
    for (auto &copy : copies) {
      if (is_of(copy, first_volume) == is_first) {
        copy.put_in_place();
      }
    }
  }
  for (auto &copy : copies) {
    if (!copy.is_done()) {
      copy.copy_over(catalogue.text(), std::ranges::any_of(copies, is_done));
    }
  }
}

// Whether the partition that the volume's records are read from has the new file.
bool reaches(const Copies &copies, int volume) {
  const auto hidden_path = view(pss->vol_hidden_path[volume]);
  return std::ranges::any_of(
      copies, [&](const CatalogueCopy &copy) { return copy.is_done() && copy.is_in(hidden_path); });
}

// A partition without one has never held a catalogue, and takes no part.
bool has_system_folder(int volume) {
  if (!has_hidden_partition(*pss, volume)) {
    return false;
  }
  const SystemFile folder{view(pss->vol_hidden_path[volume]), system_folder};
  return access(folder.c_str(), F_OK) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

bool reaches_every_volume(const Copies &copies) {
  return std::ranges::all_of(volumes, [&](int volume) {
    return !is_present(*pss, volume) || reaches(copies, volume) || !has_system_folder(volume);
  });
}

} // namespace

bool spread_catalogue(std::string_view text, int first_volume) {
  const TemporaryShareXml catalogue;
  const HiddenFolders folders;
  Copies copies(folders.size());
  // An older file of one's own may have been put back: this change's text alone is meant.
  if (!catalogue.is_own() || catalogue.text() != text || !fill(copies, folders)) {
    return false;
  }
  spread(copies, catalogue, first_volume);
  if (reaches_every_volume(copies) || next_load_shows(temporary_share_xml)) {
    return true;
  }
  for (auto &copy : copies) {
    copy.take_back();
  }
  return false;
}

} // namespace nasshare

using namespace nasshare;

void cp_xml_to_hidden(void) {
  const TemporaryShareXml catalogue;
  const HiddenFolders folders;
  Copies copies(folders.size());
  if (catalogue.is_own() && fill(copies, folders)) {
    spread(copies, catalogue, no_volume_first);
  }
}

void remove_hidden_smbxml(void) {
  const HiddenFolders folders;
  for (std::size_t i = 0; i < folders.size(); ++i) {
    unlink(system_file(folders[i].view(), share_xml_name()).c_str());
  }
}
