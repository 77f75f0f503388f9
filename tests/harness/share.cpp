#include "share.h"

#include <algorithm>
#include <stdexcept>

namespace nasshare::tests {

namespace {

template <std::size_t size> void set(char (&field)[size], std::string_view text) {
  if (text.size() >= size) {
    throw std::length_error("text does not fit into its field");
  }
  std::fill(std::copy(text.begin(), text.end(), field), field + size, '\0');
}

std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
    case '&':
      result += "&amp;";
      break;
    case '<':
      result += "&lt;";
      break;
    case '>':
      result += "&gt;";
      break;
    default:
      result += character;
    }
  }
  return result;
}

std::string element(const std::string &name, std::string_view text) {
  if (text.empty()) {
    return "      <" + name + "/>\n";
  }
  return "      <" + name + ">" + escaped(text) + "</" + name + ">\n";
}

} // namespace

Share::Share(std::string_view name) : record_(std::make_unique<smb_share>()) {
  set(record_->name, name);
}

Share::Share(const Share &other) : record_(std::make_unique<smb_share>(*other.record_)) {}

Share &Share::comment(std::string_view text) {
  set(record_->comment, text);
  return *this;
}

Share &Share::path(std::string_view text) {
  set(record_->path, text);
  return *this;
}

Share &Share::browseable(std::string_view text) {
  set(record_->browseable, text);
  return *this;
}

Share &Share::public_(std::string_view text) {
  set(record_->public_, text);
  return *this;
}

Share &Share::oplocks(std::string_view text) {
  set(record_->oplocks, text);
  return *this;
}

Share &Share::map_archive(std::string_view text) {
  set(record_->map_archive, text);
  return *this;
}

Share &Share::read(std::string_view list) {
  set(record_->read_list, list);
  return *this;
}

Share &Share::write(std::string_view list) {
  set(record_->write_list, list);
  return *this;
}

Share &Share::deny(std::string_view list) {
  set(record_->invalid_users, list);
  return *this;
}

Share &Share::valid(std::string_view list) {
  set(record_->valid_users, list);
  return *this;
}

Share &Share::everyone() {
  return write("#nobody#,#@allaccount#");
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
  set(record_->hd_serial, hd_serial);
  return *this;
}

std::string share_item(const smb_share &record) {
  return "    <item>\n" + element("volume_raid", std::to_string(record.volume_raid)) +
         element("hd_serial", record.hd_serial) + element("name", record.name) +
         element("comment", record.comment) + element("path", record.path) +
         element("browseable", record.browseable) + element("public", record.public_) +
         element("oplocks", record.oplocks) + element("map_archive", record.map_archive) +
         element("read_list", record.read_list) + element("write_list", record.write_list) +
         element("invalid_users", record.invalid_users) +
         element("recycle_enable", std::to_string(record.recycle_enable)) +
         element("recycle_tree", std::to_string(record.recycle_tree)) + "    </item>\n";
}

std::string share_xml(const std::vector<Share> &shares) {
  std::string items;
  for (const Share &share : shares) {
    items += share_item(share.record());
  }
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<config>\n";
  if (shares.empty()) {
    return head + "  <samba/>\n</config>\n";
  }
  return head + "  <samba>\n    <count>" + std::to_string(shares.size()) + "</count>\n" + items +
         "  </samba>\n</config>\n";
}

} // namespace nasshare::tests
