// XML as the appliance's files hold it, made of text.
#pragma once

#include <string>
#include <string_view>

namespace nasshare::tests {

// Text as markup.
std::string escaped(std::string_view text);
// "<name>markup</name>", or "<name/>" when there is none.
std::string element(std::string_view name, std::string_view markup);
// The same in a line of its own, that deep below the root.
std::string element_line(int depth, std::string_view name, std::string_view markup);
// The same around lines.
std::string element_around(int depth, std::string_view name, std::string_view lines);
// A whole file: the declaration, and the element "config" around these lines.
std::string config_file(std::string_view lines);

} // namespace nasshare::tests
