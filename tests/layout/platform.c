// The records and objects of nasshare/platform.h.
#include "layout.h"

#include "nasshare/platform.h"

// Columns: record, field, type, offset on 32 bits, offset on 64 bits
// clang-format off

// Installed add-on packages.
FIELD(modx_package, name, char[256],                0,    0);
FIELD(modx_package, path, char[4096],             256,  256);
FIELD(modx_package, next, struct modx_package *, 4352, 4352);
RECORD_SIZE(modx_package, 4356, 4360);

FIELD(modx_package_list, count, int32_t,               0, 0);
FIELD(modx_package_list, first, struct modx_package *, 4, 8);
RECORD_SIZE(modx_package_list, 8, 16);

// The objects.
OBJECT(p_lib_list, struct modx_package_list *);
