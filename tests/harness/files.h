// File handling of the harness; every failure throws.
#pragma once

#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace nasshare::tests::files {

// Throws with what failed and errno's text unless the condition holds.
void require(bool condition, const std::string &what);

void write(const std::string &path, std::string_view text, mode_t mode = 0644);
void append(const std::string &path, std::string_view text);
void remove(const std::string &path);
// The folder has that mode, and those above it that are missing 0755.
void make_folder(const std::string &path, mode_t mode = 0755);
void make_folder_above(const std::string &path);
// The words as execvp takes them; they have to stay.
std::vector<char *> arguments_of(const std::vector<std::string> &words);
// Runs a program, found on PATH, that has to succeed.
void run(const std::vector<std::string> &words);

} // namespace nasshare::tests::files
