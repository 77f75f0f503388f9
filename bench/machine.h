// The machine that a row is measured on: two single disks, so many shares over both, so many accounts.
#pragma once

#include "row.h"
#include "share.h"

#include <string>

namespace nasshare::bench {

enum class Lists {
  usual, // five readers and five other writers on each share
  full,  // 1536 of each: all that a list holds
};

// The two disks, once.
void make_machine();
// The accounts u0000, u0001, ..., the files of the shares s0, s1, ... on both hidden partitions, and nothing
// else in the configuration.
void describe(const Size &size, Lists lists = Lists::usual);

std::string share_name(int number);
tests::Share described_share(int number, int accounts, Lists lists);

// The same, and the shares are loaded.
void describe_and_load(const Size &size, Lists lists = Lists::usual);

} // namespace nasshare::bench
