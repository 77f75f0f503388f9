// What libxml2 alone takes for the files of the shares.
#pragma once

#include <string>

namespace nasshare::bench {

// Reads the file and takes every field of every share out of it.
void read_by_libxml2(const std::string &path);
// Makes the document of the listed shares and saves it.
void store_by_libxml2(const std::string &path);

} // namespace nasshare::bench
