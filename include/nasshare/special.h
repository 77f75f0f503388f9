/*
 * Shares that come and go by themselves - download folders and mounted ISO
 * images - and the shares of another host.
 *
 * The create_ operations add to the loaded share list (get_samba_info,
 * catalogue.h) and store nothing; a listed share of the same name wins.
 */
#ifndef NASSHARE_SPECIAL_H
#define NASSHARE_SPECIAL_H

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Inserts the share "P2P" for the folder of that name on the volume that /etc/NAS_CFG/p2psettings.xml saves
   to. Sets list_changed in any case. */
void create_p2p_share(void);

/* Inserts the share "aMule" for the folder of that name on the volume that holds the add-on package "aMule",
   and sets list_changed; nothing unless exactly one process "modx" runs and the package is installed. */
void create_amule_share(void);

/* Inserts a share per image that the present volumes' catalogues of mounted images list, for those who may
   read it there; without any list, for everyone. */
void create_iso_share(void);

/* Inserts the mounted images of one volume (0 or 1) from its ".systemfile/.iso_mount.xml", in Active
   Directory mode ".systemfile/.iso_mount_ads.xml". An image of a volume that was converted is re-tagged and
   sets list_changed; one of another volume is skipped. */
void isoMount_readXml(int volume);

/* Lists the disk shares of a host, asked with "smbclient -gNL", into the name list (acl.h), without hidden
   shares and printers. 1 when the listing ran to its end; 0 when smbclient is missing, the host is null or
   empty or holds a character that ends a quoted word of the shell (the name list is then left alone), or the
   connection failed. */
int get_host_share_name(const char *host);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
