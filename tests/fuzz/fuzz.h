// What the fuzz targets share. A target is one function, fuzz(), that feeds the input to the library and
// requires what must hold whatever the input is. It runs in a machine that exists only in memory (machine.h),
// with empty lists and an empty catalogue.
#pragma once

#include "base/decimal.h"
#include "base/text.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace nasshare::fuzzing {

void fuzz(std::string_view input);

inline void require(bool holds, const char *rule) {
  if (!holds) {
    std::fprintf(stderr, "violated: %s\n", rule);
    std::abort();
  }
}

// The input in parts, set apart by lines "%%", so that inputs can be read and written with an editor.
class Parts {
public:
  explicit Parts(std::string_view input) : rest_(input) {}

  // The next part; empty behind the last one.
  std::string_view next() {
    constexpr std::string_view mark = "\n%%\n";
    auto part = rest_.substr(0, rest_.find(mark));
    rest_.remove_prefix(std::min(part.size() + mark.size(), rest_.size()));
    return part;
  }
  // The same as a C string, which ends at a zero byte.
  std::string next_string() { return std::string(next()).c_str(); }

private:
  std::string_view rest_;
};

// A part "N*text" is the text N times, at most 64, with commas between: long lists from short inputs. At most
// as much as a list field holds.
inline std::string repeated(std::string_view part) {
  auto star = part.find('*');
  auto times = star == std::string_view::npos ? 0 : std::clamp(decimal(part.substr(0, star)), 0, 64);
  auto piece = times > 0 ? part.substr(star + 1) : part;
  std::string text(piece);
  while (--times > 0 && text.size() < list_width) {
    text += ',';
    text += piece;
  }
  text.resize(std::min(text.size(), list_width - 1));
  return text.c_str();
}

template <std::size_t Width> bool terminated(const char (&field)[Width]) {
  return view(field).size() < Width;
}

// A switch or a count of a record.
inline bool is_flag(int value) {
  return value == 0 || value == 1;
}

} // namespace nasshare::fuzzing
