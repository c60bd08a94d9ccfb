#include "platform/http/connections.h"

#include <algorithm>

namespace homewarden::http {

using std::chrono::milliseconds;
using Phase = Connection::Phase;

namespace {

constexpr std::size_t kRestOfProgram = 64;  // descriptors

// Each connection may hold a file beside its socket, for as long as its client does not take it.
std::size_t affordable_connections(std::optional<std::size_t> descriptors, std::size_t wanted) {
  constexpr std::size_t kTaken = kRestOfProgram + kSpareConnections;
  if (!descriptors) return std::min<std::size_t>(wanted, 256);
  const std::size_t left = std::max(*descriptors, kTaken) - kTaken;
  return std::clamp<std::size_t>(left / 2, 16, wanted);
}

bool can_be_cut(const Connection& connection) {
  return connection.phase != Phase::kHandling && connection.phase != Phase::kClosing;
}

}  // namespace

Connections::Connections(WebHost& host, const HttpLimits& limits)
    : host_(host),
      limits_(limits),
      largest_(affordable_connections(host.most_descriptors(), limits.connections)) {}

void Connections::cut(Connection& connection) {
  host_.shut_down(connection.socket);
  connection.phase = Phase::kClosing;
}

Connection& Connections::open(MHD_Connection* library, int socket, const Address& from,
                              milliseconds now) {
  auto owned = std::make_unique<Connection>();
  Connection& connection = *owned;
  connection.library = library;
  connection.socket = socket;
  connection.from = from;
  // Whoever is seen with the address that was called is on the machine that has it.
  connection.from_here = from == host_.called_address(socket);
  connection.since = now;
  all_.emplace(&connection, std::move(owned));
  make_room(connection);
  return connection;
}

// One pass: how many there are, and which has been idle longest, of all and of this address.
void Connections::make_room(Connection& newest) {
  std::size_t open = 0;
  std::size_t of_address = 0;
  Connection* oldest = &newest;
  Connection* oldest_of_address = &newest;
  for (const auto& [connection, owned] : all_) {
    if (connection->phase == Phase::kClosing) continue;
    const bool same = connection->from == newest.from;
    ++open;
    if (same) ++of_address;
    if (!can_be_cut(*connection)) continue;
    if (connection->since < oldest->since) oldest = connection;
    if (same && connection->since < oldest_of_address->since) oldest_of_address = connection;
  }
  const std::size_t share = std::max<std::size_t>(largest_ / limits_.shares, 1);
  if (of_address > share)
    cut(*oldest_of_address);
  else if (open > largest_)
    cut(*oldest);
}

milliseconds Connections::allowed(Phase phase) const {
  switch (phase) {
    case Phase::kFirstHead:
      return limits_.first_head;
    case Phase::kHead:
      return limits_.head;
    case Phase::kSending:
      return limits_.sending;
    default:
      return limits_.idle;
  }
}

void Connections::cut_late(milliseconds now) {
  for (const auto& [connection, owned] : all_)
    if (can_be_cut(*connection) && now - connection->since > allowed(connection->phase))
      cut(*connection);
}

std::vector<Connection*> Connections::handled() const {
  std::vector<Connection*> found;
  for (const auto& [connection, owned] : all_)
    if (connection->phase == Phase::kHandling) found.push_back(connection);
  return found;
}

std::vector<Connection*> Connections::deserted() const {
  const std::vector<Connection*> candidates = handled();
  std::vector<int> sockets;
  for (const Connection* connection : candidates) sockets.push_back(connection->socket);
  const std::vector<bool> hung_up = host_.hung_up(sockets);
  std::vector<Connection*> found;
  for (std::size_t i = 0; i < candidates.size(); ++i)
    if (hung_up[i]) found.push_back(candidates[i]);
  return found;
}

}  // namespace homewarden::http
