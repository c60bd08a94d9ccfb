#include <ctime>

#include "platform/web_https.h"
#include "tests/http/server_fixture.h"
#include "tests/http/tls_client.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::HasSubstr;
using ::testing::Not;

HttpLimits impatient() {
  HttpLimits limits = on_loopback();
  limits.look_around = 50ms;
  limits.first_head = 600ms;
  limits.heartbeat = 400ms;
  limits.certificates = 50ms;
  return limits;
}

class Feed : public StreamSource {
 public:
  std::string next() override { return std::exchange(text, ""); }
  bool is_over() const override { return false; }

  std::string text;
};

class TlsTest : public ServerTest {
 protected:
  TlsTest() : ServerTest(impatient()) {
    https.on = true;
    https.port = std::to_string(tls_port);
    https.certificate = secrets.path() / "cert.pem";
    https.key = secrets.path() / "key.pem";
    make();
    server.ApiRequestArrived.connect([this](int id, const ApiRequest& call) {
      if (call.path == "/stream")
        server.SendStream(id, feed);
      else
        server.SendAnswer(id, {200, "{}"});
    });
  }

  void make() { EXPECT_EQ(server.make_certificate(https.certificate, https.key, 90), ""); }
  void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::trunc) << text;
  }
  void start() {
    server.StopListening();
    server.Https(https);
    ServerTest::start();
  }
  bool speaks(const std::string& priorities, const std::string& name = "localhost") {
    TlsClient client(loop, tls_port, priorities, name);
    return client.is_secure() && client.ask("/index.html?x").body == "index.html?x";
  }
  bool has_trouble(const std::string& text) {
    return loop.run_until(
        [&] { return server.HttpsState().trouble.find(text) != std::string::npos; });
  }
  std::string shown_fingerprint() { return TlsClient(loop, tls_port).fingerprint(); }
  // Whether half of the processor or more is taken while there is nothing to do.
  bool is_busy() {
    loop.run_for(100ms);
    const std::clock_t before = std::clock();
    loop.run_for(400ms);
    return std::clock() - before > CLOCKS_PER_SEC / 5;
  }

  const int tls_port = free_port();
  ScratchFolder secrets;
  WebHttps https;
  std::shared_ptr<Feed> feed = std::make_shared<Feed>();
};

TEST_F(TlsTest, SpeaksNoOldVersionAndNoWeakCipherAndTakesAnyName) {
  start();
  EXPECT_TRUE(speaks("NORMAL:-VERS-ALL:+VERS-TLS1.3"));
  EXPECT_TRUE(speaks("NORMAL:-VERS-ALL:+VERS-TLS1.2"));
  EXPECT_FALSE(speaks("NORMAL:-VERS-ALL:+VERS-TLS1.1:+VERS-TLS1.0"));
  EXPECT_FALSE(speaks("NORMAL:-VERS-ALL:+VERS-TLS1.2:-CIPHER-ALL:+AES-128-CBC:+AES-256-CBC"));
  for (const std::string& name : {std::string(), std::string("foreign.example"),
                                  std::string("192.168.1.2"), std::string(250, 'a')})
    EXPECT_TRUE(speaks("NORMAL", name)) << name;
  speaks("NORMAL", "a b");
  EXPECT_TRUE(speaks("NORMAL")) << "after one that no host has";
}

// Whoever does not speak TLS, or stops in the middle of it, is cut and keeps nobody up.
TEST_F(TlsTest, CutsWhoeverDoesNotFinishAndIsNotKeptBusy) {
  start();
  Client plain(loop, tls_port);
  plain.request("/index.html");
  EXPECT_TRUE(plain.is_closed_within());
  Client half(loop, tls_port);
  half.send(std::string("\x16\x03\x01\x02\x00\x01\x00", 7));
  Client silent(loop, tls_port);
  EXPECT_FALSE(is_busy()) << "with half a handshake";
  EXPECT_TRUE(half.is_closed_within());
  EXPECT_TRUE(silent.is_closed_within());
  TlsClient idle(loop, tls_port);
  EXPECT_EQ(idle.ask("/index.html").status, 200);
  EXPECT_FALSE(is_busy()) << "with an idle connection";
  EXPECT_EQ(idle.ask("/index.html").status, 200);
}

TEST_F(TlsTest, StreamsGoOnWhileTheCertificateIsRenewed) {
  start();
  const std::string first = server.HttpsState().fingerprint;
  TlsClient stream(loop, tls_port);
  EXPECT_EQ(stream.fingerprint(), first);
  const auto gets = [&](const std::string& text) {
    return loop.run_until([&] { return stream.input().find(text) != std::string::npos; });
  };
  stream.request("/api/v1/stream");
  EXPECT_TRUE(gets("\r\n\r\n"));
  EXPECT_FALSE(is_busy()) << "with a stream that waits";
  EXPECT_TRUE(gets(": heartbeat\n\n"));

  int told = 0;
  server.HttpsStateChanged.connect([&] { ++told; });
  make();
  EXPECT_TRUE(loop.run_until([&] { return server.HttpsState().fingerprint != first; }));
  EXPECT_EQ(shown_fingerprint(), server.HttpsState().fingerprint);
  EXPECT_EQ(told, 1);
  feed->text = std::string(300000, 'x') + "the end";  // more than the system takes at once
  server.StreamsHaveMore();
  EXPECT_TRUE(gets("xthe end"));
  EXPECT_FALSE(is_busy());
}

