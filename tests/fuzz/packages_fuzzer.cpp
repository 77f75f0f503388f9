// The list of add-on packages.
#include "fuzz.h"
#include "machine.h"

#include "nasshare/platform.h"

namespace nasshare::fuzzing {
void fuzz(std::string_view input) {
  machine::file("/etc/NAS_CFG/packages.xml", input);
  MODX_ReadAllXml();
  int count = 0;
  for (const auto *package = p_lib_list->first; package != nullptr; package = package->next) {
    ++count;
    require(terminated(package->name) && terminated(package->path), "every text ends within its field");
    require(package->name[0] != '\0' && package->path[0] != '\0', "a package has a name and a path");
  }
  require(count == p_lib_list->count, "a list counts its nodes");
  MODX_FreeAllXml();
  require(p_lib_list->count == 0 && p_lib_list->first == nullptr, "the list is empty");
}

} // namespace nasshare::fuzzing
