// nasshare: the shares of the appliance on the command line, for people and scripts.
#include "nasshare/nasshare.h"

#include "people_list.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int done = 0;
constexpr int refused = 1;
constexpr int wrong_usage = 2;

constexpr const char *smb_conf = "/etc/samba/smb.conf";

constexpr const char *help =
    R"(usage: nasshare [--debug] COMMAND

  list                       the shares: name, path and comment, separated by tabs
  show NAME                  everything about one share
  add NAME PATH [OPTION]...  a new share of the folder PATH, which exists on a data volume;
                             without --read, --write and --deny everyone may write
  modify NAME [OPTION]...    change a share; what is not given stays
  delete NAME                remove a share; its files stay
  check NAME [PATH]          whether the name is free, or taken by just that path
  allows LIST ACCOUNT        whether a list lets a user, or "@" and a group, in
  smb-conf                   write /etc/samba/smb.conf from the catalogue

Options of add and modify:
  --path PATH                another folder (modify only)
  --comment TEXT
  --read LIST                who may read
  --write LIST               who may read and write
  --deny LIST                who may not enter
  --recycle flat|tree|off    keep deleted files, in one folder or in the folders they were in
  --oplocks yes|no
  --map-archive yes|no

A LIST names users and groups, a group with "@" in front: alice,@staff. "everyone" is all accounts and guests,
"nobody" the guest account, "" nobody at all. Opening a share to everyone admits guests again unless --deny is
given as well.

--debug prints what the library does; --help and --version print these.

Exit status: 0 done (or yes), 1 refused (or no), 2 wrong usage, 255 when no data volume is mounted or no disk is
in a bay: loading the catalogue then ends the program.
)";

struct Usage : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

using Words = std::vector<std::string>;

// The library ends the process without a word when there is nothing to load from.
bool loading = false;

void explain_end_while_loading() {
  if (loading) {
    std::fputs("nasshare: no data volume is mounted, or no disk is in a bay\n", stderr);
  }
}

template <typename Operation> auto with_catalogue(Operation operation) {
  loading = true;
  auto result = operation();
  loading = false;
  return result;
}

// ---- The loaded catalogue

class LoadedCatalogue {
public:
  LoadedCatalogue() {
    with_catalogue([] {
      get_samba_info();
      return true;
    });
  }
  ~LoadedCatalogue() { Free_All_List(); }
  LoadedCatalogue(const LoadedCatalogue &) = delete;
  LoadedCatalogue &operator=(const LoadedCatalogue &) = delete;
};

std::unique_ptr<smb_share> load_share(const std::string &name) {
  const LoadedCatalogue catalogue;
  const smb_share *listed = check_smb_share_name(name.c_str());
  if (listed == nullptr) {
    throw Refusal("no share is named \"" + name + "\"");
  }
  auto copy = std::make_unique<smb_share>(*listed);
  copy->next = nullptr;
  return copy;
}

// ---- Values of a share record

template <size_t width> void assign(char (&field)[width], const std::string &text, const char *what) {
  if (text.size() >= width) {
    throw Refusal(std::string(what) + " is longer than " + std::to_string(width - 1) + " bytes");
  }
  std::memset(field, 0, width);
  std::copy(text.begin(), text.end(), field);
}

// smb.conf is made of lines.
void refuse_control_characters(const std::string &text, const char *what) {
  const auto is_control = [](unsigned char byte) { return byte < 0x20 || byte == 0x7f; };
  if (std::any_of(text.begin(), text.end(), is_control)) {
    throw Refusal(std::string(what) + " holds a line end or another control character");
  }
}

