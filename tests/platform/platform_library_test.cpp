// What the reference platform exports.
#include "output.h"

#include <gtest/gtest.h>

namespace nasshare::tests {
namespace {

TEST(PlatformLibrary, ExportsTheNamesOfItsHeaderOnly) {
  const Ended ended = shell("nm -D --defined-only " PLATFORM_LIBRARY
                            " | sed 's/.* //; s/@.*//' | grep -v '^NASPLATFORM_1$' | sort | tr '\\n' ' '");
  EXPECT_EQ(ended.out,
            "MODX_COMMAND MODX_FreeAllXml MODX_ReadAllXml p_lib_list xml_get_int xml_get_str xml_set_str ");
}

} // namespace
} // namespace nasshare::tests
