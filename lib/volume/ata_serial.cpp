// A disk's serial number by ATA IDENTIFY DEVICE, sent through SG_IO as ATA PASS-THROUGH (16) (SAT, ACS).
#include "volume/ata_serial.h"

#include "base/debug.h"
#include "base/owners.h"
#include "base/text.h"
#include "base/watch.h"
#include "model/load_verdict.h"
#include "model/volume_identity.h"
#include "nasshare/volume.h"

#include <array>
#include <fcntl.h>
#include <scsi/sg.h>
#include <sys/ioctl.h>

namespace nasshare {
namespace {

constexpr std::size_t serial_width = sizeof smb_catalogue::disk_serial[0];

using Block = std::array<unsigned char, 512>;

// ATA PASS-THROUGH (16) of IDENTIFY DEVICE: PIO data-in, one block from the device.
std::array<unsigned char, 16> identify_command() {
  std::array<unsigned char, 16> command{};
  command[0] = 0x85;  // ATA PASS-THROUGH (16)
  command[1] = 0x08;  // protocol: PIO data-in
  command[2] = 0x0E;  // from the device, in blocks, as many as the sector count says
  command[6] = 0x01;  // sector count
  command[14] = 0xEC; // IDENTIFY DEVICE
  return command;
}

// A check condition is accepted: pass-through commands report through sense data.
bool completed(const sg_io_hdr_t &request) {
  if (request.status != 0 && request.status != 2) {
    trace_debug("SG_IO: bad status: 0x%x\n", request.status);
    return false;
  }
  if (request.host_status != 0) {
    trace_debug("SG_IO: bad host status: 0x%x\n", request.host_status);
    return false;
  }
  if (request.driver_status != 0 && request.driver_status != 8) {
    trace_debug("SG_IO: bad driver status: 0x%x\n", request.driver_status);
    return false;
  }
  return true;
}

// What a device says once, after a reset or while it wakes (SPC, sense keys in fixed and descriptor format):
// it has not told anything yet.
bool is_asked_too_early(const sg_io_hdr_t &request) {
  constexpr unsigned char check_condition = 2;
  constexpr std::array<unsigned, 3> passing{0x2, 0x6, 0xB}; // not ready, unit attention, aborted
  const std::span sense(request.sbp, request.mx_sb_len);
  const bool has_descriptors = (sense[0] & 0x7FU) >= 0x72U;
  const unsigned key = sense[has_descriptors ? 1 : 2] & 0xFU;
  return request.status == check_condition && std::ranges::find(passing, key) != passing.end();
}

// Words 10 to 19 hold the serial number, the two characters of each word swapped.
Text<21> serial_number(const Block &identify) {
  std::array<char, 21> characters{};
  for (std::size_t i = 0; i < 20; i += 2) {
    characters[i] = static_cast<char>(identify[20 + i + 1]);
    characters[i + 1] = static_cast<char>(identify[20 + i]);
  }
  const std::string_view serial = characters.data();
  const auto first = serial.find_first_not_of(' ');
  return {first == std::string_view::npos ? std::string_view() : serial.substr(first)};
}

} // namespace

bool read_ata_serial_or_note(char *destination, const char *device_name) {
  const std::span field(destination, serial_width);
  const Text<path_width> path{"/dev/", device_name};
  const Descriptor device(open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (!device) {
    note_file_error();
    trace_debug("Cannot open %s device!\n", path.c_str());
    assign(field, unasked_serial);
    return false;
  }

  Block identify{};
  std::array<unsigned char, 32> sense{};
  auto command = identify_command();
  sg_io_hdr_t request{};
  request.interface_id = 'S';
  request.dxfer_direction = SG_DXFER_FROM_DEV;
  request.cmd_len = command.size();
  request.mx_sb_len = sense.size();
  request.dxfer_len = identify.size();
  request.dxferp = identify.data();
  request.cmdp = command.data();
  request.sbp = sense.data();
  request.timeout = 15000; // milliseconds
  if (ioctl(device.get(), SG_IO, &request) < 0) {
    note_file_error();
    trace_debug("SG_IO: ioctl fail\n");
    assign(field, unasked_serial);
    return false;
  }
  const bool has_answered = completed(request);
  if (has_answered) {
    assign(field, serial_number(identify).view());
  }
  return has_answered && !is_asked_too_early(request);
}

} // namespace nasshare

using namespace nasshare;

void get_serial_number(char *destination, const char *device_name) {
  if (destination != nullptr && device_name != nullptr) {
    const LoadWatch watch;
    static_cast<void>(read_ata_serial_or_note(destination, device_name)); // it has no result
  }
}
