#include "platform/http/connections.h"

#include <algorithm>
#include <utility>

namespace homewarden::http {

using std::chrono::milliseconds;
using Phase = Connection::Phase;

namespace {

constexpr std::size_t kRestOfProgram = 64;  // descriptors
constexpr std::size_t kUnknown = 1024;

// Sockets that were cut and which the library has not closed yet.
std::size_t spare_sockets(std::optional<std::size_t> descriptors) {
  return std::clamp<std::size_t>(descriptors.value_or(kUnknown) / 8, 16, 256);
}

// Each connection may hold a file beside its socket, for as long as its client does not take it.
std::size_t affordable_connections(std::optional<std::size_t> descriptors, std::size_t wanted) {
  const std::size_t taken = kRestOfProgram + spare_sockets(descriptors);
  const std::size_t left = std::max(descriptors.value_or(kUnknown), taken) - taken;
  return std::clamp<std::size_t>(left / 2, 16, wanted);
}

bool is_handled(const Connection& connection) {
  return connection.phase == Phase::kHandling || connection.phase == Phase::kStreaming;
}

bool can_be_cut(const Connection& connection) {
  return !is_handled(connection) && connection.phase != Phase::kClosing;
}

}  // namespace

Connections::Connections(WebHost& host, const HttpLimits& limits,
                         std::vector<NetworkPrefix> proxies)
    : host_(host),
      limits_(limits),
      proxies_(std::move(proxies)),
      spare_(spare_sockets(host.most_descriptors())),
      largest_(affordable_connections(host.most_descriptors(), limits.connections)) {}

bool Connections::is_proxy(const Address& from) const {
  return std::any_of(proxies_.begin(), proxies_.end(),
                     [&](const NetworkPrefix& proxy) { return proxy.contains(from); });
}

void Connections::leave_group(Connection& connection) {
  const auto group = open_.find(connection.from);
  if (group == open_.end() || std::erase(group->second, &connection) == 0) return;
  --open_count_;
  if (group->second.empty()) open_.erase(group);
}

void Connections::cut(Connection& connection) {
  host_.shut_down(connection.socket);
  connection.phase = Phase::kClosing;
  leave_group(connection);
}

void Connections::close(Connection& connection) {
  leave_group(connection);
  all_.erase(&connection);
}

Connection* Connections::longest_at_rest(const Group& group) const {
  Connection* longest = nullptr;
  for (Connection* connection : group)
    if (can_be_cut(*connection) && (longest == nullptr || connection->since < longest->since))
      longest = connection;
  return longest;
}

// Connections that have just come do not push each other out: an address that opens thousands gets
// no more done by that, and refusing one costs little.
Connections::Place Connections::place_for(const Address& from, milliseconds now) const {
  const auto rests = [&](const Connection* connection) {
    return connection != nullptr && now - connection->since >= limits_.rest;
  };
  const auto own = open_.find(from);
  const std::size_t count = own == open_.end() ? 0 : own->second.size();
  const bool has_share = count >= std::max<std::size_t>(largest_ / limits_.shares, 1);
  const auto instead_of_own = [&] {
    Connection* oldest = longest_at_rest(own->second);
    return Place{rests(oldest), oldest};
  };
  if (has_share && !is_proxy(from)) return instead_of_own();
  if (open_count_ < largest_) return {true};
  // Of the address that has most, unless all of them are being handled.
  Connection* of_most = nullptr;
  Connection* oldest = nullptr;
  std::size_t most = count + 1;
  for (const auto& [address, group] : open_) {
    Connection* of_group = longest_at_rest(group);
    if (of_group == nullptr) continue;
    if (oldest == nullptr || of_group->since < oldest->since) oldest = of_group;
    if (group.size() <= most) continue;
    most = group.size();
    of_most = of_group;
  }
  if (of_most != nullptr) return {true, of_most};
  if (has_share) return instead_of_own();
  return {rests(oldest), oldest};
}

bool Connections::admits(const Address& from, milliseconds now) const {
  return place_for(from, now).is_there;
}

Connection& Connections::open(MHD_Connection* library, int socket, const Address& from,
                              milliseconds now) {
  const Place place = place_for(from, now);
  if (place.from != nullptr) cut(*place.from);
  auto owned = std::make_unique<Connection>();
  Connection& connection = *owned;
  connection.library = library;
  connection.socket = socket;
  connection.from = from;
  // Whoever is seen with the address that was called is on the machine that has it.
  connection.called = host_.called_address(socket);
  connection.from_here = from == connection.called;
  connection.since = now;
  all_.emplace(&connection, std::move(owned));
  open_[from].push_back(&connection);
  ++open_count_;
  return connection;
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
    if (is_handled(*connection)) found.push_back(connection);
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
