// A small appliance and the changes that its stored files must survive, whatever interrupts them.
//
// Two single disks; the share Music on the first volume, Photos and Docs on the second; two groups with a
// link each; a configuration without a value at its default.
#pragma once

#include "stored_files.h"

#include <functional>
#include <string>

namespace nasshare::tests {

struct Change {
  std::string name;
  std::function<void()> prepare; // steps that are not interrupted
  std::function<int()> run;      // the answer; 1 for an operation that has none
  Files after;                   // the files that differ afterwards; the others are as before
  std::function<int()> next;     // the operation that follows an interrupted one
  // What the files are once `next` ran on these. Each of them is the old or the new one.
  std::function<Files(const Files &)> after_next;
  // Whether the next load of these files shows the change; not given where every file has to be the new one.
  std::function<bool(const Files &)> is_shown = {};
};

// Sets the machine up; the files of `before`, which are the same each time.
Files make_appliance();

// The same in domain mode, with the share XML of both modes.
Files make_domain_appliance();

Change adding_a_share();
Change modifying_a_share();
Change deleting_a_share();
Change changing_an_account();
Change adding_a_share_in_domain_mode();
Change adding_a_link();
Change renaming_a_group();
Change storing_a_value();

} // namespace nasshare::tests
