// How a copy ends and what it says.
#pragma once

#include <ostream>
#include <string>

namespace nasshare::tests {

inline constexpr const char *source = "/tmp/source";
inline constexpr const char *target = "/tmp/target";

struct Copied {
  int result;
  std::string out;

  bool operator==(const Copied &) const = default;
};

inline std::ostream &operator<<(std::ostream &stream, const Copied &copied) {
  return stream << copied.result << " \"" << copied.out << '"';
}

struct Silently {
  int result;
};

inline bool operator==(const Copied &copied, const Silently &expected) {
  return copied.result == expected.result && copied.out.empty();
}

inline constexpr Silently done{0};
inline constexpr Silently refused{-1};

inline std::ostream &operator<<(std::ostream &stream, const Silently &expected) {
  return stream << expected.result << " and no output";
}

inline Copied failed(const std::string &message) {
  return {-1, message + "\n"};
}

} // namespace nasshare::tests
