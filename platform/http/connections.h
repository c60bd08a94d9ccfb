#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/http/address.h"
#include "platform/http/gate.h"
#include "platform/http/http_limits.h"
#include "platform/http/request_head.h"

struct MHD_Connection;
#include "platform/web_host.h"

namespace homewarden::http {

// Sockets beyond those of Connections::largest(): those that were cut count until the library has
// noticed.
inline constexpr std::size_t kSpareConnections = 256;

struct Connection {
  // `closing`: it has been cut and its end is not yet noticed.
  enum class Phase { kFirstHead, kIdle, kHead, kHandling, kSending, kClosing };

  MHD_Connection* library = nullptr;
  int socket = -1;
  Address from;
  bool from_here = false;  // see RequestHead
  Phase phase = Phase::kFirstHead;
  std::chrono::milliseconds since{};  // of the phase, by uptime

  // Of the request that is being read or answered.
  std::string uri;
  RequestHead head;
  std::optional<Refusal> refusal;
  Admission admission;
  int request = 0;  // 0 while it is not waiting
};

// All connections: keeps the time limits and makes room when there are too many. Connections whose
// request is being handled are never cut. Cutting is a shutdown of the socket, which the library
// then finds at its end.
class Connections {
 public:
  Connections(WebHost& host, const HttpLimits& limits);

  // Never refuses: the one that has been idle longest is cut when there are too many, of all or of
  // this address; that may be the new one. Valid until close().
  Connection& open(MHD_Connection* library, int socket, const Address& from,
                   std::chrono::milliseconds now);
  void close(Connection& connection) { all_.erase(&connection); }

  // Cuts what has outlived its time limit.
  void cut_late(std::chrono::milliseconds now);
  // Those being handled whose client has hung up. Asks the system about each; nothing is cut.
  std::vector<Connection*> deserted() const;

  // False also while those that were cut have not been closed.
  bool empty() const { return all_.empty(); }
  // How many may be open at once: what the limits say, or fewer when the process cannot have so
  // many descriptors.
  std::size_t largest() const { return largest_; }
  std::vector<Connection*> handled() const;

 private:
  std::chrono::milliseconds allowed(Connection::Phase phase) const;
  void make_room(Connection& newest);
  void cut(Connection& connection);

  WebHost& host_;
  const HttpLimits limits_;
  const std::size_t largest_;
  std::unordered_map<Connection*, std::unique_ptr<Connection>> all_;
};

}  // namespace homewarden::http
