#include "api/change_log.h"

#include <utility>

namespace homewarden {

struct ChangeLog::Kept {
  std::uint64_t last = 0;
};

ChangeLog::ChangeLog(const JsonCodec& json, WebServerControl& web, std::string run)
    : json_(json), web_(web), run_(std::move(run)), kept_(std::make_shared<Kept>()) {}

ChangeLog::~ChangeLog() = default;

void ChangeLog::publish(std::string_view, const Json& data) {
  json_.write(data);
  ++kept_->last;
  web_.StreamsHaveMore();
}

std::string ChangeLog::last_id() const {
  return run_ + "-" + std::to_string(kept_->last);
}

std::shared_ptr<StreamSource> ChangeLog::reader(std::string_view) {
  return nullptr;
}

}  // namespace homewarden
