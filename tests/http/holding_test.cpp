#include <memory>

#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

HttpLimits watchful() {
  HttpLimits limits = on_loopback();
  limits.look_around = 200ms;
  return limits;
}

class HoldingTest : public ServerTest {
 protected:
  HoldingTest() : ServerTest(watchful()) {}

  std::unique_ptr<Client> ask_for(const std::string& path, const std::string& from = "127.0.0.1") {
    auto client = std::make_unique<Client>(loop, port, from);
    client->request(path);
    loop.run_for(10ms);
    return client;
  }
  // A switch that is held when its turn comes.
  std::unique_ptr<Client> press(const std::string& query, const std::string& from = "127.0.0.1") {
    return ask_for("/hold.html?" + query, from);
  }
  void press_all(const std::vector<std::string>& queries) {
    for (const std::string& query : queries) clients.push_back(press(query));
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
  server.servermaxconnections(2);
  start();
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

// A household's presses must not make other phones wait, nor its own page show less than they did.
TEST_F(HoldingTest, APageWaitsForTheSwitchesOfItsOwnAddressOnly) {
  start();
  press_all({"turnon~1", "turnon~2"});
  const auto page = ask_for("/index.html?own");
  const auto style = ask_for("/homewarden.css");
  const auto neighbour = ask_for("/index.html?neighbour", "127.0.0.2");
  EXPECT_EQ(neighbour->read().body, "index.html?neighbour");
  EXPECT_EQ(style->read().status, 404) << "what belongs to a page shows nothing that is switched";
  EXPECT_FALSE(page->has_input());
  EXPECT_EQ(held.size(), 1u) << "two switches at once";
  EXPECT_EQ(answer_all(2), "turnon~1 turnon~2 ");
  EXPECT_EQ(page->read().body, "index.html?own");
}

TEST_F(HoldingTest, AddressesTakeTurnsAndHaveSixSwitchesWaitingAtMost) {
  server.RefusalPages([](const WebRefusal& refusal) { return refusal.asked + refusal.again; });
  start();
  for (int i = 0; i < 7; ++i) {  // all at once: the first waits for nothing
    clients.push_back(std::make_unique<Client>(loop, port));
    clients.back()->request("/hold.html?turnon~" + std::to_string(i));
  }
  loop.run_for(50ms);
  const Answer page = get("/index.html?turnon~7", "Accept: text/html,*/*\r\n");
  EXPECT_EQ(page.status, 429);
  EXPECT_EQ(page.body, "/index.html?turnon~7/index.html?turnon~7");
  EXPECT_THAT(get("/index.html?turnon~7").body, ::testing::StartsWith("Too many presses"));
  clients.push_back(press("turnon~8", "127.0.0.2"));
  clients.push_back(press("turnon~9", "127.0.0.2"));
  EXPECT_EQ(answer_all(9),
            "turnon~0 turnon~1 turnon~8 turnon~2 turnon~9 turnon~3 turnon~4 turnon~5 turnon~6 ");
  for (const auto& client : clients) EXPECT_EQ(client->read().status, 200);
}

TEST_F(HoldingTest, TheSameSwitchTwiceIsOneUnlessTheOtherStateIsAskedForBetween) {
  start();
  press_all({"turnon~1", "turnon~2", "turnon~2", "turnoff~2", "turnon~2", "turnon~3", "turnon~3"});
  clients[5]->close();
  EXPECT_EQ(answer_all(1), "turnon~1 ");
  EXPECT_TRUE(loop.run_until([&] { return held.size() == 2; }));
  clients[1]->close();
  EXPECT_TRUE(server.IsAwaited(held[1])) << "not by the one that was handed over, but by the other";
  held.erase(held.begin());
  EXPECT_EQ(answer_all(5), "turnon~2 turnoff~2 show turnon~2 turnon~3 ");
  EXPECT_EQ(clients[2]->read().body, "show");
  EXPECT_EQ(clients[6]->read().body, "turnon~3") << "dropped with the other one that asked for it";
  EXPECT_EQ(held.size(), 5u);
}

// A phone presses six lamps and leaves: they must not go on and off for nobody.
TEST_F(HoldingTest, ForgetsClientsThatGoAway) {
  server.servermaxconnections(1);
  start();
  press_all({"turnon~1", "turnon~2", "turnon~3", "turnon~4", "turnon~5", "turnon~6"});
  const auto after = ask_for("/index.html?after");
  for (std::size_t i = 0; i < clients.size(); ++i) clients[i]->close(i % 2 == 0);
  EXPECT_FALSE(server.IsAwaited(held[0]));
  EXPECT_NE(server.QueryText(held[0], ""), "") << "it is still being handled";
  server.SendPage(held[0], "nobody reads this", false);
  EXPECT_EQ(after->read().body, "index.html?after");
  EXPECT_EQ(held.size(), 1u) << "switched for nobody";

  auto first = hold();
  auto looks = ask_for("/index.html?leaves");
  auto stays = ask_for("/index.html?stays");
  first->close();
  looks->close();
  loop.run_for(400ms);
  EXPECT_EQ(pages.size(), 3u) << "more than one page is handled at once";
  server.SendPage(held[1], "nobody reads this", false);
  EXPECT_EQ(stays->read().body, "index.html?stays");
  EXPECT_EQ(pages.size(), 4u);
}

TEST_F(HoldingTest, StopsWithRequestsThatWait) {
  start();
  press_all({"turnon~1", "turnon~2", "turnon~2"});
  clients.push_back(ask_for("/hold.html?behind"));
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

// The library is in the middle of what all of them sent.
TEST_F(HoldingTest, StopsWhileItReadsTheRequestsOfSeveral) {
  server.RequestArrived.connect([&](int, const std::string& page) {
    if (page == "hold-restart") server.StopListening(), server.StartListening();
  });
  start();
  clients.push_back(hold());
  for (const char* page : {"/index.html", "/hold-restart", "/index.html", "/hold-restart"}) {
    clients.push_back(std::make_unique<Client>(loop, port));
    clients.back()->request(page);
  }
  for (const auto& client : clients) EXPECT_TRUE(client->is_closed_within());
  EXPECT_TRUE(server.Listening());
  EXPECT_EQ(get("/index.html").status, 200);
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
