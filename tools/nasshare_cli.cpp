// nasshare: the shares of the appliance on the command line, for people and scripts.
#include "commands.h"
#include "loaded_catalogue.h"
#include "nasshare/support.h"
#include "service_commands.h"
#include "standard_streams.h"

#include <cstdio>

namespace nasshare::cli {
namespace {

constexpr const char *help =
    R"(usage: nasshare [--debug] COMMAND

Shares
  list                       the shares: name, path and comment, separated by tabs
  show NAME                  everything about one share
  add NAME PATH [OPTION]...  a new share of the folder PATH, which exists on a data volume;
                             without --read, --write and --deny everyone may write
  modify NAME [OPTION]...    change a share; what is not given stays
  delete NAME                remove a share; its files stay
  check NAME [PATH]          whether the name is free, or taken by just that path
  allows LIST ACCOUNT        whether a list lets a user, or "@" and a group, in
  permit ACCOUNT SHARE=read|write|deny|none...
                             give a user exactly these permissions on these shares
  smb-conf                   write /etc/samba/smb.conf from the catalogue, with the download folders and the
                             mounted ISO images, and /etc/dfsroot when DFS is on

DFS namespace
  dfs list                   the links: group, local name, host and share, separated by tabs
  dfs add GROUP LOCAL HOST SHARE
  dfs modify GROUP LOCAL [--group GROUP] [--local LOCAL] [--host HOST] [--share SHARE]
  dfs delete GROUP LOCAL
  dfs-group list|add GROUP|rename GROUP NEW|delete GROUP
                             a group's links are renamed and deleted with it
  dfs-tree                   make /etc/dfsroot anew from the links

Network
  browse HOST                the shares that a host offers
  join, leave                enter and leave the Active Directory domain of the configuration

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
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ); // in order with what the commands print that it runs
    words.erase(words.begin());
  }
  static const std::map<std::string, int (*)(const Words &)> commands{{"list", list},
                                                                      {"show", show},
                                                                      {"add", add},
                                                                      {"modify", modify},
                                                                      {"check", check},
                                                                      {"allows", allows},
                                                                      {"delete", remove_share},
                                                                      {"permit", permit},
                                                                      {"smb-conf", write_smb_conf},
                                                                      {"dfs", dfs},
                                                                      {"dfs-group", dfs_group},
                                                                      {"dfs-tree", dfs_tree},
                                                                      {"browse", browse},
                                                                      {"join", join},
                                                                      {"leave", leave},
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
} // namespace nasshare::cli

using namespace nasshare::cli;

int main(int argc, char **argv) {
  open_standard_streams();
  try {
    explain_end_while_loading();
    find_service_commands();
    const int status = run(Words(argv + 1, argv + argc));
    return has_printed_all() ? status : complain(refused, "the output could not be written");
  } catch (const Usage &usage) {
    return complain(wrong_usage, usage.what());
  } catch (const std::exception &refusal) {
    return complain(refused, refusal.what());
  }
}
