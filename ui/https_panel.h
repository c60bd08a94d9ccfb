#pragma once

#include "ui/controls.h"

namespace homewarden {

// How the pages are answered over TLS.
struct HttpsPanel {
  HttpsPanel();

  Label lab_webhttps;  // whether it runs, or why not
  CheckBox chk_webhttps{"Answer over https"};
  TextBox txt_webhttpsport;
  TextBox txt_webcert;  // whole paths
  TextBox txt_webkey;
  Button cmd_makecert{"Make a certificate"};
  Label lab_webcert;      // what the certificate says; hidden while there is none
  ComboBox com_webplain;  // kPlainAnswered, kPlainAtHome or kPlainSentOn
  CheckBox chk_webhsts{"Keep browsers on https for a year"};
  CheckBox chk_webplainpassword{"Passwords in the clear from outside"};
  Button cmd_webhttps{"Save HTTPS"};
};

// What becomes of requests without TLS.
inline constexpr const char* kPlainAnswered = "Answered";
inline constexpr const char* kPlainAtHome = "Answered at home";
inline constexpr const char* kPlainSentOn = "Sent to https";

}  // namespace homewarden
