#include "platform/http/rate_limit.h"
#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr auto kJson = "Content-Type: application/json\r\n";

HttpLimits few_calls() {
  HttpLimits limits = on_loopback();
  limits.calls_of_one = 3;
  limits.calls_at_once = 20;
  limits.calls_per_second = 1;
  limits.look_around = 20ms;
  limits.first_head = limits.head = 1s;
  return limits;
}

// Programs are answered with what they asked; what names "hold" is not.
class CallsTest : public ServerTest {
 protected:
  explicit CallsTest(const HttpLimits& limits = few_calls()) : ServerTest(limits) {
    server.ApiRequestArrived.connect([this](int id, const ApiRequest& call) {
      calls.push_back(call);
      if (call.path.find("hold") != std::string::npos)
        held.push_back(id);
      else
        server.SendAnswer(id, {201, call.method + call.path + "?" + call.query + call.body});
    });
    std::filesystem::create_directories(folder / "api/v1");
    for (const char* file : {"api/v1/file", "api/v1x"}) std::ofstream(folder / file) << "a file";
  }

  Answer send(const std::string& method, const std::string& path, const std::string& body,
              const std::string& headers = kJson) {
    return Client(loop, port).send_body(method, path, body, headers);
  }

  std::vector<ApiRequest> calls;
};

// A file of the folder in place of the interface, or the interface in place of a file.
TEST_F(CallsTest, HandsOverWhatLiesBelowItsRootAndNothingElse) {
  start();
  EXPECT_EQ(get("/api/v1").body, "GET?");
  EXPECT_EQ(get("/api/v1/file?a=%41").body, "GET/file?a=%41");
  EXPECT_EQ(get("/%61pi/v1/K%C3%BCche").body, "GET/Küche?");
  EXPECT_EQ(get("/api/v1x").body, "a file");
  EXPECT_EQ(send("PUT", "/api/v1/x", "{}").body, "PUT/x?{}");
  EXPECT_EQ(send("POST", "/api/v1/x", "", "").body, "POST/x?");
  EXPECT_EQ(send("DELETE", "/api/v1/x", "", "").status, 201);
  Client head(loop, port);
  head.send("HEAD /api/v1/x HTTP/1.1\r\nHost: localhost\r\n\r\n");
  EXPECT_TRUE(loop.run_until([&] { return head.has_input(); }));
  EXPECT_THAT(head.input(), AllOf(StartsWith("HTTP/1.1 201"), EndsWith("\r\n\r\n")));
  EXPECT_EQ(calls.size(), 7u);
  EXPECT_EQ(pages.size(), 1u) << "a request of a program was raised as a page";
}