TEST_F(TlsTest, KeepsTheCertificateBeforeWhenTheRenewedOneIsBroken) {
  start();
  const std::string first = server.HttpsState().fingerprint;
  write(https.key, "half a ke");
  EXPECT_TRUE(has_trouble("The renewed certificate cannot be used, the one before goes on until "));
  EXPECT_TRUE(has_trouble("The key is not readable"));
  EXPECT_EQ(shown_fingerprint(), first);
  std::filesystem::remove(https.certificate);
  EXPECT_TRUE(has_trouble("cert.pem cannot be read"));
  EXPECT_EQ(shown_fingerprint(), first);
  make();
  EXPECT_TRUE(loop.run_until([&] { return server.HttpsState().trouble.empty(); }));
  EXPECT_NE(shown_fingerprint(), first);
}

TEST_F(TlsTest, AnswersWithoutItAndSaysWhyWhenItCannotStart) {
  const std::string first = secrets.path() / "first.pem";
  std::filesystem::copy(https.certificate, first);
  make();
  https.certificate = first;
  start();
  EXPECT_TRUE(has_trouble("There is no https: The key does not belong to the certificate."));
  EXPECT_FALSE(server.HttpsState().listening);
  https.plain = WebHttps::Plain::kRedirect;
  https.certificate = secrets.path() / "cert.pem";
  https.port = std::to_string(port);
  start();
  EXPECT_TRUE(has_trouble("port " + std::to_string(port) + " cannot be used"));
  EXPECT_EQ(get("/index.html").status, 200) << "sent to where nobody answers";
}

class PlainTest : public TlsTest {
 protected:
  PlainTest() {
    WebAccess access;
    access.proxies = {"127.0.0.2"};
    server.Access(access);
    write(folder.path() / "htaccess.txt", "anna:secret\r\n");
  }
  Answer from_outside(const std::string& scheme) {
    return Client(loop, port, "127.0.0.2")
        .ask("/index.html?a",
             "X-Forwarded-For: 203.0.113.9\r\nX-Forwarded-Proto: " + scheme + "\r\n");
  }
  std::string here(const std::string& rest) {
    return "\r\nLocation: https://localhost:" + https.port + rest + "\r\n";
  }
};

TEST_F(PlainTest, IsSentOnAsThePersonChose) {
  https.plain = WebHttps::Plain::kAsBefore;
  start();
  EXPECT_EQ(get("/index.html").status, 200);
  https.plain = WebHttps::Plain::kRedirect;
  start();
  const Answer page = get("/index.html?x=1");
  EXPECT_EQ(page.status, 302);
  EXPECT_THAT(page.head, HasSubstr(here("/index.html?x=1")));
  Client foreign(loop, port);
  foreign.send("GET / HTTP/1.1\r\nHost: evil.example.org\r\n\r\n");
  EXPECT_THAT(foreign.read().head, HasSubstr("\r\nLocation: https://127.0.0.1:" + https.port + "/"))
      << "whoever made the name sends people on to it";
  const Answer call = Client(loop, port).send_body("POST", "/api/v1/commands", "{}");
  EXPECT_EQ(call.status, 308) << "what is sent again as GET";
  EXPECT_THAT(call.head, HasSubstr(here("/api/v1/commands")));
  EXPECT_TRUE(pages.size() == 1) << "handed on all the same";
}

TEST_F(PlainTest, TakesNoPasswordFromOutsideWithoutTls) {
  https.plain = WebHttps::Plain::kAsBefore;
  server.AuthenticationMode(1);
  start();
  EXPECT_THAT(from_outside("http").head, HasSubstr(here("/index.html?a")));
  EXPECT_EQ(from_outside("https").status, 401);
  EXPECT_EQ(get("/index.html").status, 401) << "at home";
  https.plain_password = true;
  start();
  EXPECT_EQ(from_outside("http").status, 401);
  https.plain = WebHttps::Plain::kAtHome;
  start();
  EXPECT_EQ(from_outside("http").status, 302);
  https.plain_password = false;
  https.port = "no port";
  start();
  EXPECT_EQ(from_outside("http").status, 503) << "asked for a password though there is no https";
  EXPECT_EQ(get("/index.html").status, 401);
}

TEST_F(PlainTest, IsNotToldToComeByTlsAloneAndCookiesOfTlsStayThere) {
  const std::string hsts = "\r\nStrict-Transport-Security: max-age=31536000\r\n";
  const std::string anna = "Authorization: Basic YW5uYTpzZWNyZXQ=\r\n";
  server.StatePages([](const std::string&, const std::string&) { return StatePage{}; });
  server.AuthenticationMode(1);
  https.hsts = true;
  start();
  const auto secure = [&](const std::string& path) {
    return TlsClient(loop, tls_port).ask(path, anna).head;
  };
  const std::string page = secure("/index.html");
  EXPECT_THAT(page, HasSubstr("; Secure"));
  EXPECT_THAT(page, HasSubstr(hsts));
  for (const char* other : {"/missing.png", "/api/v1/house", "/%zz"})
    EXPECT_THAT(secure(other), HasSubstr(hsts)) << other;
  const std::string plain = get("/index.html", anna).head;
  EXPECT_THAT(plain, Not(HasSubstr("Strict-Transport")));
  EXPECT_THAT(plain, Not(HasSubstr("Secure")));
  https.hsts = false;
  start();
  EXPECT_THAT(secure("/index.html"), Not(HasSubstr("Strict-Transport")));
}

}  // namespace
}  // namespace homewarden::testing
