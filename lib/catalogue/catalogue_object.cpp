#include "nasshare/catalogue.h"

#include <cstddef>
#include <type_traits>

struct smb_catalogue smbshare;
struct smb_catalogue *pss = &smbshare;

const char *const SMB_VOL_NAME[4] = {"/mnt/HD/HD_a2", "/mnt/HD/HD_b2", "/mnt/HD/HD_c2", "/mnt/HD/HD_d2"};

// Host programs are built against these layouts.
static_assert(std::is_standard_layout_v<smb_share> && std::is_trivial_v<smb_share>);
static_assert(offsetof(smb_share, hd_serial) == 4);
static_assert(offsetof(smb_share, name) == 516);
static_assert(offsetof(smb_share, comment) == 1028);
static_assert(offsetof(smb_share, path) == 1540);
static_assert(offsetof(smb_share, browseable) == 5636);
static_assert(offsetof(smb_share, public_) == 5644);
static_assert(offsetof(smb_share, oplocks) == 5652);
static_assert(offsetof(smb_share, map_archive) == 5660);
static_assert(offsetof(smb_share, read_list) == 5668);
static_assert(offsetof(smb_share, write_list) == 17956);
static_assert(offsetof(smb_share, invalid_users) == 30244);
static_assert(offsetof(smb_share, valid_users) == 42532);
static_assert(offsetof(smb_share, recycle_enable) == 54820);
static_assert(offsetof(smb_share, recycle_tree) == 54824);

static_assert(std::is_standard_layout_v<smb_catalogue> && std::is_trivial_v<smb_catalogue>);
static_assert(offsetof(smb_catalogue, hd_present) == 4);
static_assert(offsetof(smb_catalogue, vol_count) == 2060);
static_assert(offsetof(smb_catalogue, vol_share_name) == 2088);
static_assert(offsetof(smb_catalogue, vol_comp_str) == 4136);
static_assert(offsetof(smb_catalogue, vol_hidden) == 4392);
static_assert(offsetof(smb_catalogue, vol_recycle) == 5424);
static_assert(offsetof(smb_catalogue, usb_exist) == 5948);
static_assert(offsetof(smb_catalogue, usb_share_name) == 6204);
static_assert(offsetof(smb_catalogue, workgroup) == 38972);
static_assert(offsetof(smb_catalogue, list_changed) == 40508);
static_assert(offsetof(smb_catalogue, ads_enable) == 40512);
static_assert(offsetof(smb_catalogue, dfs_enable) == 43076);
static_assert(offsetof(smb_catalogue, count) == 43080);
