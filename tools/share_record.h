// The values of a share record, as they come from a command line. Each throws for a value that the
// record or Samba cannot hold, and for a folder or an account that does not exist.
#pragma once

#include "arguments.h"
#include "nasshare/catalogue.h"

#include <string>

namespace nasshare::cli {

bool is_on_volume(const std::string &path);

void set_name(smb_share &share, const std::string &name);
void set_path(smb_share &share, const std::string &path);

// What is not given stays.
void apply_options(smb_share &share, const Options &options);

// A record that says nothing about oplocks and the archive bit.
void set_defaults(smb_share &share);

} // namespace nasshare::cli
