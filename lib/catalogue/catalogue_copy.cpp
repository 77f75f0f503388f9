// One hidden partition's copy of the catalogue: replaced whole where the partition lets it, else copied over
// the old one as cp() does it, while another partition holds the new file.
#include "catalogue/catalogue_copy.h"

#include "base/watch.h"
#include "base/xml_store.h"
#include "catalogue/share_xml.h"
#include "catalogue/temporary_share_xml.h"
#include "nasshare/support.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace nasshare {

CatalogueCopy::CatalogueCopy(const HiddenFolder &folder)
    : folder_(folder), path_(system_file(folder.view(), share_xml_name())), old_(path_.c_str()),
      successor_(path_.view()) {
  if (stat(path_.c_str(), &old_status_) != 0) {
    old_status_ = {};
  }
}

// What is there but cannot be read would be lost for good. What is no file holds nothing.
bool CatalogueCopy::can_be_taken_back() const {
  const Watch watch(Watch::Scope::apart);
  if (old_.error() != 0) {
    note_file_error(old_.error());
  }
  return !watch.seen();
}

bool CatalogueCopy::holds(std::string_view content) const {
  const WholeFile now(path_.c_str());
  return now.error() == 0 && now.text() == content;
}

void CatalogueCopy::prepare(std::string_view content, mode_t permissions) {
  is_prepared_ = can_be_taken_back() && successor_.write(content, permissions);
}

void CatalogueCopy::put_in_place() {
  if (is_prepared_) {
    keep_aside_if_broken(path_.c_str(), old_.text());
    is_done_ = successor_.take_place();
    is_touched_ = is_done_;
  }
}

void CatalogueCopy::copy_over(std::string_view content, bool elsewhere) {
  if (!can_be_taken_back()) {
    return;
  }
  // What is left of a broken file may be all that is left of its content.
  if (!old_.text().empty() && (!elsewhere || is_broken_xml(old_.text()))) {
    const SystemFile beside{path_.view(), ".new"};
    static_cast<void>(copy_file(temporary_share_xml, beside.c_str())); // for what it says
    unlink(beside.c_str());
    return;
  }
  is_touched_ = true;
  unlink(path_.c_str());
  is_done_ = cp(temporary_share_xml, path_.c_str()) == 0 && flush_file(path_.c_str()) && holds(content);
  if (!is_done_) {
    take_back();
  }
}

void CatalogueCopy::store_old() const {
  if (store_file(path_.c_str(), old_.text())) {
    // As far as this process may: its content is what counts.
    static_cast<void>(chown(path_.c_str(), old_status_.st_uid, old_status_.st_gid));
    static_cast<void>(chmod(path_.c_str(), old_status_.st_mode & 07777U));
  }
}

void CatalogueCopy::take_back() {
  is_done_ = false;
  if (!is_touched_) {
    return;
  }
  if (old_.error() != 0) {
    unlink(path_.c_str());
    return;
  }
  store_old();
  if (!holds(old_.text())) {
    unlink(path_.c_str()); // what was copied may take the room of the old file
    store_old();           // a disk that takes nothing back has failed
  }
}

} // namespace nasshare
