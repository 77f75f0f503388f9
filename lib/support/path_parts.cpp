// The parts of a path, for callers in C.
#include "base/text.h"
#include "nasshare/support.h"
#include "support/copy_path.h"

#include <cstring>

using namespace nasshare;

const char *bb_get_last_path_component(const char *path) {
  if (path == nullptr) {
    return "";
  }
  const char *const slash = std::strrchr(path, '/');
  return slash == nullptr || std::strcmp(path, "/") == 0 ? path : slash + 1;
}

const char *last_char_is(const char *text, int character) {
  if (!is_given(text)) {
    return nullptr;
  }
  const char *const last = text + std::strlen(text) - 1;
  return *last == static_cast<char>(character) ? last : nullptr;
}

void concat_path_file(const char *directory, const char *file, char *output) {
  if (output == nullptr) {
    return;
  }
  const std::string_view folder = directory == nullptr ? "" : directory;
  std::string_view name = file == nullptr ? "" : file;
  name.remove_prefix(std::min(name.find_first_not_of('/'), name.size()));
  const CopyPath joined{folder, folder.ends_with('/') ? "" : "/", name};
  assign(std::span(output, copy_path_width), joined.view());
}
