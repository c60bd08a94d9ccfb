#include "platform/http/credentials.h"
#include "platform/http/login_delays.h"
#include "tests/http/server_fixture.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

// "Basic " and base64, written here with no regard to the decoder.
std::string basic(const std::string& user_and_password) {
  constexpr std::string_view kLetters =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bits;
  for (const char letter : user_and_password)
    for (int bit = 7; bit >= 0; --bit)
      bits += ((static_cast<unsigned char>(letter) >> bit) & 1) != 0 ? '1' : '0';
  while (bits.size() % 6 != 0) bits += '0';
  std::string text = "Basic ";
  for (std::size_t i = 0; i < bits.size(); i += 6)
    text += kLetters[std::stoul(bits.substr(i, 6), nullptr, 2)];
  while ((text.size() - 6) % 4 != 0) text += '=';
  return text;
}

TEST(CredentialsTest, AdmitsTheLinesOfTheFile) {
  const Credentials file("anna:a:b:\r\nbert:caf\xe9\r\nno colon\r\n\r\ncleo:last");
  EXPECT_TRUE(file.admit(basic("anna:a:b:")));
  EXPECT_TRUE(file.admit(basic("cleo:last")));
  EXPECT_TRUE(file.admit("bAsIc  " + basic("cleo:last").substr(6)));
  EXPECT_TRUE(file.admit(basic("bert:caf\xe9"))) << "as the file has it";
  EXPECT_TRUE(file.admit(basic("bert:caf\xc3\xa9"))) << "as browsers send it";
  for (const std::string wrong :
       {"anna:a", "anna:a:b", "anna:a:b:\r", "anna:a:b:x", "nna:a:b:", "anna:", ":", "",
        "Anna:a:b:", "no colon", "cleo:las", "cleo:lastcleo:last", "bert:cafe", "cleo:last\n"})
    EXPECT_FALSE(file.admit(basic(wrong))) << wrong;
  const std::string right = basic("cleo:last").substr(6);
  for (const std::string& header :
       {"Bearer " + right, right, std::string("Basic"), std::string("Basic "),
        "Basic " + right + "!", "Basic =" + right, "Basic " + right.substr(1)})
    EXPECT_FALSE(file.admit(header)) << header;
  EXPECT_FALSE(Credentials("").admit(basic(""))) << "an empty file lets nobody in";
}

TEST(CredentialsTest, TurnsTheCodePageIntoUtf8) {
  EXPECT_EQ(utf8_of("a\x80\x9f\xff"), "a\xe2\x82\xac\xc5\xb8\xc3\xbf");
}

TEST(LoginDelaysTest, GrowsToAMinuteAndForgives) {
  LoginDelays delays(5);
  const Address guest = *parse_address("10.0.0.1");
  auto now = 1000000ms;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(delays.wait(guest, now), 0ms) << i;
    delays.wrong(guest, now);
  }
  for (const auto delay : {1s, 2s, 4s, 8s, 16s, 32s, 60s, 60s}) {
    EXPECT_EQ(delays.wait(guest, now), delay);
    EXPECT_EQ(delays.wait(*parse_address("10.0.0.2"), now), 0ms);
    now += delay;
    EXPECT_EQ(delays.wait(guest, now), 0ms);
    delays.wrong(guest, now);
  }
  delays.wrong(guest, now + 2h);
  EXPECT_EQ(delays.wait(guest, now + 2h), 0ms) << "wrong tries are held against it for ever";
  for (int i = 0; i < 9; ++i) delays.wrong(guest, now + 2h);
  delays.right(guest);
  EXPECT_EQ(delays.wait(guest, now + 2h), 0ms);
}

TEST(LoginDelaysTest, RemembersNoMoreThanItsMany) {
  LoginDelays delays(1, 3);
  Address guest = *parse_address("10.0.0.0");
  for (std::uint8_t i = 1; i <= 4; ++i) {
    guest.bytes[15] = i;
    delays.wrong(guest, std::chrono::seconds(i));
  }
  EXPECT_GT(delays.wait(guest, 4s), 0ms);
  guest.bytes[15] = 1;
  EXPECT_EQ(delays.wait(guest, 1s), 0ms);
}

class LoginTest : public ServerTest {
 protected:
  Answer try_with(const std::string& password) {
    return get("/index.html",
               "Host: localhost\r\nAuthorization: " + basic("anna:" + password) + "\r\n");
  }
};

TEST_F(LoginTest, ReadsThePasswordsAtTheStartOnly) {
  server.AuthenticationMode(1);
  start();
  EXPECT_EQ(try_with("secret").status, 401) << "without a file nobody is admitted";
  write("htaccess.txt", "anna:secret\r\n");
  EXPECT_EQ(try_with("secret").status, 401);
  server.StopListening();
  start();
  EXPECT_EQ(try_with("secret").status, 200);
  server.StopListening();
  server.AuthenticationMode(0);
  start();
  EXPECT_EQ(get("/index.html").status, 200);
}

}  // namespace
}  // namespace homewarden::testing
