// The commands of nasshare. Each takes its own name and what follows it, and answers an exit status.
#pragma once

#include "arguments.h"

namespace nasshare::cli {

// share_commands.cpp
int list(const Words &words);
int show(const Words &words);
int add(const Words &words);
int modify(const Words &words);
int remove_share(const Words &words);
int check(const Words &words);
int allows(const Words &words);

// smb_conf_command.cpp
int write_smb_conf(const Words &words);

// account_commands.cpp
int permit(const Words &words);

// dfs_commands.cpp
int dfs(const Words &words);
int dfs_group(const Words &words);
int dfs_tree(const Words &words);

// network_commands.cpp
int browse(const Words &words);
int join(const Words &words);
int leave(const Words &words);

} // namespace nasshare::cli
