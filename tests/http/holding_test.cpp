#include <memory>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

HttpLimits watchful() {
  HttpLimits limits = on_loopback();
  limits.look_around = 20ms;
  limits.waiting_from_one = 5;
  return limits;
}

class HoldingTest : public ServerTest {
 protected:
  HoldingTest() : ServerTest(watchful()) {}

  // So many requests are handled at once.
  void start_handling(int count) {
    server.servermaxconnections(count);
    start();
  }
  std::unique_ptr<Client> ask_for(const std::string& path, const std::string& from = "127.0.0.1") {
    auto client = std::make_unique<Client>(loop, port, from);
    client->request(path);
    loop.run_for(10ms);
    return client;
  }
  // Answers the requests held, in the order in which they are handled, until so many have been;
  // their queries.
  std::string answer_all(std::size_t count) {
    std::string order;
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_TRUE(loop.run_until([&] { return held.size() > i; }));
      order += server.QueryText(held[i], "") + " ";
      server.SendPage(held[i], server.QueryText(held[i], ""), false);
    }
    return order;
  }

  std::vector<std::unique_ptr<Client>> clients;
};

TEST_F(HoldingTest, AnswersInAnyOrderAndOnlyOnce) {
  start();
  auto first = hold();
  auto second = hold();
  EXPECT_EQ(get("/index.html").status, 200) << "those that wait hold up others";
  EXPECT_EQ(server.QueryText(held[0], ""), "held~%zz?a=&") << "the query was changed";
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
  EXPECT_EQ(server.QueryText(held[0], ""), "") << "an answered request keeps its query";
}

TEST_F(HoldingTest, HandlesSoManyAtOnceAndTheRestInOrder) {
  start_handling(2);
  for (const char* path : {"/hold?0", "/hold?1", "/hold?2", "/hold?3"})
    clients.push_back(ask_for(path));
  EXPECT_EQ(held.size(), 2u);
  EXPECT_EQ(answer_all(1), "0 ");
  EXPECT_EQ(clients[0]->read().body, "0");
  loop.run_for(10ms);
  EXPECT_EQ(held.size(), 3u);
  held.erase(held.begin());
  EXPECT_EQ(answer_all(3), "1 2 3 ");
  for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(clients[i]->read().body, std::to_string(i));
}

TEST_F(HoldingTest, TakesNoMoreThanAShareOfTheQueueFromOneAddress) {
  start_handling(1);
  for (int i = 0; i < 6; ++i) clients.push_back(ask_for("/hold?own"));
  EXPECT_EQ(get("/index.html").status, 503);
  const auto neighbour = ask_for("/hold?neighbour", "127.0.0.2");
  const auto again = ask_for("/hold?again", "127.0.0.2");
  EXPECT_EQ(answer_all(8), "own own neighbour own again own own own ");
  EXPECT_EQ(neighbour->read().body, "neighbour");
}

// A client that goes away: its request is freed, its turn does not stay taken, and what it wanted
// switched is still handed over.
TEST_F(HoldingTest, ForgetsClientsThatGoAway) {
  start_handling(1);
  auto first = hold();
  auto looks = ask_for("/index.html?loadroom");
  auto presses = ask_for("/index.html?turnon");
  auto stays = ask_for("/index.html?stays");
  first->close();
  looks->close(true);
  presses->close();
  loop.run_for(100ms);
  EXPECT_EQ(pages.size(), 1u) << "more than one is handled at once";
  EXPECT_NE(server.QueryText(held[0], ""), "") << "it is still being handled";
  server.SendPage(held[0], "nobody reads this", false);
  EXPECT_EQ(stays->read().body, "index.html?stays");
  EXPECT_EQ(pages.size(), 3u);
}

TEST_F(HoldingTest, StopsWithRequestsThatWait) {
  start_handling(1);
  clients.push_back(hold());
  clients.push_back(ask_for("/hold?waiting"));
  clients.push_back(std::make_unique<Client>(loop, port));
  loop.run_for(20ms);
  EXPECT_TRUE(server.StopListening());
  EXPECT_FALSE(server.Listening());
  EXPECT_FALSE(Client(loop, port).is_connected());
  for (const auto& client : clients) EXPECT_TRUE(client->is_closed_within());
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
  start();
  const auto client = hold();
  loop.forget(watched);
  owned.reset();
  EXPECT_TRUE(client->is_closed_within());
  EXPECT_EQ(loop.pending_calls(), 0u);
}

}  // namespace
}  // namespace homewarden::testing
