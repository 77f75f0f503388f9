// Share records and share XML files for tests:
//
//   smb_share record = Share{"Music"}.path("/mnt/HD/HD_a2/music").write("#alice#").on_disk("WD-1");
//   Appliance{}.shares(share_xml({Share{"Music"}, Share{"Docs"}}));
#pragma once

#include "nasshare/catalogue.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace nasshare::tests {

class Share {
public:
  // A zero-filled record of that name.
  explicit Share(std::string_view name);
  explicit Share(const smb_share &record);
  Share(const Share &other);
  Share &operator=(const Share &other) = delete;
  ~Share() = default;

  Share &comment(std::string_view text);
  Share &path(std::string_view text);
  Share &browseable(std::string_view text);
  Share &public_(std::string_view text);
  Share &oplocks(std::string_view text);
  Share &map_archive(std::string_view text);
  Share &read(std::string_view list);
  Share &write(std::string_view list);
  Share &deny(std::string_view list);
  Share &valid(std::string_view list);
  Share &everyone(); // as its write list
  Share &recycle(int enable, int tree = 0);
  Share &on_disk(std::string_view serial);          // volume_raid 1 and hd_serial
  Share &on_array(int type, std::string_view uuid); // volume_raid and hd_serial "UUID=..."
  Share &tag(int volume_raid, std::string_view hd_serial);

  // The record that the calls so far describe.
  smb_share &record() const { return *record_; }
  operator smb_share() const { return *record_; }
  operator smb_share *() const { return record_.get(); }

private:
  std::unique_ptr<smb_share> record_;
};

// As a file of Appliance::single_disks() holds a share that lies in the root of that volume, 0 or 1; no
// lists.
Share stored_share(const std::string &name, int volume = 0);

// The whole share XML file with these shares, as the library stores it.
std::string share_xml(const std::vector<Share> &shares);
// The share XML of both hidden system partitions has that text.
void expect_on_both_volumes(const std::string &text);

// How List_Smb_Node prints a list of these records.
std::string share_listing(const std::vector<Share> &shares);

} // namespace nasshare::tests
