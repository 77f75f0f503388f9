// The shares that most machines of these tests have: one on each volume, for everyone.
#pragma once

#include "share.h"

namespace nasshare::tests {

inline Share music() {
  return stored_share("Music").everyone();
}

inline Share docs() {
  return stored_share("Docs", 1).everyone();
}

} // namespace nasshare::tests
