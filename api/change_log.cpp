#include "api/change_log.h"

#include <charconv>
#include <cstdint>
#include <deque>
#include <optional>
#include <utility>

#include "core/version.h"

namespace homewarden {
namespace {

constexpr std::size_t kAtOnce = 16UL * 1024;  // bytes for a reader that has much before it

std::string event_text(const std::string& id, std::string_view name, const std::string& data) {
  std::string text = "id: " + id + "\nevent: ";
  return text.append(name).append("\ndata: ").append(data).append("\n\n");
}

}  // namespace

struct ChangeLog::Kept {
  const std::string run;
  std::deque<std::string> events;
  std::size_t bytes = 0;
  std::uint64_t last = 0;  // the number of the last event; the first is 1

  std::uint64_t first() const { return last - events.size() + 1; }
  std::string id_of(std::uint64_t number) const { return run + "-" + std::to_string(number); }

  // Nothing for an id of another run, of what has not been yet or is not kept any more.
  std::optional<std::uint64_t> number_of(std::string_view id) const {
    if (!id.starts_with(run + "-")) return std::nullopt;
    id.remove_prefix(run.size() + 1);
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(id.data(), id.data() + id.size(), number);
    if (error != std::errc() || end != id.data() + id.size()) return std::nullopt;
    if (number > last || number + 1 < first()) return std::nullopt;
    return number;
  }
};

class ChangeLog::Reader : public StreamSource {
 public:
  Reader(std::shared_ptr<const Kept> kept, std::string first, std::uint64_t next)
      : kept_(std::move(kept)), first_(std::move(first)), next_(next) {}

  std::string next() override {
    std::string text = std::exchange(first_, {});
    if (is_over_) return text;
    if (next_ < kept_->first()) {
      is_over_ = true;
      return text + event_text(kept_->id_of(kept_->last), "refetch",
                               R"({"reason":"This reader was too slow."})");
    }
    while (next_ <= kept_->last && text.size() < kAtOnce)
      text += kept_->events[static_cast<std::size_t>(next_++ - kept_->first())];
    return text;
  }
  bool is_over() const override { return is_over_; }

 private:
  const std::shared_ptr<const Kept> kept_;
  std::string first_;
  std::uint64_t next_;
  bool is_over_ = false;
};

ChangeLog::ChangeLog(const JsonCodec& json, WebServerControl& web, std::string run)
    : json_(json), web_(web), kept_(std::make_shared<Kept>(Kept{std::move(run), {}, 0, 0})) {}

ChangeLog::~ChangeLog() = default;

void ChangeLog::publish(std::string_view name, const Json& data) {
  Kept& kept = *kept_;
  kept.events.push_back(event_text(kept.id_of(++kept.last), name, json_.write(data)));
  kept.bytes += kept.events.back().size();
  while (kept.events.size() > kMostEvents || (kept.bytes > kMostBytes && kept.events.size() > 1)) {
    kept.bytes -= kept.events.front().size();
    kept.events.pop_front();
  }
  web_.StreamsHaveMore();
}

std::string ChangeLog::last_id() const {
  return kept_->id_of(kept_->last);
}

std::shared_ptr<StreamSource> ChangeLog::reader(std::string_view last_id) {
  const auto seen = last_id.empty() ? kept_->last : kept_->number_of(last_id);
  const std::uint64_t place = seen.value_or(kept_->last);
  std::string first =
      "retry: 2000\n" + event_text(kept_->id_of(place), "hello",
                                   json_.write(Json::Object{{"event_id", kept_->id_of(place)},
                                                            {"version", std::string(kVersion)}}));
  if (!seen)
    first += event_text(kept_->id_of(place), "refetch",
                        R"({"reason":"What changed since then is not known any more."})");
  return std::make_shared<Reader>(kept_, std::move(first), place + 1);
}

}  // namespace homewarden
