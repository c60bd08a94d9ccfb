#pragma once

#include <filesystem>
#include <string>

#include "base/operations.h"
#include "base/task.h"
#include "core/module1.h"
#include "core/notices.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/web_server_control.h"
#include "ui/controls.h"
#include "ui/frm_server.h"
#include "ui/settings_panels.h"
#include "web/access_settings.h"
#include "web/https_settings.h"

namespace homewarden {

// The web server and its panel: its port, its password, starting and stopping.
class WebServer {
 public:
  WebServer(WebPanel& panel, StatusBar& status, FrmServer& form, Operations& operations,
            Module1& module1, Settings& settings, Dialogs& dialogs, Files& files, Notices& notices,
            WebServerControl& web, std::filesystem::path document_folder);

  // Listens on the stored port, or on 8080, which is stored then. Asks for a log-in when anything
  // at all stands under the name of the password file. A server that does not run or lets nobody in
  // is told in the status line.
  void startserver();
  // The same on the stored port alone: for as long as it may be another program of this house that
  // has it. Nothing is stored.
  void start_on_stored_port();
  // Whether it was started and not stopped since, be it that it listens or cannot.
  bool is_wanted() const;
  // Tells it once more, for when another message has taken its place. Nothing when all is well.
  void tell_failure();
  // Unloads the form; requests that wait are given up. Nothing happens when it is not loaded.
  void stop();

 private:
  class Occupied;

  bool listen(const std::string& port);
  std::string stored_port();
  void store_port(const std::string& port);
  void show_state();
  Task<void> save_port();
  Task<void> save_access();
  Task<void> save_https();
  Task<void> make_certificate();
  std::string address_of_pages(const std::string& host, const std::string& port) const;
  Task<void> tell_saved(std::string what_follows, RegistryRoot root);
  Task<void> set_password();
  Task<void> clear_password();
  Task<std::string> typed(TextBox& box, const char* prompt, const char* title, bool secret);
  Task<std::string> type_in(const char* prompt, const char* title, bool secret);
  bool lets_nobody_in() const;

  WebPanel& panel_;
  StatusBar& status_;
  FrmServer& form_;
  Module1& module1_;
  AccessSettings access_;
  HttpsSettings https_;
  Dialogs& dialogs_;
  Files& files_;
  WebServerControl& web_;
  std::filesystem::path folder_;
  std::filesystem::path credentials_;
  bool protected_ = false;  // since the last start
  std::string failure_;     // of the last start that failed
};

}  // namespace homewarden
