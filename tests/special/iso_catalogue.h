// ISO catalogues as the appliance's ISO mount feature writes them.
#pragma once

#include "appliance.h"

#include <string>
#include <vector>

namespace nasshare::tests {

constexpr const char *iso_file = "/mnt/HD_a4/.systemfile/.iso_mount.xml";

// The texts of one item, as they stand between the tags.
struct Image {
  std::string name;
  std::string volume_raid = "1";
  std::string hd_serial = "WD-1";
  std::string mount_path = "/mnt/isoMount/film";
  std::string comment = "";
  std::string read_list = "#alice#";
  std::string invalid_users = "";
};

inline std::string item(const Image &image) {
  return "    <item>\n      <volume_raid>" + image.volume_raid + "</volume_raid>\n      <hd_serial>" +
         image.hd_serial + "</hd_serial>\n      <name>" + image.name + "</name>\n      <comment>" +
         image.comment + "</comment>\n      <mount_path>" + image.mount_path +
         "</mount_path>\n      <read_list>" + image.read_list + "</read_list>\n      <invalid_users>" +
         image.invalid_users + "</invalid_users>\n    </item>\n";
}

// A catalogue with that text among its entries.
inline std::string catalogue_of(const std::string &entries) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n  <iso>\n" + entries +
         "  </iso>\n</config>\n";
}

inline std::string catalogue_of(const std::vector<Image> &images) {
  std::string entries;
  for (const Image &image : images) {
    entries += item(image);
  }
  return catalogue_of(entries);
}

inline void mounted_images(const std::vector<Image> &images) {
  Appliance{}.file(iso_file, catalogue_of(images));
}

} // namespace nasshare::tests
