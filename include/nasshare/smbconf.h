/*
 * The Samba configuration: global settings from the configuration database,
 * the generated /etc/samba/smb.conf, and the recycle-bin directories.
 */
#ifndef NASSHARE_SMBCONF_H
#define NASSHARE_SMBCONF_H

#include "nasshare/catalogue.h"

#include <stdio.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Reads the global settings of smbshare from the configuration database (keys below
   "/system_mgr/samba/"). A missing workgroup, NetBIOS name or server string gets its default, which is
   stored back unless the value, or what the default is made of, could not be read. The five domain settings
   are read in Active Directory mode only and else left as they are. */
void read_global_setting(void);

/* The default NetBIOS name: "tarvo-" and the last three bytes of the hardware address of "egiga0", each in
   hexadecimal without padding. destination: at least 16 bytes; untouched, after a message on standard
   output, when no socket can be made. */
void Get_Mac_Str(char *destination);

/* Writes /etc/samba/smb.conf from the loaded catalogue, in place: after a kill it holds the old text or the
   new one, perhaps with empty lines behind it. Who reads while it is written may see a part of each, and
   takes the lock /run/nasshare-in-place.lock (flock(2)) meanwhile, as the service commands do. Converts the
   access lists of the listed records into Samba's form, drops a trailing "/" of a recycling share's path,
   sets vol_recycle, creates the recycle directories, and gives shares on USB disks mode 777. A line end in a
   value becomes a blank. Loads nothing itself (get_samba_info2): who calls both holds
   /run/nasshare-service.lock (flock(2), mode 0600) from the load on, as the service commands do, or an older
   load may replace what was published since.

   Returns 0 when the file cannot be opened and when it was written. Returns -1 when memory or the disk has no
   room for the text, when the load was short of memory or descriptors, or of the settings or accounts, and
   when a list of those who are denied does not fit in Samba's form: who is denied could then be missing. The
   file then holds what it held, or is not there where it was not, and the lists are as they were loaded.

   After 0 the lists are in Samba's form, which must not be stored (create_HD_xml): load anew before. In
   Active Directory mode a second call without a load is refused with -1; else it writes the same file. */
int create_smb_conf(void);

/* Writes the printer section, when a hidden system partition is mounted, to the file. */
void determine_printer_in_hidden(FILE *file);

/* Puts a backslash before each of $ ` # % ^ & ( ) + { } ; [ ] ' = and the blank, in place, for a value in a
   shell command. path: 4096 bytes. Returns path, or null when nothing had to be escaped. */
char *fix_path_special_char(char *path);

/* Removes one trailing "/" in place and returns the number of "/" in the rest. */
int cal_slash_num(char *path);

/* The way from a share's directory, whose path has that many slashes, to the recycle folder of its volume
   ("../recycle"). destination: 4096 bytes, zeroed by the caller; untouched below 3 slashes. */
void make_related_path(char *destination, int slash_count);

/* Makes a recycle root and one directory per user below it, each mode 0777 and owned by its user: the
   local accounts, in Active Directory mode the users that "wbinfo -z" lists. What exists is left alone; a
   root that is a link is not followed. */
void create_recycle_user_directory(const char *directory);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
