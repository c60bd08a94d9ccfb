#include "platform/cm11/handshake.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace homewarden::cm11 {

namespace {

using namespace std::chrono_literals;

std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values) text += static_cast<char>(value);
  return text;
}

std::string hex(const std::string& text) {
  std::string words;
  for (const char byte : text) {
    char word[4];
    std::snprintf(word, sizeof word, "%02X ",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    words += word;
  }
  if (!words.empty()) words.pop_back();
  return words;
}

const Transmission kA1 = address_transmission({0, 1});
const Transmission kG1 = address_transmission({6, 1});
const Transmission kD5 = address_transmission({3, 5});
const Transmission kG9 = address_transmission({6, 9});
const Transmission kDDim22 = function_transmission(3, kX10Dim, 22);
const Transmission kADim16 = function_transmission(0, kX10Dim, 16);

// The interface's side of the line is played by the test.
class HandshakeTest : public ::testing::Test {
 protected:
  void send(const Transmission& transmission) { line.transmit(transmission, now); }
  void from_interface(std::initializer_list<int> values) { line.receive(bytes(values), now); }
  // What the computer has written since the last question.
  std::string written() { return hex(line.take_output()); }
  void wait(Handshake::Milliseconds length) {
    const auto end = now + length;
    while (line.deadline() && *line.deadline() <= end) {
      now = std::max(now, *line.deadline());
      line.advance(now);
    }
    now = end;
  }
  std::optional<Outcome> outcome() { return line.take_outcome(); }
  // Half a minute of silence ends any attempt.
  Outcome outcome_at_last() {
    wait(30s);
    EXPECT_TRUE(line.idle());
    return outcome().value_or(Outcome::Done);
  }

  Handshake::Milliseconds now{10000};
  Handshake line{[] { return LocalTime{}; }};
};

}  // namespace

// Catches: a step of the plain exchange left out or in the wrong order.
TEST_F(HandshakeTest, TransmitsWhatTheInterfaceConfirms) {
  send(kA1);
  EXPECT_EQ(written(), "04 66");
  from_interface({0x6A});
  EXPECT_EQ(written(), "00");
  wait(367ms);
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);
  EXPECT_EQ(written(), "");
  send(kADim16);
  EXPECT_EQ(written(), "86 64");
  from_interface({0xEA});
  EXPECT_EQ(written(), "00");
  wait(7s);
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done) << "a long dim on a slow line";
}

// Catches: 00 written after anything but the right checksum, a missing byte that hangs the line or
// is taken for success.
TEST_F(HandshakeTest, EveryByteLostDoubledOrChanged) {
  struct Case {
    const char* name;
    std::vector<int> checksum;  // what comes instead of the checksum
    std::vector<int> ready;     // and of ready, after 00
    bool acknowledged;
    Outcome outcome;
  };
  const Case cases[] = {
      {"checksum lost", {}, {}, false, Outcome::Unanswered},
      {"checksum changed", {0x6B}, {}, false, Outcome::Unanswered},
      {"checksum doubled", {0x6A, 0x6A}, {0x55}, true, Outcome::Done},
      {"noise before the checksum", {0x31, 0x6A}, {0x55}, true, Outcome::Done},
      {"an old ready before the checksum", {0x55, 0x6A}, {0x55}, true, Outcome::Done},
      {"ready lost", {0x6A}, {}, true, Outcome::Unknown},
      {"ready changed", {0x6A}, {0x57}, true, Outcome::Unknown},
      {"ready doubled", {0x6A}, {0x55, 0x55}, true, Outcome::Done},
      {"noise before ready", {0x6A}, {0x31, 0x55}, true, Outcome::Done},
      {"noise like a poll before ready", {0x6A}, {0x5A, 0x55}, true, Outcome::Done},
      {"noise like a clock request before ready", {0x6A}, {0xA5, 0x55}, true, Outcome::Done},
      {"noise like a clock request", {0xA5, 0x6A}, {0x55}, true, Outcome::Done},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    line.reset();
    send(kA1);
    wait(200ms);
    for (const int byte : test.checksum) from_interface({byte});
    EXPECT_EQ(written().ends_with("00"), test.acknowledged);
    wait(400ms);
    for (const int byte : test.ready) from_interface({byte});
    EXPECT_EQ(outcome_at_last(), test.outcome);
    EXPECT_EQ(written(), "") << "nothing is said that was not asked for";
  }
}

