#include "platform/http/streams.h"

#include <algorithm>
#include <utility>

namespace homewarden::http {

using std::chrono::milliseconds;

Streams::Streams(const Clock& clock, WebHost& host, const HttpLimits& limits,
                 std::size_t connections)
    : clock_(clock),
      host_(host),
      limits_(limits),
      most_(std::min(limits.streams, connections / 2)),
      most_of_one_(
          std::clamp<std::size_t>(connections / limits.shares / 2, 1, limits.streams_of_one)) {}

std::optional<Refusal> Streams::too_many(const Address& from) const {
  if (all_.size() >= most_) return Refusal{503, "Too many streams are open.", "Retry-After", "30"};
  const auto own = open_.find(from);
  if (own == open_.end() || own->second < most_of_one_) return std::nullopt;
  return Refusal{429, "Too many streams are open at this address.", "Retry-After", "30"};
}

Stream& Streams::begin(Connection& connection, std::shared_ptr<StreamSource> source) {
  host_.expect_reader(connection.socket, limits_.stream_taking);
  auto& entry = all_[&connection];
  entry = std::make_unique<Entry>(connection, std::move(source), clock_);
  ++open_[entry->from];
  return entry->stream;
}

void Streams::give_up(Connection& connection) {
  const auto found = all_.find(&connection);
  if (found != all_.end()) found->second->stream.give_up();
}

void Streams::give_up_all() {
  for (const auto& [connection, entry] : all_) entry->stream.give_up();
}

void Streams::end(Connection& connection) {
  const auto found = all_.find(&connection);
  if (found == all_.end()) return;
  const auto own = open_.find(found->second->from);
  if (--own->second == 0) open_.erase(own);
  if (found->second->is_asked) std::erase(to_ask_, found->second.get());
  all_.erase(found);
}

// Changes that come one after the other go out together, and the rest of the program has its turn
// between.
milliseconds Streams::pause() const {
  if (!to_ask_.empty()) return milliseconds(0);
  return std::max(told_last_ + limits_.stream_pause - clock_.uptime(), milliseconds(0));
}

void Streams::tell(const std::function<bool()>& has_patience) {
  if (std::exchange(have_more_, false))
    for (const auto& [connection, entry] : all_) {
      if (entry->is_asked || !entry->stream.waits()) continue;
      entry->is_asked = true;
      to_ask_.push_back(entry.get());
    }
  while (!to_ask_.empty()) {
    Entry* entry = to_ask_.front();
    to_ask_.pop_front();
    entry->is_asked = false;
    entry->stream.ask();
    if (!has_patience()) break;
  }
  told_last_ = clock_.uptime();
}

std::vector<Connection*> Streams::look_around() {
  std::vector<Connection*> stuck;
  for (const auto& [connection, entry] : all_) {
    entry->stream.beat(limits_.heartbeat);
    if (entry->stream.is_stuck(limits_.stream_taking)) stuck.push_back(connection);
  }
  return stuck;
}

}  // namespace homewarden::http
