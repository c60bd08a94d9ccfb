#include "platform/web_api.h"
#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

HttpLimits impatient() {
  HttpLimits limits = on_loopback();
  limits.look_around = 50ms;
  limits.sending = 100ms;
  limits.heartbeat = 400ms;
  limits.stream_taking = 1s;
  limits.streams = 4;
  limits.streams_of_one = 3;
  return limits;
}

// Numbers from 1 on, a line each; somebody who has not taken more than so many is told to fetch
// anew, and gets no more.
class Numbers : public StreamSource {
 public:
  std::string next() override {
    ++asked;
    if (whenever_asked) whenever_asked();
    std::string text;
    if (last - sent > most) {
      sent = last;
      over = true;
      return "refetch\n";
    }
    while (sent < last && text.size() < 16000) text += "data: " + std::to_string(++sent) + "\n";
    return text;
  }
  bool is_over() const override { return over; }

  int last = 0;
  int sent = 0;
  int most = 1000000;
  bool over = false;
  int asked = 0;
  std::function<void()> whenever_asked;
};

class StreamsTest : public ServerTest {
 protected:
  explicit StreamsTest(const HttpLimits& limits = impatient()) : ServerTest(limits) {
    server.ApiRequestArrived.connect([this](int id, const ApiRequest& call) {
      last_event_id = call.last_event_id;
      sources.push_back(std::make_shared<Numbers>());
      server.SendStream(id, sources.back());
    });
    start();
  }

  Client& open(const std::string& from = "127.0.0.1") {
    clients.push_back(std::make_unique<Client>(loop, port, from));
    clients.back()->request("/api/v1/stream", "Last-Event-ID: run-7\r\n");
    const std::size_t before = sources.size();
    EXPECT_TRUE(loop.run_until([&] { return sources.size() > before; }));
    return *clients.back();
  }
  void count_to(int number) {
    for (const auto& source : sources) source->last = number;
    server.StreamsHaveMore();
  }
  bool gets(Client& client, const std::string& text) {
    return loop.run_until([&] { return client.input().find(text) != std::string::npos; });
  }
  // Whether the server has let go of it.
  bool is_dropped(std::size_t source) {
    return loop.run_until([&] { return sources[source].use_count() == 1; }, 3s);
  }

  std::string last_event_id;
  std::vector<std::shared_ptr<Numbers>> sources;
  std::vector<std::unique_ptr<Client>> clients;
};

TEST_F(StreamsTest, SendsWhatItsSourceHasWhenThereIsSomething) {
  Client& client = open();
  EXPECT_EQ(last_event_id, "run-7");
  EXPECT_TRUE(gets(client, "\r\n\r\n"));
  for (const char* header : {"Content-Type: text/event-stream\r\n", "Cache-Control: no-store\r\n",
                             "X-Accel-Buffering: no\r\n"})
    EXPECT_THAT(client.input(), HasSubstr(header));
  for (int i = 1; i < 4; ++i) {
    count_to(i);
    EXPECT_TRUE(gets(client, "data: " + std::to_string(i) + "\n"));
  }
  EXPECT_TRUE(gets(client, ": heartbeat\n\n")) << "somebody on the way gives it up";
  sources[0]->over = true;
  count_to(5);
  EXPECT_TRUE(gets(client, "data: 5\n\r\n0\r\n\r\n")) << "what was left at the end";
  EXPECT_TRUE(is_dropped(0));
}

// A stream that is asked again and again takes all of the processor; one that is never answered
// takes it from the others.
TEST_F(StreamsTest, AsksItsSourcesOnceForManyNewsAndNotWhenThereIsNone) {
  Client& client = open();
  loop.run_for(20ms);
  const int before = sources[0]->asked;
  loop.run_for(200ms);
  EXPECT_EQ(sources[0]->asked, before) << "asked though nothing was said";
  for (int i = 1; i <= 500; ++i) count_to(i);
  EXPECT_TRUE(gets(client, "data: 500\n"));
  EXPECT_LE(sources[0]->asked, before + 3);
  EXPECT_EQ(get("/index.html").status, 200);
}

TEST_F(StreamsTest, CutsWhoeverTakesNothingAndForgetsWhoeverLeaves) {
  open();
  open().close();
  Client& takes = open();
  EXPECT_TRUE(is_dropped(1)) << "the one who left";
  for (int i = 1; i < 200 && sources[0].use_count() > 1; ++i) {
    count_to(i * 20000);
    loop.run_for(20ms);
    takes.input();
  }
  EXPECT_TRUE(is_dropped(0)) << "the one who takes nothing";
  EXPECT_EQ(sources[2].use_count(), 2) << "the one who reads";
}

TEST_F(StreamsTest, AreSoManyAtMost) {
  for (int i = 0; i < 3; ++i) open();
  EXPECT_EQ(get("/api/v1/stream").status, 429);
  Client& neighbour = open("127.0.0.2");
  EXPECT_EQ(Client(loop, port, "127.0.0.3").ask("/api/v1/stream").status, 503);
  neighbour.close();
  EXPECT_TRUE(is_dropped(sources.size() - 2));
  Client& again = open("127.0.0.3");
  EXPECT_TRUE(gets(again, "text/event-stream"));
}

TEST_F(StreamsTest, EndWithTheServerAlsoWhenASourceStopsIt) {
  Client& first = open();
  EXPECT_TRUE(gets(first, "\r\n\r\n"));
  EXPECT_TRUE(server.StopListening());
  EXPECT_TRUE(first.is_closed_within());
  EXPECT_TRUE(is_dropped(0));
  EXPECT_EQ(loop.pending_calls(), 0u);

  start();
  Client& second = open();
  Client& third = open();
  loop.run_for(50ms);
  for (const auto& source : sources) source->whenever_asked = [this] { server.StopListening(); };
  count_to(1);
  EXPECT_TRUE(second.is_closed_within());
  EXPECT_TRUE(third.is_closed_within());
  EXPECT_FALSE(server.Listening());
}

class ManyStreamsTest : public StreamsTest {
 protected:
  ManyStreamsTest() : StreamsTest(on_loopback()) {}
};

// Somebody misses a change without being told.
TEST_F(ManyStreamsTest, EachIsCompleteOrTold) {
  for (int i = 0; i < 200; ++i) open("127.0.0." + std::to_string(1 + i / 50));
  for (std::size_t i = 0; i < 200; ++i)
    if (i % 20 == 0) sources[i]->most = 5;
  constexpr int kChanges = 2000;
  std::size_t reader = 0;
  for (int change = 1; change <= kChanges; ++change) {
    count_to(change);
    if (change % 10 == 0) loop.run_for(1ms);
    for (int i = 0; i < 4; ++i) {  // but for one in ten, who reads nothing until the end
      reader = (reader + 1) % clients.size();
      if (reader % 10 != 0) clients[reader]->input();
    }
  }
  const std::string last = "data: " + std::to_string(kChanges) + "\n";
  for (std::size_t i = 0; i < 200; ++i) {
    const std::string& input = clients[i]->input();
    const auto has = [&](const std::string& text) {
      return clients[i]->input().find(text) != std::string::npos;
    };
    EXPECT_TRUE(loop.run_until([&] { return has(last) || has("refetch\n"); })) << i;
    if (has("refetch\n")) continue;
    std::size_t place = 0;
    for (int change = 1; change <= kChanges && place != std::string::npos; ++change)
      place = input.find("data: " + std::to_string(change) + "\n", place);
    EXPECT_NE(place, std::string::npos) << "client " << i << " misses a change";
  }
}

}  // namespace
}  // namespace homewarden::testing
