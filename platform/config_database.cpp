// The configuration database of the appliance: /etc/NAS_CFG/config.xml, root element "config".
#include "base/decimal.h"
#include "base/file_replacement.h"
#include "base/keep_aside.h"
#include "base/program_lock.h"
#include "base/text.h"
#include "base/watch.h"
#include "base/whole_file.h"
#include "base/xml_characters.h"
#include "base/xml_reader.h"
#include "base/xml_writer.h"
#include "config_tree.h"
#include "nasshare/platform.h"
#include "unread_keys.h"

#include <cerrno>
#include <sys/stat.h>

namespace nasshare::platform {
namespace {

constexpr const char *folder_path = "/etc/NAS_CFG";
constexpr const char *database_path = "/etc/NAS_CFG/config.xml";
constexpr const char *configuration_lock = "/run/nasshare-configuration.lock"; // of the locks, taken last
constexpr const char *database_root = "config";

UnreadKeys unread_keys;

// The parsed text of a database; null when it is none.
XmlDocument parse_database_or_note(std::string_view text) {
  auto database = parse_or_note(text);
  return is_named(root_of(database), database_root) ? std::move(database) : nullptr;
}

bool can_be_read(const WholeFile &file) {
  return file.error() == 0 || file.error() == ENOENT; // without a file every key is absent
}

struct Reading {
  std::string value;
  int error = 0; // what kept the database from being read, as errno has it
};

Reading read_value(const char *key) {
  const auto path = key_path(key);
  if (path.empty()) {
    return {};
  }
  const WholeFile file(database_path);
  if (!can_be_read(file)) {
    return {{}, file.error()};
  }
  const Watch watch;
  const auto database = parse_database_or_note(file.text());
  if (watch.seen()) {
    return {{}, ENOMEM};
  }
  return {database ? find_value(database.get(), path).value_or("") : ""};
}

Reading reading_of(const char *key) noexcept {
  if (key == nullptr) {
    return {};
  }
  Reading reading;
  try {
    reading = read_value(key);
  } catch (...) {
    reading = {{}, ENOMEM};
  }
  unread_keys.remember(key, reading.error != 0);
  return reading;
}

// Tells the caller through errno that a value is unknown rather than absent; else errno stays as it was.
class Errno {
public:
  void tell(const Reading &reading) const { errno = reading.error != 0 ? reading.error : before_; }

private:
  int before_ = errno;
};

// What cannot be read back is not stored: a text that XML cannot hold, an element deeper than the parser
// goes.
bool reads_back(std::string_view text, const KeyPath &path, const std::string &value) {
  const auto database = parse_database_or_note(text);
  return database && find_value(database.get(), path) == value;
}

// A database that cannot be parsed is kept as config.xml.bad for whoever wants to mend it, and a new one is
// begun: an appliance that could store nothing any more would be worse off. The file only counts as broken
// when it was read whole, and with memory enough to understand it.
XmlDocument open_for_change() {
  const WholeFile file(database_path);
  if (!can_be_read(file)) {
    return nullptr;
  }
  if (trimmed(file.text()).empty()) {
    return new_xml_or_note(database_root);
  }
  const Watch watch;
  auto database = parse_database_or_note(file.text());
  if (!database && !watch.seen() && keep_aside(database_path)) {
    database = new_xml_or_note(database_root);
  }
  return database;
}

void set_value(const std::string &key, const std::string &value) {
  const auto path = key_path(key);
  if (path.empty() || !can_xml_hold(value) || unread_keys.contain(key)) {
    return;
  }
  mkdir(folder_path, 0755);
  const ProgramLock lock(configuration_lock);
  const auto database = open_for_change();
  if (!database || find_value(database.get(), path) == value || !store_value(database.get(), path, value)) {
    return;
  }
  const auto text = compose_or_note(database.get());
  if (text && reads_back(view(text), path, value)) {
    // The database holds the domain password: a new file is for its owner alone. Storing a value has no
    // result.
    static_cast<void>(store_file(database_path, view(text), Mode::kept_or_private));
  }
}

} // namespace
} // namespace nasshare::platform

using namespace nasshare;

int xml_get_int(const char *key) {
  const platform::Errno error;
  const auto reading = platform::reading_of(key);
  error.tell(reading);
  return whole_decimal(reading.value);
}

void xml_get_str(const char *key, int size, char *destination) {
  if (destination == nullptr || size <= 0) {
    return;
  }
  const platform::Errno error;
  const auto reading = platform::reading_of(key);
  assign({destination, static_cast<std::size_t>(size)}, reading.value);
  error.tell(reading);
}

void xml_set_str(const char *key, const char *value) {
  if (key == nullptr || value == nullptr) {
    return;
  }
  try {
    platform::set_value(key, value);
  } catch (...) { // memory is short: the old value stays
  }
}
