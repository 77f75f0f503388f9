// Writing the share list as share XML.
#pragma once

#include "base/xml_composer.h"

namespace nasshare {

// What create_HD_xml() does; the text that it wrote stays in the composer, which is a new one for "config".
[[nodiscard]] int write_share_xml(XmlComposer &file, const char *target);

} // namespace nasshare
