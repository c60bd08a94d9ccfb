#include <memory>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view kHold = "GET /hold.html?held HTTP/1.1\r\nHost: localhost\r\n\r\n";

HttpLimits watchful() {
  HttpLimits limits = on_loopback();
  limits.look_around = 20ms;
  limits.waiting_from_one = 5;
  return limits;
}

class HoldingTest : public ServerTest {
 protected:
  HoldingTest() : ServerTest(watchful()) {}

  std::unique_ptr<Client> client_with(std::string_view request) {
    auto client = std::make_unique<Client>(loop, port);
    client->send(request);
    return client;
  }
  std::unique_ptr<Client> hold() {
    const std::size_t before = held.size();
    auto client = client_with(kHold);
    EXPECT_TRUE(loop.run_until([&] { return held.size() > before; }));
    return client;
  }
};

TEST_F(HoldingTest, AnswersInAnyOrderAndOnlyOnce) {
  start();
  auto first = hold();
  auto second = hold();
  EXPECT_EQ(get("/index.html").status, 200) << "those that wait hold up others";
  EXPECT_EQ(server.QueryText(held[0], ""), "held");
  server.SendPage(held[1], "two", false);
  EXPECT_EQ(second->read().body, "two");
  EXPECT_FALSE(first->has_input());
  server.SendPage(held[0], "one", false);
  server.SendPage(held[0], "again", false);
  server.SendPage(held[1], "again", true);
  server.SendPage(4711, "nobody", false);
  EXPECT_EQ(first->read().body, "one");
  loop.run_for(20ms);
  EXPECT_FALSE(first->has_input());
  EXPECT_EQ(second->ask("/index.html").status, 200) << "the connection cannot be used again";
}

TEST_F(HoldingTest, HandlesSoManyAtOnceAndTheRestInOrder) {
  server.servermaxconnections(2);
  start();
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 5; ++i) {
    clients.push_back(client_with("GET /hold.html?" + std::to_string(i) +
                                  " HTTP/1.1\r\nHost: localhost\r\n\r\n"));
    loop.run_for(10ms);
  }
  ASSERT_EQ(held.size(), 2u);
  for (std::size_t i = 0; i < clients.size(); ++i) {
    ASSERT_TRUE(loop.run_until([&] { return held.size() > i; }));
    loop.run_for(10ms);
    EXPECT_EQ(held.size(), std::min<std::size_t>(i + 2, 5));
    EXPECT_EQ(server.QueryText(held[i], ""), std::to_string(i));
    server.SendPage(held[i], std::to_string(i), false);
    EXPECT_EQ(clients[i]->read().body, std::to_string(i));
  }
}

TEST_F(HoldingTest, TakesNoMoreThanAShareOfTheQueueFromOneAddress) {
  server.servermaxconnections(1);
  start();
  std::vector<std::unique_ptr<Client>> clients;
  clients.push_back(hold());
  for (int i = 0; i < 5; ++i) clients.push_back(client_with(kHold));
  loop.run_for(20ms);
  EXPECT_EQ(get("/index.html").status, 503);
  Client neighbour(loop, port, "127.0.0.1", "127.0.0.2");
  neighbour.send("GET /index.html?neighbour HTTP/1.1\r\nHost: localhost\r\n\r\n");
  for (std::size_t i = 0; i < clients.size(); ++i) {
    ASSERT_TRUE(loop.run_until([&] { return held.size() > i; }));
    server.SendPage(held[i], "", false);
  }
  EXPECT_EQ(neighbour.read().body, "index.html?neighbour");
}

