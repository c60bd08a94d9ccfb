#include <algorithm>
#include <random>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

class ProtocolTest : public ServerTest {
 protected:
  // The first answer to these bytes; 0 when the connection is closed without one, -1 when nothing
  // happens at all.
  int status_of(const std::string& bytes) {
    Client client(loop, port);
    client.send(bytes);
    bool closed = false;
    loop.run_until([&] { return client.has_input() || (closed = client.is_closed_within(0ms)); },
                   2s);
    if (client.has_input()) return client.read().status;
    return closed ? 0 : -1;
  }
};

TEST_F(ProtocolTest, RefusesWhatIsNotARequest) {
  start();
  const std::string host = "Host: localhost\r\n";
  const auto head = [&](const std::string& line, const std::string& headers) {
    return line + "\r\n" + headers + "\r\n";
  };
  const std::string get = "GET /index.html HTTP/1.1";
  EXPECT_EQ(status_of("NONSENSE\r\n\r\n"), 0);
  EXPECT_EQ(status_of(head("GET /index.html", "")), 400);
  EXPECT_EQ(status_of(head("GET /index.html HTTP/2.0", host)), 505);
  EXPECT_EQ(status_of(head(get, "")), 400) << "HTTP/1.1 without a Host";
  EXPECT_EQ(status_of(head(get, host + host)), 400);
  EXPECT_EQ(status_of(head(get, host + "broken\r\n")), 400);
  EXPECT_EQ(status_of(head(get, host + "Content-Length: 5\r\n") + "hello"), 400);
  EXPECT_EQ(status_of(head(get, host + "Content-Length: x\r\n")), 400);
  EXPECT_EQ(status_of(head(get, host + "Transfer-Encoding: chunked\r\n") + "0\r\n\r\n"), 400);
  EXPECT_EQ(status_of(head("POST /index.html HTTP/1.1", host + "Content-Length: 5\r\n") + "hello"),
            405);
  EXPECT_TRUE(pages.empty());
  EXPECT_EQ(status_of(head("GET /index.html HTTP/1.0", "")), 200);
  EXPECT_EQ(status_of(head(get, host + "Content-Length: 0\r\n")), 200);
}

TEST_F(ProtocolTest, RefusesWhatIsTooLong) {
  start();
  const auto asked = [](std::size_t query, std::size_t header) {
    return "GET /index.html?" + std::string(query, 'q') +
           " HTTP/1.1\r\nHost: localhost\r\nX: " + std::string(header, 'h') + "\r\n\r\n";
  };
  EXPECT_EQ(status_of(asked(4000, 8000)), 200);
  EXPECT_EQ(status_of(asked(4096, 10)), 414);
  EXPECT_EQ(status_of(asked(1000000, 10)), 414);
  EXPECT_EQ(status_of(asked(10, 1000000)), 431);
  std::string many;
  for (int i = 0; i < 5000; ++i) many += "a: b\r\n";
  EXPECT_EQ(status_of("GET / HTTP/1.1\r\nHost: localhost\r\n" + many + "\r\n"), 431);
  std::string parts;
  for (int i = 0; i < 2000; ++i) parts += "&a";
  EXPECT_EQ(status_of("GET /index.html?" + parts + " HTTP/1.1\r\nHost: a\r\n\r\n"), 0);
  EXPECT_EQ(pages.size(), 1u);
}

TEST_F(ProtocolTest, PutsARequestTogetherFromItsBytes) {
  start();
  Client client(loop, port);
  for (const char letter :
       std::string("GET /index.html?slow HTTP/1.1\r\nHost: localhost\r\n\r\n")) {
    EXPECT_FALSE(client.has_input());
    client.send(std::string(1, letter));
    loop.run_for(1ms);
  }
  EXPECT_EQ(client.read().body, "index.html?slow");
}

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

TEST_F(ProtocolTest, OutlivesConnectionsCutOffAnywhere) {
  start();
  write("lamp.gif", std::string(3000000, 'x'));
  const std::string whole =
      "GET /lamp.gif HTTP/1.1\r\nHost: localhost\r\nContent-Length: 9\r\n\r\nbo";
  for (std::size_t length = 0; length <= whole.size(); length += 3) {
    for (const bool reset : {false, true}) {
      Client client(loop, port);
      client.send(whole.substr(0, length));
      loop.run_for(1ms);
      client.close(reset);
    }
  }
  for (const bool reset : {false, true}) {
    Client client(loop, port);
    client.send("GET /lamp.gif HTTP/1.1\r\nHost: localhost\r\n\r\n");
    loop.run_until([&] { return client.has_input(); });
    client.close(reset);
  }
  EXPECT_EQ(get("/index.html").status, 200);
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
