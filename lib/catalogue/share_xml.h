// The share XML files: their names, and what readers of such items share.
#pragma once

#include "nasshare/catalogue.h"
#include "support/xml.h"

#include <span>
#include <string_view>

namespace nasshare {

// Where a change is written before it is spread over the volumes.
inline constexpr const char *temporary_share_xml = "/tmp/.smb.xml";

// The file's name in the ".systemfile" folder of a hidden partition.
inline std::string_view share_xml_name() {
  return pss->ads_enable == 1 ? ".smb_ads.xml" : ".smb.xml";
}

// Reads a name, comment or path, in which "&" may still stand as "&amp;".
void read_recovered(xmlNode *item, const char *name, std::span<char> field);

} // namespace nasshare
