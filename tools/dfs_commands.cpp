// The DFS namespace: its groups, the links in them, and the tree that smbd serves.
#include "base/linked_list.h"
#include "commands.h"
#include "model/dfs_switch.h"
#include "nasshare/acl.h"
#include "nasshare/catalogue.h"
#include "nasshare/dfs.h"

#include <cstdio>
#include <optional>

namespace nasshare::cli {
namespace {

// The tree is made by the shell, which would not take these as they are; "/" would leave the folder.
constexpr const char *never_in_names = "\"\\|<>*?!~/";

void refuse_characters(const std::string &text, const char *characters, const std::string &what) {
  const auto place = text.find_first_of(characters);
  if (place != std::string::npos) {
    throw Refusal(what + " cannot hold \"" + text[place] + "\"");
  }
}

void expect_name(const std::string &text, const std::string &what) {
  if (text.empty()) {
    throw Refusal(what + " is empty");
  }
  refuse_control_characters(text, what);
  refuse_characters(text, never_in_names, what);
  if (text == "." || text == "..") {
    throw Refusal(what + " cannot be \"" + text + "\"");
  }
}

// Behind a comma, a link's target names another server.
void expect_target(const std::string &text, const std::string &what) {
  expect_name(text, what);
  refuse_characters(text, ",", what);
}

struct Link {
  std::string group;
  std::string local;
  std::string host;
  std::string share;
};

void expect_usable(const Link &link) {
  expect_name(link.group, "the group");
  expect_name(link.local, "the link's name");
  expect_target(link.host, "the host");
  refuse_characters(link.host, "&", "the host"); // a reference in it would become any character
  expect_target(link.share, "the share");
}

void expect_group(const std::string &group) {
  if (chk_dfs_group_exist(group.c_str()) != 1) {
    throw Refusal("no DFS group is named \"" + group + "\"");
  }
}

void expect_no_link(const Link &link) {
  if (chk_dfs_node_exist(link.group.c_str(), link.local.c_str()) == 1) {
    throw Refusal("the DFS group \"" + link.group + "\" has a link named \"" + link.local + "\"");
  }
}

Link load_link(const std::string &group, const std::string &local) {
  get_dfs_info();
  const auto *const node =
      find(*pdfs, [&](const smb_dfs_node &link) { return group == link.group && local == link.local; });
  const auto found =
      node == nullptr ? std::nullopt : std::optional(Link{node->group, node->local, node->host, node->share});
  dfs_remove_all();
  if (!found) {
    throw Refusal("the DFS group \"" + group + "\" has no link named \"" + local + "\"");
  }
  return *found;
}

int list_links(const Words &words) {
  expect(words, 1, 1, "dfs list");
  get_dfs_info();
  for (const auto &link : each(*pdfs)) {
    std::printf("%s\t%s\t%s\t%s\n", link.group, link.local, link.host, link.share);
  }
  dfs_remove_all();
  return done;
}

int add_link(const Words &words) {
  expect(words, 5, 5, "dfs add GROUP LOCAL HOST SHARE");
  const Link link{words[1], words[2], words[3], words[4]};
  expect_usable(link);
  expect_group(link.group);
  expect_no_link(link);
  if (add_dfs_node(link.host.c_str(), link.share.c_str(), link.local.c_str(), link.group.c_str()) != 1) {
    throw Refusal("the link \"" + link.local + "\" was not added");
  }
  return done;
}

int modify_link(const Words &words) {
  expect(words, 3, words.size(), "dfs modify GROUP LOCAL [OPTION]...");
  const Options options = take_options(words, 3, {"--group", "--local", "--host", "--share"});
  const Link old = load_link(words[1], words[2]);
  const auto value = [&](const char *option, const std::string &unchanged) {
    const auto given = options.find(option);
    return given == options.end() ? unchanged : given->second;
  };
  const Link link{value("--group", old.group), value("--local", old.local), value("--host", old.host),
                  value("--share", old.share)};
  expect_usable(link);
  if (link.group != old.group) {
    expect_group(link.group);
  }
  if (link.group != old.group || link.local != old.local) {
    expect_no_link(link);
  }
  if (mod_dfs_node(link.host.c_str(), link.share.c_str(), link.local.c_str(), link.group.c_str(),
                   old.local.c_str(), old.group.c_str()) != 1) {
    throw Refusal("the link \"" + old.local + "\" was not changed");
  }
  return done;
}

int delete_link(const Words &words) {
  expect(words, 3, 3, "dfs delete GROUP LOCAL");
  load_link(words[1], words[2]);
  if (del_dfs_node(words[2].c_str(), words[1].c_str()) != 1) {
    throw Refusal("the link \"" + words[2] + "\" was not deleted");
  }
  return done;
}

void expect_new_group(const std::string &group) {
  expect_name(group, "the group");
  if (chk_dfs_group_exist(group.c_str()) == 1) {
    throw Refusal("a DFS group named \"" + group + "\" exists");
  }
}

int list_groups(const Words &words) {
  expect(words, 1, 1, "dfs-group list");
  get_dfs_group_info();
  for (const auto &group : each(*pnl)) {
    std::puts(group.name);
  }
  Free_Name_List();
  return done;
}

int add_group(const Words &words) {
  expect(words, 2, 2, "dfs-group add GROUP");
  expect_new_group(words[1]);
  if (add_dfs_group_node(words[1].c_str()) != 1) {
    throw Refusal("the DFS group \"" + words[1] + "\" was not added");
  }
  return done;
}

int rename_group(const Words &words) {
  expect(words, 3, 3, "dfs-group rename GROUP NEW");
  expect_group(words[1]);
  expect_new_group(words[2]);
  if (mod_dfs_group_node(words[1].c_str(), words[2].c_str()) != 1) {
    throw Refusal("the DFS group \"" + words[1] + "\" was not renamed");
  }
  return done;
}

int delete_group(const Words &words) {
  expect(words, 2, 2, "dfs-group delete GROUP");
  expect_group(words[1]);
  if (del_dfs_group_node(words[1].c_str()) != 1) {
    throw Refusal("the DFS group \"" + words[1] + "\" was not deleted");
  }
  return done;
}

using Commands = std::map<std::string, int (*)(const Words &)>;

// The word behind the command says what to do.
int run(const Commands &commands, const Words &words, const char *form) {
  const auto command = words.size() < 2 ? commands.end() : commands.find(words[1]);
  if (command == commands.end()) {
    throw Usage(std::string("usage: nasshare ") + form);
  }
  return command->second(Words(words.begin() + 1, words.end()));
}

} // namespace

int dfs(const Words &words) {
  static const Commands commands{
      {"list", list_links}, {"add", add_link}, {"modify", modify_link}, {"delete", delete_link}};
  return run(commands, words, "dfs list|add|modify|delete ...");
}

int dfs_group(const Words &words) {
  static const Commands commands{
      {"list", list_groups}, {"add", add_group}, {"rename", rename_group}, {"delete", delete_group}};
  return run(commands, words, "dfs-group list|add|rename|delete ...");
}

int dfs_tree(const Words &words) {
  expect(words, 1, 1, "dfs-tree");
  create_dfs_link();
  if (!is_dfs_on()) {
    throw Refusal("DFS is switched off (/system_mgr/samba/dfs_enable); /etc/dfsroot stays as it is");
  }
  return done;
}

} // namespace nasshare::cli
