#pragma once

#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "tests/http/socket_loop.h"

namespace homewarden::testing {

struct Answer {
  int status = 0;  // 0 when none came
  std::string head;
  std::string body;

  // The value of a header, "" when there is none.
  std::string header(const std::string& name) const;
};

// A connection to a server that runs on the same loop, byte by byte as the test wants it.
class Client {
 public:
  // `from` is the address it comes from, if not the one it goes to.
  Client(SocketLoop& loop, int port, const std::string& address = "127.0.0.1",
         const std::string& from = "");

  bool is_connected() const { return connected_; }
  void send(std::string_view bytes);
  // The next answer. One to HEAD has no body whatever it says of its length.
  Answer read(bool to_head = false);
  bool has_input();
  // Whether the server closes the connection within the time.
  bool is_closed_within(std::chrono::milliseconds limit = std::chrono::seconds(5));
  // Ends it; with `reset` the server sees an error in place of an end.
  void close(bool reset = false);

  Answer ask(const std::string& path, const std::string& headers = "Host: localhost\r\n",
             const std::string& method = "GET");

 private:
  // False at the end of the connection.
  bool take();

  SocketLoop& loop_;
  Descriptor socket_;
  bool connected_ = false;
  std::string input_;
};

// A port of this machine that was free a moment ago.
int free_port();

}  // namespace homewarden::testing
