#include "web/web_server.h"

#include <optional>
#include <utility>

#include "base/code_page.h"
#include "base/text.h"
#include "core/asking.h"

namespace homewarden {
namespace {

const char* const kDefaultPort = "80";
const char* const kFallbackPort = "8080";
constexpr int kRequestsAtOnce = 12;
constexpr int kWithLogin = 1;
const char* const kNoPassword =
    "the password file html/htaccess.txt cannot be read or holds no password";

}  // namespace

// The buttons that change the server take no click while one of these lives: what they ask and do
// must not mix.
class WebServer::Occupied {
 public:
  explicit Occupied(WebPanel& panel) : panel_(panel) { enable(false); }
  Occupied(const Occupied&) = delete;
  Occupied& operator=(const Occupied&) = delete;
  ~Occupied() { enable(true); }

 private:
  void enable(bool on) {
    for (Button* button : {&panel_.Command7, &panel_.Command8, &panel_.Command9,
                           &panel_.cmd_webaccess, &panel_.cmd_webhttps, &panel_.cmd_makecert})
      button->enabled = on;
  }

  WebPanel& panel_;
};

WebServer::WebServer(WebPanel& panel, StatusBar& status, FrmServer& form, Operations& operations,
                     Module1& module1, Settings& settings, Dialogs& dialogs, Files& files,
                     Notices& notices, WebServerControl& web, std::filesystem::path document_folder)
    : panel_(panel),
      status_(status),
      form_(form),
      module1_(module1),
      access_(panel, settings, dialogs, web),
      https_(panel, settings, dialogs, files, notices, web, document_folder),
      dialogs_(dialogs),
      files_(files),
      web_(web),
      folder_(std::move(document_folder)),
      credentials_(folder_ / "htaccess.txt") {
  web.servermaxconnections(kRequestsAtOnce);
  panel.Frame4.visible.changed.connect([this] {
    if (!panel_.Frame4.visible) return;
    access_.show();
    https_.show();
    show_state();
  });
  panel.Command7.click.connect([this, &operations] {
    if (panel_.Command7.enabled) operations.start(save_port());
  });
  panel.Command8.click.connect([this, &operations] {
    if (panel_.Command8.enabled) operations.start(set_password());
  });
  panel.Command9.click.connect([this, &operations] {
    if (panel_.Command9.enabled) operations.start(clear_password());
  });
  panel.cmd_webaccess.click.connect([this, &operations] {
    if (panel_.cmd_webaccess.enabled) operations.start(save_access());
  });
  panel.cmd_webhttps.click.connect([this, &operations] {
    if (panel_.cmd_webhttps.enabled) operations.start(save_https());
  });
  panel.cmd_makecert.click.connect([this, &operations] {
    if (panel_.cmd_makecert.enabled) operations.start(make_certificate());
  });
  web.HttpsStateChanged.connect([this] { show_state(); });
}

void WebServer::startserver() {
  form_.loaded = true;
  const std::string port = stored_port();
  if (!web_.Listening() && !listen(port)) {
    // A port that could not be read is not written over.
    if (module1_.is_known(RegistryRoot::kLocalMachine)) store_port(kFallbackPort);
    if (!listen(kFallbackPort)) {
      failure_ = "The web server could not be started on port " + port;
      if (port != kFallbackPort) failure_ += std::string(" nor on port ") + kFallbackPort;
    }
  }
  show_state();
  tell_failure();
}

void WebServer::start_on_stored_port() {
  form_.loaded = true;
  const std::string port = stored_port();
  if (!web_.Listening() && !listen(port))
    failure_ = "The web server waits for port " + port + ", which the service still has";
  show_state();
  tell_failure();
}

bool WebServer::is_wanted() const {
  return form_.loaded;
}

std::string WebServer::stored_port() {
  return module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "webport", kDefaultPort);
}

