#pragma once

#include <microhttpd.h>

#include <chrono>
#include <optional>
#include <string_view>

#include "platform/handle.h"
#include "platform/http/request_head.h"

namespace homewarden::http {

struct Connection;
struct Tls;

// What the library reports of the connections, always from within Daemon::run() or its destructor.
class DaemonEvents {
 public:
  virtual ~DaemonEvents() = default;

  // Whether a connection is taken; one that is not costs little.
  virtual bool admits(const sockaddr* from) = 0;
  // The connection is given back with all that is reported of it, until it is closed.
  virtual Connection* opened(MHD_Connection* library, int socket, const sockaddr* from) = 0;
  virtual void closed(Connection& connection) = 0;

  // The first line of a request has come.
  virtual void line_read(Connection& connection, const char* uri) = 0;
  // A request has come, without its body. False closes the connection.
  virtual bool head_read(Connection& connection, MHD_Connection* library, const char* method,
                         const char* version) = 0;
  // A piece of its body has come; never when the request was answered by its head.
  virtual bool body_read(Connection& connection, std::string_view piece) = 0;
  // It has come as a whole, or goes on after it was held up. False closes the connection.
  virtual bool request_read(Connection& connection) = 0;
  // It has been answered, or its connection ends.
  virtual void completed(Connection& connection) = 0;
};

// The HTTP library at work on a listening socket, without threads: all it does is done in run().
class Daemon {
 public:
  // With `tls` everything is encrypted. Throws std::runtime_error when the library cannot start.
  // Events come until it is destroyed, and no connection may be suspended then.
  Daemon(DaemonEvents& events, Handle listening, std::size_t most_connections, Tls* tls = nullptr);
  Daemon(const Daemon&) = delete;
  Daemon& operator=(const Daemon&) = delete;
  ~Daemon();

  // Readable when run() has something to do; the same until the end.
  int descriptor() const;
  // Does what can be done without waiting. Must not be called from an event.
  void run();
  // Whether run() has left something that nothing will announce.
  bool has_more() const;

 private:
  static void on_connection(void* daemon, MHD_Connection* library, void** context,
                            MHD_ConnectionNotificationCode code);

  DaemonEvents& events_;
  Tls* const tls_;
  int idle_runs_ = 0;  // since something was sent or received; counted with TLS alone
  MHD_Daemon* daemon_;
};

// What the library knows of a request.
RequestHead read_head(MHD_Connection* library, const char* method, const char* version);

}  // namespace homewarden::http
