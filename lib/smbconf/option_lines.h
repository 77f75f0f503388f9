// The lines of smb.conf: a section's first line and an option's line. A line end in a name or value is a
// blank there.
#pragma once

#include <cstdio>
#include <string_view>

namespace nasshare {

void write_section(FILE *file, std::string_view name);
void write_option(FILE *file, const char *option, std::string_view value);

// The option, such as "valid users", with the value that lets everybody in.
void write_everyone(FILE *file, const char *option);

} // namespace nasshare