// A page of somebody else's that asks for the house or switches it; a program that cannot tell why
// it was refused.
TEST_F(CallsTest, RefusesWhatPagesAreRefusedInAFormThatProgramsRead) {
  server.Access({{}, {"http://dashboard.lan"}, {}});
  start();
  struct Case {
    const char* request;
    const char* headers;
    int status;
  };
  for (const auto& [request, headers, status] : std::initializer_list<Case>{
           {"PATCH /api/v1/x", "Host: a\r\n", 405},
           {"OPTIONS /api/v1/x", "Host: a\r\n", 405},
           {"POST /api/v2/x", "Host: a\r\n", 405},
           {"GET /api/v2/x", "Host: a\r\n", 404},
           {"GET /api/v1/x", "Host: evil.example\r\n", 403},
           {"POST /api/v1/x", "Host: evil.example\r\n", 403},
           {"GET /api/v1/x", "Host: a\r\nOrigin: http://evil.example\r\n", 403},
           {"POST /api/v1/x", "Host: a\r\nOrigin: http://evil.example\r\n", 403},
           {"GET /api/v1/x", "Host: a\r\nSec-Fetch-Site: cross-site\r\nAccept: text/html\r\n", 403},
           {"GET /api/v1/x", "Host: a\r\nUser-Agent: Mozilla/5.0\r\n", 201},
           {"PUT /api/v1/x", "Host: a\r\nUser-Agent: Mozilla/5.0\r\n", 403},
           {"GET /api/v1/x", "Host: a\r\nX-Forwarded-For: 10.0.0.1\r\n", 403},
           {"GET /api/v1/x", "Host: a\r\nContent-Length: 2\r\n", 400},
           {"POST /api/v1/x", "Host: a\r\nContent-Length: 2\r\nContent-Length: 1\r\n", 400},
           {"POST /api/v1/x", "Host: a\r\nContent-Length: 2\r\nTransfer-Encoding: chunked\r\n",
            400},
           {"OPTIONS /api/v1/x",
            "Host: a\r\nOrigin: http://evil.example\r\nAccess-Control-Request-Method: PUT\r\n",
            403}}) {
    Client client(loop, port);
    client.send(std::string(request) + " HTTP/1.1\r\n" + headers + "\r\n");
    if (status == 400)
      client.send(std::string(headers).ends_with("chunked\r\n") ? "0\r\n\r\n" : "{}");
    const Answer answer = client.read();
    EXPECT_EQ(answer.status, status) << request << headers;
    if (status == 201) continue;
    EXPECT_THAT(answer.head, HasSubstr("Content-Type: application/problem+json")) << request;
    EXPECT_THAT(answer.body, HasSubstr("\"status\":" + std::to_string(status))) << request;
  }
  EXPECT_EQ(calls.size(), 1u);
}

// A page that a person allowed, which cannot ask with PUT or read why it was refused.
TEST_F(CallsTest, AnswersPagesOfAllowedOrigins) {
  server.Access({{}, {"http://dashboard.lan"}, {}});
  server.AuthenticationMode(1);
  start();
  const std::string origin = "Origin: http://dashboard.lan\r\n";
  const auto allows = HasSubstr("Access-Control-Allow-Origin: http://dashboard.lan\r\n");
  Client browser(loop, port);
  browser.send("OPTIONS /api/v1/x HTTP/1.1\r\nHost: a\r\nAccess-Control-Request-Method: PUT\r\n" +
               origin + "\r\n");
  const Answer preflight = browser.read();
  EXPECT_EQ(preflight.status, 204);
  EXPECT_THAT(preflight.head,
              AllOf(allows, HasSubstr("Access-Control-Allow-Methods: GET, HEAD, POST, PUT"),
                    HasSubstr("Allow-Headers: Authorization, Content-Type")));
  const Answer refused = browser.send_body("PUT", "/api/v1/x", "{}", kJson + origin);
  EXPECT_EQ(refused.status, 401) << "an answer without a log-in";
  EXPECT_THAT(refused.head, allows);
}

// A body that fills the memory; a client that never learns that it was refused.
TEST_F(CallsTest, TakesBodiesInPiecesUpToItsLimit) {
  start();
  const std::string largest(kLargestApiBody, 'x');
  EXPECT_EQ(send("POST", "/api/v1/x", largest).body, "POST/x?" + largest);
  EXPECT_EQ(send("POST", "/api/v1/x", largest + "x").status, 413);
  EXPECT_EQ(send("POST", "/api/v1/x", "{}", "Content-Type: text/plain\r\n").status, 415);
  EXPECT_EQ(
      send("POST", "/api/v1/x", "{}", "Content-Type: application/json; charset=latin1\r\n").status,
      415);
  EXPECT_EQ(
      send("POST", "/api/v1/x", "{}", "Content-Type: Application/JSON;charset=UTF-8\r\n").status,
      201);

  Client pieces(loop, port);
  pieces.send("POST /api/v1/x HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n" +
              std::string(kJson) + "\r\n");
  for (const char* piece : {"1\r\n[\r\n", "2\r\n1]\r", "\n0\r\n\r\n"}) {
    loop.run_for(10ms);
    EXPECT_FALSE(pieces.has_input());
    pieces.send(piece);
  }
  EXPECT_EQ(pieces.read().body, "POST/x?[1]");
  const std::size_t before = calls.size();
  pieces.send("POST /api/v1/x HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n" +
              std::string(kJson) + "\r\n4001\r\n" + largest + "x\r\n0\r\n\r\n");
  EXPECT_EQ(pieces.read().status, 413);
  EXPECT_EQ(pieces.ask("/api/v1/x").status, 201) << "the connection cannot be used again";
  pieces.send("POST /api/v1/x HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n" +
              std::string(kJson) + "\r\n");
  for (int i = 0; i < 5; ++i) pieces.send("4000\r\n" + largest + "\r\n");
  EXPECT_TRUE(pieces.is_closed_within()) << "it takes a body without an end";

  Client slow(loop, port);
  slow.send("POST /api/v1/x HTTP/1.1\r\nHost: a\r\nContent-Length: 9\r\n" + std::string(kJson) +
            "\r\n{");
  EXPECT_TRUE(slow.is_closed_within()) << "a body may take for ever";
  EXPECT_EQ(calls.size(), before + 1);
}

