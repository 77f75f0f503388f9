// The one catalogue object of the process, and the mount points of the data volumes.
#include "nasshare/catalogue.h"

#include <type_traits>

struct smb_catalogue smbshare;
struct smb_catalogue *pss = &smbshare;

const char *const SMB_VOL_NAME[4] = {"/mnt/HD/HD_a2", "/mnt/HD/HD_b2", "/mnt/HD/HD_c2", "/mnt/HD/HD_d2"};

// C host programs are built against these; a test holds the offsets.
static_assert(std::is_standard_layout_v<smb_share> && std::is_trivial_v<smb_share>);
static_assert(std::is_standard_layout_v<smb_catalogue> && std::is_trivial_v<smb_catalogue>);
