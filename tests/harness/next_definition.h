// What lies behind a function that a test program defines itself, and that therefore wins over a library's.
#pragma once

#include <dlfcn.h>

namespace nasshare::tests {

template <class Function> Function *next_definition(const char *name) {
  return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

} // namespace nasshare::tests
