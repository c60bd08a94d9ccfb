#pragma once

#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"
#include "tests/http/socket_loop.h"

namespace homewarden::testing {

struct Answer {
  int status = 0;  // 0 when none came
  std::string body;
  std::string head{};  // as it came
};

// A connection to a server that runs on the same loop, byte by byte as the test wants it.
class Client {
 public:
  // `from` is the address of this machine that it comes from.
  Client(SocketLoop& loop, int port, const std::string& from = "127.0.0.1");
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;
  virtual ~Client() = default;

  bool is_connected() const { return connected_; }
  void send(std::string_view bytes);
  Answer read();
  bool has_input();
  // What has come and was not read, as it stands, and again with the next call.
  const std::string& input() { return take(), input_; }
  // Whether the server closes the connection within the time.
  bool is_closed_within(std::chrono::milliseconds limit = std::chrono::seconds(5));
  // Ends it; with `reset` the server sees an error in place of an end.
  void close(bool reset = false);

  // A request for a page, with more lines of its head; and its answer.
  void request(const std::string& path, const std::string& headers = "");
  Answer ask(const std::string& path, const std::string& headers = "");
  // One with a body, of which the head tells the length.
  Answer send_body(const std::string& method, const std::string& path, const std::string& body,
                   const std::string& headers = "Content-Type: application/json\r\n");

 protected:
  // As ::send() and ::recv() without waiting.
  virtual ssize_t give(const char* data, std::size_t size);
  virtual ssize_t get(char* data, std::size_t room);

  SocketLoop& loop_;
  os_linux::Descriptor socket_;
  bool connected_ = false;

 private:
  // False at the end of the connection.
  bool take();

  std::string input_;
};

// A port of this machine that was free a moment ago.
int free_port();

}  // namespace homewarden::testing
