/*
 * The share catalogue: the share record, the list of shares, the share XML
 * files on the volumes, and adding, changing and deleting a share.
 *
 * All operations act on the process-wide object `smbshare` and are for one
 * thread at a time. Operations that need the shares load them from the disks
 * themselves and leave the list empty, unless their text says otherwise.
 *
 * Loading ends the process with status 255 when no data volume is mounted or no
 * disk is in a bay: a program that must go on calls get_samba_info,
 * get_samba_info2, check_hd, chk_share, chk_name_path, add_share, mod_share,
 * del_share and acnt_mod_share (acl.h) in a child process. A change waits while
 * another program makes one. What each operation runs, reads, writes, locks and
 * prints stands in one table in the page operations.md.
 *
 * Texts are zero-terminated and live in arrays of fixed width. A longer text is
 * cut on a whole UTF-8 character, a whole XML entity and, in an access list, a
 * whole entry.
 */
#ifndef NASSHARE_CATALOGUE_H
#define NASSHARE_CATALOGUE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

struct dirent;
typedef struct _xmlNode xmlNode;
typedef struct _xmlDoc xmlDoc;

/* One share. A fresh record is zero-filled; the record is always handled whole. */
struct smb_share {
  int32_t volume_raid;       /* vol_raid_type of the volume that holds the share; 0 on none */
  char hd_serial[512];       /* vol_comp_str of that volume: drive serial, or "UUID=" and the array's */
  char name[512];            /* key of the list; compared exactly, letter case included */
  char comment[512];         /* free text shown to clients */
  char path[4096];           /* absolute path of the shared directory */
  char browseable[8];        /* "yes" or "no"; every listed share has "yes" */
  char public_[8];           /* "yes" or "no"; every listed share has "yes" (smb.conf option "public") */
  char oplocks[8];           /* "yes" or "no" */
  char map_archive[8];       /* "yes" or "no" */
  char read_list[12288];     /* access list (acl.h): may read */
  char write_list[12288];    /* access list: may read and write */
  char invalid_users[12288]; /* access list: denied */
  char valid_users[12288];   /* derived from the three above by rw_list_rule; never stored */
  int32_t recycle_enable;    /* 1 when the share has a recycle bin */
  int32_t recycle_tree;      /* 1 when the bin keeps the tree of the deleted files */
  struct smb_share *next;    /* null at the tail */
};

/* The catalogue object: volume table, global settings, share list. */
struct smb_catalogue {
  /* Volume table, filled by get_hd_raid_info and get_HD_share_name (volume.h). Index 0 and 1 are the
     two bays or the two data volumes; USB slots are 0 to 31. */
  int32_t hd_count;             /* internal disks found */
  int32_t hd_present[2];        /* 1 when the bay holds a disk */
  char disk_serial[2][512];     /* the disk's serial number */
  char hd_device[2][512];       /* the disk's device name, such as sda */
  int32_t vol_count;            /* data volumes found mounted */
  int32_t vol_hd[2];            /* bay on which the volume lives */
  int32_t vol_present[2];       /* 1 when the volume is mounted */
  int32_t vol_raid_type[2];     /* 1 single disk, 2 linear, 3 striping, 4 mirroring, 5 striping with
                                   parity, 6 striped mirrors, 0 unknown */
  char vol_share_name[2][512];  /* the volume's share name, such as Volume_1 */
  char vol_mount_dev[2][512];   /* the mounted device, such as /dev/md1 or /dev/sda2 */
  char vol_comp_str[2][64];     /* what ties a share record to this volume: "UUID=" and the array's
                                   UUID, or the single disk's serial */
  char vol_uuid[2][64];         /* the array's UUID as mdadm prints it */
  int32_t vol_hidden[2];        /* 1 when the volume's hidden system partition is mounted */
  char vol_hidden_path[2][512]; /* where it is mounted: "/mnt/HD_%c4" */
  int32_t vol_recycle[2];       /* 1 when a share on the volume has a recycle bin (create_smb_conf) */
  char other_dev_name[512];     /* the SCSI disk of the last line that is not a bay's own */
  int32_t other_dev_present;    /* 1 when other_dev_name was set */
  int32_t usb_exist[32];        /* 1 when the USB slot is mounted */
  int32_t usb_mark[32];         /* set with usb_exist; kept for callers */
  char usb_share_name[32][512]; /* share name of the slot, such as USBDisk1_1 */
  char usb_mount_name[32][512]; /* its folder under /mnt/USB/, such as HD_c1 */

