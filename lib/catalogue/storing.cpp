// How every operation that changed the share list ends: write, list, empty, spread, flush, reload.
#include "catalogue/storing.h"

#include "catalogue/share_xml_writer.h"
#include "catalogue/temporary_share_xml.h"
#include "nasshare/catalogue.h"
#include "nasshare/support.h"

#include <unistd.h>

namespace nasshare {
namespace {

bool spread_and_remove_temporary(std::string_view catalogue, int first_volume) {
  const bool is_spread = spread_catalogue(catalogue, first_volume);
  unlink(temporary_share_xml);
  return is_spread;
}

} // namespace

int store_catalogue(const Watch &change, ProgramLock &lock, const Storing &how) {
  XmlComposer file("config");
  const bool is_written = !change.seen() && write_share_xml(file, temporary_share_xml) == 0;
  if (how.listing == Listing::yes) {
    List_Smb_Node();
  }
  Free_All_List();
  if (!is_written || !spread_and_remove_temporary(file.text(), how.first_volume)) {
    return 0;
  }
  sync();
  lock.release();
  run_smbcom();
  return 1;
}

int refuse_change() {
  Free_All_List();
  return 0;
}

} // namespace nasshare