// Samba reads a section of these names as something else than a share, and ends a name at "]".
void refuse_name_samba_cannot_take(const std::string &name) {
  std::string plain;
  for (const char character : name) {
    if (character != ' ') {
      plain += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
  }
  for (const char *kept : {"global", "homes", "printers"}) {
    if (plain == kept) {
      throw Refusal("Samba keeps the name \"" + name + "\" for itself");
    }
  }
  if (name.find(']') != std::string::npos) {
    throw Refusal("a share's name cannot hold \"]\"");
  }
}

void set_name(smb_share &share, const std::string &name) {
  if (name.empty()) {
    throw Refusal("the name is empty");
  }
  refuse_control_characters(name, "the name");
  refuse_name_samba_cannot_take(name);
  assign(share.name, name, "the name");
}

bool is_on_volume(const std::string &path) {
  const std::string place = std::filesystem::path(path).lexically_normal().string() + "/";
  return std::any_of(SMB_VOL_NAME, SMB_VOL_NAME + 2, [&](const std::string &volume) {
    return place.compare(0, volume.size() + 1, volume + "/") == 0;
  });
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

bool in_domain_mode() {
  read_global_setting();
  return smbshare.ads_enable == 1;
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

// ---- Options

using Options = std::map<std::string, std::string>;

Options take_options(const Words &words, size_t first, const std::vector<std::string> &known) {
  Options options;
  for (size_t i = first; i < words.size(); i += 2) {
    if (std::find(known.begin(), known.end(), words[i]) == known.end()) {
      throw Usage("\"" + words[i] + "\" is no option of " + words[0]);
    }
    if (i + 1 == words.size()) {
      throw Usage(words[i] + " needs a value");
    }
    if (!options.emplace(words[i], words[i + 1]).second) {
      throw Usage(words[i] + " is given twice");
    }
  }
  return options;
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

// ---- Commands

void expect(const Words &words, size_t least, size_t most, const char *form) {
  if (words.size() < least || words.size() > most) {
    throw Usage(std::string("usage: nasshare ") + form);
  }
}

int list(const Words &words) {
  expect(words, 1, 1, "list");
  const LoadedCatalogue catalogue;
  const smb_share *share = Is_Smb_Empty() == 1 ? nullptr : smbshare.head;
  for (; share != nullptr; share = share->next) {
    std::printf("%s\t%s\t%s\n", share->name, share->path, share->comment);
  }
  return done;
}

int show(const Words &words) {
  expect(words, 2, 2, "show NAME");
  const std::unique_ptr<smb_share> share = load_share(words[1]);
  const char *recycle = share->recycle_enable != 1 ? "off" : share->recycle_tree == 1 ? "tree" : "flat";
  const std::array<std::pair<const char *, std::string>, 9> rows{{
      {"name", share->name},
      {"comment", share->comment},
      {"path", share->path},
      {"read", people_list::from_access_list(share->read_list)},
      {"write", people_list::from_access_list(share->write_list)},
      {"deny", people_list::from_access_list(share->invalid_users)},
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
  assign(share->oplocks, "yes", "--oplocks");
  assign(share->map_archive, "no", "--map-archive");
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
  const std::unique_ptr<smb_share> share = load_share(words[1]);
  apply_options(*share, options);
  if (with_catalogue([&] { return mod_share(share.get()); }) != 1) {
    throw Refusal("the share \"" + words[1] + "\" was not changed");
  }
  return done;
}

int remove_share(const Words &words) {
  expect(words, 2, 2, "delete NAME");
  load_share(words[1]);
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
  const std::string list = people_list::to_access_list(words[1], in_domain_mode());
  const bool allowed = check_user_in_list(list.c_str(), words[2].c_str()) == 1;
  std::puts(allowed ? "yes" : "no");
  return allowed ? done : refused;
}

// create_smb_conf answers the same for a file that it wrote and one that it could not open.
void expect_writable(const char *path) {
  FILE *file = std::fopen(path, "a");
  if (file == nullptr) {
    throw Refusal(std::string(path) + " cannot be written");
  }
  std::fclose(file);
}

int write_smb_conf(const Words &words) {
  expect(words, 1, 1, "smb-conf");
  with_catalogue([] {
    get_samba_info2();
    return true;
  });
  expect_writable(smb_conf);
  const int status = create_smb_conf();
  Free_All_List();
  if (status != 0) {
    throw Refusal(std::string(smb_conf) + " was not written whole");
  }
  return done;
}

int version(const Words & /*words*/) {
  std::puts("nasshare " NASSHARE_VERSION);
  return done;
}

int print_help(const Words & /*words*/) {
  std::fputs(help, stdout);
  return done;
}

int run(Words words) {
  if (!words.empty() && words.front() == "--debug") {
    smb_dbg_flag = 1;
    words.erase(words.begin());
  }
  static const std::map<std::string, int (*)(const Words &)> commands{{"list", list},
                                                                      {"show", show},
                                                                      {"add", add},
                                                                      {"modify", modify},
                                                                      {"check", check},
                                                                      {"allows", allows},
                                                                      {"delete", remove_share},
                                                                      {"smb-conf", write_smb_conf},
                                                                      {"--help", print_help},
                                                                      {"--version", version}};
  const auto command = words.empty() ? commands.end() : commands.find(words.front());
  if (command == commands.end()) {
    throw Usage(words.empty() ? "no command; see nasshare --help"
                              : "no command \"" + words.front() + "\"; see nasshare --help");
  }
  return command->second(words);
}

int complain(int status, const char *text) {
  std::fprintf(stderr, "nasshare: %s\n", text);
  return status;
}

} // namespace

int main(int argc, char **argv) {
  try {
    std::atexit(explain_end_while_loading);
    return run(Words(argv + 1, argv + argc));
  } catch (const Usage &usage) {
    return complain(wrong_usage, usage.what());
  } catch (const std::exception &refusal) {
    return complain(refused, refusal.what());
  }
}
