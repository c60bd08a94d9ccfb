#include "platform/http/safe_path.h"

#include <gtest/gtest.h>

namespace homewarden {
namespace {

TEST(SafePathTest, DecodesOrdinaryNamesOnce) {
  EXPECT_EQ(safe_path("/"), "");
  EXPECT_EQ(safe_path("/index.html"), "index.html");
  EXPECT_EQ(safe_path("/a/b%2Egif"), "a/b.gif");
  EXPECT_EQ(safe_path("/my%20lamp.gif"), "my lamp.gif");
  EXPECT_EQ(safe_path("/K%fcche.gif"),
            "K\xfc"
            "che.gif");
}

}  // namespace
}  // namespace homewarden
