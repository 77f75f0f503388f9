#include "share_record.h"

#include "loaded_catalogue.h"
#include "nasshare/acl.h"
#include "people_list.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <filesystem>
#include <vector>

#include <sys/stat.h>

namespace cli {
namespace {

template <size_t width> void assign(char (&field)[width], const std::string &text, const char *what) {
  if (text.size() >= width) {
    throw Refusal(std::string(what) + " is longer than " + std::to_string(width - 1) + " bytes");
  }
  std::memset(field, 0, width);
  std::copy(text.begin(), text.end(), field);
}

// Samba reads a section of these names as something else than a share, or smb.conf has one already; and a
// name ends at "]".
void refuse_name_samba_cannot_take(const std::string &name) {
  std::string plain;
  for (const char character : name) {
    if (character != ' ') {
      plain += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
  }
  const std::vector<std::string> kept{"global", "homes", "printers", "ipc$", "dfs"};
  if (std::find(kept.begin(), kept.end(), plain) != kept.end() || plain.starts_with("recyclebin-")) {
    throw Refusal("Samba keeps the name \"" + name + "\" for itself");
  }
  if (name.find(']') != std::string::npos) {
    throw Refusal("a share's name cannot hold \"]\"");
  }
}

std::string access_list(const std::string &text) {
  const bool domain = in_domain_mode();
  std::string list = people_list::to_access_list(text, domain);
  for (const std::string &account : people_list::accounts(list)) {
    const bool group = account.front() == '@';
    // The guest account and the group of all accounts are part of the list's form.
    if (!domain && list != people_list::everyone(domain) &&
        (group ? check_group(account.c_str() + 1) : check_user(account.c_str())) != 1) {
      throw Refusal(group ? "no group is named \"" + account.substr(1) + "\""
                          : "no user is named \"" + account + "\"");
    }
  }
  return list;
}

const char *yes_or_no(const std::string &option, const std::string &value) {
  if (value != "yes" && value != "no") {
    throw Usage(option + " takes yes or no, not \"" + value + "\"");
  }
  return value == "yes" ? "yes" : "no";
}

void set_recycle(smb_share &share, const std::string &value) {
  if (value != "flat" && value != "tree" && value != "off") {
    throw Usage("--recycle takes flat, tree or off, not \"" + value + "\"");
  }
  share.recycle_enable = value == "off" ? 0 : 1;
  share.recycle_tree = value == "tree" ? 1 : 0;
}

void apply_lists(smb_share &share, const Options &options) {
  bool opened = false;
  const auto set = [&](const char *option, char(&field)[12288]) {
    const auto given = options.find(option);
    if (given == options.end()) {
      return;
    }
    const std::string list = access_list(given->second);
    assign(field, list, option);
    opened = opened || list == people_list::everyone(smbshare.ads_enable == 1);
  };
  set("--read", share.read_list);
  set("--write", share.write_list);
  set("--deny", share.invalid_users);
  // Every list but everyone's has the guest denied; left in place, that would except the guest from everyone.
  if (opened && options.find("--deny") == options.end()) {
    assign(share.invalid_users, people_list::without_guest(share.invalid_users), "--deny");
  }
}

} // namespace

bool is_on_volume(const std::string &path) {
  const std::string place = std::filesystem::path(path).lexically_normal().string() + "/";
  return std::any_of(SMB_VOL_NAME, SMB_VOL_NAME + 2, [&](const std::string &volume) {
    return place.compare(0, volume.size() + 1, volume + "/") == 0;
  });
}

void set_name(smb_share &share, const std::string &name) {
  if (name.empty()) {
    throw Refusal("the name is empty");
  }
  refuse_control_characters(name, "the name");
  refuse_name_samba_cannot_take(name);
  assign(share.name, name, "the name");
}

void set_path(smb_share &share, const std::string &path) {
  refuse_control_characters(path, "the path");
  struct stat folder {};
  if (::stat(path.c_str(), &folder) != 0 || !S_ISDIR(folder.st_mode)) {
    throw Refusal("no such folder: " + path);
  }
  if (!is_on_volume(path)) {
    throw Refusal(path + " is on no data volume (" + SMB_VOL_NAME[0] + ", " + SMB_VOL_NAME[1] + ")");
  }
  assign(share.path, path, "the path");
}

void apply_options(smb_share &share, const Options &options) {
  for (const auto &[option, value] : options) {
    if (option == "--path") {
      set_path(share, value);
    } else if (option == "--comment") {
      refuse_control_characters(value, "the comment");
      assign(share.comment, value, "the comment");
    } else if (option == "--recycle") {
      set_recycle(share, value);
    } else if (option == "--oplocks") {
      assign(share.oplocks, yes_or_no(option, value), "--oplocks");
    } else if (option == "--map-archive") {
      assign(share.map_archive, yes_or_no(option, value), "--map-archive");
    }
  }
  apply_lists(share, options);
}

void set_defaults(smb_share &share) {
  assign(share.oplocks, "yes", "--oplocks");
  assign(share.map_archive, "no", "--map-archive");
}

} // namespace cli
