// The service commands where the project has them.
#pragma once

#include "output.h"

#include <string>

namespace nasshare::tests {

inline const std::string commands = PROJECT_FOLDER "/platform/commands";

inline Ended command(const std::string &line) {
  return shell(commands + "/" + line);
}

} // namespace nasshare::tests
