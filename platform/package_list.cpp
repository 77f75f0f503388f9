// The installed add-on packages: /etc/NAS_CFG/packages.xml, root element "packages", one "package" each with
// the children "name" and "path".
#include "base/text.h"
#include "base/xml_reader.h"
#include "nasshare/platform.h"

namespace nasshare::platform {
namespace {

constexpr const char *packages_path = "/etc/NAS_CFG/packages.xml";
constexpr const char *packages_root = "packages";

modx_package_list list = {};

bool assign_whole(std::span<char> field, std::string_view text) {
  if (text.empty() || text.size() >= field.size()) {
    return false;
  }
  assign(field, text);
  return true;
}

// Null for a package without a name or a path, or with one that does not fit: half a path is another place.
std::unique_ptr<modx_package> package_of(xmlNode *element) {
  auto package = std::make_unique<modx_package>();
  const bool is_complete = assign_whole(package->name, ChildText(element, "name").view()) &&
                           assign_whole(package->path, ChildText(element, "path").view());
  return is_complete ? std::move(package) : nullptr;
}

void clear() {
  while (list.first != nullptr) {
    const std::unique_ptr<modx_package> package(list.first);
    list.first = package->next;
  }
  list.count = 0;
}

void append(std::unique_ptr<modx_package> package) {
  auto **end = &list.first;
  while (*end != nullptr) {
    end = &(*end)->next;
  }
  *end = package.release();
  ++list.count;
}

void fill() {
  const auto document = load_or_note(packages_path);
  auto *const root = root_of(document);
  if (!is_named(root, packages_root)) {
    return;
  }
  for (auto *element = element_from(root->children); element != nullptr;
       element = element_from(element->next)) {
    if (auto package = is_named(element, "package") ? package_of(element) : nullptr) {
      append(std::move(package));
    }
  }
}

} // namespace
} // namespace nasshare::platform

using namespace nasshare;

modx_package_list *p_lib_list = &platform::list;

// Tells a firmware's package service to look again. Here the file is all there is, and reading it looks
// again.
void MODX_COMMAND(int /*a*/, int /*b*/) {}

void MODX_ReadAllXml(void) {
  platform::clear();
  try {
    platform::fill();
  } catch (...) {
    platform::clear();
  }
}

void MODX_FreeAllXml(void) {
  platform::clear();
}
