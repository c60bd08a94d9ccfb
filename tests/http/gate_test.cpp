#include "platform/http/access.h"

#include <gtest/gtest.h>

#include "platform/http/gate.h"

namespace homewarden {
namespace {

using std::chrono::milliseconds;

TEST(AccessTest, AcceptsHostsThatOnlyTheHouseGivesAway) {
  const std::vector<std::string> names{"Attic-PC", "house.example.org"};
  for (const std::string host :
       {"192.168.1.5", "192.168.1.5:8080", "8.8.8.8", "[::1]", "[fe80::1]:80", "localhost",
        "LOCALHOST:81", "localhost.", "attic-pc", "ATTIC-PC:80", "house.example.org:1234",
        "warden.local", "Warden.LAN", "x.home", "y.home.arpa."})
    EXPECT_TRUE(is_own_host(host, names)) << host;
  for (const std::string host : {"",
                                 ":80",
                                 "evil.example",
                                 "evil.example:80",
                                 "localhost.evil.example",
                                 "local",
                                 ".local",
                                 "home.arpa",
                                 "xlocal",
                                 "192.168.1.5.evil.example",
                                 "192.168.1.5@evil.example",
                                 "evil.example/.local",
                                 "evil.example?.local",
                                 "evil.example#.local",
                                 "evil.example\\.local",
                                 "a b.local",
                                 "[::1",
                                 "::1",
                                 "[evil]",
                                 "[::1].evil.example",
                                 "[::1]x",
                                 "localhost:80:80",
                                 "localhost:8x",
                                 "localhost:123456",
                                 "house.example.org.evil",
                                 "other.example.org"})
    EXPECT_FALSE(is_own_host(host, names)) << host;
}

TEST(AccessTest, ComparesHostAndPortOfWebAddresses) {
  EXPECT_TRUE(is_of_host("http://warden.local", "warden.local"));
  EXPECT_TRUE(is_of_host("http://Warden.local:80/index.html?x", "warden.local"));
  EXPECT_TRUE(is_of_host("https://warden.local", "warden.local:443"));
  EXPECT_TRUE(is_of_host("http://[::1]:8080/", "[::1]:8080"));
  for (const std::string address :
       {"null", "", "http://", "http://evil.example", "http://warden.local:8080",
        "http://warden.local.evil.example", "http://warden.local@evil.example",
        "http://evil.example/warden.local", "http://evil.example?//warden.local",
        "ftp://warden.local", "warden.local", "http:/warden.local", "https://warden.local:80"})
    EXPECT_FALSE(is_of_host(address, "warden.local")) << address;
}

RequestHead asked(const std::string& uri) {
  RequestHead head;
  head.from = *parse_address("192.168.1.9");
  head.method = "GET";
  head.uri = uri;
  head.host = "192.168.1.5:8080";
  return head;
}

Gate gate_of(bool log_in) {
  GateRules rules;
  rules.log_in = log_in;
  rules.credentials = Credentials("anna:secret\r\n");
  return Gate(std::move(rules));
}

unsigned status(Gate& gate, const RequestHead& head, milliseconds now = {}) {
  const auto verdict = gate.check(head, now);
  const auto* refusal = std::get_if<Refusal>(&verdict);
  return refusal != nullptr ? refusal->status : 200;
}

TEST(GateTest, AnswersTheInternetOnlyWithAPassword) {
  Gate open = gate_of(false);
  Gate closed = gate_of(true);
  RequestHead head = asked("/index.html");
  EXPECT_EQ(status(open, head), 200u);
  EXPECT_EQ(status(closed, head), 401u);
  head.from = *parse_address("203.0.113.7");
  EXPECT_EQ(status(open, head), 403u);
  head.authorization = "Basic YW5uYTpzZWNyZXQ=";
  EXPECT_EQ(status(open, head), 403u);
  EXPECT_EQ(status(closed, head), 200u);
  head.from_here = true;
  EXPECT_EQ(status(open, head), 200u) << "this machine may have an address of the internet";
}

TEST(GateTest, SlowsDownGuessingFromAnAddressAndFromANetwork) {
  Gate gate = gate_of(true);
  RequestHead guess = asked("/index.html");
  guess.authorization = "Basic YW5uYTp3cm9uZw==";
  RequestHead right = guess;
  right.authorization = "Basic YW5uYTpzZWNyZXQ=";
  for (int i = 0; i < 5; ++i) EXPECT_EQ(status(gate, guess), 401u);
  EXPECT_EQ(status(gate, right), 429u) << "the sixth is looked at without waiting";
  EXPECT_EQ(status(gate, right, milliseconds(1000)), 200u);

  guess.from = *parse_address("2001:db8::1");
  for (int i = 0; i < 50; ++i) {
    guess.from.bytes[15] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(status(gate, guess), 401u);
  }
  guess.from.bytes[15] = 99;
  EXPECT_EQ(status(gate, guess), 429u) << "every address of a network has free tries";
  EXPECT_EQ(status(gate, asked("/index.html")), 401u) << "others are held up";
}

}  // namespace
}  // namespace homewarden
