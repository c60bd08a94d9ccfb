#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "base/json.h"
#include "platform/json_codec.h"
#include "platform/web_server_control.h"

namespace homewarden {

// The last changes of the house as events of a stream (text/event-stream), once for all readers:
// each has no more than its place among them. Whoever has fallen so far behind that its place is
// gone is told to fetch everything anew ("refetch"), and its stream ends.
class ChangeLog {
 public:
  // What is kept, whichever is reached first.
  static constexpr std::size_t kMostEvents = 4096;
  static constexpr std::size_t kMostBytes = 4UL * 1024 * 1024;

  // `run` tells this run of the program from others: places of another one mean nothing here.
  ChangeLog(const JsonCodec& json, WebServerControl& web, std::string run);
  ~ChangeLog();

  // What is sent to all readers: "event: <name>", "data: <data>" and an id that counts on.
  void publish(std::string_view name, const Json& data);

  // The id of the last event, for who has just read the house and wants what comes after.
  std::string last_id() const;

  // A reader that begins behind the event of this id; "" begins with what comes next. One whose
  // place is not known any more is told to fetch everything anew, and goes on with what comes next.
  std::shared_ptr<StreamSource> reader(std::string_view last_id);

 private:
  class Reader;
  struct Kept;

  const JsonCodec& json_;
  WebServerControl& web_;
  const std::shared_ptr<Kept> kept_;
};

}  // namespace homewarden
