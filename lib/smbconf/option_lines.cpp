#include "smbconf/sections.h"

#include "support/one_line.h"

void nasshare::write_section(FILE *file, std::string_view name) {
  std::fprintf(file, "[ %s ]\n", one_line(name).c_str());
}

void nasshare::write_option(FILE *file, const char *option, std::string_view value) {
  std::fprintf(file, "%s = %s\n", option, one_line(value).c_str());
}
