// The share XML files: their name on the hidden partitions, and what the readers of such items share.
#pragma once

#include "base/whole_file.h"
#include "base/xml_reader.h"
#include "model/domain_mode.h"

#include <optional>

namespace nasshare {

// The file's name in the system folder of a hidden partition.
inline std::string_view share_xml_name() {
  return is_domain_mode() ? ".smb_ads.xml" : ".smb.xml";
}

// The files that a load reads, one after the other. All partitions have the same as a rule, which is parsed
// once.
class ShareXmlFiles {
public:
  ShareXmlFiles() = default;
  ShareXmlFiles(const ShareXmlFiles &) = delete;
  ShareXmlFiles &operator=(const ShareXmlFiles &) = delete;
  ~ShareXmlFiles() { forget(); }

  // The element "samba" of the file, until the next one is read; null for a file that is none.
  xmlNode *read_or_note(const char *path);

private:
  void forget();

  std::optional<WholeFile> file_;
  XmlDocument document_;
};

// Puts the records of the file that are that volume's own into the share list.
void read_share_xml_or_note(ShareXmlFiles &files, const char *path, int volume);

// The same for the volume's own file, wherever its hidden partition is.
void read_volume_or_note(ShareXmlFiles &files, int volume);

// Reads a name, comment or path, in which "&" may still stand as "&amp;".
void read_recovered(xmlNode *item, const char *name, std::span<char> field);

// Reads an access list, which is cut to the field on a whole entry.
void read_list(xmlNode *item, const char *name, std::span<char> field);

// The same for the list "invalid_users" of those who are denied; that one does not fit is noted.
void read_denied_or_note(xmlNode *item, std::span<char> field);

} // namespace nasshare