// Requests that wait for the power line hold up others, or pile up without an end.
TEST_F(CallsTest, KeepsSoManyOpenAndAnswersInAnyOrder) {
  start();
  std::vector<std::unique_ptr<Client>> clients;
  for (int i = 0; i < 3; ++i) {
    clients.push_back(std::make_unique<Client>(loop, port));
    clients.back()->request("/api/v1/hold");
  }
  ASSERT_TRUE(loop.run_until([&] { return held.size() == 3; }));
  const Answer beyond = get("/api/v1/x");
  EXPECT_EQ(beyond.status, 429);
  EXPECT_THAT(beyond.head, HasSubstr("Retry-After: 1\r\n"));
  EXPECT_EQ(Client(loop, port, "127.0.0.2").ask("/api/v1/x").status, 201);
  EXPECT_EQ(get("/index.html?turnon~1").status, 200) << "it holds up the pages";
  server.SendAnswer(held[2], {200, "third"});
  server.SendAnswer(held[2], {200, "again"});
  EXPECT_EQ(clients[2]->read().body, "third");
  clients[0]->close();
  loop.run_for(100ms);
  server.SendAnswer(held[0], {200, "nobody reads this"});
  server.SendAnswer(held[1], {202, "{}", "application/json", "/api/v1/commands/1", "2"});
  EXPECT_THAT(clients[1]->read().head,
              AllOf(HasSubstr("Location: /api/v1/commands/1\r\n"), HasSubstr("Retry-After: 2\r\n"),
                    HasSubstr("Cache-Control: no-store\r\n")));
  int taken = 0;  // and one more for each second
  while (taken < 90 && clients[1]->ask("/api/v1/x").status == 201) ++taken;
  EXPECT_GE(taken, 16);
  EXPECT_LT(taken, 90) << "it may ask as often as it likes";
  EXPECT_EQ(clients[1]->ask("/index.html").status, 200);
}

TEST(RateLimitTest, FillsUpAgainAndTellsWhenToAsk) {
  RateLimit limit(2, 10, 2);
  const Address guest = *parse_address("10.0.0.1");
  EXPECT_EQ(limit.wait(guest, 1000s), 0ms);
  EXPECT_EQ(limit.wait(guest, 1000s), 0ms);
  EXPECT_EQ(limit.wait(guest, 1000s), 100ms);
  EXPECT_EQ(limit.wait(guest, 1000s + 100ms), 0ms) << "a request that was refused was counted";
  EXPECT_EQ(limit.wait(guest, 2000s), 0ms);
  EXPECT_EQ(limit.wait(guest, 2000s), 0ms);
  EXPECT_GT(limit.wait(guest, 2000s), 0ms) << "a night without a request is saved up";
}

}  // namespace
}  // namespace homewarden::testing
