// Texts, line by line and as a whole.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {

// Of shares, accounts, files.
using Names = std::vector<std::string>;

bool contains(std::string_view text, std::string_view part);
std::string repeated(std::string_view text, std::size_t times);
std::string joined(const std::vector<std::string> &parts, std::string_view between);

// What stands between the separators; behind the last one only when it is not empty.
std::vector<std::string> pieces_of(std::string_view text, char separator);
std::vector<std::string> lines_of(std::string_view text);
std::vector<std::string> lines_beginning(std::string_view text, std::string_view beginning);

} // namespace nasshare::tests
