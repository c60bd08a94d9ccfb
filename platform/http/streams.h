#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/http/connections.h"
#include "platform/http/http_limits.h"
#include "platform/http/refusal.h"
#include "platform/http/stream.h"
#include "platform/web_host.h"

namespace homewarden::http {

// The streams that are open.
class Streams {
 public:
  // `connections`: how many may be open. Streams take half of them at most, and of one address half
  // of its share, so that other requests find a place.
  Streams(const Clock& clock, WebHost& host, const HttpLimits& limits, std::size_t connections);

  bool empty() const { return all_.empty(); }
  // Why one more of this address is not taken.
  std::optional<Refusal> too_many(const Address& from) const;

  // For the connection of a request that was admitted; the same until end(). Its response is to
  // read from what is returned.
  Stream& begin(Connection& connection, std::shared_ptr<StreamSource> source);
  // Nothing happens for a connection that has none.
  void give_up(Connection& connection);
  void give_up_all();
  // The library has done with it.
  void end(Connection& connection);

  // Every source may have more: they are asked in tell(), once for all calls before it.
  void have_more() { have_more_ = true; }
  // Whether tell() has something to do, and when: at once, or when it was not long ago.
  bool has_to_tell() const { return have_more_ || !to_ask_.empty(); }
  std::chrono::milliseconds pause() const;
  // Asks the sources of those that wait, at least one and as long as there is patience. The rest
  // comes first next time.
  void tell(const std::function<bool()>& has_patience);

  // Sends heartbeats. Those whose readers take nothing.
  std::vector<Connection*> look_around();

 private:
  struct Entry {
    Entry(const Connection& connection, std::shared_ptr<StreamSource> source, const Clock& clock)
        : from(connection.admission.from), stream(connection.library, std::move(source), clock) {}

    const Address from;
    Stream stream;
    bool is_asked = false;  // it stands in to_ask_
  };

  const Clock& clock_;
  WebHost& host_;
  const HttpLimits limits_;
  const std::size_t most_;
  const std::size_t most_of_one_;
  std::unordered_map<Connection*, std::unique_ptr<Entry>> all_;
  std::map<Address, std::size_t> open_;
  bool have_more_ = false;
  std::deque<Entry*> to_ask_;
  std::chrono::milliseconds told_last_{};
};

}  // namespace homewarden::http
