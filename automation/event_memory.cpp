#include "automation/event_memory.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/lines.h"
#include "core/dates.h"
#include "core/settings.h"

namespace homewarden {
namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::local_days;

const std::string kEventsKey = kMachineKey + "\\Events";
const char* const kChecked = "checked";
const char* const kDays = "days";
const char* const kOnce = "once";

constexpr std::size_t kDaysKept = 8;
constexpr std::size_t kDateLength = 10;
constexpr std::size_t kTurnLength = 5 + 1 + 16 + 1;  // "07:30=0123456789abcdef "
constexpr std::size_t kTurnsInChunk = 64;

// FNV-1a: the same in every build, as it lies on the disk.
std::uint64_t hash_of(std::string_view key) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char c : key) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
  return hash;
}

std::string text_of_turn(std::uint64_t hash, Minute due) {
  std::string digits(16, '0');
  for (std::size_t i = digits.size(); i-- > 0; hash /= 16)
    digits[i] = "0123456789abcdef"[hash % 16];
  return hh_mm(due) + '=' + digits + ' ';
}

std::optional<local_days> parse_day(std::string_view text) {
  const auto midnight = parse_minute(std::string(text) + " 00:00");
  if (!midnight) return std::nullopt;
  return floor<days>(*midnight);
}

std::string chunk_name(local_days day, std::size_t number) {
  return text_of(day) + ' ' + std::to_string(number);
}

}  // namespace

void EventMemory::load() {
  const auto noted = std::exchange(days_, {});
  order_.clear();
  is_loaded_ = true;
  checked_ = parse_checked(read(kChecked));
  const std::string all = read(kDays);
  std::string_view rest = all;
  for (; rest.size() >= kDateLength; rest.remove_prefix(std::min(kDateLength + 1, rest.size())))
    if (const auto day = parse_day(rest.substr(0, kDateLength)))
      if (std::find(order_.begin(), order_.end(), *day) == order_.end()) order_.push_back(*day);
  // A damaged value may name thousands, each of which would have to be forgotten one day.
  if (order_.size() > kDaysKept) order_.erase(order_.begin(), order_.end() - kDaysKept);
  for (const local_days day : order_) read_day(day);
  for (const auto& [day, until_now] : noted)
    for (const auto& [hash, due] : until_now.turns) note(hash, due);
}

void EventMemory::read_day(local_days day) {
  Day& found = days_[day];
  for (std::size_t number = 0;; ++number) {
    std::string chunk = read(chunk_name(day, number));
    chunk.resize(chunk.size() / kTurnLength * kTurnLength);
    if (chunk.empty()) return;
    for (std::size_t at = 0; at + kTurnLength <= chunk.size(); at += kTurnLength) {
      const auto due = parse_minute(text_of(day) + ' ' + chunk.substr(at, 5));
      std::uint64_t hash = 0;
      std::from_chars(chunk.data() + at + 6, chunk.data() + at + kTurnLength - 1, hash, 16);
      if (due) found.turns[hash] = *due;
    }
    found.chunks.push_back(std::move(chunk));
  }
}

void EventMemory::set_checked(CheckedMinutes checked) {
  if (checked == checked_) return;
  checked_ = std::move(checked);
  if (const auto last = last_trusted(checked_)) forget_turns_behind(*last);
  write(kChecked, text_of(checked_));
}

bool EventMemory::had_turn(std::string_view key, Minute due) const {
  const auto day = days_.find(floor<days>(due));
  return day != days_.end() && day->second.turns.contains(hash_of(key));
}

void EventMemory::note_turn(std::string_view key, Minute due) {
  note(hash_of(key), due);
}

void EventMemory::note(KeyHash hash, Minute due) {
  const auto today = floor<days>(due);
  if (!days_.contains(today)) {
    if (order_.size() >= kDaysKept) forget_day(order_.front());
    order_.push_back(today);
    write_days();
  }
  Day& day = days_[today];
  if (!day.turns.emplace(hash, due).second) return;
  if (day.chunks.empty() || day.chunks.back().size() >= kTurnsInChunk * kTurnLength)
    day.chunks.emplace_back();
  day.chunks.back() += text_of_turn(hash, due);
  write_chunk(today, day.chunks.size() - 1);
}

void EventMemory::write_chunk(local_days day, std::size_t number) {
  write(chunk_name(day, number), days_[day].chunks[number]);
}

// The values of a day go before the list that names it, or a stop in between would leave them for
// ever.
void EventMemory::forget_day(local_days day) {
  for (std::size_t number = days_[day].chunks.size(); is_loaded_ && number-- > 0;)
    module1_.regdelete(RegistryRoot::kLocalMachine, kEventsKey, chunk_name(day, number));
  days_.erase(day);
  std::erase(order_, day);
  write_days();
}

void EventMemory::write_days() {
  std::string text;
  for (const local_days day : order_) text += text_of(day) + ' ';
  write(kDays, text);
}

void EventMemory::forget_turns_behind(Minute last) {
  for (const local_days day : std::vector(order_)) {
    auto& turns = days_[day].turns;
    const auto kept = [last](const auto& turn) { return turn.second <= last; };
    if (day <= floor<days>(last) && std::all_of(turns.begin(), turns.end(), kept)) continue;
    const auto all = std::exchange(turns, {});
    forget_day(day);
    if (day > floor<days>(last)) continue;
    for (const auto& [hash, due] : all)
      if (due <= last) note(hash, due);
  }
}

std::vector<std::string> EventMemory::once_events() const {
  std::vector<std::string> keys;
  const std::string all = read(kOnce);
  LineReader reader(all);
  while (const auto key = reader.next())
    if (!key->empty()) keys.emplace_back(*key);
  return keys;
}

void EventMemory::set_once_events(const std::vector<std::string>& keys) {
  std::string text;
  for (const std::string& key : keys) text += key + '\n';
  if (text != read(kOnce)) write(kOnce, text);
}

std::string EventMemory::read(const std::string& name) const {
  return module1_.regread(RegistryRoot::kLocalMachine, kEventsKey, name);
}

void EventMemory::write(const std::string& name, const std::string& text) {
  if (is_loaded_) module1_.regwrite(RegistryRoot::kLocalMachine, kEventsKey, name, text);
}

}  // namespace homewarden
