// One program at a time loads, changes and stores. The lock is advisory (flock) and goes with its holder,
// however that ends; where /run is not there or not writable, programs go on without it.
//
// A program that takes several takes them in this order: the service; DFS groups, then DFS links; the DFS
// tree; or the catalogue; then a file that is written in place; then the configuration database.
#pragma once

#include "base/owners.h"

namespace nasshare {

class ProgramLock {
public:
  // Waits for the holder.
  explicit ProgramLock(const char *path);

  ProgramLock(const ProgramLock &) = delete;
  ProgramLock &operator=(const ProgramLock &) = delete;
  ~ProgramLock() { release(); }

  // The commands that are run from here on have it too: they go on with their work when this program is
  // killed.
  void share_with_commands();

  // Before a service command runs: it may use this library itself. A process that was forked meanwhile, by
  // the firmware's library or another thread, has the file open too and must not keep the lock.
  void release();

private:
  Descriptor file_;
};

} // namespace nasshare
