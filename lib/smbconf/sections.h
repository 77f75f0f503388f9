// The sections of smb.conf, in the order in which they are written; the printers' follows the global one
// (nasshare/smbconf.h).
#pragma once

#include "model/file_services.h"

#include <cstdio>
#include <string_view>

namespace nasshare {

void write_global_section(FILE *file);

// Writes one section per listed share, an empty line between two. True when one of them has a recycle bin.
bool write_share_sections(FILE *file, const FileServices &services);

// Writes one section per present volume that has a recycling share and makes the users' directories.
void write_recycle_sections(FILE *file);

void write_dfs_section(FILE *file);

} // namespace nasshare
