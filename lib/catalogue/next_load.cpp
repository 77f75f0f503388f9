// What the next load will show: the volumes' files are read as a load reads them, and compared with what the
// new file would give each volume.
#include "catalogue/next_load.h"

#include "base/debug.h"
#include "base/linked_list.h"
#include "base/presence.h"
#include "base/text.h"
#include "catalogue/share_xml.h"
#include "model/system_file.h"
#include "model/volumes.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"

#include <algorithm>
#include <utility>

namespace nasshare {
namespace {

// Nothing of it shows: programs read the debug output of the operation that they called.
class Silence {
public:
  Silence() : flag_(std::exchange(smb_dbg_flag, 0)), list_changed_(pss->list_changed) {}
  Silence(const Silence &) = delete;
  Silence &operator=(const Silence &) = delete;
  ~Silence() {
    smb_dbg_flag = flag_;
    pss->list_changed = list_changed_;
  }

private:
  decltype(smb_dbg_flag) flag_;
  decltype(smb_catalogue::list_changed) list_changed_;
};

struct Shares {
  std::int32_t count = 0;
  smb_share *head = nullptr;
  smb_share *tail = nullptr;

  Shares() = default;
  Shares(const Shares &) = delete;
  Shares &operator=(const Shares &) = delete;
  ~Shares() { clear(*this); }
};

void take_list(Shares &shares) {
  shares.count = std::exchange(pss->count, 0);
  shares.head = std::exchange(pss->head, nullptr);
  shares.tail = std::exchange(pss->tail, nullptr);
}

// The shares of the present volumes, each read from the file that has that path.
template <class PathOf> void load(Shares &shares, PathOf path_of) {
  ShareXmlFiles files;
  for (const int volume : volumes) {
    if (is_present(*pss, volume) && has_hidden_partition(*pss, volume)) {
      const auto path = path_of(volume);
      if (exists_or_note(path.c_str())) {
        read_share_xml_or_note(files, path.c_str(), volume);
      }
    }
  }
  check_user_group();
  take_list(shares);
}

bool is_same(const smb_share &a, const smb_share &b) {
  return a.volume_raid == b.volume_raid && view(a.hd_serial) == view(b.hd_serial) &&
         view(a.name) == view(b.name) && view(a.comment) == view(b.comment) && view(a.path) == view(b.path) &&
         view(a.oplocks) == view(b.oplocks) && view(a.map_archive) == view(b.map_archive) &&
         view(a.read_list) == view(b.read_list) && view(a.write_list) == view(b.write_list) &&
         view(a.invalid_users) == view(b.invalid_users) && a.recycle_enable == b.recycle_enable &&
         a.recycle_tree == b.recycle_tree;
}

} // namespace

bool next_load_shows(const char *path) {
  const Watch watch(Watch::Scope::apart);
  const Silence silence;
  Shares shown;
  Shares wanted;
  load(shown, [](int volume) { return system_file(view(pss->vol_hidden_path[volume]), share_xml_name()); });
  load(wanted, [path](int) { return SystemFile{path}; });
  return !watch.seen() && std::ranges::equal(each(shown), each(wanted), is_same);
}

} // namespace nasshare
