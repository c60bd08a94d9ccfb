#include "platform/cm11/handshake.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "tests/cm11/hex_text.h"

namespace homewarden::cm11 {

namespace {

using namespace std::chrono_literals;
using testing::hex;
using testing::raw;
using testing::steps_of;

constexpr const char* kStatus = "00 00 01 02 03 04 10 68 00 00 00 00 00 00";

// The computer's side of the line; the interface's side is played by the test.
class HandshakeTest : public ::testing::Test {
 protected:
  // Plays a conversation, its steps divided by "|":
  //   send A1, send D dim 22, status    what is asked of the handshake
  //   < 6A             these bytes come from the interface
  //   > 04 66          the computer has written just this since the last ">"; "> ?" anything
  //   wait 500         milliseconds
  //   done             so the attempt has ended; "pending" when it has not. "ends unknown": within
  //                    half a minute of silence
  //   heard B6 Bright  the commands of others since the last "heard"
  //   hearing, quiet   whether closing now would lose a command of others
  //   changed, same    whether another controller has been busy in house A
  void play(const std::string& conversation) {
    SCOPED_TRACE(conversation);
    for (const std::string& step : steps_of(conversation)) {
      SCOPED_TRACE(step);
      const auto space = std::min(step.find(' '), step.size());
      take_step(step.substr(0, space), testing::trimmed(step.substr(space)));
    }
  }

  void take_step(const std::string& verb, const std::string& rest) {
    if (verb == "send") return line.transmit(transmission(rest), now);
    if (verb == "status") return line.request_status(now);
    if (verb == "<") return line.receive(raw(rest), now);
    if (verb == "wait") return wait(std::chrono::milliseconds(std::stoi(rest)));
    if (verb == ">") {
      const std::string written = hex(line.take_output());
      EXPECT_EQ(written, rest == "?" ? written : rest);
    } else if (verb == "heard") {
      EXPECT_EQ(heard(), rest);
    } else if (verb == "changed" || verb == "same") {
      EXPECT_EQ(line.listeners().changed(0), verb == "changed");
    } else if (verb == "hearing" || verb == "quiet") {
      EXPECT_EQ(line.is_receiving(now), verb == "hearing");
    } else if (verb == "ends") {
      wait(30s);
      EXPECT_EQ(outcome(), rest);
    } else {
      EXPECT_EQ(outcome(), verb);
    }
  }

  void wait(Handshake::Milliseconds length) {
    const auto end = now + length;
    while (line.deadline() && *line.deadline() <= end) {
      now = std::max(now, *line.deadline());
      line.advance(now);
    }
    now = end;
  }

  std::string outcome() {
    const auto outcome = line.take_outcome();
    constexpr const char* kNames[] = {"done", "unanswered", "interrupted", "unknown"};
    EXPECT_TRUE(line.idle() || !outcome);
    return outcome ? kNames[static_cast<int>(*outcome)] : "pending";
  }

  std::string heard() {
    std::string text;
    for (const auto& heard : line.take_heard())
      text += (text.empty() ? "" : " ") + to_text(Address{heard.house, heard.unit}) + " " +
              function_name(heard.function);
    return text;
  }

  // "A1", "D dim 22"
  static Transmission transmission(const std::string& text) {
    const auto dim = text.find(" dim ");
    if (dim == std::string::npos) return address_transmission(*parse_address(text));
    return function_transmission(text[0] - 'A', kX10Dim, std::stoi(text.substr(dim + 5)));
  }

