// The records and objects of nasshare/acl.h.
#include "layout.h"

#include "nasshare/acl.h"

// Columns: record, field, type, offset on 32 bits, offset on 64 bits
// clang-format off

// Name list.
FIELD(smb_name_node, name, char[512],                0,   0);
FIELD(smb_name_node, next, struct smb_name_node *, 512, 512);
RECORD_SIZE(smb_name_node, 516, 520);

FIELD(smb_name_list, count, int32_t,                0,  0);
FIELD(smb_name_list, head,  struct smb_name_node *, 4,  8);
FIELD(smb_name_list, tail,  struct smb_name_node *, 8, 16);
RECORD_SIZE(smb_name_list, 12, 24);

// Account list.
FIELD(smb_acnt_node, name, char[512],                0,   0);
FIELD(smb_acnt_node, type, uint32_t,               512, 512);
FIELD(smb_acnt_node, next, struct smb_acnt_node *, 516, 520);
RECORD_SIZE(smb_acnt_node, 520, 528);

FIELD(smb_acnt_list, count, int32_t,                0,  0);
FIELD(smb_acnt_list, head,  struct smb_acnt_node *, 4,  8);
FIELD(smb_acnt_list, tail,  struct smb_acnt_node *, 8, 16);
RECORD_SIZE(smb_acnt_list, 12, 24);

// Access-control list.
FIELD(smb_ac_node, name,  char[512],                0,     0);
FIELD(smb_ac_node, read,  char[12288],            512,   512);
FIELD(smb_ac_node, write, char[12288],          12800, 12800);
FIELD(smb_ac_node, deny,  char[12288],          25088, 25088);
FIELD(smb_ac_node, exist, int32_t,              37376, 37376);
FIELD(smb_ac_node, next,  struct smb_ac_node *, 37380, 37384);
RECORD_SIZE(smb_ac_node, 37384, 37392);

FIELD(smb_ac_list, count, int32_t,              0,  0);
FIELD(smb_ac_list, head,  struct smb_ac_node *, 4,  8);
FIELD(smb_ac_list, tail,  struct smb_ac_node *, 8, 16);
RECORD_SIZE(smb_ac_list, 12, 24);

// The objects.
OBJECT(namelist, struct smb_name_list);
OBJECT(pnl, struct smb_name_list *);
OBJECT(acntlist, struct smb_acnt_list);
OBJECT(pal, struct smb_acnt_list *);
OBJECT(pacl, struct smb_ac_list *);
