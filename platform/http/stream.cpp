#include "platform/http/stream.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace homewarden::http {

using std::chrono::milliseconds;

Stream::Stream(MHD_Connection* library, std::shared_ptr<StreamSource> source, const Clock& clock)
    : library_(library), clock_(clock), source_(std::move(source)), read_last_(clock.uptime()) {}

ssize_t Stream::read(void* stream, std::uint64_t, char* to, std::size_t most) {
  return static_cast<Stream*>(stream)->read(to, most);
}

// What was given before has been taken by the system when the library asks.
ssize_t Stream::read(char* to, std::size_t most) {
  read_last_ = clock_.uptime();
  if (taken_ == text_.size()) pull();
  if (!source_) return MHD_CONTENT_READER_END_WITH_ERROR;
  if (text_.empty()) {
    if (source_->is_over()) return MHD_CONTENT_READER_END_OF_STREAM;
    waits_ = true;
    MHD_suspend_connection(library_);
    return 0;
  }
  const std::size_t count = text_.copy(to, most, taken_);
  taken_ += count;
  return static_cast<ssize_t>(count);
}

// Whoever is asked may give the stream up.
void Stream::pull() {
  const auto source = source_;
  taken_ = 0;
  text_ = source ? source->next() : "";
}

void Stream::go_on() {
  waits_ = false;
  read_last_ = clock_.uptime();
  MHD_resume_connection(library_);
}

void Stream::ask() {
  if (!waits_) return;
  pull();
  if (waits_ && (!text_.empty() || source_->is_over())) go_on();
}

void Stream::beat(milliseconds interval) {
  if (!waits_ || clock_.uptime() - read_last_ < interval) return;
  text_ = ": heartbeat\n\n";
  taken_ = 0;
  go_on();
}

bool Stream::is_stuck(milliseconds limit) const {
  return !waits_ && clock_.uptime() - read_last_ > limit;
}

void Stream::give_up() {
  source_.reset();
  text_.clear();
  taken_ = 0;
  if (waits_) go_on();
}

}  // namespace homewarden::http
