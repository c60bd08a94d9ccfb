#include <memory>

#include "platform/http/listen_socket.h"
#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using StartTest = ServerTest;

TEST(PortTest, TakesNumbersOfPortsOnly) {
  EXPECT_EQ(parse_port("80"), 80);
  EXPECT_EQ(parse_port(" 65535 "), 65535);
  for (const std::string text :
       {"", "0", "65536", "70000", "abc", "80a", "-1", "+80", "8 0", "4294967376", "8.0"})
    EXPECT_FALSE(parse_port(text)) << text;
}

TEST_F(StartTest, DoesNotStartWithoutAPortOfItsOwn) {
  for (const std::string text : {"abc", "0", "70000", ""}) {
    server.ServerPort(text);
    server.StartListening();
    EXPECT_FALSE(server.Listening()) << text;
  }
  EXPECT_FALSE(server.StopListening());
  {
    const Descriptor taken = listen_on("127.0.0.1", static_cast<std::uint16_t>(port));
    ASSERT_TRUE(taken.is_open());
    server.ServerPort(std::to_string(port));
    server.StartListening();
    EXPECT_FALSE(server.Listening());
  }
  start();
  EXPECT_EQ(get("/index.html").status, 200);
}

TEST_F(StartTest, StartsAgainOnItsPortAndOnAnother) {
  const int other = free_port();
  for (const int number : {port, port, other, port}) {
    server.ServerPort(std::to_string(number));
    start();
    // The server ends this connection first, which keeps its port busy for a while.
    Client client(loop, number);
    EXPECT_EQ(client.ask("/index.html").status, 200);
    EXPECT_TRUE(server.StopListening());
  }
  EXPECT_FALSE(Client(loop, port).is_connected());
}

class EverywhereTest : public ServerTest {
 protected:
  EverywhereTest() : ServerTest(HttpLimits{}) {}
};

TEST_F(EverywhereTest, AnswersBothKindsOfAddresses) {
  start();
  EXPECT_EQ(get("/index.html").status, 200) << "IPv4 comes in mapped form and must be private";
  Client v6(loop, port, "::1");
  if (v6.is_connected()) {
    EXPECT_EQ(v6.ask("/index.html", "Host: [::1]\r\n").status, 200);
  }
  EXPECT_FALSE(listen_on("", static_cast<std::uint16_t>(port)).is_open())
      << "two programs share a port";
}

}  // namespace
}  // namespace homewarden::testing
