// The configuration database of the appliance, /etc/NAS_CFG/config.xml.
#include "nasshare/platform.h"

#include "config_file.h"
#include "config_tree.h"
#include "support/program_lock.h"
#include "support/store.h"
#include "support/text.h"
#include "support/trouble.h"
#include "support/xml.h"

#include <cerrno>
#include <charconv>
#include <limits>
#include <set>
#include <sys/stat.h>
#include <system_error>

using nasshare::XmlDocument;

namespace platform {
namespace {

constexpr const char *folder_path = "/etc/NAS_CFG";
constexpr const char *database_path = "/etc/NAS_CFG/config.xml";
constexpr const char *broken_path = "/etc/NAS_CFG/config.xml.bad";
constexpr const char *root_name = "config";

// The parsed text of a database; null when it is none.
XmlDocument parse_database(std::string_view text) {
  XmlDocument database = nasshare::parse_xml(text);
  const xmlNode *root = database ? xmlDocGetRootElement(database.get()) : nullptr;
  const bool is_database =
      root != nullptr && std::string_view(reinterpret_cast<const char *>(root->name)) == root_name;
  return is_database ? std::move(database) : nullptr;
}

// Keys whose last reading failed. A program takes such a value for missing and may want to store its default:
// that must not replace a value that is there.
class UnreadKeys {
public:
  void remember(const char *key, bool unread) noexcept {
    try {
      if (unread) {
        keys_.insert(key);
      } else {
        keys_.erase(key);
      }
    } catch (...) { // memory is too short to tell one key from another
      all_ = all_ || unread;
    }
  }
  [[nodiscard]] bool contain(const std::string &key) const { return all_ || keys_.contains(key); }

private:
  std::set<std::string> keys_;
  bool all_ = false;
};

UnreadKeys unread_keys;

struct Reading {
  std::string value;
  int error = 0; // what kept the database from being read, as errno has it
};

Reading read_value(const char *key) {
  const std::vector<std::string> path = key_path(key);
  if (path.empty()) {
    return {};
  }
  const std::optional<std::string> text = read_file(database_path);
  if (!text) {
    return {{}, errno};
  }
  nasshare::load_begins();
  const XmlDocument database = parse_database(*text);
  if (nasshare::load_was_troubled()) {
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

std::string_view without_blanks_around(std::string_view text) {
  const size_t begin = text.find_first_not_of(" \t\r\n");
  if (begin == std::string_view::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

int number_in(std::string_view value) {
  const std::string_view digits = without_blanks_around(value);
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (end != digits.data() + digits.size()) {
    return 0;
  }
  if (error == std::errc::result_out_of_range) {
    return digits.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
  }
  return error == std::errc() ? number : 0;
}

// What cannot be read back is not stored: a text that XML cannot hold, an element deeper than the parser
// goes.
bool reads_back(std::string_view text, const std::vector<std::string> &path, const std::string &value) {
  const XmlDocument database = parse_database(text);
  return database && find_value(database.get(), path) == value;
}

// A database that cannot be parsed is kept as config.xml.bad for whoever wants to mend it, and a new one is
// begun: an appliance that could store nothing any more would be worse off. The file only counts as broken
// when it was read whole, and with memory enough to understand it.
XmlDocument open_for_change() {
  const std::optional<std::string> text = read_file(database_path);
  if (!text) {
    return nullptr;
  }
  if (without_blanks_around(*text).empty()) {
    return nasshare::new_xml(root_name);
  }
  nasshare::load_begins();
  XmlDocument database = parse_database(*text);
  if (!database && !nasshare::load_was_troubled() && keep_aside(database_path, broken_path)) {
    database = nasshare::new_xml(root_name);
  }
  return database;
}

void set_value(const std::string &key, const std::string &value) {
  const std::vector<std::string> path = key_path(key);
  if (path.empty() || !nasshare::xml_can_hold(value) || unread_keys.contain(key)) {
    return;
  }
  mkdir(folder_path, 0755);
  const nasshare::ProgramLock lock(nasshare::configuration_lock);
  const XmlDocument database = open_for_change();
  if (!database || find_value(database.get(), path) == value || !store_value(database.get(), path, value)) {
    return;
  }
  const nasshare::XmlText text = nasshare::compose_xml(database.get());
  if (text && reads_back(view(text), path, value)) {
    // The database holds the domain password: a new file is for its owner alone.
    nasshare::store_file(database_path, view(text), nasshare::Mode::kept_or_private);
  }
}

} // namespace
} // namespace platform

extern "C" int xml_get_int(const char *key) {
  const platform::Errno error;
  const platform::Reading reading = platform::reading_of(key);
  error.tell(reading);
  return platform::number_in(reading.value);
}

extern "C" void xml_get_str(const char *key, int size, char *destination) {
  if (destination == nullptr || size <= 0) {
    return;
  }
  const platform::Errno error;
  const platform::Reading reading = platform::reading_of(key);
  nasshare::assign({destination, static_cast<std::size_t>(size)}, reading.value);
  error.tell(reading);
}

extern "C" void xml_set_str(const char *key, const char *value) {
  if (key == nullptr || value == nullptr) {
    return;
  }
  try {
    platform::set_value(key, value);
  } catch (...) { // memory is short: the old value stays
  }
}
