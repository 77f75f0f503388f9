// The lines of smb.conf: the blanks around a section's name are wanted, they are the appliance's style.
#include "smbconf/option_lines.h"

#include "base/one_line.h"
#include "model/domain_mode.h"

namespace nasshare {
namespace {

// Most of smb.conf comes through here, a thousand shares' lists among it: no formats, and no copies.
void write_text(FILE *file, std::string_view text) {
  static_cast<void>(std::fwrite(text.data(), 1, text.size(), file)); // what failed, the file tells at its end
}

void write_on_one_line(FILE *file, std::string_view value) {
  if (contains_line_end(value)) {
    write_text(file, one_line(value).view());
  } else {
    write_text(file, value);
  }
}

} // namespace

void write_section(FILE *file, std::string_view name) {
  write_text(file, "[ ");
  write_on_one_line(file, name);
  write_text(file, " ]\n");
}

void write_option(FILE *file, const char *option, std::string_view value) {
  write_text(file, option);
  write_text(file, " = ");
  write_on_one_line(file, value);
  write_text(file, "\n");
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
