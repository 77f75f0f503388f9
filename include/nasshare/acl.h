/*
 * Access lists: who may read, write or not enter a share, and the lists of
 * names and accounts that help to work with them.
 *
 * An access list is text in a field of 12288 bytes: entries "#name#" for a user
 * and "#@name#" for a group, separated by commas, without blanks, such as
 * "#alice#,#@staff#". The value "#nobody#,#@allaccount#" means everyone; in
 * Active Directory mode "#nobody#,#@Domain Users#" does.
 */
#ifndef NASSHARE_ACL_H
#define NASSHARE_ACL_H

#include "nasshare/catalogue.h"

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* ---- Name list: plain names, used as scratch by list checks. ---- */

struct smb_name_node {
  char name[512];
  struct smb_name_node *next;
};

struct smb_name_list {
  int32_t count;
  struct smb_name_node *head;
  struct smb_name_node *tail; /* meaningless while count is 0 */
};

extern struct smb_name_list namelist;
extern struct smb_name_list *pnl; /* &namelist from the start */

int Is_Name_Empty(void); /* 1 when the list is empty, else 0 */
/* Appends the name, duplicates included; null when memory is short or the name is null. */
struct smb_name_node *Insert_Name_Node(const char *name);
/* The first node of exactly that name, or null. */
struct smb_name_node *Check_Name_Node(const char *name);
/* Unlinks and frees that very node; nothing when it is not listed. */
void Delete_Name_Node(struct smb_name_node *node);
void Free_Name_List(void);
void Print_Name_List(void); /* when smb_dbg_flag is set */

/* ---- Account list: the shares on which one account's permission changes. ---- */

struct smb_acnt_node {
  char name[512]; /* share name */
  uint32_t type;  /* 1 read, 2 write, 3 deny, 0 in none of the three lists */
  struct smb_acnt_node *next;
};

struct smb_acnt_list {
  int32_t count;
  struct smb_acnt_node *head;
  struct smb_acnt_node *tail; /* meaningless while count is 0 */
};

extern struct smb_acnt_list acntlist;
extern struct smb_acnt_list *pal; /* &acntlist from the start */

struct smb_ac_node;

int is_acnt_empty(void);                   /* 1 when the list is empty, else 0 */
struct smb_acnt_node *get_acnt_node(void); /* a zero-filled node of the caller's (free), or null */
/* Appends the pair. Null, and nothing added, for a name that contains "USBDisk1", for "P2P" and "aMule" -
   the automatic shares take no permission of an account - and when memory is short. */
struct smb_acnt_node *insert_acnt_node(const char *share, uint32_t type);
/* Appends the shares of the record's read, write and deny fields with type 1, 2 and 3. */
void ac_put_acnt(const struct smb_ac_node *record);
void free_acnt_list(void);

/* ---- Access-control list: permissions per account, as the host program's account pages hold them. ---- */

struct smb_ac_node {
  char name[512];    /* account name */
  char read[12288];  /* share names separated by ':' */
  char write[12288]; /* share names separated by ':' */
  char deny[12288];  /* share names separated by ':' */
  int32_t exist;     /* the caller's own */
  struct smb_ac_node *next;
};

struct smb_ac_list {
  int32_t count;
  struct smb_ac_node *head;
  struct smb_ac_node *tail; /* meaningless while count is 0 */
};

/* Null at start: the host program points it at a head of its own. While it is null the list is empty and
   nothing is added. */
extern struct smb_ac_list *pacl;

int ac_list_empty(void);               /* 1 when the list is empty, else 0 */
struct smb_ac_node *ac_get_node(void); /* a zero-filled node of the caller's (free), or null */
/* Copies all fields but next. */
void ac_node_copy(struct smb_ac_node *destination, const struct smb_ac_node *source);
/* Appends a copy of the record while the list holds at most 256. */
void ac_add_node(const struct smb_ac_node *record);
/* The first node of that account, or null. */
struct smb_ac_node *ac_check_node_by_name(const char *name);
void ac_remove_all(void);
void ac_print_all(void); /* when smb_dbg_flag is set */

/* ---- Access lists. ---- */

/* Cuts str, or with null the rest of the previous string, at the characters of delim and returns the next
   token, null at the end. A run of delimiters counts as one; a string of delimiters only yields one empty
   token. The cursor is process-wide; no other operation of the library moves it. */
char *smb_strtok(char *str, const char *delim);

/* Makes valid_users what read_list and write_list say, opens a record without any list to everyone, and
   puts the guest account in front of invalid_users unless everyone may enter. Twice gives the same as once.
 */
void rw_list_rule(struct smb_share *record);

/* Rewrites an access list (12288 bytes) in place as the value of a "read list" and the like in smb.conf:
   quoted names; in Active Directory mode with the domain in front, unknown names dropped. */
void convert_list(char *list);

/* 1 when the password (group) database knows the name, else 0. A group's name comes without '@'. */
int check_user(const char *name);
int check_group(const char *name);

/* Drops every entry of the list (12288 bytes) whose token is in the name list, and sets list_changed. */
void list_item_compare(char *list);

/* ---- Validation and rebuild. ---- */

/* Drops every entry of the list (12288 bytes) whose account does not exist; the everyone value and "#nobody#"
   alone stay. */
void run_check_samba_list(char *list);

/* Checks the lists of every listed share against the local accounts, drops entries that an everyone list
   makes redundant, and removes shares without any list. Nothing in Active Directory mode. Empties the name
   list. */
void check_user_group(void);

/* Turns "everyone may write except those listed" and "nobody may enter except those listed" of the record
   into explicit lists of local accounts. Empties the name list when it changes anything. */
void rebuld_input_data(struct smb_share *record);

/* 1 when the name, a user or '@' and a group, has an entry in the list, else 0; members of listed groups
   count. In Active Directory mode (read from "/system_mgr/samba/ads_enable" into ads_enable) a plain
   substring test. Uses the name list outside that mode. */
int check_user_in_list(const char *list, const char *name);

/* Appends the name, or the members of the group behind '@', to the name list. */
void retrieve_user_from_group(const char *name);

/* Rewrites the list (12288 bytes) as every local account except the system's own and those in the name list;
   returns it. */
char *rebuild_user_list_except_input(char *list);

/* Removes every listed share that has neither readers nor writers and denies nobody but the guest. */
void remove_empty_share_node(void);

/* ---- Account changes. ---- */

/* Gives the account exactly the permissions of the account list on the shares named there, stores the
   catalogue and empties the account list. Only entries of the account itself change: groups still decide. On
   a share that is open to everyone, everyone becomes all other accounts of that moment; in Active Directory
   mode every other entry goes. 1 when the catalogue was stored (as add_share). 0, and nothing stored, for an
   empty name and an empty list, which leave the account list alone; for a name that no list can hold (with
   '#', ',', a line end or a reference that XML knows, of 512 bytes or more, or no text for XML); for a list
   without room for the entry; and where everyone else is to be denied and cannot be named. */
int acnt_mod_share(const char *account);

/* The same in the loaded share list only. Empties the name list when it opens up an everyone list. */
void modify_config_permision(const char *account);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