  /* Global settings, filled by read_global_setting (smbconf.h). */
  char workgroup[512];
  char netbios_name[512];
  char server_string[512];
  int32_t list_changed; /* set to 1 when loading makes the catalogue differ from its files; the
                           library never reads or clears it */
  int32_t ads_enable;   /* 1 in Active Directory mode */
  char ads_workgroup[512];
  char ads_username[512];
  char ads_password[512];
  char ads_realm[512];
  char ads_pwd_server[512];
  int32_t dfs_enable; /* 1 when the DFS root is published */

  /* The share list. While count is 0, head and tail mean nothing. */
  int32_t count;
  struct smb_share *head;
  struct smb_share *tail;
};

extern struct smb_catalogue smbshare;
extern struct smb_catalogue *pss; /* always &smbshare */

/* Mount points of the data volumes: "/mnt/HD/HD_a2" to "/mnt/HD/HD_d2"; the first two are used. */
extern const char *const SMB_VOL_NAME[4];

/* ---- The share list. The list owns its records; callers keep their own. ---- */

/* The listed record of that name, or null; null for a null or empty name. */
struct smb_share *check_smb_share_name(const char *name);

/* Appends a copy of the record and returns the listed record. A name that is listed already changes
   nothing and gives the record that holds it. Null for an empty name or an exhausted heap.
   The copy is browseable and public, and has passed rw_list_rule. */
struct smb_share *Insert_Smb_Node(const struct smb_share *record);

/* Overwrites the listed record of that name in place, by the rules of Insert_Smb_Node, and returns it;
   null, and no change, when there is none. */
struct smb_share *Modify_Smb_Node(const struct smb_share *record);

/* Copies source into destination by the rules of Insert_Smb_Node; destination's next stays. */
void Dup_Smb_Struct(struct smb_share *destination, const struct smb_share *source);

/* Unlinks and frees the record of that name, or that very record; nothing when it is not listed. */
void Remove_Smb_Node_By_Name(const char *name);
void Remove_Smb_Node(struct smb_share *record);

/* Frees every record and leaves the list empty. */
void Free_All_List(void);

/* 1 when the list is empty, else 0. */
int Is_Smb_Empty(void);

/* Prints every record on standard output when smb_dbg_flag is set. */
void List_Smb_Node(void);

/* ---- The share XML: <config><samba><count/><item>...</item>...</samba></config>, UTF-8. ---- */

/* Inserts the shares of one volume (0 or 1) from its ".systemfile/.smb.xml", in Active Directory mode
   ".systemfile/.smb_ads.xml", into the share list. A record that was written for another volume is
   skipped; one written before the volume became an array is re-tagged and sets list_changed. Nothing is read
   for a volume without a hidden path. */
void read_HD_xml(int volume);

/* Writes the share list into the file, replaced whole. Shares named as the USB disk "USBDisk1" are
   removed from the list and not written; name, comment and path of the listed records stay XML-escaped
   afterwards. An empty list is written to "/tmp/.smb.xml" only and leaves any other target as it was.
   A byte that XML cannot hold is stored as U+FFFD. Returns 0 when the file was stored whole (or was not
   to be touched), else -1; "/tmp/.smb.xml" is then absent, any other file as it was. */
int create_HD_xml(const char *target);

/* The first child element of that name, or null. When text is given, its `size` bytes are zero-filled and
   receive the child's whole text content. */
xmlNode *search_xml_children(xmlNode *parent, const char *name, char *text, int size);

/* Frees the document and everything the XML parser keeps (xmlFreeDoc, xmlCleanupParser, xmlMemoryDump). */
void free_xml_memory(xmlDoc *document);

/* "&" to "&amp;" in place; the result has at most 4095 bytes. text: 4096 bytes, unless it holds no "&". */
void convert_xml_special_char(char *text);

/* "&amp;" to "&" in place. */
void recover_special_char(char *text);

/* Decimal text of the value in a static buffer that the next call overwrites. */
char *itoa(int32_t value);

/* Replaces the name (512 bytes) with the volume's share name when that is not empty. */
void fix_share_name(char *name, int volume);

