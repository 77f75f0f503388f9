// Under which name the next load shows a stored record.
#pragma once

#include "base/text.h"
#include "nasshare/catalogue.h"

#include <span>

namespace nasshare {

// The share of a whole volume that bears a volume's default name takes the volume's configured one.
void take_configured_name(std::span<char, name_width> name, std::string_view path, int volume);

// Whether a record of the volume would come back under the name of another that is listed, and so not at all:
// of two with one name the load shows the first.
bool comes_back_as_another(const smb_share &record, int volume);

} // namespace nasshare
