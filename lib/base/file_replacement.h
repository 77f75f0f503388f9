// How a stored file is replaced: at any instant, a power cut included, the old or the new one stands whole.
#pragma once

#include "base/owners.h"
#include "base/text.h"

#include <sys/types.h>

namespace nasshare {

// The mode of the new file: that of any file the process creates, but that others never write to it; or the
// old file's mode and owner, and without an old one its owner's alone (0600).
enum class Mode { as_created, kept_or_private };

// Under a mask of zero too, nobody else is to write who may read what.
inline constexpr mode_t shared_permissions = 0664;

// What a file is to be replaced with, written beside it, until it takes the file's place. One that has not is
// gone at the end.
class Successor {
public:
  // NAME.new, or a name that nobody can know beforehand, NAME.new.XXXXXX.
  enum class Naming { plain, secret };

  explicit Successor(std::string_view path, Naming naming = Naming::plain);
  Successor(const Successor &) = delete;
  Successor &operator=(const Successor &) = delete;
  ~Successor() { remove(); }

  // Creates, fills and flushes it, with those permissions less the process's mask, or with the old file's
  // mode and owner. False, and nothing stands beside the file, when that fails.
  [[nodiscard]] bool write(std::string_view content, mode_t permissions = shared_permissions);
  [[nodiscard]] bool write_with_kept_mode(std::string_view content);

  // Renames it over the file and flushes the folder. False, and the file as it was, when that fails.
  [[nodiscard]] bool take_place();

  // For those who rename it in another way: its name, and that it is the file now.
  [[nodiscard]] const char *name() const { return name_.c_str(); }
  void has_taken_place();

private:
  void remove();
  [[nodiscard]] Descriptor create(mode_t permissions);
  [[nodiscard]] Descriptor create_with_secret_name(mode_t permissions);
  [[nodiscard]] bool fill(Descriptor &file, std::string_view content);

  Text<path_width> path_;
  Text<path_width> name_;
  Naming naming_;
  bool stands_ = false;
};

// Replaces the file's content. False, and the old file untouched, when anything fails.
[[nodiscard]] bool store_file(const char *path, std::string_view content, Mode mode = Mode::as_created);

// Whether the file's content has reached the disk.
[[nodiscard]] bool flush_file(const char *path);

} // namespace nasshare
