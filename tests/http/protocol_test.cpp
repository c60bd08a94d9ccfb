#include <random>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

using ProtocolTest = ServerTest;

TEST_F(ProtocolTest, AnswersRequestsThatCameTogetherInTheirOrder) {
  start();
  Client client(loop, port);
  std::string together;
  for (int i = 0; i < 50; ++i)
    together += "GET /index.html?" + std::to_string(i) + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
  client.send("GET /hold.html HTTP/1.1\r\nHost: localhost\r\n\r\n" + together);
  ASSERT_TRUE(loop.run_until([&] { return !held.empty(); }));
  loop.run_for(20ms);
  EXPECT_EQ(pages.size(), 1u) << "the second was raised before the first was answered";
  server.SendPage(held[0], "first", false);
  EXPECT_EQ(client.read().body, "first");
  for (int i = 0; i < 50; ++i) EXPECT_EQ(client.read().body, "index.html?" + std::to_string(i));
}

// Requests with bytes changed, doubled and lost: whatever comes of them, the next client is served.
TEST_F(ProtocolTest, OutlivesDamagedRequests) {
  start();
  std::mt19937 random(7);
  for (int i = 0; i < 1500; ++i) {
    std::string bytes =
        "GET /index.html?A~3~HallLamp~turnon~Hall HTTP/1.1\r\nHost: localhost\r\n"
        "Cookie: a=b; c=\"d\"\r\nAuthorization: Basic YTpi\r\nReferer: http://[::1]/x\r\n\r\n";
    for (auto damages = 1 + random() % 4; damages > 0; --damages) {
      const std::size_t place = random() % bytes.size();
      switch (random() % 3) {
        case 0:
          bytes[place] = static_cast<char>(random());
          break;
        case 1:
          bytes.insert(place, bytes.substr(random() % bytes.size(), random() % 40));
          break;
        default:
          bytes.erase(place, 1 + random() % 9);
      }
    }
    Client client(loop, port);
    client.send(bytes);
    loop.run_for(1ms);
  }
  EXPECT_EQ(get("/index.html").status, 200);
}

}  // namespace
}  // namespace homewarden::testing
