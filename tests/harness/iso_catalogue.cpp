// ISO catalogues.
#include "iso_catalogue.h"

#include "appliance.h"
#include "xml.h"

namespace nasshare::tests {

std::string iso_item(const Image &image) {
  return element_around(
      2, "item",
      element_line(3, "volume_raid", image.volume_raid) + element_line(3, "hd_serial", image.hd_serial) +
          element_line(3, "name", image.name) + element_line(3, "comment", image.comment) +
          element_line(3, "mount_path", image.mount_path) + element_line(3, "read_list", image.read_list) +
          element_line(3, "invalid_users", image.invalid_users));
}

std::string iso_catalogue_of(const std::string &entries) {
  return config_file(element_around(1, "iso", entries));
}

std::string iso_catalogue(const std::vector<Image> &images) {
  std::string items;
  for (const Image &image : images) {
    items += iso_item(image);
  }
  return iso_catalogue_of(items);
}

void mounted_images(const std::vector<Image> &images) {
  Appliance{}.file(iso_file, iso_catalogue(images));
}

} // namespace nasshare::tests
