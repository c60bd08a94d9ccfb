#include "platform/http/gate.h"

#include <gtest/gtest.h>

namespace homewarden {
namespace {

using std::chrono::milliseconds;

RequestHead asked() {
  RequestHead head;
  head.from = *parse_address("192.168.1.9");
  head.method = "GET";
  head.uri = "/index.html";
  head.host = "192.168.1.5:8080";
  return head;
}

unsigned status(Gate& gate, const RequestHead& head, milliseconds now = {}) {
  const auto verdict = gate.check(head, now);
  const auto* refusal = std::get_if<Refusal>(&verdict);
  return refusal != nullptr ? refusal->status : 200;
}

TEST(GateTest, SlowsDownGuessingFromAnAddressAndFromANetwork) {
  GateRules rules;
  rules.log_in = true;
  rules.credentials = Credentials("anna:secret\r\n");
  Gate gate(std::move(rules));
  RequestHead guess = asked();
  guess.authorization = "Basic YW5uYTp3cm9uZw==";
  RequestHead right = guess;
  right.authorization = "Basic YW5uYTpzZWNyZXQ=";
  for (int i = 0; i < 5; ++i) EXPECT_EQ(status(gate, guess), 401u);
  EXPECT_EQ(status(gate, right), 429u) << "the sixth is looked at without waiting";
  EXPECT_EQ(status(gate, right, milliseconds(1000)), 200u);

  guess.from = *parse_address("2001:db8::1");
  for (int i = 0; i < 50; ++i) {
    guess.from.bytes[15] = static_cast<std::uint8_t>(i);
    EXPECT_EQ(status(gate, guess), 401u);
  }
  guess.from.bytes[15] = 99;
  EXPECT_EQ(status(gate, guess), 429u) << "every address of a network has free tries";
  EXPECT_EQ(status(gate, asked()), 401u) << "others are held up";
}

}  // namespace
}  // namespace homewarden
