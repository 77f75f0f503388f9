// The installed add-on packages, /etc/NAS_CFG/packages.xml.
#include "nasshare/platform.h"

#include "support/text.h"
#include "support/xml.h"

#include <memory>

namespace platform {
namespace {

constexpr const char *packages_path = "/etc/NAS_CFG/packages.xml";
constexpr const char *root_name = "packages";

modx_package_list list = {};

template <size_t width> bool assign_whole(char (&field)[width], std::string_view text) {
  if (text.empty() || text.size() >= width) {
    return false;
  }
  nasshare::assign(field, text);
  return true;
}

// Null for a package without a name or a path, or with one that does not fit: half a path is another place.
std::unique_ptr<modx_package> package_of(xmlNode *element) {
  auto package = std::make_unique<modx_package>();
  const bool complete = assign_whole(package->name, nasshare::ChildText(element, "name").view()) &&
                        assign_whole(package->path, nasshare::ChildText(element, "path").view());
  if (!complete) {
    return nullptr;
  }
  return package;
}

void clear() {
  while (list.first != nullptr) {
    const std::unique_ptr<modx_package> package(list.first);
    list.first = package->next;
  }
  list.count = 0;
}

void append(std::unique_ptr<modx_package> package) {
  modx_package **end = &list.first;
  while (*end != nullptr) {
    end = &(*end)->next;
  }
  *end = package.release();
  ++list.count;
}

void fill() {
  const nasshare::XmlDocument document = nasshare::load_xml(packages_path);
  xmlNode *root = document ? xmlDocGetRootElement(document.get()) : nullptr;
  if (root == nullptr || std::string_view(reinterpret_cast<const char *>(root->name)) != root_name) {
    return;
  }
  for (xmlNode *node = root->children; node != nullptr; node = node->next) {
    const bool is_package = node->type == XML_ELEMENT_NODE &&
                            std::string_view(reinterpret_cast<const char *>(node->name)) == "package";
    if (auto package = is_package ? package_of(node) : nullptr) {
      append(std::move(package));
    }
  }
}

} // namespace
} // namespace platform

modx_package_list *p_lib_list = &platform::list;

// Tells a firmware's package service to look again. Here the file is all there is, and reading it looks
// again.
extern "C" void MODX_COMMAND(int /*a*/, int /*b*/) {}

extern "C" void MODX_ReadAllXml(void) {
  platform::clear();
  try {
    platform::fill();
  } catch (...) {
    platform::clear();
  }
}

extern "C" void MODX_FreeAllXml(void) {
  platform::clear();
}
