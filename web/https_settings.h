#pragma once

#include <filesystem>
#include <string>

#include "base/task.h"
#include "core/notices.h"
#include "core/settings.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/web_server_control.h"
#include "ui/settings_panels.h"

namespace homewarden {

// How the web server is reached over TLS, as it is stored and as the panel shows it. What is wrong
// with it is a notice for as long as it is.
class HttpsSettings {
 public:
  // `documents`: the folder whose files everybody is sent. Certificates that are made here lie in
  // the folder `https` beside it.
  HttpsSettings(WebPanel& panel, Settings& settings, Dialogs& dialogs, Files& files,
                Notices& notices, WebServerControl& web, std::filesystem::path documents);

  // What is stored; a port or a choice that is none is as if there were none.
  WebHttps stored() const;
  // Shows what is stored.
  void show();
  // Shows and tells how it is now.
  void show_state();
  // The address of the pages for who reaches this machine under `host`, "https://house:8443"; ""
  // while they are not answered over TLS. A certificate that does not name the host but others is
  // reached by the first of these.
  std::string address(const std::string& host) const;

  // Stores what the panel shows. False, and a message, when it cannot be used: nothing is stored.
  // `plain_port` is that of the pages without TLS.
  Task<bool> store(std::string plain_port);
  // Makes a certificate in the folder, in place of the one that was made there before, and names it
  // on the panel. A message tells how it went.
  Task<void> make();

 private:
  std::string fault(const WebHttps& https, const std::string& plain_port) const;
  WebHttps typed() const;
  bool is_served(const std::filesystem::path& file) const;
  bool is_foreign(const std::filesystem::path& file) const;

  WebPanel& panel_;
  Settings& settings_;
  Dialogs& dialogs_;
  Files& files_;
  Notices& notices_;
  WebServerControl& web_;
  const std::filesystem::path documents_;
  const std::filesystem::path certificate_;  // those that are made here
  const std::filesystem::path key_;
};

}  // namespace homewarden
