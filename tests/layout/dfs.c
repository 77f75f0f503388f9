// The records and objects of nasshare/dfs.h.
#include "layout.h"

#include "nasshare/dfs.h"

// Columns: record, field, type, offset on 32 bits, offset on 64 bits
// clang-format off

// DFS link list.
FIELD(smb_dfs_node, host,  char[512],                0,    0);
FIELD(smb_dfs_node, share, char[512],              512,  512);
FIELD(smb_dfs_node, local, char[512],             1024, 1024);
FIELD(smb_dfs_node, group, char[512],             1536, 1536);
FIELD(smb_dfs_node, next,  struct smb_dfs_node *, 2048, 2048);
RECORD_SIZE(smb_dfs_node, 2052, 2056);

FIELD(smb_dfs_list, count, uint32_t,              0,  0);
FIELD(smb_dfs_list, head,  struct smb_dfs_node *, 4,  8);
FIELD(smb_dfs_list, tail,  struct smb_dfs_node *, 8, 16);
RECORD_SIZE(smb_dfs_list, 12, 24);

// The objects.
OBJECT(dfslist, struct smb_dfs_list);
OBJECT(pdfs, struct smb_dfs_list *);
