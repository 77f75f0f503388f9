// What the appliance's kernel answers and the bench-top machine's does not: /proc/mdstat, ATA IDENTIFY
// through SG_IO, and the requests of the interface egiga0. The answers come from the machine's description
// below /run/appliance. Everything else goes on to the C library.
//
//   mdstat              what /proc/mdstat holds; without it the file does not exist
//   disks/sda           lines "scsi scsi0", "serial TEXT", "serial_bytes HEX" (20 bytes as the disk
//                       sends them), "status N", "sense_key N" (fixed format), "host_status N",
//                       "driver_status N", and "fail" when the request itself fails
//   egiga0              hardware address, such as 02:00:00:0a:1b:02
//   driver-serial-0|1   20 bytes that the driver leaves for that bay
//   requests            log of the requests that were answered here
//
// Loaded with LD_PRELOAD, or linked into a program, whose definitions win over the C library's.
//
// A program calls what its headers make of open, fopen and ioctl: on 32 bits, "open64" where files are large,
// "__ioctl_time64" where times are, and "__open_2" in a program built with _FORTIFY_SOURCE. Every such name
// is answered, so the headers must leave the names alone here.
#undef _FILE_OFFSET_BITS
#undef _TIME_BITS

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <net/if.h>
#include <optional>
#include <scsi/sg.h>
#include <span>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace nasshare::appliance {
namespace {

constexpr const char *described_mdstat = "/run/appliance/mdstat";
constexpr std::size_t identify_size = 512;
constexpr std::size_t serial_offset = 20;
constexpr std::size_t serial_size = 20;

using Fopen = FILE *(*)(const char *, const char *);
using Open = int (*)(const char *, int, ...);
using OpenExisting = int (*)(const char *, int);
using Ioctl = int (*)(int, unsigned long, ...);

template <typename Function> Function next(const char *name) {
  void *const symbol = dlsym(RTLD_NEXT, name);
  Function function = nullptr;
  static_assert(sizeof function == sizeof symbol);
  std::memcpy(&function, &symbol, sizeof function);
  return function;
}

const char *redirected(const char *path) {
  return path != nullptr && std::strcmp(path, "/proc/mdstat") == 0 ? described_mdstat : path;
}

FILE *next_fopen(const char *path, const char *mode) {
  static const auto function = next<Fopen>("fopen");
  return function(path, mode);
}

// Nothing where there is no such file.
std::optional<std::string> content(const std::string &path) {
  FILE *const file = next_fopen(path.c_str(), "re");
  if (file == nullptr) {
    return std::nullopt;
  }
  std::string text;
  std::array<char, 4096> part{};
  for (std::size_t length = 0; (length = std::fread(part.data(), 1, part.size(), file)) > 0;) {
    text.append(part.data(), length);
  }
  std::fclose(file);
  return text;
}

void log_request(const std::string &line) {
  if (FILE *const file = next_fopen("/run/appliance/requests", "ae"); file != nullptr) {
    std::fprintf(file, "%s\n", line.c_str());
    std::fclose(file);
  }
}

// Bytes written in hexadecimal, with blanks or colons between them or nothing.
std::string bytes_of(std::string_view hex) {
  static constexpr std::string_view digits = "0123456789abcdef";
  std::string bytes;
  std::optional<std::size_t> high;
  for (const char character : hex) {
    const std::size_t value = digits.find(static_cast<char>(character | 0x20));
    if (value == std::string_view::npos) {
      continue;
    }
    if (high) {
      bytes.push_back(static_cast<char>(*high * digits.size() + value));
      high.reset();
    } else {
      high = value;
    }
  }
  return bytes;
}

std::string hex_of(std::span<const unsigned char> bytes) {
  std::string text;
  std::array<char, 3> pair{};
  for (const unsigned char byte : bytes) {
    std::snprintf(pair.data(), pair.size(), "%02x", static_cast<unsigned>(byte));
    text += pair.data();
  }
  return text;
}

struct Disk {
  bool fails = false;
  std::string serial_bytes = std::string(serial_size, '\0');
  unsigned char status = 0;
  unsigned char sense_key = 0;
  unsigned short host_status = 0;
  unsigned short driver_status = 0;
};

// As a disk sends it: padded with blanks, the two characters of each word swapped.
std::string as_sent(std::string_view serial) {
  std::string text(serial.substr(0, serial_size));
  text.resize(serial_size, ' ');
  for (std::size_t i = 0; i < serial_size; i += 2) {
    std::swap(text[i], text[i + 1]);
  }
  return text;
}

unsigned char number(std::string_view text) {
  return static_cast<unsigned char>(std::strtoul(std::string(text).c_str(), nullptr, 0));
}

void read_line(Disk &disk, std::string_view line) {
  const std::size_t blank = std::min(line.find(' '), line.size());
  const std::string_view key = line.substr(0, blank);
  const std::string_view value = line.substr(std::min(blank + 1, line.size()));
  if (key == "serial") {
    disk.serial_bytes = as_sent(value);
  } else if (key == "serial_bytes") {
    disk.serial_bytes = bytes_of(value);
  } else if (key == "status") {
    disk.status = number(value);
  } else if (key == "sense_key") {
    disk.sense_key = number(value);
  } else if (key == "host_status") {
    disk.host_status = number(value);
  } else if (key == "driver_status") {
    disk.driver_status = number(value);
  } else if (key == "fail") {
    disk.fails = true;
  }
}

std::optional<Disk> described_disk(const std::string &name) {
  const std::optional<std::string> text = content("/run/appliance/disks/" + name);
  if (!text) {
    return std::nullopt;
  }
  Disk disk;
  for (std::string_view rest = *text; !rest.empty();) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    read_line(disk, rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return disk;
}

// "sda" when the descriptor is open on /dev/sda, else empty.
std::string device_name(int descriptor) {
  constexpr std::string_view folder = "/dev/";
  std::array<char, 256> target{};
  const std::string entry = "/proc/self/fd/" + std::to_string(descriptor);
  const ssize_t length = readlink(entry.c_str(), target.data(), target.size());
  const std::string_view path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  return path.starts_with(folder) ? std::string(path.substr(folder.size())) : std::string();
}

std::optional<Disk> disk_behind(const std::string &name) {
  return name.empty() ? std::nullopt : described_disk(name);
}

bool is_identify(const sg_io_hdr &request) {
  constexpr unsigned char pass_through_16 = 0x85;
  constexpr unsigned char identify_device = 0xec;
  return request.interface_id == 'S' && request.dxfer_direction == SG_DXFER_FROM_DEV &&
         request.cmdp != nullptr && request.cmd_len == 16 && request.cmdp[0] == pass_through_16 &&
         request.cmdp[1] == 0x08 && request.cmdp[2] == 0x0e && request.cmdp[6] == 1 &&
         request.cmdp[14] == identify_device && request.dxferp != nullptr &&
         request.dxfer_len >= identify_size;
}

int identify(const Disk &disk, const std::string &name, sg_io_hdr &request) {
  log_request("SG_IO " + name + " command=" +
              hex_of({request.cmdp, request.cmdp != nullptr ? request.cmd_len : std::size_t{0}}) +
              " data=" + std::to_string(request.dxfer_len) + " sense=" + std::to_string(request.mx_sb_len) +
              " timeout=" + std::to_string(request.timeout));
  if (disk.fails || !is_identify(request)) {
    errno = disk.fails ? EIO : EINVAL;
    return -1;
  }
  std::array<char, identify_size> data{};
  std::copy_n(disk.serial_bytes.begin(), std::min(disk.serial_bytes.size(), serial_size),
              data.begin() + serial_offset);
  std::memcpy(request.dxferp, data.data(), data.size());
  if (disk.sense_key != 0 && request.sbp != nullptr && request.mx_sb_len > 2) {
    request.sbp[0] = 0x70; // a current error in fixed format
    request.sbp[2] = disk.sense_key;
  }
  request.status = disk.status;
  request.masked_status = static_cast<unsigned char>((disk.status >> 1) & 0x1f);
  request.host_status = disk.host_status;
  request.driver_status = disk.driver_status;
  return 0;
}

int no_device() {
  errno = ENODEV;
  return -1;
}

int hardware_address(ifreq &request) {
  log_request("SIOCGIFHWADDR egiga0");
  const std::string address = bytes_of(content("/run/appliance/egiga0").value_or(""));
  if (address.empty()) {
    return no_device();
  }
  constexpr unsigned short ethernet = 1;
  request.ifr_hwaddr.sa_family = ethernet;
  std::copy_n(address.begin(), std::min(address.size(), std::size_t{6}), request.ifr_hwaddr.sa_data);
  return 0;
}

int driver_serial(ifreq &request) {
  constexpr std::int32_t read_serial = 2;
  if (request.ifr_data == nullptr) {
    errno = EFAULT;
    return -1;
  }
  std::array<std::int32_t, 2> command{};
  std::memcpy(command.data(), request.ifr_data, sizeof command);
  log_request("SIOCDEVPRIVATE egiga0 " + std::to_string(command[0]) + " " + std::to_string(command[1]));
  const auto answer = content("/run/appliance/driver-serial-" + std::to_string(command[1]));
  if (command[0] != read_serial || !answer) {
    return no_device();
  }
  std::memcpy(request.ifr_data, answer->data(), std::min(answer->size(), serial_size));
  return 0;
}

bool is_for_egiga0(const void *request) {
  return request != nullptr &&
         std::strncmp(static_cast<const ifreq *>(request)->ifr_name, "egiga0", IFNAMSIZ) == 0;
}

int answered(Ioctl next_ioctl, int descriptor, unsigned long request, void *argument) {
  if (request == SG_IO && argument != nullptr) {
    const std::string name = device_name(descriptor);
    if (const auto disk = disk_behind(name); disk) {
      return identify(*disk, name, *static_cast<sg_io_hdr *>(argument));
    }
  }
  if (request == SIOCGIFHWADDR && is_for_egiga0(argument)) {
    return hardware_address(*static_cast<ifreq *>(argument));
  }
  if (request == SIOCDEVPRIVATE && is_for_egiga0(argument)) {
    return driver_serial(*static_cast<ifreq *>(argument));
  }
  return next_ioctl(descriptor, request, argument);
}

mode_t creation_mode(int flags, va_list arguments) {
  return (flags & (O_CREAT | __O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace
} // namespace nasshare::appliance

using namespace nasshare::appliance;

#define STAND_IN extern "C" __attribute__((visibility("default")))

STAND_IN int ioctl(int descriptor, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void *const argument = va_arg(arguments, void *);
  va_end(arguments);
  static const auto next_ioctl = next<Ioctl>("ioctl");
  return answered(next_ioctl, descriptor, request, argument);
}

STAND_IN FILE *fopen(const char *path, const char *mode) {
  return next_fopen(redirected(path), mode);
}

STAND_IN FILE *fopen64(const char *path, const char *mode) {
  static const auto next_fopen64 = next<Fopen>("fopen64");
  return next_fopen64(redirected(path), mode);
}

STAND_IN int open(const char *path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = creation_mode(flags, arguments);
  va_end(arguments);
  static const auto next_open = next<Open>("open");
  return next_open(redirected(path), flags, mode);
}

STAND_IN int open64(const char *path, int flags, ...) {
  va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = creation_mode(flags, arguments);
  va_end(arguments);
  static const auto next_open64 = next<Open>("open64");
  return next_open64(redirected(path), flags, mode);
}

STAND_IN int __open_2(const char *path, int flags) {
  static const auto next_open_2 = next<OpenExisting>("__open_2");
  return next_open_2(redirected(path), flags);
}

STAND_IN int __open64_2(const char *path, int flags) {
  static const auto next_open64_2 = next<OpenExisting>("__open64_2");
  return next_open64_2(redirected(path), flags);
}

#if __TIMESIZE == 32
STAND_IN int __ioctl_time64(int descriptor, unsigned long request, ...) noexcept {
  va_list arguments;
  va_start(arguments, request);
  void *const argument = va_arg(arguments, void *);
  va_end(arguments);
  static const auto next_ioctl = next<Ioctl>("__ioctl_time64");
  return answered(next_ioctl, descriptor, request, argument);
}
#endif
