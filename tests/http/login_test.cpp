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
  Address guest = *parse_address("10.0.0.0");
  for (std::uint8_t i = 1; i <= 4; ++i) {
    guest.bytes[15] = i;
    delays.wrong(guest, std::chrono::seconds(i));
  }
  EXPECT_GT(delays.wait(guest, 4s), 0ms);
  guest.bytes[15] = 1;
  EXPECT_EQ(delays.wait(guest, 1s), 0ms);
}

class LoginTest : public ServerTest {
 protected:
  Answer log_in() {  // anna:secret
    return get("/index.html", "Host: localhost\r\nAuthorization: Basic YW5uYTpzZWNyZXQ=\r\n");
  }
};

TEST_F(LoginTest, ReadsThePasswordsAtTheStartOnly) {
  server.AuthenticationMode(1);
  start();
  EXPECT_EQ(log_in().status, 401) << "without a file nobody is admitted";
  write("htaccess.txt", "anna:secret\r\n");
  EXPECT_EQ(log_in().status, 401);
  server.StopListening();
  start();
  EXPECT_EQ(log_in().status, 200);
  server.StopListening();
  server.AuthenticationMode(0);
  start();
  EXPECT_EQ(get("/index.html").status, 200);
}

}  // namespace
}  // namespace homewarden::testing
