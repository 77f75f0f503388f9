// The configuration database: a key, a value, then the file.
#include "fuzz.h"
#include "machine.h"

#include "base/xml_reader.h"
#include "nasshare/platform.h"

#include <vector>

namespace nasshare::fuzzing {
namespace {

constexpr const char *database = "/etc/NAS_CFG/config.xml";

std::string value_of(const std::string &key, int size = 4096) {
  std::vector<char> field(static_cast<std::size_t>(size), 'x');
  xml_get_str(key.c_str(), size, field.data());
  auto text = view(field);
  require(text.size() < field.size(), "a value ends within its field");
  return std::string(text);
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  auto key = parts.next_string();
  auto value = parts.next_string();
  auto file = std::string(parts.next());
  machine::file(database, file);

  auto before = value_of(key);
  auto other = value_of("/system_mgr/samba/workgroup");
  for (int size : {1, 2, 16, 512}) {
    require(before.starts_with(value_of(key, size)), "a short field gets the beginning");
  }
  xml_get_int(key.c_str());
  bool broken = !parse_or_note(file);

  xml_set_str(key.c_str(), value.c_str());
  auto after = value_of(key);
  auto stored = machine::content(database);
  require(after == before || after == cut_text(value, 4095), "a value is stored, or the old one stays");
  require(stored == file || parse_or_note(*stored), "what is stored can be read");
  if (!broken && !key.starts_with("/system_mgr/samba/workgroup")) {
    require(value_of("/system_mgr/samba/workgroup") == other, "other values stay");
  }
  if (broken && stored != file && !file.empty()) {
    auto aside = machine::content("/etc/NAS_CFG/config.xml.bad");
    require(aside ? *aside == file : file.find_first_not_of(" \t\r\n") == std::string::npos,
            "a broken database is kept aside");
  }
  xml_set_str(key.c_str(), value.c_str());
  require(machine::content(database) == stored, "storing twice equals once");
}

} // namespace nasshare::fuzzing