/* Moves the path (4096 bytes) onto the mount point of the volume (0 to 3): a path of the older layout
   "/mnt/HD_x4/..." and a path under another volume's mount point alike. */
void fix_path(char *path, int volume);

/* ---- Loading. Each fills the share list and leaves it loaded; Free_All_List empties it. ---- */

/* Loads settings, volumes and all shares, checks the access lists against the local accounts, drops
   shares that nobody can reach, adds the USB disks. Ends the process with status 255 when no data volume
   or no disk is there. */
void get_samba_info(void);

/* As get_samba_info; oplocks then become "no" on every share while AFP is on ("/system_mgr/afp/enable"),
   else on the shares exported over NFS while NFS is on ("/system_mgr/nfs/enable"). In memory only. */
void get_samba_info2(void);

/* Adds the shares of the present volumes to the list, without the access-list check and without USB. */
void check_hd(void);

/* How the last load went, and what was put into the list or changed there since: 0 when everything was read;
   1 when shares may be missing, while those that are listed are right; 2 when accounts may be missing in the
   lists, too, those who are denied among them, for want of memory, of descriptors, of settings or of an
   answer of the account database. A program that changes a listed record and gives it to mod_share asks
   before: mod_share judges its own load alone. */
int nasshare_load_trouble(void);

/* Inserts one share, open to everyone, per mounted USB disk. */
void create_usb_share(void);

/* 0 when a share of that name exists, 1 when the name is free. */
int chk_share(const char *name);

/* 1 when the name is free, 2 when it is taken with exactly that path, 0 when taken with another. */
int chk_name_path(const char *name, const char *path);

/* ---- Share operations: load, change, store on every volume, "smbcom". ---- */

/* 1 when the share was added: the next load shows it. Some shares it shows otherwise, or not at all: one
   whose path lies on neither volume (not at all, or with a path on a volume), one whose name is a USB disk's,
   and one whose lists leave nobody who exists; one that is called "Volume_1" or "Volume_2" and is the root of
   a volume, under the volume's configured name; "&amp;" in a name, comment or path comes back as "&", and a
   reference that XML knows in a list as its character. 0 when the name
   is taken or the record is refused: no name, no path, a path that does not exist, a text that XML cannot
   hold (control characters, bytes that are not UTF-8) or that has a line end, a name under which it would
   come back as a share that is listed already ("&amp;" is read as "&", and "Volume_1" or "Volume_2" at the
   root of a volume as the volume's configured name), or a deny list that leaves no room for the guest in
   front or is to name more accounts than fit. The record's volume_raid and hd_serial
   are filled from the volume that holds the path, and outside Active Directory mode its lists are made
   explicit (rebuld_input_data). 0 as well when the catalogue could not be loaded whole, or when a hidden
   partition that a present volume is read from did not take it; every volume's file is then as it was. A
   record of the loaded list may be given; like the whole list it is gone afterwards.

   The new file is prepared on every hidden partition before it takes its place on any. Where that does not
   work, the old file is deleted and the new one copied, with the lines of cp (support.h) on standard output,
   while another partition holds the new one. A partition that takes it in no way does not count as long as
   its old file says the same of its own volume. One without the folder ".systemfile" takes no part: a share
   of its volume is stored on the others alone, the answer is 1, and no load shows it.

   Whether "smbcom" was found and took the change makes no difference to the answer. */
int add_share(struct smb_share *record);

/* The same for a share that exists: 1 when it was changed, 0 when it is unknown or refused. */
int mod_share(struct smb_share *record);

/* 1 when the share was deleted; 0 when it is unknown, the name is empty, or nothing could be stored. */
int del_share(const char *name);

/* Replaces the share XML in ".systemfile" of every hidden system partition with a copy of
   "/tmp/.smb.xml", each as add_share does it; nothing changes when that file is missing, another user's or
   no plain file, or when its last write failed. */
void cp_xml_to_hidden(void);

/* Deletes the share XML of the current mode from every hidden system partition. */
void remove_hidden_smbxml(void);

/* scandir filter: 1 for an entry of /mnt that is a hidden system partition ("HD_..."), else 0. On 32 bits the
   caller is built with _FILE_OFFSET_BITS=64, as the library is. */
int hidden_filter_dir(const struct dirent *entry);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
