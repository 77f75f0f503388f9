// A value that goes into a shell command.
#include "fuzz.h"

#include "base/shell_escape.h"
#include "nasshare/smbconf.h"

#include <cstring>
#include <memory>

namespace nasshare::fuzzing {
namespace {

constexpr std::string_view escaped_characters = "$`#%^&()+{};[]'= ";

// What a POSIX shell reads outside quotes: a backslash keeps the next character. A character that would mean
// something by itself must not stand bare.
std::string read_by_shell(std::string_view word) {
  std::string text;
  for (std::size_t i = 0; i < word.size(); ++i) {
    bool escapes = word[i] == '\\' && i + 1 < word.size();
    require(escapes || !contains(escaped_characters, word.substr(i, 1)), "no character stands bare");
    text += word[escapes ? ++i : i];
  }
  return text;
}

void require_round_trip(const std::string &value) {
  auto word = shell_escaped(value);
  if (word.is_whole() && value.size() < path_width) {
    require(read_by_shell(word.view()) == value, "the shell reads the value back");
  }
}

void require_path(const std::string &value) {
  auto path = std::make_unique<char[]>(path_width); // with nothing writable behind it
  assign({path.get(), path_width}, value);
  auto plain = std::string(path.get());
  bool changed = fix_path_special_char(path.get()) != nullptr;
  auto word = view({path.get(), path_width});
  require(word.size() < path_width, "a path ends within its field");
  require(changed == (plain.find_first_of(escaped_characters) != std::string::npos),
          "the answer says whether something was escaped");
  require(plain.starts_with(read_by_shell(word)), "the shell reads the value back, or its beginning");
}

} // namespace

void fuzz(std::string_view input) {
  Parts parts(input);
  auto value = repeated(parts.next());
  // A backslash of the value itself is left alone, on purpose.
  std::erase(value, '\\');
  require_round_trip(value);
  require_path(value);
}

} // namespace nasshare::fuzzing