// Catches: a limit that a slow line or adapter breaks, and one that leaves a person waiting.
TEST_F(HandshakeTest, LateBytes) {
  send(kA1);
  wait(900ms);
  from_interface({0x6A});
  EXPECT_EQ(written(), "04 66 00");
  wait(4s);
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);

  send(function_transmission(0, kX10Dim, 22));
  from_interface({0x1A});
  wait(9500ms);
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);

  send(kA1);
  wait(1s);
  EXPECT_EQ(outcome(), Outcome::Unanswered);
}

// Catches: an interface that holds half of an older transmission and takes every header for the
// end of it, so that it never gets in step again.
TEST_F(HandshakeTest, GetsBackInStepWithAnInterfaceThatHoldsHalfATransmission) {
  send(kA1);
  written();
  wait(1s);
  EXPECT_EQ(outcome(), Outcome::Unanswered);
  send(kA1);
  EXPECT_EQ(written(), "04") << "the header alone: does it end something?";
  from_interface({0x6A});
  EXPECT_EQ(written(), "04 66") << "it did, and must not be acknowledged";
  from_interface({0x6A});
  EXPECT_EQ(written(), "00");
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);

  send(kA1);
  wait(1s);
  EXPECT_EQ(outcome(), Outcome::Unanswered);
  written();
  send(kA1);
  wait(100ms);
  EXPECT_EQ(written(), "04 66") << "it did not: the code follows";
  wait(1s);
  EXPECT_EQ(outcome(), Outcome::Unanswered);
  send(kA1);
  EXPECT_EQ(written(), "04 66") << "some want both bytes together";
}

// Catches: a poll between any two bytes that is not served, or after which the transmission is
// taken for done.
TEST_F(HandshakeTest, PollsAreServedAnywhere) {
  from_interface({0x5A});
  EXPECT_EQ(written(), "C3");
  from_interface({0x05, 0x04, 0xE9, 0xE5, 0xE5, 0x58});
  wait(50ms);
  using List = std::vector<Heard>;
  EXPECT_EQ(line.take_heard(), (List{{1, 6, kX10Bright}, {1, 7, kX10Bright}}));
  EXPECT_FALSE(outcome());

  send(kA1);
  written();
  from_interface({0x5A});
  EXPECT_EQ(written(), "C3");
  from_interface({0x02, 0x00, 0x6A});
  wait(50ms);
  EXPECT_EQ(outcome(), Outcome::Interrupted);
  EXPECT_TRUE(line.listeners().changed(0));

  send(kADim16);
  from_interface({0xEA});
  written();
  from_interface({0x5A});
  EXPECT_EQ(written(), "") << "once may be noise while it transmits";
  wait(1s);
  from_interface({0x5A});
  EXPECT_EQ(written(), "C3");
  from_interface({0x02, 0x01, 0x62});
  wait(50ms);
  EXPECT_EQ(line.take_heard(), (List{{0, 4, kX10On}})) << "addressed in the upload before";
  EXPECT_EQ(outcome(), Outcome::Unknown);
}

// Catches: uploads of a revision whose count includes itself all dropped as cut short; and an
// upload of the usual kind that is cut short taken for such a one.
TEST_F(HandshakeTest, ACountMayIncludeItself) {
  const std::vector<Heard> bright = {{1, 6, kX10Bright}, {1, 7, kX10Bright}};
  for (int i = 0; i < 2; ++i) {
    from_interface({0x5A, 0x06, 0x04, 0xE9, 0xE5, 0xE5, 0x58});
    wait(300ms);
    EXPECT_EQ(line.take_heard(), bright);
  }
  from_interface({0x5A, 0x05, 0x04, 0xE9, 0xE5, 0xE5, 0x58});
  wait(300ms);
  EXPECT_EQ(line.take_heard(), bright);
  from_interface({0x5A, 0x06, 0x04, 0xE9, 0xE5, 0xE5, 0x58});
  wait(300ms);
  EXPECT_TRUE(line.take_heard().empty());
}

