#include "platform/http/keyed_hash.h"
#include "platform/http/token_check.h"
#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;

TEST(TokenCheckTest, SlowsDownWhoeverTriesWrongOnesAndNobodyWhoHasARightOne) {
  const NewToken made = make_token();
  EXPECT_EQ(hex_of(hash_of("abc")),
            "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_TRUE(made.secret.starts_with("hw_"));
  EXPECT_NE(make_token().secret, made.secret);
  TokenCheck check({{"script", made.hash, true}});
  const Address guest = *parse_address("10.0.0.1");
  const auto status = [&](const std::string& authorization) {
    const auto verdict = check.check(authorization, guest, 1000s);
    const auto* refusal = std::get_if<Refusal>(&verdict);
    return refusal ? refusal->status : 200;
  };
  // The hash is stored where others may read it.
  for (const std::string& wrong :
       {made.hash, made.secret + "0", std::string(), made.secret.substr(1)})
    EXPECT_EQ(status("Bearer " + wrong), 401u) << wrong;
  EXPECT_EQ(status("bearer " + made.secret), 200u);
  EXPECT_EQ(status("Bearer x"), 401u);
  EXPECT_EQ(status("Bearer x"), 429u);
  EXPECT_EQ(status("Bearer " + made.secret), 200u) << "it waits for somebody else's guesses";
  check.set({});
  EXPECT_EQ(status("Bearer " + made.secret), 429u) << "revoked";
}

class Silence : public StreamSource {
 public:
  std::string next() override { return ""; }
  bool is_over() const override { return false; }
};

class TokensTest : public ServerTest {
 protected:
  TokensTest() {
    server.ApiRequestArrived.connect([this](int id, const ApiRequest& call) {
      if (call.path == "/stream") {
        streams.push_back(std::make_shared<Silence>());
        server.SendStream(id, streams.back());
      } else if (call.path == "/hold") {
        held.push_back(id);
      } else {
        server.SendAnswer(id, {200, call.token + (call.may_change ? " may change" : " reads")});
      }
    });
    server.Tokens({{"script", script.hash, true}, {"panel", panel.hash, false}});
  }

  static std::string bearer(const NewToken& token) {
    return "Authorization: Bearer " + token.secret + "\r\n";
  }

  const NewToken script = make_token();
  const NewToken panel = make_token();
  std::vector<std::shared_ptr<Silence>> streams;
};

TEST_F(TokensTest, StandForTheLogInBelowTheInterfaceOnly) {
  std::ofstream(folder / "htaccess.txt") << "anna:secret\r\n";
  for (const int mode : {0, 1}) {
    server.AuthenticationMode(mode);
    start();
    EXPECT_EQ(get("/api/v1/x", bearer(script)).body, "script may change") << mode;
    EXPECT_EQ(get("/api/v1/x", bearer(panel)).body, "panel reads") << mode;
    const Answer wrong = get("/api/v1/x", "Authorization: Bearer hw_0\r\n");
    EXPECT_EQ(wrong.status, 401) << mode;
    EXPECT_THAT(wrong.head, HasSubstr("WWW-Authenticate: Bearer"));
    EXPECT_EQ(get("/api/v1/x").status, mode == 0 ? 200 : 401);
    EXPECT_EQ(get("/index.html", bearer(script)).status, mode == 0 ? 200 : 401);
    EXPECT_EQ(get("/api/v1/x", "Authorization: Basic YW5uYTpzZWNyZXQ=\r\n").body, " may change");
    // Nobody's page makes a browser send a token.
    EXPECT_EQ(get("/api/v1/x", bearer(script) + "Origin: http://else.example\r\n").status, 200);
    server.StopListening();
  }
  server.AuthenticationMode(0);
  start();
  EXPECT_EQ(get("/api/v1/x", bearer(script) + "X-Forwarded-For: 10.0.0.1\r\n").status, 403)
      << "without a password a stranger comes in";
}

// A lost token goes on looking into the house.
TEST_F(TokensTest, RevokingEndsWhatCameWithThem) {
  start();
  std::vector<std::unique_ptr<Client>> clients;
  const auto ask = [&](const std::string& path, const NewToken& token) -> Client& {
    clients.push_back(std::make_unique<Client>(loop, port));
    clients.back()->request(path, bearer(token));
    const std::size_t before = streams.size() + held.size();
    if (path == "/api/v1/x") return *clients.back();
    EXPECT_TRUE(loop.run_until([&] { return streams.size() + held.size() > before; }));
    return *clients.back();
  };
  Client& revoked = ask("/api/v1/stream", script);
  Client& stays = ask("/api/v1/stream", panel);
  Client& waits = ask("/api/v1/hold", script);
  Client& waits_on = ask("/api/v1/hold", panel);
  Client& sends = ask("/api/v1/x", panel);
  EXPECT_EQ(sends.read().status, 200);
  sends.send("POST /api/v1/x HTTP/1.1\r\nHost: a\r\nContent-Type: application/json\r\n" +
             bearer(script) + "Content-Length: 2\r\n\r\n{");
  loop.run_for(30ms);
  ASSERT_EQ(streams.size(), 2u);
  server.Tokens({{"panel", panel.hash, false}});
  EXPECT_TRUE(revoked.is_closed_within());
  EXPECT_EQ(waits.read().status, 401);
  sends.send("}");
  EXPECT_EQ(sends.read().status, 401) << "what was being sent meanwhile";
  EXPECT_EQ(streams[0].use_count(), 1);
  EXPECT_EQ(streams[1].use_count(), 2);
  EXPECT_FALSE(stays.is_closed_within(50ms));
  for (const int id : held) server.SendAnswer(id, {200, "done"});
  EXPECT_EQ(waits_on.read().body, "done");
}

}  // namespace
}  // namespace homewarden::testing
