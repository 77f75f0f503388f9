// One program at a time loads, changes and stores. The lock is advisory (flock) and goes with its holder,
// however that ends; where /run is not there or not writable, programs go on without it.
#pragma once

#include "support/owners.h"

namespace nasshare {

inline constexpr const char *catalogue_lock = "/run/nasshare.lock";
inline constexpr const char *dfs_groups_lock =
    "/run/nasshare-dfs-groups.lock"; // taken before that of the links
inline constexpr const char *dfs_links_lock = "/run/nasshare-dfs-links.lock";
inline constexpr const char *in_place_lock = "/run/nasshare-in-place.lock";
inline constexpr const char *configuration_lock = "/run/nasshare-configuration.lock"; // taken last

class ProgramLock {
public:
  // Waits for the holder.
  explicit ProgramLock(const char *path);

  ProgramLock(const ProgramLock &) = delete;
  ProgramLock &operator=(const ProgramLock &) = delete;
  ~ProgramLock() { release(); }

  // Before a service command runs: it may use this library itself. A process that was forked meanwhile, by
  // the firmware's library or another thread, has the file open too and must not keep the lock.
  void release();

private:
  Descriptor file_;
};

} // namespace nasshare
