/*
 * Support: file copy, service commands, processes, NFS exports, debug output.
 */
#ifndef NASSHARE_SUPPORT_H
#define NASSHARE_SUPPORT_H

#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Debug output on standard output: 0 (at start) none; any other value listings; exactly 1 traces too. */
extern int smb_dbg_flag;

/* Copies a regular file to a file or into a directory. 0, or -1 after a line "CP: ..." on standard output. A
   destination with the source's last path component is used as it stands. Paths: at most 1023 bytes. */
int cp(const char *source, const char *destination);

/* Copies a regular file to a file with the source's mode; a destination that cannot be opened is deleted and
   created anew. 0 on success, and for a source that is no regular file, which is not copied; else -1 after a
   line "CP: ..." on standard output. */
int copy_file(const char *source, const char *destination);

/* Copies up to limit bytes, 0 meaning all, between open descriptors; a negative destination discards. The
   number of bytes copied, or -1. */
int64_t copyfd_eof(int source, int destination, int64_t limit);

/* read(2) and write(2), repeated while a signal interrupts them. */
ssize_t safe_read(int fd, void *buffer, size_t length);
ssize_t safe_write(int fd, const void *buffer, size_t length);

/* The same until length bytes or the end of the file are reached. The count so far after an error, -1 when
   there was none before it. */
ssize_t full_read(int fd, void *buffer, size_t length);
ssize_t full_write(int fd, const void *buffer, size_t length);

/* What follows the last "/"; the whole path when there is none or it is "/". */
const char *bb_get_last_path_component(const char *path);

/* The place of the last character when it is the given one, else null. */
const char *last_char_is(const char *text, int character);

/* directory, "/" unless it ends with one, file without its leading "/". output: 1024 bytes. A null directory
   counts as empty. */
void concat_path_file(const char *directory, const char *file, char *output);

/* Cuts trailing white-space and control characters (POSIX locale) in place. */
void remove_0D_0A(char *text);

/* Number of running processes whose kernel command name (15 characters) is exactly that. */
int smb_check_ps(const char *name);

/* Run the service commands "smbcv" and "smbcom"; with smb_dbg_flag 1 and such a file in the current directory
   "./smbcv -d" and "./smbcom -d". Return system(3)'s status. */
int run_smbcv(void);
int run_smbcom(void);

/* 1 when /etc/exports has a line that begins with that path in double quotes, else 0. */
int check_nfs_share(const char *path);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
