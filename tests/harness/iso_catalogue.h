// ISO catalogues as the appliance's ISO mount feature writes them.
#pragma once

#include <string>
#include <vector>

namespace nasshare::tests {

// The texts of one item, as they stand between the tags.
struct Image {
  std::string name;
  std::string volume_raid = "1";
  std::string hd_serial = "WD-1";
  std::string mount_path = "/mnt/isoMount/film";
  std::string comment{};
  std::string read_list = "#alice#";
  std::string invalid_users{};
};

std::string iso_item(const Image &image);

// A catalogue with that text among its entries.
std::string iso_catalogue_of(const std::string &entries);
std::string iso_catalogue(const std::vector<Image> &images);

// The catalogue of the first hidden system partition.
inline constexpr const char *iso_file = "/mnt/HD_a4/.systemfile/.iso_mount.xml";
void mounted_images(const std::vector<Image> &images);

} // namespace nasshare::tests
