// What must hold after an interrupted change: each stored file is the old or the new one, whole, and what
// lies about does no harm to the next change.
#pragma once

#include "changes.h"
#include "traced_child.h"

#include <set>
#include <string>

namespace nasshare::tests {

class Verdict {
public:
  Verdict(Change change, Files before);

  // Puts the files back to the old ones.
  void begin() const;
  // What is wrong after the process was killed; empty for nothing.
  std::string after_kill();
  // What is wrong after the change ran to its end although something failed.
  std::string after_failure(const Interrupted &end);
  // What is wrong after an undisturbed run.
  std::string after_success(const Interrupted &end) const;

  [[nodiscard]] const Change &change() const { return change_; }

private:
  std::string of_files(const Files &now, bool killed) const;
  std::string of_answer(const Files &now, const Interrupted &end) const;
  std::string of_next(const Files &now);
  [[nodiscard]] bool is_old(const std::string &path, const Files &now) const;
  [[nodiscard]] bool is_new(const std::string &path, const Files &now) const;

  Change change_;
  Files before_;
  std::set<Files> seen_; // what the next change has been tried on
};

} // namespace nasshare::tests
