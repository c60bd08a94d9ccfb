#include "platform/store/writer.h"

#include <sqlite3.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/store/read_only.h"
#include "platform/store/trouble.h"
#include "platform/store/turn.h"

namespace homewarden::store {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kFirstInterval{10};
constexpr milliseconds kLastInterval{2000};
constexpr milliseconds kFlushInterval{50};  // while somebody waits for the disk
constexpr milliseconds kLockedIsTrouble{1000};

}  // namespace

Writer::Writer(std::shared_ptr<Exchange> exchange, std::filesystem::path file)
    : exchange_(std::move(exchange)), file_(std::move(file)) {}

void Writer::run() {
  while (!stopping_) {
    const bool all_well = work();
    rest(all_well);
  }
  connection_.close();
  const std::lock_guard guard(exchange_->lock);
  exchange_->ended = true;
  exchange_->progress.notify_all();
}

bool Writer::work() {
  if (connection_.is_open() && connection_.has_moved()) {
    connection_.close();
    is_another_ = true;
  }
  // Somebody writes past the library: what is there is looked at as at the start.
  if (connection_.is_open() && (has_lost_log() || connection_.was_touched())) connection_.close();
  if (!connection_.is_open() && !open()) return false;
  if (!write_waiting() || !look()) return false;
  locked_since_ = {};
  tell_trouble(StoreTrouble::kNone);
  return true;
}

bool Writer::open() {
  const int result = open_in_turn();
  if (result != SQLITE_OK) {
    const StoreTrouble why = trouble_of(result, connection_.system_error(), file_);
    if (is_busy(result) || is_damage(result)) return fail(result);
    read_only(why);
    return false;
  }
  Values values;
  const int loaded = connection_.load_all(values);
  if (loaded != SQLITE_OK) return fail(loaded);
  read_stamp_.clear();
  connection_.note_files();
  publish(std::move(values), is_another_ || connection_.is_new());
  is_another_ = is_stale_ = false;
  return true;
}

// Only what the library itself calls damaged is set aside, and only by who has the turn.
int Writer::open_in_turn() {
  std::error_code ignored;
  std::filesystem::create_directories(file_.parent_path(), ignored);
  const Turn turn(file_);
  if (turn.is_taken()) return SQLITE_BUSY;
  const int result = connection_.open(file_);
  if (!is_damage(result) || !turn.is_held()) return result;
  const std::filesystem::path aside = set_aside(file_);
  if (aside.empty()) return result;
  {
    const std::lock_guard guard(exchange_->lock);
    exchange_->state.set_aside = aside.string();
    exchange_->state.restored = exchange_->state.is_read;
  }
  exchange_->tell();
  is_another_ = true;
  return connection_.open(file_);
}

void Writer::read_only(StoreTrouble why) {
  const std::string stamp = stamp_of(file_);
  if (stamp != read_stamp_) {
    Values values;
    const int result = read_without_writing(file_, values);
    if (result == SQLITE_OK) {
      read_stamp_ = stamp;
      // A disk that went away leaves a missing file, and what is known.
      const bool is_another = is_another_ || values.empty();
      publish(std::move(values), is_another);
      is_another_ = false;
    } else if (is_damage(result)) {
      why = StoreTrouble::kDamaged;
    }
  }
  locked_since_ = {};
  tell_trouble(why);
}

bool Writer::has_lost_log() {
  is_stale_ = is_stale_ || connection_.has_lost_log();
  return is_stale_;
}

// The changes that are recorded while it writes wait for the next time.
bool Writer::write_waiting() {
  Changes changes;
  {
    const std::lock_guard guard(exchange_->lock);
    changes = exchange_->waiting;
  }
  if (changes.empty()) return true;
  const int result = connection_.write(changes);
  if (result != SQLITE_OK) return fail(result);
  if (has_lost_log()) {
    connection_.close();
    return false;
  }
  connection_.note_files();  // before anybody may rely on what was written
  std::uint64_t last = 0;
  for (const auto& [name, change] : changes) last = std::max(last, change.number);
  const std::lock_guard guard(exchange_->lock);
  exchange_->state.on_disk = last;
  exchange_->waiting_since = Clock::now();
  std::erase_if(exchange_->waiting, [last](const auto& one) { return one.second.number <= last; });
  if (exchange_->found) carry_over(changes, *exchange_->found);
  exchange_->progress.notify_all();
  return true;
}

bool Writer::look() {
  if (!connection_.has_changed()) return true;
  Values values;
  const int result = connection_.load_all(values);
  if (result != SQLITE_OK) return fail(result);
  publish(std::move(values));
  return true;
}

void Writer::publish(Values values, bool is_another_file) {
  {
    const std::lock_guard guard(exchange_->lock);
    // Unless the program has not taken what was found before: it knows nothing newer.
    if (is_stale_ && exchange_->state.is_read && !exchange_->found) exchange_->is_stale = true;
    exchange_->found = std::move(values);
    if (is_another_file && exchange_->state.is_read) exchange_->is_another_file = true;
    exchange_->state.is_read = true;
    exchange_->has_news = true;
    exchange_->progress.notify_all();
  }
  exchange_->tell();
}

// A lock passes by itself, and most of them before anybody needs to know. What is full has room
// again some day; after anything else the file is opened anew.
bool Writer::fail(int result) {
  if (is_busy(result)) {
    if (locked_since_ == Clock::time_point{}) locked_since_ = Clock::now();
    if (Clock::now() - locked_since_ >= kLockedIsTrouble) tell_trouble(StoreTrouble::kLocked);
    return false;
  }
  locked_since_ = {};
  if (connection_.is_open()) connection_.note_system_error();
  const StoreTrouble trouble = trouble_of(result, connection_.system_error(), file_);
  if (trouble != StoreTrouble::kNoSpace) connection_.close();
  tell_trouble(trouble);
  return false;
}

void Writer::tell_trouble(StoreTrouble trouble) {
  {
    const std::lock_guard guard(exchange_->lock);
    if (exchange_->state.trouble == trouble) return;
    exchange_->state.trouble = trouble;
    exchange_->progress.notify_all();
  }
  exchange_->tell();
}

void Writer::rest(bool all_well) {
  std::unique_lock guard(exchange_->lock);
  if (all_well) {
    interval_ = milliseconds(0);
    exchange_->nudge.wait(guard, [this] {
      return exchange_->stop || exchange_->asked_to_look || !exchange_->waiting.empty();
    });
  } else {
    interval_ = std::clamp(interval_ * 2, kFirstInterval, kLastInterval);
    const auto begin = Clock::now();
    while (!exchange_->stop) {
      const auto length = exchange_->flushing ? std::min(interval_, kFlushInterval) : interval_;
      if (exchange_->nudge.wait_until(guard, begin + length) == std::cv_status::timeout) break;
    }
  }
  exchange_->asked_to_look = false;
  stopping_ = exchange_->stop;
}

}  // namespace homewarden::store
