#include "platform/http/gate.h"
#include "platform/http/login_delays.h"
#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

TEST(LoginDelaysTest, GrowsToAMinuteAndForgives) {
  LoginDelays delays(5);
  const Address guest = *parse_address("10.0.0.1");
  auto now = 1000000ms;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(delays.wait(guest, now), 0ms) << i;
    delays.wrong(guest, now);
  }
  for (const auto delay : {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}) {
    EXPECT_EQ(delays.wait(guest, now), delay);
    EXPECT_EQ(delays.wait(*parse_address("10.0.0.2"), now), 0ms);
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
  const auto guest = [](int i) { return *parse_address("10.0.0." + std::to_string(i)); };
  for (int i = 1; i <= 4; ++i) delays.wrong(guest(i), std::chrono::seconds(i));
  EXPECT_GT(delays.wait(guest(4), 4s), 0ms);
  EXPECT_EQ(delays.wait(guest(1), 1s), 0ms);
}

// Every address of a network of the internet would have free tries.
TEST(GateTest, SlowsDownGuessingFromANetwork) {
  GateRules rules;
  rules.log_in = true;
  rules.credentials = Credentials("anna:secret\r\n");
  Gate gate(std::move(rules));
  const auto guess_from = [&gate](const std::string& address) {
    RequestHead head;
    head.from = *parse_address(address);
    head.method = "GET";
    head.uri = "/index.html";
    head.host = "192.168.1.5:8080";
    head.authorization = "Basic YW5uYTp3cm9uZw==";
    return std::get<Refusal>(gate.check(head, {})).status;
  };
  for (int i = 0; i < 50; ++i) EXPECT_EQ(guess_from("2001:db8::" + std::to_string(i)), 401u);
  EXPECT_EQ(guess_from("2001:db8::99"), 429u);
  EXPECT_EQ(guess_from("2001:db8:0:1::1"), 401u) << "others are held up";
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
}

}  // namespace
}  // namespace homewarden::testing
