// The records and objects of nasshare/catalogue.h.
#include "layout.h"

#include "nasshare/catalogue.h"

// Columns: record, field, type, offset on 32 bits, offset on 64 bits
// clang-format off

// The share record.
FIELD(smb_share, volume_raid,    int32_t,                0,     0);
FIELD(smb_share, hd_serial,      char[512],              4,     4);
FIELD(smb_share, name,           char[512],            516,   516);
FIELD(smb_share, comment,        char[512],           1028,  1028);
FIELD(smb_share, path,           char[4096],          1540,  1540);
FIELD(smb_share, browseable,     char[8],             5636,  5636);
FIELD(smb_share, public_,        char[8],             5644,  5644);
FIELD(smb_share, oplocks,        char[8],             5652,  5652);
FIELD(smb_share, map_archive,    char[8],             5660,  5660);
FIELD(smb_share, read_list,      char[12288],         5668,  5668);
FIELD(smb_share, write_list,     char[12288],        17956, 17956);
FIELD(smb_share, invalid_users,  char[12288],        30244, 30244);
FIELD(smb_share, valid_users,    char[12288],        42532, 42532);
FIELD(smb_share, recycle_enable, int32_t,            54820, 54820);
FIELD(smb_share, recycle_tree,   int32_t,            54824, 54824);
FIELD(smb_share, next,           struct smb_share *, 54828, 54832);
RECORD_SIZE(smb_share, 54832, 54840);

// The catalogue object: the volume table, the global settings, the share list.
FIELD(smb_catalogue, hd_count,          int32_t,                0,     0);
FIELD(smb_catalogue, hd_present,        int32_t[2],             4,     4);
FIELD(smb_catalogue, disk_serial,       char[2][512],          12,    12);
FIELD(smb_catalogue, hd_device,         char[2][512],        1036,  1036);
FIELD(smb_catalogue, vol_count,         int32_t,             2060,  2060);
FIELD(smb_catalogue, vol_hd,            int32_t[2],          2064,  2064);
FIELD(smb_catalogue, vol_present,       int32_t[2],          2072,  2072);
FIELD(smb_catalogue, vol_raid_type,     int32_t[2],          2080,  2080);
FIELD(smb_catalogue, vol_share_name,    char[2][512],        2088,  2088);
FIELD(smb_catalogue, vol_mount_dev,     char[2][512],        3112,  3112);
FIELD(smb_catalogue, vol_comp_str,      char[2][64],         4136,  4136);
FIELD(smb_catalogue, vol_uuid,          char[2][64],         4264,  4264);
FIELD(smb_catalogue, vol_hidden,        int32_t[2],          4392,  4392);
FIELD(smb_catalogue, vol_hidden_path,   char[2][512],        4400,  4400);
FIELD(smb_catalogue, vol_recycle,       int32_t[2],          5424,  5424);
FIELD(smb_catalogue, other_dev_name,    char[512],           5432,  5432);
FIELD(smb_catalogue, other_dev_present, int32_t,             5944,  5944);
FIELD(smb_catalogue, usb_exist,         int32_t[32],         5948,  5948);
FIELD(smb_catalogue, usb_mark,          int32_t[32],         6076,  6076);
FIELD(smb_catalogue, usb_share_name,    char[32][512],       6204,  6204);
FIELD(smb_catalogue, usb_mount_name,    char[32][512],      22588, 22588);
FIELD(smb_catalogue, workgroup,         char[512],          38972, 38972);
FIELD(smb_catalogue, netbios_name,      char[512],          39484, 39484);
FIELD(smb_catalogue, server_string,     char[512],          39996, 39996);
FIELD(smb_catalogue, list_changed,      int32_t,            40508, 40508);
FIELD(smb_catalogue, ads_enable,        int32_t,            40512, 40512);
FIELD(smb_catalogue, ads_workgroup,     char[512],          40516, 40516);
FIELD(smb_catalogue, ads_username,      char[512],          41028, 41028);
FIELD(smb_catalogue, ads_password,      char[512],          41540, 41540);
FIELD(smb_catalogue, ads_realm,         char[512],          42052, 42052);
FIELD(smb_catalogue, ads_pwd_server,    char[512],          42564, 42564);
FIELD(smb_catalogue, dfs_enable,        int32_t,            43076, 43076);
FIELD(smb_catalogue, count,             int32_t,            43080, 43080);
FIELD(smb_catalogue, head,              struct smb_share *, 43084, 43088);
FIELD(smb_catalogue, tail,              struct smb_share *, 43088, 43096);
RECORD_SIZE(smb_catalogue, 43092, 43104);

// The objects.
OBJECT(smbshare, struct smb_catalogue);
OBJECT(pss, struct smb_catalogue *);
OBJECT(SMB_VOL_NAME, const char *const[4]);
