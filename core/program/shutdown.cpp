#include "core/program/shutdown.h"

#include "base/text.h"
#include "core/program/window_position.h"
#include "platform/waiting.h"
#include "x10/interface_finder.h"

namespace homewarden {

Shutdown::Shutdown(FrmMain& form, FrmWait& wait, WebServer& web_server, Tray& tray,
                   Operations& operations, EventLoop& loop, Module1& module1, Settings& settings,
                   Desktop& desktop, InterfaceControl& interface_control)
    : steps_(wait, loop, operations),
      form_(form),
      wait_(wait),
      web_server_(web_server),
      tray_(tray),
      loop_(loop),
      module1_(module1),
      settings_(settings),
      desktop_(desktop),
      interface_(interface_control) {
  form.close_requested.connect([this, &operations] { operations.start(Form_Unload()); });
  form.resized.connect([this] { Form_Resize(); });
}

Task<void> Shutdown::Form_Unload() {
  if (unloading_) co_return;
  unloading_ = true;
  steps_.run([this] {
    module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "closeengine", "False");
  });
  wait_.visible = true;
  wait_.Label2.caption = "Homewarden - Closing";
  co_await pending_events(loop_);
  steps_.run([this] { web_server_.stop(); });
  steps_.run([this] { tray_.unload(); });
  form_.ignoreclicks = true;
  form_.Statusbar.panel2 = "Closing communications, please wait";
  co_await pending_events(loop_);
  co_await steps_.progress("Saving Data");
  form_.state = WindowState::kNormal;
  form_.visible = true;
  steps_.run([this] { keep_on_screen(form_, desktop_); });
  co_await steps_.progress("Closing Port");
  co_await steps_.finish(close_interface(interface_, module1_));
  steps_.run([this] { save_position(); });
  co_await steps_.progress("Starting Service");
  if (form_.chk_service.checked) co_await steps_.finish(start_service());
  co_await steps_.progress("Finished");
  wait_.visible = false;
  form_.visible = false;
  loop_.quit();
}

void Shutdown::Form_Resize() {
  if (form_.ignoreclicks) return;
  if (form_.state == WindowState::kMinimized) {
    if (!tray_.can_hide()) return;
    settings_.write("data", "state", "1");
    form_.ignoreclicks = true;
    form_.visible = false;
    form_.state = WindowState::kNormal;
    form_.ignoreclicks = false;
  } else {
    settings_.write("data", "state", "0");
    form_.visible = true;
  }
}

void Shutdown::save_position() {
  settings_.write("data", "left", text_of_single(form_.left));
  settings_.write("data", "top", text_of_single(form_.top));
}

Task<void> Shutdown::start_service() {
  module1_.servicestart("", kServiceName);
  co_await module1_.pause(1);
  if (to_lower(module1_.servicestatus("", kServiceName)) != "stopped") co_return;
  co_await module1_.pause(1);
  module1_.servicestart("", kServiceName);
}

}  // namespace homewarden