void WebServer::tell_failure() {
  if (!web_.Listening())
    status_.panel2 = failure_;
  else if (lets_nobody_in())
    status_.panel2 = std::string("The web server lets nobody in: ") + kNoPassword;
}

bool WebServer::lets_nobody_in() const {
  return protected_ && !web_.HasLogins();
}

void WebServer::stop() {
  if (!form_.loaded) return;
  web_.StopListening();
  form_.loaded = false;
  https_.show_state();
}

void WebServer::store_port(const std::string& port) {
  module1_.regwrite(RegistryRoot::kLocalMachine, kMachineKey, "webport", port);
  panel_.txt_webport.text = port;
  panel_.Label48.caption = "The web server is currently set to run on port " + port;
}

bool WebServer::listen(const std::string& port) {
  protected_ = files_.exists(credentials_);
  web_.ServerPort(port);
  web_.DocumentFolder(folder_);
  web_.AuthenticationMode(protected_ ? kWithLogin : 0);
  web_.Access(access_.stored());
  web_.Https(https_.stored());
  web_.ServerOption(true);
  web_.StartListening();
  return web_.Listening();
}

void WebServer::show_state() {
  const std::string port =
      module1_.regread(RegistryRoot::kLocalMachine, kMachineKey, "webport", kDefaultPort);
  const bool has_password = files_.exists(credentials_);
  panel_.lab_weblock.caption = has_password ? "A password is set" : "No password is set";
  https_.show_state();
  if (!web_.Listening()) {
    panel_.lab_webaddress.visible = false;
    panel_.lab_webstate.caption =
        "The web server is not running: port " + port + " cannot be used.";
    return;
  }
  std::string text = "The web server is running on port " + port;
  if (lets_nobody_in())
    text += std::string(" and lets nobody in: ") + kNoPassword + ". Set one and save the port.";
  else if (protected_)
    text += " and asks for a password.";
  else
    text += " without a password, for your own network only.";
  if (has_password != protected_)
    text += has_password ? " The new password takes effect at its next start: save the port."
                         : " That ends at its next start: save the port.";
  const auto addresses = web_.Addresses();
  panel_.is_in_network = !addresses.empty();
  panel_.lab_webaddress.caption =
      address_of_pages(addresses.empty() ? "localhost" : addresses.front(), port);
  panel_.lab_webaddress.visible = true;
  std::string told;
  for (const std::string& host : addresses) {
    const std::string address = address_of_pages(host, port);
    if (address != std::exchange(told, address))
      text += "\nOn a phone or a computer in your network, open " + address;
  }
  if (const std::string faults = access_.faults(); !faults.empty()) text += "\n" + faults;
  panel_.lab_webstate.caption = text;
}

// By https where there is any.
std::string WebServer::address_of_pages(const std::string& host, const std::string& port) const {
  std::string start = https_.address(host);
  if (start.empty()) start = "http://" + host + (port == kDefaultPort ? "" : ":" + port);
  return start + "/index.html";
}

Task<void> WebServer::save_port() {
  const Occupied occupied(panel_);
  const std::string port = panel_.txt_webport.text;
  if (port.size() < 2) {
    co_await tell(dialogs_,
                  "Please enter a valid port number of at least 80 in to the port text entry box",
                  "Error");
    co_return;
  }
  stop();
  store_port(port);
  co_await tell_saved("The web server will now run on your chosen port.",
                      RegistryRoot::kLocalMachine);
  startserver();
}

Task<void> WebServer::save_access() {
  const Occupied occupied(panel_);
  const bool stored = co_await access_.store();
  if (!stored) co_return;
  stop();
  startserver();
  if (!web_.Listening()) co_return;  // the status line says why
  co_await tell_saved("The web server follows it from now on.", RegistryRoot::kCurrentUser);
}

