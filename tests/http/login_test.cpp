#include "platform/http/log_in.h"
#include "tests/http/server_fixture.h"
#include "tests/platform/virtual_loop.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

TEST(LoginDelaysTest, GrowsToAMinuteAndForgives) {
  LoginDelays delays(5);
  const Guesser guest{1};
  auto now = 1000000ms;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(delays.wait(guest, now), 0ms) << i;
    delays.wrong(guest, now);
  }
  for (const auto delay : {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}) {
    EXPECT_EQ(delays.wait(guest, now), delay);
    EXPECT_EQ(delays.wait(Guesser{2}, now), 0ms);
    now += delay;
    EXPECT_EQ(delays.wait(guest, now), 0ms);
    delays.wrong(guest, now);
  }
  delays.wrong(guest, now + 2h);
  EXPECT_EQ(delays.wait(guest, now + 2h), 0ms) << "wrong tries are held against it for ever";
  for (int i = 0; i < 9; ++i) delays.wrong(guest, now + 2h);
  delays.right(guest);
  EXPECT_EQ(delays.wait(guest, now + 2h), 0ms);
}

TEST(LoginDelaysTest, RemembersNoMoreThanItsMany) {
  LoginDelays delays(1, 3);
  for (std::uint8_t i = 1; i <= 4; ++i) delays.wrong(Guesser{i}, std::chrono::seconds(i));
  EXPECT_GT(delays.wait(Guesser{4}, 4s), 0ms);
  EXPECT_EQ(delays.wait(Guesser{1}, 1s), 0ms);
}

class LogInTest : public ::testing::Test {
 protected:
  static LogIn made() {
    return {Credentials("anna:secret\r\n"), LoginCookies("a key", "anna:secret\r\n")};
  }

  // The status, and for one who is admitted 200 and the cookie that is set, in `cookie`.
  unsigned ask(const std::string& from, bool right, const std::string& cookies = "") {
    RequestHead head;
    head.cookies = cookies;
    head.authorization = right ? "Basic YW5uYTpzZWNyZXQ=" : "Basic YW5uYTp3cm9uZw==";
    const auto verdict = log_in->check(head, {*parse_address(from)}, clock);
    if (const auto* refusal = std::get_if<Refusal>(&verdict)) return refusal->status;
    cookie = std::get<std::string>(verdict).substr(0, std::get<std::string>(verdict).find(';'));
    return 200;
  }
  unsigned guess_for_long(const std::string& network, const std::string& cookies = "") {
    unsigned status = 0;
    for (int i = 1; i <= 60; ++i)
      status = ask(cookies.empty() ? network + std::to_string(i) : network + "1", false, cookies);
    return status;
  }

  VirtualLoop clock;
  std::optional<LogIn> log_in{made()};
  std::string cookie;
};

// Every address of a network would have free tries: of one on the internet and of one at home,
// where a guest's computer takes any number of them.
TEST_F(LogInTest, SlowsDownGuessingFromANetwork) {
  for (const std::string network : {"2001:db8::", "fd00:1::", "fe80::"}) {
    EXPECT_EQ(guess_for_long(network), 429u) << network;
    EXPECT_EQ(ask(network + "99", true), 429u) << network;
  }
  EXPECT_EQ(ask("2001:db8:0:1::1", false), 401u) << "others are held up";
  unsigned status = 0;
  for (int i = 1; i <= 510; ++i) status = ask("2001:db8:5:" + std::to_string(i) + "::1", false);
  EXPECT_EQ(status, 429u) << "whoever has thousands of networks guesses as fast as he can";
  EXPECT_EQ(ask("2001:db8:6:1::1", false), 401u) << "others are held up";
}

// Whoever guesses from the owner's network, or behind the same router, locks the owner out.
TEST_F(LogInTest, HoldsUpNobodyWhoHasLoggedInLately) {
  ASSERT_EQ(ask("10.0.0.1", true), 200u);
  const std::string browser = cookie;
  ASSERT_EQ(ask("fd00::77", true), 200u);
  guess_for_long("fd00::");
  EXPECT_EQ(guess_for_long("10.0.0.", "x=1"), 429u);
  EXPECT_EQ(ask("fd00::99", true), 429u) << "it knows nobody there";
  EXPECT_EQ(ask("fd00::77", true), 200u) << "an address is held up by others";
  EXPECT_EQ(ask("10.0.0.1", true), 429u);
  EXPECT_EQ(ask("10.0.0.1", true, "a=b; " + browser + ";"), 200u) << "a browser is held up";
  EXPECT_EQ(cookie, "") << "a cookie of today is made anew";

  log_in.emplace(made());  // the server starts again
  guess_for_long("10.0.0.", "x=1");
  EXPECT_EQ(ask("10.0.0.1", true, browser), 200u) << "forgotten by a start";
  // A cookie that was stolen gives no free tries.
  EXPECT_EQ(guess_for_long("10.9.9.", browser), 429u);
}

// Whoever makes up a cookie, or keeps one for years, has all the tries of a new address.
TEST(LoginCookiesTest, KnowsItsOwnForAMonthWhileThePasswordIsTheSame) {
  const LoginCookies cookies("a key", "anna:secret");
  const std::string cookie = cookies.sign(std::nullopt, 20000);
  const auto browser = cookies.read(cookie, 20030);
  ASSERT_TRUE(browser);
  EXPECT_EQ(browser->day, 20000);
  EXPECT_EQ(cookies.read(cookies.sign(browser, 20031), 20031)->id, browser->id);
  EXPECT_NE(cookies.sign(std::nullopt, 20000), cookie) << "browsers share an id";
  EXPECT_FALSE(cookies.read(cookie, 20031));
  EXPECT_FALSE(cookies.read(cookie, 19990)) << "of a day to come";
  EXPECT_FALSE(LoginCookies("a key", "anna:other").read(cookie, 20000));
  EXPECT_FALSE(LoginCookies("other", "anna:secret").read(cookie, 20000));
  for (std::size_t i = 0; i < cookie.size(); ++i) {
    std::string changed = cookie;
    changed[i] = changed[i] == '1' ? '2' : '1';
    EXPECT_FALSE(cookies.read(changed, 20000)) << changed;
    EXPECT_FALSE(cookies.read(cookie.substr(i + 1), 20000));
    EXPECT_FALSE(cookies.read(cookie.substr(0, i), 20000));
  }
}

using LoginTest = ServerTest;

TEST_F(LoginTest, ReadsThePasswordsAtTheStartOnly) {
  const auto log_in = [this] {  // anna:secret
    return get("/index.html", "Authorization: Basic YW5uYTpzZWNyZXQ=\r\n").status;
  };
  server.AuthenticationMode(1);
  start();
  EXPECT_EQ(log_in(), 401) << "without a file nobody is admitted";
  std::ofstream(folder / "htaccess.txt") << "anna:secret\r\n";
  EXPECT_EQ(log_in(), 401);
  server.StopListening();
  start();
  EXPECT_EQ(log_in(), 200);
  using std::filesystem::perms;
  const auto others = perms::group_all | perms::others_all;
  EXPECT_EQ(std::filesystem::status(folder / "htaccess.key").permissions() & others, perms::none);
  EXPECT_EQ(std::filesystem::file_size(folder / "htaccess.key"), 32u);
}

}  // namespace
}  // namespace homewarden::testing
