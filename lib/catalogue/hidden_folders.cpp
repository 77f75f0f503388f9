// Which entries of /mnt are hidden system partitions.
#include "catalogue/hidden_folders.h"

#include "nasshare/catalogue.h"

#include <cerrno>
#include <span>

namespace nasshare {

HiddenFolders::HiddenFolders() {
  dirent **entries = nullptr;
  const int count = scandir("/mnt", &entries, hidden_filter_dir, alphasort);
  error_ = count >= 0 || errno == ENOENT ? 0 : errno;
  size_ = count < 0 ? 0 : static_cast<std::size_t>(count);
  entries_.reset(entries);
}

HiddenFolders::~HiddenFolders() {
  for (auto *const entry : std::span(entries_.get(), size_)) {
    std::free(entry);
  }
}

HiddenFolder HiddenFolders::operator[](std::size_t i) const {
  return {"/mnt/", entries_.get()[i]->d_name};
}

} // namespace nasshare

using namespace nasshare;

int hidden_filter_dir(const dirent *entry) {
  return entry != nullptr && std::string_view(entry->d_name).starts_with("HD_") ? 1 : 0;
}