Task<void> WebServer::save_https() {
  const Occupied occupied(panel_);
  std::string port = stored_port();
  const bool stored = co_await https_.store(std::move(port));
  if (!stored) co_return;
  stop();
  startserver();
  if (!web_.Listening()) co_return;  // the status line says why
  const std::string trouble = web_.HttpsState().trouble;
  if (!trouble.empty()) {
    co_await tell_error(dialogs_, "The setting has been saved. " + trouble);
    co_return;
  }
  co_await tell_saved("The web server follows it from now on.", RegistryRoot::kCurrentUser);
}

Task<void> WebServer::make_certificate() {
  const Occupied occupied(panel_);
  co_await https_.make();
}

Task<void> WebServer::tell_saved(std::string what_follows, RegistryRoot root) {
  std::string text = "Setting saved. " + what_follows;
  if (!module1_.is_writable(root))
    text +=
        "\n\nUntil the settings can be written to the disk it is kept in memory only: the home "
        "page "
        "says why.";
  co_await tell(dialogs_, std::move(text), "Saved");
}

Task<void> WebServer::set_password() {
  const Occupied occupied(panel_);
  const std::string user = co_await typed(
      panel_.txt_webuser, "Please enter a Username for the Web Server, you will use this to login",
      "Username", false);
  if (user.empty()) co_return;
  const std::string password = co_await typed(
      panel_.txt_webpassword,
      "Please enter a Password for the Web Server, you will use this to login", "Password", true);
  if (password.empty()) co_return;
  const std::string again =
      co_await typed(panel_.txt_webagain, "Please RE-enter your Password for the Web Server",
                     "Re enter Password", true);
  if (again.empty()) co_return;
  if (password != again) {
    co_await tell_error(dialogs_, "Sorry, your password did not match");
    co_return;
  }
  if ((user + password).find(kUnknownCharacter) != std::string::npos) {
    co_await tell_error(
        dialogs_,
        "Sorry, user names and passwords can only have the letters of Western European languages. "
        "Your password has not been changed.");
    co_return;
  }
  co_await module1_.pause(1);
  const std::string line = user + ":" + password + "\r\n";
  // Under a name that is never served; the old password holds until the new one is there.
  const std::filesystem::path unfinished = folder_ / ".htaccess.new";
  if (!files_.write_secret(unfinished, line) || !files_.rename(unfinished, credentials_)) {
    co_await tell_error(dialogs_,
                        "Sorry, the password could not be written. Please check the disk.");
    co_return;
  }
  for (TextBox* box : {&panel_.txt_webuser, &panel_.txt_webpassword, &panel_.txt_webagain})
    box->text = std::string();
  show_state();
  co_await tell(dialogs_, "Your password has been set", "Homewarden", MessageIcon::kNone);
}

Task<void> WebServer::clear_password() {
  const Occupied occupied(panel_);
  const bool sure = co_await ask(
      dialogs_, "Do you really want to remove the password protection from the Web Server?",
      "Sure?");
  if (!sure) co_return;
  // A second one in other letter case would protect the server again.
  while (files_.exists(credentials_) && files_.remove(credentials_)) {
  }
  co_await module1_.pause(1);
  show_state();
  if (files_.exists(credentials_))
    status_.panel2 =
        "The password file html/htaccess.txt could not be removed: the password is still asked for";
  co_await tell(dialogs_, "Your password has been cleared", "Cleared");
}

// What stands in the box, or what a question brings while nothing does.
Task<std::string> WebServer::typed(TextBox& box, const char* prompt, const char* title,
                                   bool secret) {
  if (!box.text.get().empty()) co_return box.text.get();
  std::string answer = co_await type_in(prompt, title, secret);
  co_return answer;
}

// "" for an empty answer and for Cancel.
Task<std::string> WebServer::type_in(const char* prompt, const char* title, bool secret) {
  Question question{prompt, title, "", secret};
  const auto answer = co_await dialogs_.input_box(std::move(question));
  co_return answer.value_or("");
}

}  // namespace homewarden
