#include "platform/http/address.h"
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
  server.ServerPort("abc");
  server.StartListening();
  EXPECT_FALSE(server.Listening());
  EXPECT_FALSE(server.StopListening());
  server.ServerPort(std::to_string(port));
  {
    const Handle taken = host.listen("127.0.0.1", static_cast<std::uint16_t>(port));
    ASSERT_TRUE(taken.is_open());
    server.StartListening();
    EXPECT_FALSE(server.Listening());
  }
  start();
  EXPECT_EQ(get("/index.html").status, 200);
  EXPECT_FALSE(host.listen("", static_cast<std::uint16_t>(port)).is_open())
      << "two programs share a port";
}

}  // namespace
}  // namespace homewarden::testing
