#pragma once

#include <chrono>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/http/address.h"
#include "platform/http/gate.h"
#include "platform/http/http_limits.h"
#include "platform/http/request_head.h"
#include "platform/http/tls_transport.h"
#include "platform/web_host.h"

struct MHD_Connection;

namespace homewarden::http {

struct Connection {
  // `closing`: it has been cut and its end is not yet noticed.
  enum class Phase { kFirstHead, kIdle, kHead, kHandling, kSending, kStreaming, kClosing };

  MHD_Connection* library = nullptr;
  int socket = -1;
  Address from;
  bool from_here = false;  // see RequestHead
  Address called;
  std::unique_ptr<TlsTransport> tls{};  // nothing without TLS
  Phase phase = Phase::kFirstHead;
  std::chrono::milliseconds since{};  // of the phase, by uptime

  // Of the request that is being read or answered.
  std::string uri;
  RequestHead head;
  std::optional<Refusal> refusal;
  Admission admission;
  std::string body;
  std::size_t refused_body = 0;  // bytes that came and were not kept
  int request = 0;               // 0 while it is not waiting
};

// All connections: keeps the time limits and shares the places among addresses when there are too
// many. Connections whose request is being handled, and streams, are never cut for another one.
// Cutting is a shutdown of the socket, which the library then finds at its end.
class Connections {
 public:
  // `proxies` are not held to the share of one address: each of theirs is somebody else's.
  Connections(WebHost& host, const HttpLimits& limits, std::vector<NetworkPrefix> proxies);

  // Whether there is a place for one more of this address, free or taken over from another one: in
  // the address's own share from one that rests, otherwise from the address that has most, which
  // may be this one when it is a proxy.
  bool admits(const Address& from, std::chrono::milliseconds now) const;
  // One that was admitted; the one whose place it takes is cut. Valid until close().
  Connection& open(MHD_Connection* library, int socket, const Address& from,
                   std::chrono::milliseconds now);
  void close(Connection& connection);

  // Cuts what has outlived its time limit.
  void cut_late(std::chrono::milliseconds now);
  // Ends one whatever it does.
  void cut(Connection& connection);
  // Those being handled, and streams, whose client has hung up. Asks the system about each; nothing
  // is cut.
  std::vector<Connection*> deserted() const;

  // False also while those that were cut have not been closed.
  bool empty() const { return all_.empty(); }
  // How many may be open at once: what the limits say, or fewer when the process cannot have so
  // many descriptors; and with those that were cut and not yet closed.
  std::size_t largest() const { return largest_; }
  std::size_t most_sockets() const { return largest_ + spare_; }
  // With streams.
  std::vector<Connection*> handled() const;

 private:
  struct Place {
    bool is_there = false;
    Connection* from = nullptr;  // to be cut for it
  };
  using Group = std::vector<Connection*>;

  bool is_proxy(const Address& from) const;
  Place place_for(const Address& from, std::chrono::milliseconds now) const;
  Connection* longest_at_rest(const Group& group) const;
  std::chrono::milliseconds allowed(Connection::Phase phase) const;
  void leave_group(Connection& connection);

  WebHost& host_;
  const HttpLimits limits_;
  const std::vector<NetworkPrefix> proxies_;
  const std::size_t spare_;
  const std::size_t largest_;
  std::unordered_map<Connection*, std::unique_ptr<Connection>> all_;
  std::map<Address, Group> open_;  // without those that were cut
  std::size_t open_count_ = 0;
};

}  // namespace homewarden::http
