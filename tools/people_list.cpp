// Access lists as people write them, and as the library holds them.
#include "people_list.h"

#include "acl/access_list.h"
#include "acl/everyone.h"

#include <algorithm>
#include <stdexcept>

namespace nasshare::cli {
namespace {

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const auto end = text.find(separator);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) {
      return parts;
    }
    text.remove_prefix(end + 1);
  }
}

void check_entry(const std::string &entry) {
  const auto cannot_stand = [](unsigned char byte) {
    return byte < 0x20 || byte == 0x7f || byte == '#' || byte == '"';
  };
  if (entry.empty() || entry == "@") {
    throw std::runtime_error("the list has an entry without a name");
  }
  if (entry.front() == ' ' || entry.back() == ' ' || std::ranges::any_of(entry, cannot_stand)) {
    throw std::runtime_error("no account can be named \"" + entry + "\"");
  }
}

std::string join(const std::vector<std::string> &entries, const std::string &mark) {
  std::string text;
  for (const auto &entry : entries) {
    text.append(text.empty() ? "" : ",").append(mark).append(entry).append(mark);
  }
  return text;
}

} // namespace

std::string_view everyone_list(bool is_domain_mode) {
  return is_domain_mode ? domain_everyone : everyone;
}

std::string to_access_list(std::string_view text, bool is_domain_mode) {
  if (text.empty()) {
    return {};
  }
  if (text == "everyone") {
    return std::string(everyone_list(is_domain_mode));
  }
  const auto entries = split(text, ',');
  std::ranges::for_each(entries, check_entry);
  return join(entries, "#");
}

std::string from_access_list(std::string_view list) {
  return list == everyone || list == domain_everyone ? "everyone" : join(accounts_of(list), "");
}

std::vector<std::string> accounts_of(std::string_view list) {
  std::vector<std::string> names;
  for (const auto &entry : split(list, ',')) {
    if (entry.size() > 2) {
      names.push_back(entry.substr(1, entry.size() - 2));
    }
  }
  return names;
}

std::string without_guest(std::string_view list) {
  auto names = accounts_of(list);
  std::erase(names, guest);
  return join(names, "#");
}

} // namespace nasshare::cli
