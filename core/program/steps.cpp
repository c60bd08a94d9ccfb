#include "core/program/steps.h"

#include <string>

#include "platform/waiting.h"

namespace homewarden {

Task<void> Steps::progress(std::string_view text) {
  line_.caption = std::string(text);
  co_await pending_events(loop_);
}

Task<void> Steps::finish(Task<void> step) {
  try {
    co_await step;
  } catch (...) {
    operations_.report(std::current_exception());
  }
}

}  // namespace homewarden
