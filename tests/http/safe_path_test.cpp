#include "platform/http/safe_path.h"

#include <gtest/gtest.h>

#include <random>

#include "base/text.h"

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

TEST(SafePathTest, RefusesEverySpellingOfWhatIsNotServed) {
  for (const std::string path :
       {"", "index.html", "http://house/index.html", "*",
        // the file with the passwords, its copies, and what other systems read as it
        "/htaccess.txt", "/HTACCESS.TXT", "/HtAccess.Txt", "/%68taccess.txt", "/htaccess%2etxt",
        "/%68%74%61%63%63%65%73%73%2e%74%78%74", "/%2568taccess.txt", "/htaccess.txt.",
        "/htaccess.txt...", "/htaccess.txt%20", "/htaccess.txt ", "/%20htaccess.txt",
        "/htaccess.txt%00", "/htaccess.txt%00.gif", "/htaccess.txt::$DATA", "/htaccess.txt.new",
        "/htaccess.txt~", "/HTACCE~1.TXT", "/htaccess.txt/", "//htaccess.txt", "/./htaccess.txt",
        "/x/../htaccess.txt", "/.\\htaccess.txt", "/sub/htaccess.txt",
        // out of the folder
        "/..", "/../", "/../rmlst.hwd", "/a/../../b", "/%2e%2e/b", "/%2e%2e%2fb", "/.%2e/b",
        "/%252e%252e/b", "/..%5cb", "/..\\b", "/\\b", "/C:/b", "/c:b", "//etc/passwd",
        "/%2fetc/passwd", "/...", "/....//b", "/a/..", "/..;/b/..",
        // hidden, empty, malformed
        "/.hidden", "/a/.hidden/b", "/a/", "/a//b", "/%", "/%4", "/%zz", "/a%0d%0ab", "/a\tb",
        "/a%7fb"})
    EXPECT_FALSE(safe_path(path)) << path;
  EXPECT_FALSE(safe_path("/" + std::string(2000, 'a')));
}

// Whatever is let through is a plain path downwards.
TEST(SafePathTest, LetsNothingThroughThatLeavesTheFolder) {
  std::mt19937 random(20240607);
  const std::string letters = "./\\%%%2e2f5c00htaccess.txt~: \x80\xff\n?a";
  int passed = 0;
  for (int i = 0; i < 200000; ++i) {
    std::string path = "/";
    for (auto length = random() % 14; length > 0; --length)
      path += letters[random() % letters.size()];
    const auto safe = safe_path(path);
    if (!safe) continue;
    ++passed;
    const std::string inside = "/" + *safe + "/";
    EXPECT_EQ(safe->find_first_of("\\%~:\n"), std::string::npos) << path;
    EXPECT_EQ(inside.find("/."), std::string::npos) << path;
    EXPECT_EQ(inside.find("./"), std::string::npos) << path;
    EXPECT_EQ(inside.find(" /"), std::string::npos) << path;
    EXPECT_FALSE(contains_ignoring_case(inside, "/htaccess")) << path;
    EXPECT_TRUE(safe->empty() || inside.find("//") == std::string::npos) << path;
  }
  EXPECT_GT(passed, 1000);
}

}  // namespace
}  // namespace homewarden
