#pragma once

#include <string>
#include <vector>

#include "ui/controls.h"
#include "ui/event_face.h"
#include "ui/https_panel.h"
#include "ui/token_panel.h"

namespace homewarden {

// Web server settings.
struct WebPanel : TokenPanel, HttpsPanel {
  WebPanel();

  Frame Frame4{false};
  Label Label48{"The web server is currently set to run on port"};
  Label lab_webaddress;  // the pages' address; a click opens it; hidden while nothing answers there
  bool is_in_network = false;  // whether other devices reach that address; set before it
  Button cmd_copyaddress{"Copy address"};
  // Set Password takes these; it asks for what stands in none of them.
  TextBox txt_webuser;
  TextBox txt_webpassword;
  TextBox txt_webagain;
  Label lab_webmismatch{"Sorry, your password did not match"};  // while the two differ
  Label lab_weblock;                                            // whether a password is set
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

// What a profile holds.
struct ProfileFace {
  std::string name;
  std::string summary;  // "3 events: Table Lamp, Radio"
  bool active = false;
  std::vector<EventFace> events;  // the next ones, by their next run
  bool operator==(const ProfileFace&) const = default;
};

struct ProfilePanel {
  ProfilePanel();

  Frame Frame5{false};
  ComboBox com_profile;

  // What each holds, and the one that is looked at before it is switched to.
  Property<std::vector<ProfileFace>> profilefaces;
  Property<int> profile_seen{-1};      // -1: none
  Label lab_profileactive;             // "Standard is active"
  Label lab_profileseen;               // "Holiday"
  Label lab_profilenote;               // what becomes of the events that there are
  Button cmd_switchprofile;            // "Switch to Holiday"
  Property<bool> profile_open{false};  // asked for, where there is no room for both
  Timer profileclock{0, true, Timer::Start::kWholeMinute};  // while the panel shows
};

// Speech recognition reminders, and what was heard.
struct SpeechPanel {
  SpeechPanel() {
    for (Button* button : {&cmd_listen, &cmd_speechproperties, &cmd_commands})
      button->visible = false;
  }

  Frame Frame3{false};
  // Shown once a character is loaded.
  Button cmd_listen{"Listen"};  // a second click gives up
  Button cmd_speechproperties{"Speech properties..."};
  Button cmd_commands{"Choose a command..."};  // the face shows the command list there
  Button cmd_speechpage{"How to speak..."};    // leads to the reminders; always shown
  Label lab_voicestate;                        // "Ready to listen", "Listening", "No voice"
  Property<bool> listening{false};
  Property<int> listen_level{0};  // percent of what is too loud
  Label lab_heard;                // what was heard last and what came of it; "" before
  Label lab_trouble;              // why there is no character; "" when there is one
};

}  // namespace homewarden
