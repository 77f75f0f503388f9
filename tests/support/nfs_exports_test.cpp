// Whether /etc/exports names a path.
#include "appliance.h"
#include "debug_output.h"
#include "nasshare/support.h"
#include "output.h"
#include "unopenable.h"

#include <gtest/gtest.h>
#include <string>

namespace nasshare::tests {
namespace {

constexpr const char *p2p = "/mnt/HD/HD_a2/P2P";

TEST(NfsExports, PathStandsInDoubleQuotesAtTheBeginningOfALine) {
  const struct {
    const char *exports;
    int exported;
  } rows[] = {
      {"\"/mnt/HD/HD_a2/P2P\" *(rw,sync)\n", 1},
      {"\"/mnt/HD/HD_a2/P2P\"", 1},
      {"\"/mnt/HD/HD_a2/P2P\" 192.168.0.0/24(ro) \r\n", 1},
      {"\"/mnt/HD/HD_a2/Music\" *\n\"/mnt/HD/HD_a2/P2P\" *\n", 1},
      {"# exports\n\n\"/mnt/HD/HD_a2/P2P\" *\n", 1},
      {"/mnt/HD/HD_a2/P2P *(rw)\n", 0},
      {"\"/mnt/HD/HD_a2/P2P/\" *\n", 0},
      {"\"/mnt/HD/HD_a2/p2p\" *\n", 0},
      {"\"/mnt/HD/HD_a2/P2P2\" *\n", 0},
      {"\"/mnt/HD/HD_a2\" *\n", 0},
      {" \"/mnt/HD/HD_a2/P2P\" *\n", 0},
      {"#\"/mnt/HD/HD_a2/P2P\" *\n", 0},
      {"\"/mnt/HD/HD_a2/P2P \" *\n", 0},
      {"\"/mnt/HD/HD_a2/P2P\" \"192.168.0.2\"(rw)\n", 0},
      {"\"\" *\n", 0},
      {"\"", 0},
      {"\"\n\"\"\n", 0},
      {"", 0},
  };
  for (const auto &row : rows) {
    SCOPED_TRACE(row.exports);
    Appliance{}.exports(row.exports);
    EXPECT_EQ(check_nfs_share(p2p), row.exported);
  }
}

TEST(NfsExports, PathMayHoldBlanksAndQuotes) {
  Appliance{}.exports("\"/mnt/HD/HD_a2/My Music\" *\n\"/mnt/HD/HD_a2/The \"best\"\" *\n");
  EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/My Music"), 1);
  EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/The \"best\""), 1);
}

TEST(NfsExports, TrailingSlashIsSignificant) {
  Appliance{}.exports("\"/mnt/HD/HD_a2/P2P\" *\n");
  EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/P2P"), 1);
  EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/P2P/"), 0);
}

TEST(NfsExports, LineWithoutQuotesNeverMatches) {
  Appliance{}.exports("/mnt/HD/HD_a2/P2P\nx/mnt/HD/HD_a2/P2P\n");
  EXPECT_EQ(check_nfs_share("/mnt/HD/HD_a2/P2P"), 0);
  EXPECT_EQ(check_nfs_share("mnt/HD/HD_a2/P2P"), 0);
}

TEST(NfsExports, TextBehindTheFirstCharacterIsThePathWhateverThatIs) {
  Appliance{}.exports("x/mnt/My \"Music\" *\n");
  EXPECT_EQ(check_nfs_share("/mnt/My \"Music"), 1);
}

TEST(NfsExports, LongLineComesInPiecesOf4095Bytes) {
  Appliance{}.exports(std::string(4095, 'x') + "\"/mnt/HD/HD_a2/P2P\" *\n");
  EXPECT_EQ(check_nfs_share(p2p), 1);
  Appliance{}.exports(std::string(5000, 'x') + "\"/mnt/HD/HD_a2/P2P\" *\n");
  EXPECT_EQ(check_nfs_share(p2p), 0);
}

TEST(NfsExports, LongestPathIsFoundWhole) {
  const std::string path = "/" + std::string(4092, 'p');
  Appliance{}.exports("\"" + path + "\"\n");
  EXPECT_EQ(check_nfs_share(path.c_str()), 1);
  EXPECT_EQ(check_nfs_share((path + "p").c_str()), 0);
  EXPECT_EQ(check_nfs_share(path.substr(0, 4092).c_str()), 0);
}

TEST(NfsExports, FlagOneTracesEachComparisonUpToTheMatch) {
  Appliance{}.exports("\"/mnt/A\" *\n\"/mnt/B\" *\n\"/mnt/C\" *\n");
  expect_trace([] { check_nfs_share("/mnt/B"); }, "get_nfs_path---->[/mnt/A]\n"
                                                  "compare path---->[/mnt/B]\n"
                                                  "get_nfs_path---->[/mnt/B]\n"
                                                  "compare path---->[/mnt/B]\n");
}

TEST(NfsExports, NothingIsPrintedUnlessTheFlagIsExactlyOne) {
  Appliance{}.exports("\"/mnt/A\" *\n\"/mnt/B\" *\n");
  for (const int flag : {0, 2, -1}) {
    SCOPED_TRACE(flag);
    smb_dbg_flag = flag;
    EXPECT_EQ(output_of([] { check_nfs_share("/mnt/B"); }), "");
  }
}

TEST(NfsExports, MissingFileExportsNothing) {
  expect_silence([] { EXPECT_EQ(check_nfs_share(p2p), 0); });
}

TEST(NfsExports, FileThatCannotBeOpenedExportsNothing) {
  make_unopenable("/etc/exports");
  expect_silence([] { EXPECT_EQ(check_nfs_share(p2p), 0); });
}

TEST(NfsExports, MissingPathIsNotExported) {
  Appliance{}.exports("\"\" *\n\"/mnt/A\" *\n");
  EXPECT_EQ(check_nfs_share(nullptr), 0);
}

} // namespace
} // namespace nasshare::tests
