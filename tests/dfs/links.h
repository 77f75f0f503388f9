// The links that the cases store and list.
#pragma once

#include "dfs_files.h"

#include <string>

namespace nasshare::tests {

inline const Link tunes{"srv1", "music", "tunes", "media"};
inline const Link films{"srv2", "movies", "films", "media"};
inline const Link papers{"srv3", "docs", "papers", "office"};

// How the list of these links is printed.
inline std::string link_listing(const Links &links) {
  std::string text = "DFS list :\n";
  for (const auto &[host, share, local, group] : links) {
    text += "Name = " + host + "\nshare = " + share + "\nlocal = " + local + "\ngroup = " + group + "\n";
  }
  return text + "\n";
}

} // namespace nasshare::tests
