#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace homewarden::http {

// What the server allows its clients. The values are those of the program; tests have less
// patience.
struct HttpLimits {
  std::string address;  // to listen on; "" for all addresses of the machine

  // Time for the first head of a connection, for the head of a later request from its first line
  // on, between requests, and for taking an answer.
  std::chrono::milliseconds first_head{10'000};
  std::chrono::milliseconds head{10'000};
  std::chrono::milliseconds idle{30'000};
  std::chrono::milliseconds sending{120'000};
  std::chrono::milliseconds look_around{1'000};  // how often these are checked
  // How often the certificate's files are looked at: renewed ones are shown from then on.
  std::chrono::milliseconds certificates{20'000};

  // Connections at once: no more than the process may have descriptors, a share of them for one
  // address. Beyond, a new one takes the place of the one that has been idle longest: of its own
  // address when that has its share, otherwise of the address that has most.
  std::size_t connections = 4096;
  std::size_t shares = 4;
  std::chrono::milliseconds rest{100};  // before that an address's own place is not taken over

  // Requests that wait for the power line: switches, and pages behind switches of their address.
  // Altogether at most a third of the connections, and half as many more for addresses that have
  // nothing waiting.
  std::size_t in_line = 128;
  std::size_t in_line_of_one = 16;
  std::size_t switches_of_one = 6;

  // Requests of programs that are not answered, of which some wait for the power line; and how
  // often an address may ask: so many times at once, as when all pages of a house come back, and so
  // many times a second in the long run, which a page with a slider or a script hardly reaches.
  std::size_t calls = 256;
  std::size_t calls_of_one = 64;
  std::size_t calls_at_once = 300;
  std::size_t calls_per_second = 100;
  // Of a body that is refused so much is taken before the refusal is sent, as clients read it only
  // when they have sent everything.
  std::size_t refused_body = 64UL * 1024;

  // Streams, at most half of the connections, and of an address half of its share. A heartbeat is
  // sent after so long without anything else, and a reader cut that takes nothing for so long; and
  // so long after sources were asked they are not asked again.
  std::size_t streams = 512;
  std::size_t streams_of_one = 256;
  std::chrono::milliseconds heartbeat{15'000};
  std::chrono::milliseconds stream_taking{30'000};
  std::chrono::milliseconds stream_pause{5};
};

}  // namespace homewarden::http
