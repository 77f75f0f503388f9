// The sections of smb.conf, in the order in which they are written.
#pragma once

#include "nasshare/catalogue.h"
#include "smbconf/file_services.h"

#include <cstdio>
#include <string_view>

namespace nasshare {

// Name of the recycle folder in a volume's root.
inline constexpr const char *recycle_folder = "recycle";

// A section's first line and an option's line. A line end in the name or value is a blank there.
void write_section(FILE *file, std::string_view name);
void write_option(FILE *file, const char *option, std::string_view value);

void write_global_section(FILE *file);

// Writes one section per listed share, an empty line between two. True when one of them has a recycle bin.
bool write_share_sections(FILE *file, const FileServices &services);

// Writes one section per present volume that has a recycling share and makes the users' directories.
void write_recycle_sections(FILE *file);

void write_dfs_section(FILE *file);

// The "valid users" or "write list" value that lets everybody in.
void write_everyone(FILE *file, const char *option);

} // namespace nasshare
