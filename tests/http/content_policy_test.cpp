#include "platform/http/content_policy.h"

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

using Texts = std::vector<std::string>;

// A script of a person's own that does not run, or one that runs though it stands nowhere.
TEST(ContentPolicyTest, FindsTheBlocksThatBrowsersSee) {
  struct Case {
    const char* html;
    Texts scripts;
    Texts styles{};
  };
  for (const auto& [html, scripts, styles] : std::initializer_list<Case>{
           {"<script>a</script><style>b</style>", {"a"}, {"b"}},
           {"<SCRIPT type=module>\r\na\r\rb\n</Script >c", {"\na\n\nb\n"}},
           {"<script src=a.js></script><script data-src=x>b</script>", {"b"}},
           {"<script defer SRC = 'a>.js'>x</script><script a=\"src=1\">b</script>", {"b"}},
           {"<!-- <script>a</script> --><!--><script>b</script>-->", {"b"}},
           {"<title><script></title><p title=\"<script>\"><script>a</script>", {"a"}},
           {"<p title=it's><script>a</script><p x='<style>'>", {"a"}},
           {"<script>if (a < b) '</scripts>' + \"<style>\"</script\n>",
            {"if (a < b) '</scripts>' + \"<style>\""}},
           {"<room><dev0>< script>a</script><scripts>b</scripts>", {}},
           {"<style/media=print>a</style><script/>b</script>", {"b"}, {"a"}},
           {"<script>", {""}},
           {"<script", {""}},
           {"<", {}},
           {"<!--", {}},
           {"<a =", {}}}) {
    const InlineBlocks blocks = inline_blocks(html);
    EXPECT_EQ(blocks.scripts, scripts) << html;
    EXPECT_EQ(blocks.styles, styles) << html;
  }
}

TEST(ContentPolicyTest, AllowsThemByTheHashThatBrowsersCompute) {
  EXPECT_THAT(
      content_policy({{{"alert('Hello, world.');"}, {}}}),
      HasSubstr("; script-src 'self' 'sha256-qznLcsROx4GACP2dm0UCKCzCG+HiZ1guq6ZZDob/Tng=';"));
  // In the code page, and in UTF-8 for the hash.
  EXPECT_NE(content_policy({{{}, {"\xfc"}}}), content_policy({{{}, {"\xc3\xbc"}}}));
  EXPECT_THAT(content_policy(), Not(HasSubstr("unsafe")));
}

class PolicyTest : public ServerTest {
 protected:
  void write(const std::string& file, const std::string& text) {
    std::ofstream(folder / file, std::ios::binary) << text;
  }
  std::string policy(const std::string& path) {
    const std::string head = get(path).head;
    const std::size_t start = head.find("script-src 'self'") + 17;
    return head.substr(start, head.find(';', start) - start);
  }
};

// A name that somebody gave a device runs as a script.
TEST_F(PolicyTest, IsOfTheFilesAndNeverOfThePage) {
  write("wmcindex.html", "<script>a</script>");
  start();
  const std::string a = policy("/index.html?<script>b</script>");
  EXPECT_EQ(std::count(a.begin(), a.end(), '\''), 2);
  write("wmcindex.html", "<p>");
  EXPECT_EQ(policy("/index.html?other"), "") << "of the file as it was";
  write("own.htm", "<script>a</script>");
  EXPECT_EQ(policy("/own.htm"), a);
  EXPECT_EQ(policy("/missing.gif"), "");
}

// "There are no rooms yet", as the template says before anything was put into it.
TEST_F(PolicyTest, LeadsHomeInsteadOfServingATemplate) {
  write("wmcindex.html", "There are no rooms yet");
  write("own.html", "my own");
  start();
  for (const auto& [path, to] : std::initializer_list<std::pair<std::string, std::string>>{
           {"/wmcindex.html", "wmcindex.html"}, {"/", "./"}}) {
    const Answer answer = get(path + "?file");
    EXPECT_EQ(answer.status, 302) << path;
    EXPECT_THAT(answer.head, AllOf(HasSubstr("Location: " + to + "\r\n"), HasSubstr("no-store")));
  }
  EXPECT_EQ(get("/own.html?file").body, "my own");
}

}  // namespace
}  // namespace homewarden::testing
