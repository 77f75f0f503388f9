// One hidden partition's copy of the catalogue, on its way from the old file to the new one.
#pragma once

#include "base/file_replacement.h"
#include "base/whole_file.h"
#include "catalogue/hidden_folders.h"
#include "model/system_file.h"

#include <sys/stat.h>

namespace nasshare {

class CatalogueCopy {
public:
  explicit CatalogueCopy(const HiddenFolder &folder);

  // Whether that is the partition's mount point.
  [[nodiscard]] bool is_in(std::string_view mount_point) const { return folder_.view() == mount_point; }
  // Whether the new file has taken its place.
  [[nodiscard]] bool is_done() const { return is_done_; }

  // Writes and flushes the new file beside the old one, with those permissions less the process's mask.
  void prepare(std::string_view content, mode_t permissions);

  // Puts it in the old one's place.
  void put_in_place();

  // What is left where that does not work: the old file is deleted and the new one copied, which may say on
  // standard output what is wrong. An old file that cannot be had back otherwise is kept; `elsewhere` tells
  // that another partition has the new one already.
  void copy_over(std::string_view content, bool elsewhere);

  // Brings the old file back, or makes sure that there is none again. Nothing for what was left alone.
  void take_back();

private:
  [[nodiscard]] bool can_be_taken_back() const;
  [[nodiscard]] bool holds(std::string_view content) const;
  void store_old() const;

  HiddenFolder folder_;
  SystemFile path_;
  WholeFile old_;
  struct stat old_status_ {};
  Successor successor_;
  bool is_prepared_ = false;
  bool is_touched_ = false;
  bool is_done_ = false;
};

} // namespace nasshare
