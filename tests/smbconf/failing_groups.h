// A group database that fails.
#pragma once

namespace nasshare::tests {

// While it is set, nobody learns whether a group exists: the disk behind the database fails.
extern bool groups_fail;

} // namespace nasshare::tests