// Catches: a poll taken for the checksum of an address, and the other way round, for ever.
TEST_F(HandshakeTest, AnAddressWithTheChecksumOfAPoll) {
  send(kG1);
  from_interface({0x5A});
  EXPECT_EQ(written(), "04 56 00");
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);

  send(kG1);
  from_interface({0x5A});  // a poll this time: the 00 is nothing to the interface
  written();
  wait(1s);
  from_interface({0x5A});
  wait(1s);
  from_interface({0x5A});
  EXPECT_EQ(written(), "C3");
  from_interface({0x02, 0x00, 0x6A});
  wait(50ms);
  EXPECT_EQ(outcome(), Outcome::Unknown);
}

// Catches: a Dim that goes out twice or stalls because its checksum looks like a poll.
TEST_F(HandshakeTest, ADimWithTheChecksumOfAPollIsAskedForTwice) {
  send(kDDim22);
  from_interface({0x5A});
  EXPECT_EQ(written(), "B6 A4 B6 A4");
  from_interface({0x5A});
  EXPECT_EQ(written(), "00");
  wait(4s);
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);

  send(kDDim22);
  from_interface({0x5A});  // a poll: it does not come again at once
  written();
  wait(300ms);
  EXPECT_EQ(written(), "C3");
  from_interface({0x02, 0x00, 0x6A});
  wait(50ms);
  EXPECT_EQ(outcome(), Outcome::Interrupted) << "nothing went out, it may be tried again";
}

// Catches: checksums that equal a clock request or a notice served as such.
TEST_F(HandshakeTest, AddressesWithTheChecksumOfOtherRequests) {
  for (const auto& [transmission, checksum] : {std::pair{kD5, 0xA5}, {kG9, 0x5B}}) {
    send(transmission);
    written();
    from_interface({checksum});
    EXPECT_EQ(written(), "00");
    from_interface({0x55});
    EXPECT_EQ(outcome(), Outcome::Done);
  }
}

// Catches: a clock request that is not answered, answered at the first noise, or answered without
// end; revisions that send no checksum.
TEST_F(HandshakeTest, ClockRequests) {
  const std::string clock = "9B 00 00 00 00 10 60";
  from_interface({0xA5});
  EXPECT_EQ(written(), "");
  wait(1s);
  from_interface({0xA5});
  EXPECT_EQ(written(), clock);
  from_interface({0x70});
  EXPECT_EQ(written(), "00");
  from_interface({0x55});
  EXPECT_TRUE(line.idle());

  send(kA1);
  from_interface({0xA5});
  wait(1s);
  EXPECT_EQ(outcome(), Outcome::Unanswered);
  written();
  from_interface({0xA5});
  EXPECT_EQ(written(), clock);
  wait(1300ms);
  EXPECT_TRUE(line.idle()) << "no checksum, and the requests have ceased";

  int clocks = 0;
  for (int second = 0; second < 60; ++second) {
    from_interface({0xA5});
    if (written().starts_with("9B")) ++clocks;
    wait(1s);
  }
  EXPECT_LE(clocks, 60);
  EXPECT_GE(clocks, 40) << "an interface that goes on asking goes on being answered";
}

// Catches: a clock that is acknowledged although it arrived wrong.
TEST_F(HandshakeTest, AWrongClockChecksumIsNotAcknowledged) {
  from_interface({0xA5});
  wait(1s);
  from_interface({0xA5});
  written();
  from_interface({0x71});
  EXPECT_EQ(written(), "");
  wait(200ms);
  EXPECT_EQ(written(), "9B 00 00 00 00 10 60");
}

