#include "ui/window_services.h"

#include <utility>

#include "core/asking.h"
#include "core/version.h"

namespace homewarden {

WindowServices::WindowServices(Window& window, ProgramMenu& menu, WebPanel& web, Flags& flags,
                               Operations& operations, Desktop& desktop, Dialogs& dialogs)
    : window_(window), web_(web), flags_(flags), desktop_(desktop), dialogs_(dialogs) {
  menu.mnu_about.click.connect([this, &operations] { operations.start(about()); });
  web.Command10.click.connect([this, &operations] { operations.start(show_url()); });
  web.lab_webaddress.click.connect([this, &operations] {
    std::string address = web_.lab_webaddress.caption;
    operations.start(link(std::move(address)));
  });
  menu.mnu_exit.click.connect([this] {
    flags_.ignoreclicks = true;
    window_.close_requested();
  });
}

void WindowServices::ontop() {
  window_.topmost = true;
}

void WindowServices::offtop() {
  window_.topmost = false;
}

Task<void> WindowServices::link(std::string webaddress) {
  if (!desktop_.finds_browser()) {
    co_await tell(dialogs_, "Could not find associated browser!", "BROWSER NOT FOUND",
                  MessageIcon::kExclamation);
    co_return;
  }
  if (desktop_.open_address(webaddress)) co_return;
  co_await tell(dialogs_, "Web Page not Opened", "URL FAILED", MessageIcon::kExclamation);
}

Task<void> WindowServices::show_url() {
  std::string address = std::string(kWebSite) + "cgi-bin/urlip.cgi?" + web_.txt_webport.text.get();
  co_await link(std::move(address));
}

Task<void> WindowServices::about() {
  std::string text = "Thank you for using Homewarden from\n";
  text += "The Homewarden developers, ";
  text += kWebSite;
  text += "\n\nThis is version ";
  text += kVersion;
  text += "\n\nFor more information go to\n";
  text += kWebSite;
  co_await tell(dialogs_, std::move(text), "About Homewarden");
}

}  // namespace homewarden
