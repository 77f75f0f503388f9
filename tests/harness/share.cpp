// Share records, their XML and their listing.
#include "share.h"

#include "access_lists.h"
#include "appliance.h"
#include "fields.h"
#include "paths.h"
#include "xml.h"

#include <gtest/gtest.h>

namespace nasshare::tests {

namespace {

std::string text_line(std::string_view name, std::string_view text) {
  return element_line(3, name, escaped(text));
}

std::string item(const smb_share &record) {
  return element_around(
      2, "item",
      text_line("volume_raid", std::to_string(record.volume_raid)) +
          text_line("hd_serial", record.hd_serial) + text_line("name", record.name) +
          text_line("comment", record.comment) + text_line("path", record.path) +
          text_line("browseable", record.browseable) + text_line("public", record.public_) +
          text_line("oplocks", record.oplocks) + text_line("map_archive", record.map_archive) +
          text_line("read_list", record.read_list) + text_line("write_list", record.write_list) +
          text_line("invalid_users", record.invalid_users) +
          text_line("recycle_enable", std::to_string(record.recycle_enable)) +
          text_line("recycle_tree", std::to_string(record.recycle_tree)));
}

std::string listing_line(std::string label, std::string_view value) {
  label.resize(std::string_view("recycle_enable  ").size(), ' ');
  return label.append(": [").append(value).append("]\n");
}

std::string listing(const smb_share &record) {
  return listing_line("volume_raid", std::to_string(record.volume_raid)) +
         listing_line("hd_serial", record.hd_serial) + listing_line("name", record.name) +
         listing_line("comment", record.comment) + listing_line("path", record.path) +
         listing_line("browseable", record.browseable) + listing_line("public", record.public_) +
         listing_line("oplocks", record.oplocks) + listing_line("map_archive", record.map_archive) +
         listing_line("read_list", record.read_list) + listing_line("write_list", record.write_list) +
         listing_line("invalid_users", record.invalid_users) +
         listing_line("valid_users", record.valid_users) +
         listing_line("recycle_enable", std::to_string(record.recycle_enable)) +
         listing_line("recycle_tree", std::to_string(record.recycle_tree));
}

} // namespace

Share::Share(std::string_view name) : record_(std::make_unique<smb_share>()) {
  put(record_->name, name);
}

Share::Share(const smb_share &record) : record_(std::make_unique<smb_share>(record)) {}

Share::Share(const Share &other) : record_(std::make_unique<smb_share>(*other.record_)) {}

Share &Share::comment(std::string_view text) {
  put(record_->comment, text);
  return *this;
}

Share &Share::path(std::string_view text) {
  put(record_->path, text);
  return *this;
}

Share &Share::browseable(std::string_view text) {
  put(record_->browseable, text);
  return *this;
}

Share &Share::public_(std::string_view text) {
  put(record_->public_, text);
  return *this;
}

Share &Share::oplocks(std::string_view text) {
  put(record_->oplocks, text);
  return *this;
}

Share &Share::map_archive(std::string_view text) {
  put(record_->map_archive, text);
  return *this;
}

Share &Share::read(std::string_view list) {
  put(record_->read_list, list);
  return *this;
}

Share &Share::write(std::string_view list) {
  put(record_->write_list, list);
  return *this;
}

Share &Share::deny(std::string_view list) {
  put(record_->invalid_users, list);
  return *this;
}

Share &Share::valid(std::string_view list) {
  put(record_->valid_users, list);
  return *this;
}

Share &Share::everyone() {
  return write(tests::everyone);
}

Share &Share::recycle(int enable, int tree) {
  record_->recycle_enable = enable;
  record_->recycle_tree = tree;
  return *this;
}

Share &Share::on_disk(std::string_view serial) {
  return tag(1, serial);
}

Share &Share::on_array(int type, std::string_view uuid) {
  return tag(type, "UUID=" + std::string(uuid));
}

Share &Share::tag(int volume_raid, std::string_view hd_serial) {
  record_->volume_raid = volume_raid;
  put(record_->hd_serial, hd_serial);
  return *this;
}

Share stored_share(const std::string &name, int volume) {
  return Share{name}
      .path((volume == 0 ? "/mnt/HD/HD_a2/" : "/mnt/HD/HD_b2/") + name)
      .browseable("yes")
      .public_("yes")
      .oplocks("yes")
      .map_archive("no")
      .on_disk(volume == 0 ? "WD-TESTDISK0001" : "WD-TESTDISK0002");
}

std::string share_xml(const std::vector<Share> &shares) {
  std::string lines;
  for (const Share &share : shares) {
    lines += item(share.record());
  }
  if (!shares.empty()) {
    lines.insert(0, element_line(2, "count", std::to_string(shares.size())));
  }
  return config_file(element_around(1, "samba", lines));
}

void expect_on_both_volumes(const std::string &text) {
  EXPECT_EQ(read_file(first_share_file), text);
  EXPECT_EQ(read_file(second_share_file), text);
}

std::string share_listing(const std::vector<Share> &shares) {
  std::string text = "\n";
  for (const Share &share : shares) {
    text += listing(share.record()) + "\n";
  }
  return text;
}

} // namespace nasshare::tests
