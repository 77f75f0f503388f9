/*
 * What the appliance's firmware provides and nasshare only calls: the
 * configuration database and the list of add-on packages.
 *
 * libnasplatform.so.1 is the reference implementation. A firmware links its
 * own; a program that defines these symbols itself wins over it.
 */
#ifndef NASSHARE_PLATFORM_H
#define NASSHARE_PLATFORM_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Configuration database. Keys are paths such as "/system_mgr/samba/workgroup".
   When the database cannot be read now, for want of descriptors or memory or because a disk fails (EMFILE,
   ENFILE, ENOMEM, EIO, ENOSPC, EUCLEAN, EBADMSG), the answer is that of an absent key and errno is set to the
   reason; otherwise errno is left alone. nasshare sets errno to 0 beforehand, and changes no stored file when
   it does not know whether the appliance is in domain mode. A database that leaves errno alone altogether is
   read as if it never failed. */

/* The value as a decimal integer; 0 when the key is absent or no number. */
int xml_get_int(const char *key);
/* Copies the value into destination (size bytes, always terminated); empty when the key is absent. */
void xml_get_str(const char *key, int size, char *destination);
/* Stores the value. nasshare may hold its lock on the catalogue meanwhile: what this waits for must not use
   nasshare itself. The reference platform leaves a value alone whose last reading by this program failed:
   what comes then is a default for something that is there. */
void xml_set_str(const char *key, const char *value);

/* Installed add-on packages. MODX_COMMAND(1, 0) and MODX_ReadAllXml() fill the list behind p_lib_list,
   MODX_FreeAllXml() releases it. */
struct modx_package {
  char name[256];
  char path[4096]; /* where the package lies; contains the mount point of its volume */
  struct modx_package *next;
};

struct modx_package_list {
  int32_t count;
  struct modx_package *first;
};

void MODX_COMMAND(int a, int b);
void MODX_ReadAllXml(void);
void MODX_FreeAllXml(void);
extern struct modx_package_list *p_lib_list;

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