TEST_F(HoldingTest, LetsAddressesTakeTurns) {
  server.servermaxconnections(1);
  start();
  const auto ask_from = [this](const char* source, const std::string& query) {
    auto client = std::make_unique<Client>(loop, port, "127.0.0.1", source);
    client->send("GET /hold.html?" + query + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
    loop.run_for(10ms);
    return client;
  };
  std::vector<std::unique_ptr<Client>> clients;
  for (const char* query : {"a1", "a2", "a3", "a4"})
    clients.push_back(ask_from("127.0.0.1", query));
  clients.push_back(ask_from("127.0.0.2", "b1"));
  clients.push_back(ask_from("127.0.0.2", "b2"));
  std::string order;
  for (std::size_t i = 0; i < clients.size(); ++i) {
    ASSERT_TRUE(loop.run_until([&] { return held.size() > i; }));
    order += server.QueryText(held[i], "") + " ";
    server.SendPage(held[i], "", false);
  }
  EXPECT_EQ(order, "a1 a2 b1 a3 b2 a4 ");
}

// A client that goes away: its request is freed, its turn does not stay taken, and what it wanted
// switched is still handed over.
TEST_F(HoldingTest, ForgetsClientsThatGoAway) {
  server.servermaxconnections(1);
  start();
  auto first = hold();
  auto looks = client_with("GET /index.html?loadroom HTTP/1.1\r\nHost: localhost\r\n\r\n");
  auto presses = client_with("GET /index.html?turnon HTTP/1.1\r\nHost: localhost\r\n\r\n");
  auto stays = client_with("GET /index.html?stays HTTP/1.1\r\nHost: localhost\r\n\r\n");
  loop.run_for(20ms);
  first->close();
  looks->close(true);
  presses->close();
  loop.run_for(100ms);
  EXPECT_EQ(pages.size(), 1u) << "more than one is handled at once";
  EXPECT_EQ(server.QueryText(held[0], ""), "held") << "it is still being handled";
  server.SendPage(held[0], "nobody reads this", false);
  EXPECT_EQ(stays->read().body, "index.html?stays");
  EXPECT_EQ(pages.size(), 3u);
}

TEST_F(HoldingTest, StopsWithRequestsThatWait) {
  server.servermaxconnections(1);
  start();
  auto handled = hold();
  auto waiting = client_with(kHold);
  auto idle = client_with("");
  loop.run_for(20ms);
  EXPECT_TRUE(server.StopListening());
  EXPECT_FALSE(server.Listening());
  EXPECT_FALSE(Client(loop, port).is_connected());
  for (const auto* client : {&handled, &waiting, &idle}) EXPECT_TRUE((*client)->is_closed_within());
  EXPECT_EQ(server.QueryText(held[0], ""), "");
  server.SendPage(held[0], "too late", false);
  EXPECT_EQ(loop.pending_calls(), 0u) << "a call into the stopped server is left";

  start();
  auto again = hold();
  EXPECT_GT(held[1], held[0]) << "an identifier is used twice";
  server.SendPage(held[0], "for the one before", false);
  server.SendPage(held[1], "hello", false);
  EXPECT_EQ(again->read().body, "hello");
}

// Whoever handles a request may stop the server, start it again, or answer later.
TEST_F(HoldingTest, LetsItsEventStopAndStartIt) {
  int last = 0;
  server.RequestArrived.connect([&](int id, const std::string& page) {
    last = id;
    if (page == "hold-stop") server.StopListening();
    if (page == "hold-restart") server.StopListening(), server.StartListening();
    if (page == "hold-later") loop.call_after(30ms, [&] { server.SendPage(last, "later", false); });
  });
  start();
  EXPECT_EQ(get("/hold-later").body, "later");
  EXPECT_EQ(get("/hold-restart").status, 0);
  EXPECT_EQ(get("/index.html").status, 200);
  EXPECT_EQ(get("/hold-stop").status, 0);
  EXPECT_FALSE(server.Listening());
}

TEST_F(HoldingTest, GoesAwayWithRequestsThatWait) {
  const int own_port = free_port();
  int watched = -1;
  auto own = std::make_unique<HttpServer>(
      loop,
      [&](int fd, auto function) {
        watched = fd;
        loop.watch_readable(fd, function);
      },
      on_loopback());
  own->ServerPort(std::to_string(own_port));
  own->DocumentFolder(folder.path());
  int raised = 0;
  own->RequestArrived.connect([&](int, const std::string&) { ++raised; });
  own->StartListening();
  Client client(loop, own_port);
  client.send(kHold);
  ASSERT_TRUE(loop.run_until([&] { return raised == 1; }));
  loop.forget(watched);
  own.reset();
  EXPECT_TRUE(client.is_closed_within());
  EXPECT_EQ(loop.pending_calls(), 0u);
}

}  // namespace
}  // namespace homewarden::testing