// Catches: the bytes of a notice taken for the checksum or for ready.
TEST_F(HandshakeTest, NoticesAreSkipped) {
  send(kA1);
  written();
  from_interface({0x5B, 0x6A, 0x55});
  EXPECT_EQ(written(), "");
  from_interface({0x6A});
  EXPECT_EQ(written(), "00");
  from_interface({0x5B, 0x00, 0x55});
  EXPECT_FALSE(outcome());
  wait(400ms);
  from_interface({0x55});
  EXPECT_EQ(outcome(), Outcome::Done);
  from_interface({0x5B, 0x5A, 0xA5});
  EXPECT_EQ(written(), "");
}

// Catches: a status that is missed behind a poll, noise taken for an interface, a request without
// an end.
TEST_F(HandshakeTest, Status) {
  const std::string status = bytes({0, 0, 1, 2, 3, 4, 0x10, 0x68, 0, 0, 0, 0, 0, 0});
  for (const std::string& before : {std::string(), bytes({0x5A}), bytes({0xA5}), bytes({0x31})}) {
    line.request_status(now);
    EXPECT_EQ(written(), "8B");
    line.receive(before + status, now);
    EXPECT_EQ(outcome(), Outcome::Done) << hex(before);
  }
  line.request_status(now);
  line.receive(status.substr(0, 13), now);
  EXPECT_EQ(outcome_at_last(), Outcome::Unanswered);
  line.request_status(now);
  for (int i = 0; i < 1000 && !line.idle(); ++i) from_interface({0xFF});
  EXPECT_EQ(outcome(), Outcome::Unanswered);
  written();

  line.request_status(now);
  from_interface({0x5A});
  wait(150ms);
  EXPECT_EQ(written(), "8B C3") << "a poll and no status";
  from_interface({0x02, 0x00, 0x6A});
  wait(50ms);
  EXPECT_EQ(outcome(), Outcome::Interrupted);
}

// Catches: commands made up from an upload that arrived damaged, and units that such an upload may
// have changed.
TEST_F(HandshakeTest, DamagedUploadsAreDroppedWhole) {
  const std::vector<std::string> damaged = {
      bytes({0x03, 0x02, 0x66}),              // cut
      bytes({0x02, 0x66, 0x62}),              // count lost
      bytes({0x03, 0x66, 0x62}),              // mask lost
      bytes({0x03, 0x03, 0x02, 0x66, 0x62}),  // count doubled
      bytes({0x03, 0x02, 0x02, 0x66, 0x62}),  // mask doubled
      bytes({0x03, 0x02, 0x66, 0x66, 0x62}),  // address doubled
      bytes({0x03, 0x02, 0x66, 0x62, 0x62}),  // function doubled
      bytes({0x43, 0x02, 0x66, 0x62}),        // count changed
  };
  for (const auto& upload : damaged) {
    SCOPED_TRACE(hex(upload));
    line.listeners().forget_changes(0);
    from_interface({0x5A});
    line.receive(upload, now);
    wait(1s);
    EXPECT_TRUE(line.idle());
    EXPECT_TRUE(line.take_heard().empty());
    EXPECT_TRUE(line.listeners().changed(0));
    EXPECT_TRUE(line.listeners().others_than({0, 1}));
  }
  written();
  from_interface({0x5A, 0x5A, 0x03, 0x02, 0x66, 0x62, 0x5A});
  EXPECT_EQ(written(), "C3 C3") << "a doubled poll before, the next poll right behind";
  EXPECT_EQ(line.take_heard(), (std::vector<Heard>{{0, 1, kX10On}}));
}

// Catches: a poll answer that is lost, after which nothing goes on.
TEST_F(HandshakeTest, ALostPollAnswerIsRepeatedAtTheNextPoll) {
  for (int i = 0; i < 3; ++i) {
    from_interface({0x5A});
    EXPECT_EQ(written(), "C3");
    wait(1s);
    EXPECT_TRUE(line.idle());
  }
  EXPECT_FALSE(line.listeners().changed(0)) << "the interface still has its data";
}

}  // namespace homewarden::cm11
