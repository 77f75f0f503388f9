// The words of a command line, and how a command says that it cannot go on.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace nasshare::cli {

// What main answers the shell.
constexpr int done = 0;
constexpr int refused = 1;
constexpr int wrong_usage = 2;

struct Usage : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Refusal : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The command and what follows it.
using Words = std::vector<std::string>;

// Throws Usage unless there are at least and at most that many words.
void expect(const Words &words, std::size_t least, std::size_t most, const char *form);

using Options = std::map<std::string, std::string>;

// The pairs "--option value" from that word on. Throws Usage for others than the known ones.
Options take_options(const Words &words, std::size_t first, const std::vector<std::string> &known);

// Throws Refusal for a line end and other control characters: the files written are made of lines.
void refuse_control_characters(const std::string &text, const std::string &what);

} // namespace nasshare::cli
