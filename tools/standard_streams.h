// Standard input, output and error of the programs.
#pragma once

namespace nasshare::cli {

// Opens on /dev/null which of them the starter closed: a file of the library's would take the place, and what
// is printed would land in it.
void open_standard_streams();

// Whether all that was printed has been written.
[[nodiscard]] bool has_printed_all();

} // namespace nasshare::cli
