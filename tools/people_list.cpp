#include "people_list.h"

#include <algorithm>
#include <stdexcept>

namespace people_list {
namespace {

constexpr std::string_view guest = "nobody";

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (true) {
    const size_t end = text.find(separator);
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
  if (entry.front() == ' ' || entry.back() == ' ' || std::any_of(entry.begin(), entry.end(), cannot_stand)) {
    throw std::runtime_error("no account can be named \"" + entry + "\"");
  }
}

std::string joined(const std::vector<std::string> &entries, std::string_view hash) {
  std::string text;
  for (const std::string &entry : entries) {
    text += text.empty() ? "" : ",";
    text += std::string(hash) + entry + std::string(hash);
  }
  return text;
}

} // namespace

std::string everyone(bool domain_mode) {
  return domain_mode ? "#nobody#,#@Domain Users#" : "#nobody#,#@allaccount#";
}

std::string to_access_list(std::string_view text, bool domain_mode) {
  if (text.empty()) {
    return {};
  }
  if (text == "everyone") {
    return everyone(domain_mode);
  }
  const std::vector<std::string> entries = split(text, ',');
  std::for_each(entries.begin(), entries.end(), check_entry);
  return joined(entries, "#");
}

std::string from_access_list(std::string_view list) {
  return list == everyone(false) || list == everyone(true) ? "everyone" : joined(accounts(list), "");
}

std::vector<std::string> accounts(std::string_view list) {
  std::vector<std::string> names;
  for (const std::string &entry : split(list, ',')) {
    if (entry.size() > 2) {
      names.push_back(entry.substr(1, entry.size() - 2));
    }
  }
  return names;
}

std::string without_guest(std::string_view list) {
  std::vector<std::string> names = accounts(list);
  names.erase(std::remove(names.begin(), names.end(), guest), names.end());
  return joined(names, "#");
}

} // namespace people_list
