// The lines of smb.conf: the blanks around a section's name are wanted, they are the appliance's style.
#include "smbconf/option_lines.h"

#include "base/one_line.h"
#include "model/domain_mode.h"

namespace nasshare {

void write_section(FILE *file, std::string_view name) {
  std::fprintf(file, "[ %s ]\n", one_line(name).c_str());
}

void write_option(FILE *file, const char *option, std::string_view value) {
  std::fprintf(file, "%s = %s\n", option, one_line(value).c_str());
}

void write_everyone(FILE *file, const char *option) {
  if (is_domain_mode()) {
    write_option(file, option,
                 Text<2 * name_width>{"\"nobody\",\"+", view(pss->ads_workgroup), "+Domain Users\""}.view());
  } else {
    write_option(file, option, "\"nobody\",\"@allaccount\"");
  }
}

} // namespace nasshare
