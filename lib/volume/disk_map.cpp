// Which disk sits in which bay, as "sg_scan" reports it.
#include "volume/disk_map.h"

#include "base/debug.h"
#include "base/lines.h"
#include "base/text.h"
#include "model/load_verdict.h"
#include "model/volume_identity.h"
#include "model/volumes.h"
#include "nasshare/volume.h"
#include "volume/ata_serial.h"

namespace nasshare {
namespace {

constexpr std::string_view bay_host[] = {"scsi0", "scsi1"};

void read_serial(char (&serial)[name_width], const char *device, int bay) {
  note_disk_answer(bay, read_ata_serial_or_note(serial, device));
  if (serial[0] == '\0') {
    get_serial_number2(serial, bay);
  }
  place(serial, without_line_end(view(serial)));
}

void read_scan_line(smb_catalogue &table, std::string_view line) {
  const auto device = device_of_line(line);
  for (const int bay : bays) {
    if (contains(line, bay_host[bay])) {
      assign(table.hd_device[bay], device);
      table.hd_present[bay] = 1;
      ++table.hd_count;
      read_serial(table.disk_serial[bay], table.hd_device[bay], bay);
    } else if (contains(line, "scsi")) { // the other bay's disk too: wanted
      assign(table.other_dev_name, device);
      table.other_dev_present = 1;
    }
  }
}

} // namespace

std::string_view device_of_line(std::string_view line) {
  constexpr std::string_view folder = "/dev/";
  auto word = take_word(line);
  if (!word.starts_with(folder)) {
    return {};
  }
  word.remove_prefix(folder.size());
  if (word.ends_with(':')) {
    word.remove_suffix(1);
  }
  return word;
}

} // namespace nasshare

using namespace nasshare;

int get_scsi_map(smb_catalogue *table) {
  if (table == nullptr) {
    return -1;
  }
  const LoadWatch watch;
  CommandLines scan("sg_scan /dev/sda /dev/sdb /dev/sdc /dev/sdd /dev/sde /dev/sdf /dev/sdg /dev/sdh"
                    " /dev/sdi /dev/sdj /dev/sdk /dev/sdl /dev/sdm /dev/sdn /dev/sdo /dev/sdp");
  for (const auto line : scan) {
    read_scan_line(*table, line);
  }
  const int status = scan.close();
  trace_debug("##hd device name from sda ~ sdp\n");
  trace_debug("\thd_device_name 0 = %s\n", table->hd_device[0]);
  trace_debug("\thd_device_name 1 = %s\n", table->hd_device[1]);
  trace_debug("HD scsi0 = [%s]\n", table->disk_serial[0]);
  trace_debug("HD scsi1= [%s]\n", table->disk_serial[1]); // without the blank: wanted, scripts look for it
  return status;
}
