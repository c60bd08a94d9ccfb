#include "app/engine/manager_news.h"

#include <systemd/sd-daemon.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/qt/text_codec.h"

namespace homewarden {
namespace {

constexpr int kKeepEnvironment = 0;

void tell(const std::string& news) {
  sd_notify(kKeepEnvironment, news.c_str());
}

}  // namespace

ManagerNews::ManagerNews(EventLoop& loop, ServiceProgram& service) : loop_(loop) {
  const char* socket = std::getenv("NOTIFY_SOCKET");
  if (!socket || !*socket) return;
  service.ready.connect([this] { tell_ready(); });
  service.leaving.connect([this] { tell_leaving(); });
  for (Property<std::string>* text :
       {&service.frm_main.Statusbar.panel2, &service.progress.caption})
    text->changed.connect([this, text] { tell_status(*text); });

  std::uint64_t microseconds = 0;
  if (sd_watchdog_enabled(kKeepEnvironment, &microseconds) <= 0) return;
  proof_interval_ = std::chrono::duration_cast<std::chrono::milliseconds>(
                        std::chrono::microseconds(microseconds)) /
                    3;
  prove_life();
}

ManagerNews::~ManagerNews() {
  loop_.cancel(proof_);
}

void ManagerNews::tell_ready() {
  is_ready_ = true;
  tell("READY=1");
}

// An end before the service was ready counts as a failure, after which it would be started again,
// beside the window for which it stepped aside. In two messages: of one only the last word counts.
void ManagerNews::tell_leaving() {
  if (is_leaving_) return;
  is_leaving_ = true;
  if (!is_ready_) tell_ready();
  tell("STOPPING=1");
}

void ManagerNews::tell_status(const std::string& text) {
  if (text.empty()) return;
  tell("STATUS=" + qt::from_code_page(text).simplified().toStdString());
}

void ManagerNews::prove_life() {
  tell("WATCHDOG=1");
  proof_ = loop_.call_after(proof_interval_, [this] { prove_life(); });
}

}  // namespace homewarden
