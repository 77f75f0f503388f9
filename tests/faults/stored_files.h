// The files that changes store, beside all else that lies in their folders, as text.
#pragma once

#include <map>
#include <string>

namespace nasshare::tests {

// Path and content.
using Files = std::map<std::string, std::string>;

// Every file in the hidden folders of the volumes, /etc/NAS_CFG and /tmp. A name that was made up, such as
// ".smb.xml.new.Gk3b9Q", reads ".smb.xml.new.*".
Files stored_files();

// Makes stored_files() what it was.
void restore(const Files &files);

} // namespace nasshare::tests
