// Machines of any size. What they hold lies in files alone, so the next description replaces it.
#include "machine.h"

#include "access_lists.h"
#include "appliance.h"
#include "nasshare/catalogue.h"
#include "paths.h"

#include <array>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <tuple>

namespace nasshare::bench {
namespace {

using tests::Appliance;
using tests::Share;

// And as many writers.
int readers(Lists lists) {
  return lists == Lists::full ? tests::entries_of_a_full_list : 5;
}

std::string account_name(int number) {
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "u%04d", number);
  return name.data();
}

std::string entries(int first, int count, int accounts) {
  std::string list;
  for (int i = 0; i < count; ++i) {
    list.append(i == 0 ? "#" : ",#").append(account_name((first + i) % accounts)).append("#");
  }
  return list;
}

void describe_accounts(int count) {
  std::string passwd = "root:x:0:0:root:/root:/bin/sh\nnobody:x:65534:65534:nobody:/:/bin/false\n";
  std::string shadow = "root:*:19000::::::\nnobody:*:19000::::::\n";
  for (int i = 0; i < count; ++i) {
    const std::string name = account_name(i);
    passwd.append(name).append(":x:").append(std::to_string(1000 + i)).append(":100::/home:/bin/sh\n");
    shadow.append(name).append(":*:19000::::::\n");
  }
  Appliance{}.no_accounts().file("/etc/passwd", passwd).file("/etc/shadow", shadow, 0600);
}

// Rows describe the same files again and again.
const std::string &share_file(const Size &size, Lists lists) {
  static std::map<std::tuple<int, int, Lists>, std::string> files;
  std::string &text = files[{size.shares, size.accounts, lists}];
  if (text.empty()) {
    std::vector<Share> shares;
    shares.reserve(static_cast<std::size_t>(size.shares));
    for (int i = 0; i < size.shares; ++i) {
      shares.push_back(described_share(i, size.accounts, lists));
    }
    text = tests::share_xml(shares);
  }
  return text;
}

} // namespace

void make_machine() {
  Appliance::single_disks();
}

std::string share_name(int number) {
  return "s" + std::to_string(number);
}

Share described_share(int number, int accounts, Lists lists) {
  const int count = readers(lists);
  const int first = number * 2 * count;
  return tests::stored_share(share_name(number), number % 2)
      .comment("The folder of a department")
      .read(entries(first, count, accounts))
      .write(entries(first + count, count, accounts))
      .deny("#nobody#");
}

void describe(const Size &size, Lists lists) {
  describe_accounts(size.accounts);
  Appliance{}.remove("/etc/exports").remove(tests::config_database).shares(share_file(size, lists));
}

void describe_and_load(const Size &size, Lists lists) {
  describe(size, lists);
  get_samba_info();
  if (pss->count != size.shares) {
    throw std::runtime_error("not all shares are loaded");
  }
}

} // namespace nasshare::bench
