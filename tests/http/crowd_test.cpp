#include <memory>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

HttpLimits small() {
  HttpLimits limits = on_loopback();
  limits.connections = 16;
  limits.first_head = 200ms;
  limits.head = 200ms;
  limits.idle = 1500ms;
  limits.sending = 300ms;
  limits.look_around = 20ms;
  limits.rest = 10ms;
  return limits;
}

class CrowdTest : public ServerTest {
 protected:
  CrowdTest() : ServerTest(small()) { start(); }

  std::vector<std::unique_ptr<Client>> clients;
};

TEST_F(CrowdTest, GivesAnAddressItsShareAndReplacesTheOldest) {
  Client neighbour(loop, port, "127.0.0.2");
  for (int i = 0; i < 5; ++i) {
    clients.push_back(std::make_unique<Client>(loop, port));
    EXPECT_EQ(clients.back()->ask("/index.html").status, 200);
    loop.run_for(3ms);
  }
  EXPECT_TRUE(clients[0]->is_closed_within(100ms)) << "four are allowed, and this is the oldest";
  for (std::size_t i = 1; i < 5; ++i) EXPECT_EQ(clients[i]->ask("/index.html").status, 200);
  EXPECT_EQ(neighbour.ask("/index.html").status, 200) << "another address paid for it";
}

TEST_F(CrowdTest, WhoeverHasMostGivesAPlaceToOneWhoHasNone) {
  const auto hoard = [&](int address, int count) {
    for (int i = 0; i < count; ++i)
      clients.push_back(std::make_unique<Client>(loop, port, "127.0.0." + std::to_string(address)));
  };
  Client first(loop, port, "127.0.0.3");
  for (int address = 4; address < 8; ++address) hoard(address, address == 4 ? 3 : 4);
  EXPECT_EQ(first.ask("/index.html").status, 200);
  loop.run_for(15ms);
  Client newcomer(loop, port);
  EXPECT_EQ(newcomer.ask("/index.html").status, 200);
  EXPECT_EQ(first.ask("/index.html").status, 200) << "the oldest went, though it is alone";
  hoard(4, 50);
  EXPECT_EQ(newcomer.ask("/index.html").status, 200);
  EXPECT_EQ(first.ask("/index.html").status, 200) << "a flood took the places of others";
}

// All visitors behind a proxy have four places, or it pushes out whoever comes without it.
TEST_F(CrowdTest, ATrustedProxyHasMoreThanAShareAndGivesThemBack) {
  server.StopListening();
  server.Access({{}, {}, {"127.0.0.9"}});
  start();
  const auto ask = [](auto& client) {
    return client.ask("/index.html", "X-Forwarded-For: 10.0.0.1\r\n").status;
  };
  Client neighbour(loop, port, "127.0.0.2");
  EXPECT_EQ(neighbour.ask("/index.html").status, 200);
  for (int i = 0; i < 16; ++i) {
    if (i == 15) loop.run_for(15ms);
    clients.push_back(std::make_unique<Client>(loop, port, "127.0.0.9"));
    EXPECT_EQ(ask(*clients.back()), 200) << i;
  }
  for (std::size_t i = 1; i < 16; ++i) EXPECT_EQ(ask(*clients[i]), 200) << i;
  EXPECT_TRUE(clients[0]->is_closed_within(100ms)) << "it took more than there are";
  Client newcomer(loop, port, "127.0.0.3");
  EXPECT_EQ(newcomer.ask("/index.html").status, 200);
  EXPECT_EQ(neighbour.ask("/index.html").status, 200) << "it was pushed out";
}

TEST_F(CrowdTest, NeverReplacesAConnectionWhoseRequestIsHandled) {
  for (int i = 0; i < 4; ++i) clients.push_back(hold());
  EXPECT_EQ(get("/index.html").status, 0);
  loop.run_for(1600ms);
  for (std::size_t i = 0; i < 4; ++i) {
    server.SendPage(held[i], "at last", false);
    EXPECT_EQ(clients[i]->read().body, "at last");
  }
}

// Heads of first requests: tests/web_program.
TEST_F(CrowdTest, EndsWhatTakesTooLong) {
  std::ofstream(folder / "big.gif", std::ios::binary) << std::string(30000000, 'x');
  Client kept(loop, port);
  EXPECT_EQ(kept.ask("/index.html").status, 200);
  Client reads_nothing(loop, port);
  reads_nothing.request("/big.gif");
  loop.run_for(1s);
  EXPECT_EQ(kept.ask("/index.html").status, 200) << "an idle connection ended before its time";
  kept.send("GET / HTTP/1.1\r\n");
  EXPECT_TRUE(kept.is_closed_within(1s)) << "the head of a later request may take for ever";
  EXPECT_LT(reads_nothing.read().body.size(), 30000000u) << "an answer may be taken for ever";
  EXPECT_TRUE(loop.run_until([&] { return loop.pending_calls() == 0; }))
      << "the server wakes up for nobody";
}

}  // namespace
}  // namespace homewarden::testing
