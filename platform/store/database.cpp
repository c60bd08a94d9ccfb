#include "platform/store/database.h"

#include <utility>

#include "platform/store/writer.h"

namespace homewarden::store {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLookInterval{50};
constexpr milliseconds kSlow{2000};
constexpr milliseconds kLastPatience{2000};

}  // namespace

Database::Database(std::filesystem::path file, std::function<void()> tell)
    : exchange_(std::make_shared<Exchange>()) {
  exchange_->state.is_read = false;
  exchange_->state.file = file.string();
  exchange_->tell = std::move(tell);
  writer_ = std::thread([exchange = exchange_, file = std::move(file)]() mutable {
    Writer(std::move(exchange), std::move(file)).run();
  });
}

// A disk that does not answer at all keeps the thread: it is then left to the end of the process.
Database::~Database() {
  if (!is_hopeless_) flush(kLastPatience);
  std::unique_lock guard(exchange_->lock);
  exchange_->stop = true;
  exchange_->nudge.notify_all();
  const bool ended =
      exchange_->progress.wait_for(guard, kLastPatience, [this] { return exchange_->ended; });
  guard.unlock();
  if (ended)
    writer_.join();
  else
    writer_.detach();
}

std::optional<RegistryValue> Database::read(const std::string& key, const std::string& name) {
  take_news();
  const auto found = values_.find(NameView(key, name));
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

void Database::record(const std::string& key, const std::string& name,
                      std::optional<RegistryValue> value) {
  take_news();
  ++changes_;
  is_hopeless_ = false;
  const Name where{key, name};
  if (value)
    values_.insert_or_assign(where, *value);
  else
    values_.erase(where);
  const std::lock_guard guard(exchange_->lock);
  put_waiting(where, std::move(value));
}

// To be called with the lock held.
void Database::put_waiting(const Name& name, std::optional<RegistryValue> value) {
  if (exchange_->waiting.empty()) exchange_->waiting_since = Clock::now();
  exchange_->waiting[name] = {++exchange_->state.recorded, std::move(value)};
  exchange_->nudge.notify_one();
}

std::uint64_t Database::changes() {
  take_news();
  const auto now = Clock::now();
  if (now - looked_ >= kLookInterval) {
    looked_ = now;
    const std::lock_guard guard(exchange_->lock);
    exchange_->asked_to_look = true;
    exchange_->nudge.notify_one();
  }
  return changes_;
}

StoreState Database::state() {
  const std::lock_guard guard(exchange_->lock);
  StoreState state = exchange_->state;
  const bool waits = !exchange_->waiting.empty() && Clock::now() - exchange_->waiting_since > kSlow;
  if (state.trouble == StoreTrouble::kNone && waits) state.trouble = StoreTrouble::kSlow;
  return state;
}

bool Database::wait_until_read(milliseconds patience) {
  std::unique_lock guard(exchange_->lock);
  return exchange_->progress.wait_for(guard, patience, [this] { return exchange_->state.is_read; });
}

bool Database::flush(milliseconds patience) {
  take_news();  // which may have to be written
  std::unique_lock guard(exchange_->lock);
  ++exchange_->flushing;
  exchange_->nudge.notify_all();
  const bool done = exchange_->progress.wait_for(
      guard, patience, [this] { return exchange_->state.on_disk == exchange_->state.recorded; });
  --exchange_->flushing;
  is_hopeless_ = !done;
  return done;
}

// What is recorded and not written yet counts more than what the file says.
void Database::take_news() {
  if (!exchange_->has_news) return;
  ++changes_;
  const std::lock_guard guard(exchange_->lock);
  exchange_->has_news = false;
  if (std::exchange(exchange_->is_another_file, false))
    for (const auto& [name, value] : values_)
      if (!exchange_->found->contains(name)) put_waiting(name, value);
  if (std::exchange(exchange_->is_stale, false)) {
    for (const auto& [name, value] : *exchange_->found)
      if (!values_.contains(name)) put_waiting(name, std::nullopt);
    for (const auto& [name, value] : values_)
      if (const auto it = exchange_->found->find(name);
          it == exchange_->found->end() || it->second != value)
        put_waiting(name, value);
  }
  values_.swap(*exchange_->found);
  exchange_->found.reset();
  carry_over(exchange_->waiting, values_);
}

}  // namespace homewarden::store