  Handshake::Milliseconds now{10000};
  Handshake line{[] { return LocalTime{}; }};
};

}  // namespace

// Catches: a step of the plain exchange left out or in the wrong order, a long dim given up on a
// slow line.
TEST_F(HandshakeTest, TransmitsWhatTheInterfaceConfirms) {
  play("send A1 | > 04 66 | < 6A | > 00 | wait 367 | < 55 | done | >");
  play("send A dim 16 | > 86 64 | < EA | > 00 | wait 7000 | < 55 | done");
}

// Catches: 00 written after anything but the right checksum, a missing byte that hangs the line or
// is taken for success.
TEST_F(HandshakeTest, EveryByteLostDoubledOrChanged) {
  for (const char* const rest : {
           "ends unanswered | > 04 66",                          // checksum lost
           "< 6B | ends unanswered | > 04 66",                   // ... changed
           "< 6A 6A | > 04 66 00 | wait 400 | < 55 | done | >",  // checksum doubled
           "< 31 6A | > 04 66 00 | wait 400 | < 55 | done | >",  // noise before it
           "< 55 6A | > 04 66 00 | wait 400 | < 55 | done | >",  // an old ready before it
           "< A5 6A | > 04 66 00 | wait 400 | < 55 | done | >",  // noise like a clock request
           "< 6A | > 04 66 00 | ends unknown | >",               // ready lost
           "< 6A | > 04 66 00 | wait 400 | < 57 | ends unknown | >",
           "< 6A | > 04 66 00 | wait 400 | < 55 55 | done | >",
           "< 6A | > 04 66 00 | wait 400 | < 31 55 | done | >",
           "< 6A | > 04 66 00 | wait 400 | < 5A 55 | done | >",  // noise like a poll before ready
           "< 6A | > 04 66 00 | wait 400 | < A5 55 | done | >",
       }) {
    line = Handshake([] { return LocalTime{}; });
    play("send A1 | wait 200 | " + std::string(rest));
  }
}

// Catches: a limit that a slow line or adapter breaks, and one that leaves a person waiting.
TEST_F(HandshakeTest, LateBytes) {
  play("send A1 | wait 900 | < 6A | > 04 66 00 | wait 4000 | < 55 | done");
  play("send A dim 22 | < 1A | wait 9500 | < 55 | done");
  play("send A1 | wait 1000 | unanswered");
}

// Catches: an interface that holds half of an older transmission, or throws away what it gets
// instead of 00, and never gets in step again; a request, or a ready that comes late, taken for the
// answer to a lone header; half of something ended by 00, for which ready is waited for.
TEST_F(HandshakeTest, TriesVaryUntilTheInterfaceIsInStep) {
  const std::string fails = "send A1 | wait 1000 | unanswered | > ? | ";
  play(fails + "send A1 | > 04 | < 6A | > 04 66 | < 6A | > 00 | < 55 | done");
  play(fails + "send A1 | > 04 | wait 1100 | unanswered | > 66 | send A1 | > 04 66 | < 6A | < 55");
  play("done | > 00");
  play(fails + "send A1 | > 04 | < A5 55 | > | wait 100 | > 66 | < 6A | > 00 | < 55 | done");
  play(fails + "send A1 | > 04 | < 5A | > C3 | < 02 00 6A | wait 50 | interrupted");
  play(fails + "send A1 | > 04 | < 6A | > 04 66 | wait 1000 | unanswered");
  play("send A1 | > 04 | < 6A | > F0 04 66 | < 6A | > 00 | < 66 | wait 1000 | unknown");
  play("send A dim 16 | > 86 | wait 100 | > 64 | < EA | > 00 | < 64 | wait 7000 | < 55 | done");
}

// Catches: a port closed between an address and its function, which means nothing to the next who
// opens it; and one that stays open for an address alone.
TEST_F(HandshakeTest, TellsWhileItHearsACommand) {
  play("quiet | < 5A | hearing | < 02 00 6A | wait 50 | hearing | wait 900 | < 5A | hearing");
  play("< 02 01 62 | hearing | wait 50 | heard A4 On | quiet");
  play("< 5A | < 02 00 66 | wait 50 | hearing | wait 2500 | quiet");
}

// Catches: a poll between any two bytes that is not served, or after which the transmission is
// taken for done.
TEST_F(HandshakeTest, PollsAreServedAnywhere) {
  play("< 5A | > C3 | < 05 04 E9 E5 E5 58 | wait 50 | heard B6 Bright B7 Bright | pending");
  play("send A1 | > ? | < 5A | > C3 | < 02 00 6A | wait 50 | interrupted | changed");
  // While it transmits once may be noise. A4 was addressed in the upload before.
  play(
      "send A dim 16 | < EA | > ? | < 5A | > | wait 1000 | < 5A | > C3 | < 02 01 62 | wait 50 |"
      "heard A4 On | unknown");
}

// Catches: uploads of a revision whose count includes itself all dropped as cut short; and an
// upload of the usual kind that is cut short taken for such a one.
TEST_F(HandshakeTest, ACountMayIncludeItself) {
  for (int i = 0; i < 2; ++i) play("< 5A 06 04 E9 E5 E5 58 | wait 300 | heard B6 Bright B7 Bright");
  play("< 5A 05 04 E9 E5 E5 58 | wait 300 | heard B6 Bright B7 Bright");
  play("< 5A 06 04 E9 E5 E5 58 | wait 300 | heard");
}

// Catches: a poll taken for the checksum of an address or a Dim, and the other way round, for ever;
// a Dim that goes out twice or stalls because of it; checksums served as other requests.
TEST_F(HandshakeTest, ChecksumsThatLookLikeRequests) {
  play("send G1 | < 5A | > 04 56 00 | < 55 | done");
  // A poll this time, for which the 00 is nothing.
  play(
      "send G1 | < 5A | > ? | wait 1000 | < 5A | wait 1000 | < 5A | > C3 | < 02 00 6A | wait 50 |"
      "unknown");
  play("send D dim 22 | < 5A | > B6 A4 B6 A4 | < 5A | > 00 | wait 4000 | < 55 | done");
  // A poll does not come again at once: nothing went out, it may be tried again.
  play("send D dim 22 | < 5A | > ? | wait 300 | > C3 | < 02 00 6A | wait 50 | interrupted");
  play("send D5 | > ? | < A5 | > 00 | < 55 | done | send G9 | > ? | < 5B | > 00 | < 55 | done");
}

// Catches: a clock request that is not answered, answered at the first noise, or answered without
// end; revisions that send no checksum; a clock that is acknowledged although it arrived wrong.
TEST_F(HandshakeTest, ClockRequests) {
  play("< A5 | > | wait 1000 | < A5 | > 9B 00 00 00 00 10 60 | < 70 | > 00 | < 55");
  EXPECT_TRUE(line.idle());
  play("send A1 | < A5 | wait 1000 | unanswered | > ? | < A5 | > 9B 00 00 00 00 10 60 | wait 1300");
  EXPECT_TRUE(line.idle()) << "no checksum, and the requests have ceased";
  line = Handshake([] { return LocalTime{}; });
  play("< A5 | wait 1000 | < A5 | > ? | < 71 | > | wait 200 | > 9B 00 00 00 00 10 60");

  line = Handshake([] { return LocalTime{}; });
  int clocks = 0;
  for (int second = 0; second < 60; ++second) {
    play("< A5");
    if (line.take_output().starts_with('\x9B')) ++clocks;
    wait(1s);
  }
  EXPECT_LE(clocks, 60);
  EXPECT_GE(clocks, 40) << "an interface that goes on asking goes on being answered";
}

// Catches: the bytes of a notice taken for the checksum or for ready.
TEST_F(HandshakeTest, NoticesAreSkipped) {
  play("send A1 | > ? | < 5B 6A 55 | > | < 6A | > 00 | < 5B 00 55 | pending | wait 400 | < 55");
  play("done | < 5B 5A A5 | >");
}

// Catches: a status that is missed behind a poll, noise taken for an interface, a request without
// an end.
TEST_F(HandshakeTest, Status) {
  const std::string status = kStatus;
  for (const char* const before : {"", "5A ", "A5 ", "31 "})
    play("status | > 8B | < " + std::string(before) + status + " | done");
  play("status | < " + status.substr(3) + " | ends unanswered | status");
  for (int i = 0; i < 1000 && !line.idle(); ++i) line.receive("\xFF", now);
  play("unanswered | > ?");
  play("status | < 5A | wait 150 | > 8B C3 | < 02 00 6A | wait 50 | interrupted");
}

// Catches: commands made up from an upload that arrived damaged, and units that such an upload may
// have changed.
TEST_F(HandshakeTest, DamagedUploadsAreDroppedWhole) {
  for (const char* const upload : {
           "03 02 66",        // cut
           "02 66 62",        // count lost
           "03 66 62",        // mask lost
           "03 03 02 66 62",  // count doubled
           "03 02 02 66 62",  // mask doubled
           "03 02 66 66 62",  // address doubled
           "03 02 66 62 62",  // function doubled
           "43 02 66 62",     // count changed
       }) {
    line.listeners().forget_changes(0);
    play("< 5A | < " + std::string(upload) + " | wait 1000 | heard | changed | > ?");
    EXPECT_TRUE(line.idle());
    EXPECT_TRUE(line.listeners().others_than({0, 1}));
  }
  // A doubled poll before, the next poll right behind.
  play("< 5A 5A 03 02 66 62 5A | > C3 C3 | heard A1 On");
}

// Catches: a poll answer that is lost, after which nothing goes on.
TEST_F(HandshakeTest, ALostPollAnswerIsRepeatedAtTheNextPoll) {
  for (int i = 0; i < 3; ++i) play("< 5A | > C3 | wait 1000 | pending | same");
}

}  // namespace homewarden::cm11
