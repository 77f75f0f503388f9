// The shares of the catalogue: what there is, and how it changes.
#include "base/linked_list.h"
#include "commands.h"
#include "loaded_catalogue.h"
#include "nasshare/acl.h"
#include "people_list.h"
#include "share_record.h"

#include <array>
#include <cstdio>
#include <utility>

namespace nasshare::cli {
namespace {

// Shares of USB disks stand in no file: what is said about them here would not last.
std::unique_ptr<smb_share> load_stored_share(const std::string &name) {
  auto share = load_share(name);
  if (!is_on_volume(share->path)) {
    throw Refusal("the share \"" + name +
                  "\" is a USB disk's: it comes and goes with the disk, open to everyone");
  }
  return share;
}

} // namespace

int list(const Words &words) {
  expect(words, 1, 1, "list");
  const LoadedCatalogue catalogue;
  for (const auto &share : each(*pss)) {
    std::printf("%s\t%s\t%s\n", share.name, share.path, share.comment);
  }
  return tells_whole_list() ? done : refused;
}

int show(const Words &words) {
  expect(words, 2, 2, "show NAME");
  const std::unique_ptr<smb_share> share = load_share(words[1]);
  const char *const recycle = share->recycle_enable != 1 ? "off" : share->recycle_tree == 1 ? "tree" : "flat";
  const std::array<std::pair<const char *, std::string>, 9> rows{{
      {"name", share->name},
      {"comment", share->comment},
      {"path", share->path},
      {"read", from_access_list(share->read_list)},
      {"write", from_access_list(share->write_list)},
      {"deny", from_access_list(share->invalid_users)},
      {"recycle", recycle},
      {"oplocks", share->oplocks},
      {"map-archive", share->map_archive},
  }};
  for (const auto &[what, value] : rows) {
    std::printf("%-12s %s\n", what, value.c_str());
  }
  return done;
}

int add(const Words &words) {
  expect(words, 3, words.size(), "add NAME PATH [OPTION]...");
  auto share = std::make_unique<smb_share>();
  set_name(*share, words[1]);
  set_path(*share, words[2]);
  set_defaults(*share);
  apply_options(*share, take_options(words, 3,
                                     {"--comment", "--read", "--write", "--deny", "--recycle", "--oplocks",
                                      "--map-archive"}));
  if (with_catalogue([&] { return chk_share(share->name); }) == 0) {
    throw Refusal("the name \"" + words[1] + "\" is taken");
  }
  if (with_catalogue([&] { return add_share(share.get()); }) != 1) {
    throw Refusal("the share \"" + words[1] + "\" was not added");
  }
  return done;
}

int modify(const Words &words) {
  expect(words, 2, words.size(), "modify NAME [OPTION]...");
  const Options options = take_options(
      words, 2,
      {"--path", "--comment", "--read", "--write", "--deny", "--recycle", "--oplocks", "--map-archive"});
  const std::unique_ptr<smb_share> share = load_stored_share(words[1]);
  apply_options(*share, options);
  if (with_catalogue([&] { return mod_share(share.get()); }) != 1) {
    throw Refusal("the share \"" + words[1] + "\" was not changed");
  }
  return done;
}

int remove_share(const Words &words) {
  expect(words, 2, 2, "delete NAME");
  static_cast<void>(load_stored_share(words[1])); // for what it refuses
  if (with_catalogue([&] { return del_share(words[1].c_str()); }) != 1) {
    throw Refusal("the share \"" + words[1] + "\" was not deleted");
  }
  return done;
}

int check(const Words &words) {
  expect(words, 2, 3, "check NAME [PATH]");
  if (words.size() == 2) {
    const bool is_free = with_catalogue([&] { return chk_share(words[1].c_str()); }) == 1;
    std::puts(is_free ? "free" : "taken");
    return is_free ? done : refused;
  }
  const int answer = with_catalogue([&] { return chk_name_path(words[1].c_str(), words[2].c_str()); });
  std::puts(answer == 1 ? "free" : answer == 2 ? "taken with this path" : "taken with another path");
  return answer == 0 ? refused : done;
}

int allows(const Words &words) {
  expect(words, 3, 3, "allows LIST ACCOUNT");
  const auto list = to_access_list(words[1], is_configured_domain_mode());
  const bool allowed = check_user_in_list(list.c_str(), words[2].c_str()) == 1;
  std::puts(allowed ? "yes" : "no");
  return allowed ? done : refused;
}

} // namespace nasshare::cli
