// Whether NFS clients can reach a path, for callers in C.
#include "model/nfs_exports.h"

#include "nasshare/support.h"

using namespace nasshare;

int check_nfs_share(const char *path) {
  return path != nullptr && is_exported_or_note(path) ? 1 : 0;
}
