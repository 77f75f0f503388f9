/*
 * Microsoft DFS: the links of the appliance's namespace, the groups (folders)
 * that hold them, and the tree of symbolic links that Samba serves.
 *
 * Links are stored in /etc/NAS_CFG/smbdfs.xml, groups in
 * /etc/NAS_CFG/smbdfs_group.xml; each operation that adds, modifies,
 * deletes or looks up loads its file, acts, replaces the file and leaves its
 * list empty. A value comes back from the files as it was given; one that has
 * 512 bytes or more once XML-escaped, and one that XML cannot hold, is refused
 * with 0. A host alone is markup: "a&amp;b" is stored so, and comes back as
 * "a&b"; only its own 512 bytes count. A file that cannot be parsed counts as
 * empty. 0 is the answer, too,
 * when the file could not be written; it is then as it was.
 */
#ifndef NASSHARE_DFS_H
#define NASSHARE_DFS_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* One link. The pair (group, local) identifies it. */
struct smb_dfs_node {
  char host[512];  /* server of the target share */
  char share[512]; /* the target share's name there */
  char local[512]; /* the link's own name in its group */
  char group[512]; /* the group that holds it */
  struct smb_dfs_node *next;
};

struct smb_dfs_list {
  uint32_t count;
  struct smb_dfs_node *head;
  struct smb_dfs_node *tail; /* meaningless while count is 0 */
};

extern struct smb_dfs_list dfslist;
extern struct smb_dfs_list *pdfs; /* &dfslist from the start */

/* ---- The list. ---- */

int dfs_list_empty(void);                /* 1 when the list is empty, else 0 */
struct smb_dfs_node *dfs_get_node(void); /* a zero-filled record of the caller's (free), or null */
/* Copies host, share, local and group. */
void dfs_node_copy(struct smb_dfs_node *destination, const struct smb_dfs_node *source);
/* Appends a copy of the record. */
void dfs_add_node(const struct smb_dfs_node *record);
/* Unlinks and frees that very record; nothing when it is not listed. */
void dfs_del_node(struct smb_dfs_node *node);
/* The first record with the key's group and local, or null. */
struct smb_dfs_node *dfs_check_node(const struct smb_dfs_node *key);
void dfs_modify_node_by_group(const char *old_group, const char *new_group);
void dfs_delete_node_by_group(const char *group);
void dfs_remove_all(void);
void dfs_print_all(void); /* when smb_dbg_flag is set */

/* ---- The link file. ---- */

/* Replaces the list with the file's links, decoded; leaves it when there is no file. */
void read_DFS_xml(void);
/* Replaces the file with the list, while no operation of another program changes it. The fields are handed
   over as markup: references are what they stand for, and a "&" that begins none is a "&". */
void write_DFS_xml(void);
/* Empties the list, loads it and prints it when smb_dbg_flag is set. */
void get_dfs_info(void);

/* ---- Links. Every result is 1 for done and 0 for refused, not found, or a null or empty argument. ---- */

/* 0 when the group holds a link of that name. */
uint32_t add_dfs_node(const char *host, const char *share, const char *local, const char *group);
/* Replaces all four values of the link; whether the new pair is in use is not checked. */
uint32_t mod_dfs_node(const char *new_host, const char *new_share, const char *new_local,
                      const char *new_group, const char *old_local, const char *old_group);
uint32_t del_dfs_node(const char *local, const char *group);
uint32_t chk_dfs_node_exist(const char *group, const char *local); /* the group comes first here */
/* Move or delete all links of the group; 1 also when it has none, the file is written anyway. */
uint32_t mod_dfs_node_by_group(const char *old_group, const char *new_group);
uint32_t del_dfs_node_by_group(const char *group);

/* ---- Groups. They are held in the name list (acl.h), which each of these empties. ---- */

/* Replaces the name list with the file's groups, decoded; leaves it when there is no file. */
void read_DFS_group_xml(void);
/* Replaces the file with the name list, handed over as markup, in the way of write_DFS_xml. */
void write_DFS_group_xml(void);
/* Empties the name list and loads it. */
void get_dfs_group_info(void);

uint32_t add_dfs_group_node(const char *group); /* 0 when it exists */
uint32_t chk_dfs_group_exist(const char *group);
/* Renames the group, then moves its links; deletes the group, then its links. 0 when there is no such group.
 */
uint32_t mod_dfs_group_node(const char *old_group, const char *new_group);
uint32_t del_dfs_group_node(const char *group);

/* ---- The tree. ---- */

/* Rebuilds /etc/dfsroot from the link file: a folder per group, in it a symbolic link "msdfs:host\share" per
   link. Nothing when "/system_mgr/samba/dfs_enable" is not 1; an old tree then stays. While it is built, and
   where an old one does not go, the tree is shut to all but root and has no links. */
void create_dfs_link(void);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
