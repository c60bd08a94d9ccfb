#pragma once

#include "ui/controls.h"

namespace homewarden {

// Web server settings.
struct WebPanel {
  Frame Frame4{false};
  Label Label48{"The web server is currently set to run on port"};
  Label lab_webstate;  // whether and where the server runs, whether it asks for a password
  TextBox txt_webport;
  Button Command7{"Save"};
  Button Command8{"Set Password"};
  Button Command9{"Clear Password"};
  Button Command10{"Show URL"};
  // Further host names, foreign origins that are allowed, trusted proxies: each a list separated by
  // blanks or commas.
  TextBox txt_webhosts;
  TextBox txt_weborigins;
  TextBox txt_webproxies;
  CheckBox chk_webshared{"Without a password, 100.64.0.0/10 is at home too"};
  Button cmd_webaccess{"Save Access"};
};

struct ProfilePanel {
  ProfilePanel();

  Frame Frame5{false};
  ComboBox com_profile;
};

// Speech recognition reminders.
struct SpeechPanel {
  Frame Frame3{false};
};

}  // namespace homewarden
