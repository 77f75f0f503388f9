/*
 * Volumes and disks: which data volumes are mounted, what kind of array each
 * is, which disk sits in which bay, and what the volumes' shares are called.
 *
 * Sources: /etc/mtab, /proc/mdstat, "mdadm -D", "sg_scan", ATA IDENTIFY DEVICE
 * through SG_IO, and /etc/shared_name. Results go into the volume table at the
 * start of struct smb_catalogue (catalogue.h).
 */
#ifndef NASSHARE_VOLUME_H
#define NASSHARE_VOLUME_H

#include "nasshare/catalogue.h"

#ifdef __cplusplus
extern "C" {
#endif
#pragma GCC visibility push(default)

/* Clears the volume table and fills it, the share names excepted. Ends the process with status 255 when no
   data volume is mounted or no disk is in a bay. */
void get_hd_raid_info(struct smb_catalogue *table);

/* Sets vol_raid_type and vol_hd of the volume (0 or 1) from the lines of /proc/mdstat that contain md_name
   ("md1" to "md4"; a plain substring). Returns fclose's result, -1 when the file could not be opened. */
int parse_raid_info(struct smb_catalogue *table, int volume, const char *md_name);

/* 1 when /etc/mtab has a line that contains the fourth partition of the disk in that bay, else 0. */
int parse_check_hidden(struct smb_catalogue *table, int disk);

/* Copies the array's UUID as "mdadm -D" prints it into destination (64 bytes), which stays as it was when
   none is printed. Returns pclose's result, -1 when the command could not be started, or was not because the
   device's name holds a character that no array's device has. */
int get_raid_uuid(char *destination, const char *device);

/* Fills the disk fields of the table from "sg_scan". Returns pclose's result, -1 when it could not be
   started. */
int get_scsi_map(struct smb_catalogue *table);

/* Serial number of /dev/<device_name> from words 10 to 19 of the ATA IDENTIFY DEVICE data, asked with ATA
   PASS-THROUGH (16) through SG_IO; leading blanks are dropped. "cant_get_serial_number" when the device
   cannot be opened or the request fails; untouched when it completes with a bad status.
   destination: 512 bytes. */
void get_serial_number(char *destination, const char *device_name);

/* Serial number of the disk in that bay (0 or 1) from the appliance's driver, without blanks: SIOCDEVPRIVATE
   on "egiga0", command 2. Empty where the driver is not there; untouched when no socket can be made.
   destination: 512 bytes. */
void get_serial_number2(char *destination, int slot);

/* Reads the share names of volumes and USB slots from /etc/shared_name (lines "name = folder"), or sets
   Volume_1, Volume_2, USBDisk1_1 ... when the file does not exist. */
void get_HD_share_name(struct smb_catalogue *table);

#pragma GCC visibility pop
#ifdef __cplusplus
}
#endif

#endif
