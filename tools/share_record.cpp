// The values of a share record: what a command line may put into it.
#include "share_record.h"

#include "base/text.h"
#include "loaded_catalogue.h"
#include "model/automatic_shares.h"
#include "model/domain_mode.h"
#include "model/volumes.h"
#include "nasshare/acl.h"
#include "people_list.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <sys/stat.h>

namespace nasshare::cli {
namespace {

// The files written are made of lines; and the catalogue takes "&amp;" for "&" when it is read: such a name
// or path is another's by then.
void refuse_what_changes(const std::string &text, const std::string &what) {
  refuse_control_characters(text, what);
  if (text.find("&amp;") != std::string::npos) {
    throw Refusal(what + " holds \"&amp;\", which would come back as \"&\"");
  }
}

// As Samba reads the end of a value.
bool ends_as_another(std::string_view path) {
  while (path.ends_with('/')) {
    path.remove_suffix(1);
  }
  return path.ends_with(' ') || path.ends_with('\\') || path.ends_with('"');
}

void assign_whole(std::span<char> field, std::string_view text, const char *what) {
  if (text.size() >= field.size()) {
    throw Refusal(std::string(what) + " is longer than " + std::to_string(field.size() - 1) + " bytes");
  }
  nasshare::assign(field, text);
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
  constexpr std::array<std::string_view, 6> kept{"global", "globals", "homes", "printers", "ipc$", "dfs"};
  if (std::ranges::find(kept, plain) != kept.end() || plain.starts_with("recyclebin-")) {
    throw Refusal("Samba keeps the name \"" + name + "\" for itself");
  }
  if (name.find(']') != std::string::npos) {
    throw Refusal("a share's name cannot hold \"]\"");
  }
  if (name.starts_with(' ') || name.ends_with(' ') || name.find("  ") != std::string::npos) {
    throw Refusal("Samba drops blanks at the ends of a share's name, and all but one of several");
  }
}

std::string access_list(const std::string &text) {
  const bool is_domain = is_configured_domain_mode();
  auto list = to_access_list(text, is_domain);
  for (const auto &account : accounts_of(list)) {
    const bool is_group = account.front() == '@';
    // The guest account and the group of all accounts are part of the list's form.
    if (!is_domain && list != everyone_list(is_domain) &&
        (is_group ? check_group(account.c_str() + 1) : check_user(account.c_str())) != 1) {
      throw Refusal(is_group ? "no group is named \"" + account.substr(1) + "\""
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
  bool is_opened = false;
  const auto set = [&](const char *option, std::span<char> field) {
    const auto given = options.find(option);
    if (given == options.end()) {
      return;
    }
    const auto list = access_list(given->second);
    assign_whole(field, list, option);
    is_opened = is_opened || list == everyone_list(is_domain_mode());
  };
  set("--read", share.read_list);
  set("--write", share.write_list);
  set("--deny", share.invalid_users);
  // Every list but everyone's has the guest denied; left in place, that would except the guest from everyone.
  if (is_opened && !options.contains("--deny")) {
    assign_whole(share.invalid_users, without_guest(share.invalid_users), "--deny");
  }
}

} // namespace

bool is_on_volume(const std::string &path) {
  const auto place = std::filesystem::path(path).lexically_normal().string() + "/";
  return std::ranges::any_of(
      volumes, [&place](int volume) { return place.starts_with(std::string(mount_point(volume)) + "/"); });
}

void set_name(smb_share &share, const std::string &name) {
  if (name.empty()) {
    throw Refusal("the name is empty");
  }
  refuse_what_changes(name, "the name");
  refuse_name_samba_cannot_take(name);
  if (is_usb_disk_name(name)) {
    throw Refusal("names with \"USBDisk1\" are those of USB disks");
  }
  assign_whole(share.name, name, "the name");
}

void set_path(smb_share &share, const std::string &given) {
  refuse_what_changes(given, "the path");
  const std::string path = std::filesystem::path(given).lexically_normal(); // as it is found again
  if (ends_as_another(path)) {
    throw Refusal(
        "Samba would serve another folder for a path that ends in a blank, a backslash or a double quote");
  }
  struct stat folder {};
  if (::stat(path.c_str(), &folder) != 0 || !S_ISDIR(folder.st_mode)) {
    throw Refusal("no such folder: " + given);
  }
  if (!is_on_volume(path)) {
    throw Refusal(given + " is on no data volume (" + SMB_VOL_NAME[0] + ", " + SMB_VOL_NAME[1] + ")");
  }
  assign_whole(share.path, path, "the path");
}

void apply_options(smb_share &share, const Options &options) {
  for (const auto &[option, value] : options) {
    if (option == "--path") {
      set_path(share, value);
    } else if (option == "--comment") {
      refuse_what_changes(value, "the comment");
      assign_whole(share.comment, value, "the comment");
    } else if (option == "--recycle") {
      set_recycle(share, value);
    } else if (option == "--oplocks") {
      assign_whole(share.oplocks, yes_or_no(option, value), "--oplocks");
    } else if (option == "--map-archive") {
      assign_whole(share.map_archive, yes_or_no(option, value), "--map-archive");
    }
  }
  apply_lists(share, options);
}

void set_defaults(smb_share &share) {
  assign_whole(share.oplocks, "yes", "--oplocks");
  assign_whole(share.map_archive, "no", "--map-archive");
}

} // namespace nasshare::cli
