// Requests that switch, requests that wait, and the panel of the web server.

#include "tests/web/web_house.h"

namespace homewarden::testing {
namespace {

TEST(WebStory, ASwitchAnswersWithTheRoomInItsNewState) {
  WebHouse house;
  house.loop.set_wall_clock(2023, 6, 21, 14, 5, 7);
  house.interface_control.mains_time = 800ms;
  house.line();
  house.web.request("index.html", "A~3~KitchenTableLamp~turnon~Kitchen");
  house.loop.advance(1s);
  EXPECT_THAT(house.web.answers, IsEmpty()) << "answered before the lamp was on";
  house.loop.advance(2s);
  ASSERT_THAT(house.web.answers, SizeIs(1));
  EXPECT_THAT(house.web.answers[0], HasSubstr("A~3~KitchenTableLamp~turnoff~Kitchen"));
  EXPECT_EQ(house.machine("KitchenTableLamp"), "True");
  EXPECT_EQ(house.machine("dimKitchenTableLamp"), "100");
  EXPECT_EQ(house.status(),
            "Internet Turned ON device with housecode A3 at 14:05:09 (from 192.168.1.7)");
  EXPECT_EQ(house.machine("lastdev"), "(none)");

  house.web.request("wmcindex.html", "A~3~KitchenTableLamp~turnoff~Kitchen~4");
  house.loop.advance(3s);
  EXPECT_THAT(house.web.answers[1], HasSubstr("A~3~KitchenTableLamp~turnon~Kitchen~0"));
  EXPECT_EQ(house.machine("KitchenTableLamp"), "False");
  EXPECT_EQ(house.machine("lastdev"), "5");
  EXPECT_EQ(house.status(), "Turned OFF device with housecode A3 at 14:05:10 (from 192.168.1.7)")
      << "the ten-foot page says nothing more";
  EXPECT_THAT(house.line(), ElementsAre("Wed 14:05:07 A3 2", "Wed 14:05:10 A3 3"));
}

// An owner sees "On" for a lamp that no command has reached.
TEST(WebStory, WhatCouldNotBeSentIsSaidAndSentAgainAsItWas) {
  WebHouse house;
  FrmMain& form = house.form();
  house.interface_control.fails = true;
  house.click_node("Kitchen");
  house.slide(1, 40, 5s);
  house.line();
  const std::string again = "A~3~KitchenTableLamp~turnon~Kitchen~again";
  EXPECT_THAT(house.get("index.html", "loadroomKitchen"),
              HasSubstr("</b><i><a target=\"_top\" href=\"index.html?" + again +
                        "\">Not sent. Try again</a></i></font>"));
  EXPECT_THAT(house.get("wmcindex.html", "loadroomKitchen"),
              HasSubstr("wmcindex.html?A~3~KitchenTableLamp~turnon~Kitchen~0~again\""));

  house.interface_control.fails = false;
  house.web.request("wmcindex.html", "A~3~KitchenTableLamp~turnon~Kitchen~0~again");
  house.loop.advance(5s);
  EXPECT_THAT(house.line(),
              ElementsAre(HasSubstr("A3 2"), HasSubstr("A3 5"), HasSubstr("A3 4 60")));
  EXPECT_THAT(house.web.answers.back(), Not(HasSubstr("again")));
  EXPECT_FALSE(form.lab_notsent[1].visible);
  house.web.request("index.html", again);  // the page is older: what its link says is done
  house.loop.advance(5s);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("A3 2"), HasSubstr("A3 5")));

  house.slide(1, 40);
  house.loop.advance(5s);
  house.interface_control.fails = true;
  house.slide(1, 100);
  house.loop.advance(5s);
  house.interface_control.fails = false;
  house.line();
  house.web.request("index.html", again);
  house.loop.advance(5s);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("A3 2"), HasSubstr("A3 5")))
      << "a mere On leaves the lamp at 40";
}

// One phone's press must not make another phone's page wait.
TEST(WebStory, PagesAreAnsweredWhileOneSwitchAfterTheOtherIsOnTheLine) {
  WebHouse house;
  house.interface_control.mains_time = 800ms;
  house.line();
  house.web.request("index.html", "A~3~KitchenTableLamp~turnon~Kitchen");
  const int second = house.web.request("index.html", "B~12~KitchenKettle~turnon~Kitchen");
  const int gone = house.web.request("index.html", "A~4~LivingRoomTableLamp~turnon~LivingRoom");
  house.web.gone = {gone};
  EXPECT_THAT(house.get("index.html", "loadroomLivingRoom"), HasSubstr("Living Room:"));
  EXPECT_EQ(house.get("bulbon.gif"), "file");
  EXPECT_TRUE(house.server_form().busy) << "a page has ended the switch";
  house.loop.advance(3s);
  ASSERT_THAT(house.web.answers, SizeIs(3));
  EXPECT_THAT(house.web.answers[2], HasSubstr("A~3~KitchenTableLamp~turnoff~Kitchen"));
  house.loop.advance(7s);
  EXPECT_THAT(house.web.answers[3], StartsWith(std::to_string(second) + " "));
  EXPECT_THAT(house.web.answers[3], HasSubstr("B~12~KitchenKettle~turnoff~Kitchen"));
  EXPECT_FALSE(house.server_form().busy);
}

// Whoever pressed may leave while a window press has the line.
TEST(WebStory, ASwitchForNobodyIsNotSent) {
  WebHouse house;
  house.interface_control.mains_time = 800ms;
  house.click_node("Living Room");
  house.line();
  house.form().device[0].click();
  const int id = house.web.request("index.html", "A~3~KitchenTableLamp~turnon~Kitchen");
  house.web.gone = {id};
  house.loop.advance(8s);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("A4 2")));
  EXPECT_THAT(house.web.answers, SizeIs(1)) << "its place is taken for ever";
}

// One and the same from another page of the device; "on" again, or of another device, is not.
TEST(WebStory, TheServerLearnsWhatARequestSwitches) {
  WebHouse house;
  const auto asked = [&house](const char* page, const char* query) {
    const auto found = house.web.what_switches(page, query);
    return found ? found->device + " " + found->state + " " + found->shows : "nothing";
  };
  EXPECT_EQ(asked("index.html", "A~3~KitchenLamp~turnon~Kit%2541"),
            "a3~KitchenLamp on loadroomKit%2541");
  EXPECT_EQ(asked("wmcindex.html", "a~03~KitchenLamp~TurnOff~Kitchen~2"),
            "a3~KitchenLamp off loadroomKitchen");
  EXPECT_EQ(asked("index.html", "A~3~KitchenLamp~turnon~Kitchen~again"),
            "a3~KitchenLamp on again loadroomKitchen");
  EXPECT_EQ(asked("index.html", "turnon"), "  ") << "judged like a switch, but none";
  for (const char* query : {"", "loadroomturnon"}) EXPECT_EQ(asked("index.html", query), "nothing");
}

TEST(WebStory, ARefusalIsAPageThatOffersThePressAgain) {
  WebHouse house;
  const std::string press = "/index.html?A~3~Lamp\"><b>~turnon~Kitchen";
  const std::string page = house.web.refusal_page({429, "Too <many> presses.", press});
  EXPECT_THAT(page, HasSubstr("Too &lt;many&gt; presses."));
  EXPECT_THAT(page,
              HasSubstr("href=\"/index.html?A~3~Lamp&quot;&gt;&lt;b&gt;~turnon~Kitchen\"><font>"
                        "Press again<"));
  EXPECT_THAT(house.web.refusal_page({403, "No.", "", "/wmcindex.html"}),
              HasSubstr("homewarden-tv"));
  for (const char* elsewhere : {"", "//evil.example/", "/\\evil.example", "/\t/evil.example",
                                "javascript:x", "http://evil.example/"})
    EXPECT_THAT(house.web.refusal_page({403, "No.", elsewhere}), Not(HasSubstr("again")));
}

TEST(WebStory, WhatCannotBeSplitOrIsNotOursSwitchesAndWritesNothing) {
  WebHouse house;
  house.line();
  EXPECT_THAT(house.get("index.html", "turnon"), HasSubstr("Please Select A Room"));
  EXPECT_THAT(house.get("wmcindex.html", "A~3~K~turnoff~Kitchen"), HasSubstr("Please Select"));
  EXPECT_THAT(house.line(), IsEmpty());
  house.interface_control.fails = true;  // as it does with such an address
  house.web.request("index.html", std::string(3000, 'A') + "~3~K~turnon~Kitchen");
  house.loop.advance(3s);
  EXPECT_THAT(house.status(), ::testing::MatchesRegex("Could not .* " + std::string(20, 'A') +
                                                      "[.]{3}3 at [0-9:]* \\(from 192.168.1.7\\)"));
  house.interface_control.fails = false;
  house.web.request("index.html", "A~3~port~turnon~Kitchen");
  house.loop.advance(3s);
  EXPECT_EQ(house.machine("port"), "2") << "a query wrote another value of the machine";
}

TEST(WebServerPanel, StartsOnItsPortOrOn8080AndSaysSo) {
  WebHouse house;
  EXPECT_THAT(house.web.starts, ElementsAre("80 /house/html 0"));
  EXPECT_EQ(house.form().lab_webstate.caption.get(),
            "The web server is running on port 80 without a password, for your own network only.");

  house.web.addresses = {"192.168.1.20"};
  house.form().Frame4.visible = true;
  EXPECT_THAT(house.form().lab_webstate.caption.get(),
              EndsWith("open http://192.168.1.20/index.html"));

  house.form().txt_webport.text = "8";
  house.click(house.form().Command7);
  EXPECT_EQ(house.dialogs.messages.back(),
            "Error: Please enter a valid port number of at least 80 in to the port text entry box");
  house.settings.write("data", "webhosts", "house.example, other");
  house.form().txt_webport.text = "99";
  house.web.taken_ports = {"99"};
  house.click(house.form().Command7);
  EXPECT_EQ(house.dialogs.messages.back(),
            "Saved: Setting saved. The web server will now run on your chosen port.");
  EXPECT_EQ(house.form().Label48.caption.get(),
            "The web server is currently set to run on port 8080");
  EXPECT_EQ(house.machine("webport"), "8080");
  EXPECT_THAT(house.web.access.hosts, ElementsAre("house.example", "other"));
  EXPECT_THAT(house.form().lab_webstate.caption.get(), HasSubstr("running on port 8080"));
  EXPECT_THAT(house.form().lab_webstate.caption.get(), HasSubstr("http://192.168.1.20:8080/"));
  EXPECT_EQ(house.form().lab_webaddress.caption.get(), "http://192.168.1.20:8080/index.html");
  house.web.taken_ports = {"98", "8080"};
  house.form().txt_webport.text = "98";
  house.click(house.form().Command7);
  EXPECT_THAT(house.form().lab_webstate.caption.get(), HasSubstr("is not running"));
  EXPECT_FALSE(house.form().lab_webaddress.visible) << "a link to nothing";
  EXPECT_EQ(house.status(), "The web server could not be started on port 98 nor on port 8080");
  house.click(house.form().Command10);
  EXPECT_THAT(house.desktop.opened, ElementsAre(EndsWith(".example/cgi-bin/urlip.cgi?8080")));
  house.desktop.browser_starts = false;
  house.click(house.form().Command10);
  EXPECT_EQ(house.dialogs.messages.back(), "URL FAILED: Web Page not Opened");
  house.desktop.has_browser = false;
  house.click(house.form().Command10);
  EXPECT_EQ(house.dialogs.messages.back(), "BROWSER NOT FOUND: Could not find associated browser!");
}

// A typing error shuts the house's users out, or lets others in.
TEST(WebServerPanel, WhoIsTrustedIsShownAndTakesEffectAtOnce) {
  WebHouse house;
  FrmMain& form = house.form();
  house.settings.write("data", "webhosts", "house.example");
  house.web.access_faults = {"no/name\n", std::string(90, 'x')};
  form.Frame4.visible = true;
  EXPECT_EQ(form.txt_webhosts.text.get(), "house.example");
  EXPECT_THAT(form.lab_webstate.caption.get(),
              EndsWith("left out: no/name , " + std::string(60, 'x') + "..."));
  form.txt_weborigins.text = "http://dash.lan:3000";
  form.txt_webproxies.text = "127.0.0.1;\n10.0.0.0/8";
  form.chk_webshared.checked = true;
  house.click(form.cmd_webaccess);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("not understood: no/name ,"));
  house.web.access_faults.resize(2000, "y");
  house.click(form.cmd_webaccess);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr(", y, y, y and 1995 more. A name"));
  EXPECT_EQ(house.settings.read("data", "webproxies", "(none)"), "(none)");
  EXPECT_THAT(house.web.starts, SizeIs(1));

  house.web.access_faults.clear();
  house.click(form.cmd_webaccess);
  EXPECT_THAT(house.web.starts, SizeIs(2));
  const WebAccess& access = house.web.access;
  EXPECT_THAT(access.hosts, ElementsAre("house.example"));
  EXPECT_THAT(access.origins, ElementsAre("http://dash.lan:3000"));
  EXPECT_THAT(access.proxies, ElementsAre("127.0.0.1", "10.0.0.0/8"));
  EXPECT_TRUE(access.shared_addresses);
  EXPECT_THAT(house.dialogs.messages.back(), EndsWith("follows it from now on."));

  house.registry.trouble = StoreTrouble::kReadOnly;
  house.registry.may_change = [] { return false; };
  form.txt_webhosts.text = "other.example";
  house.click(form.cmd_webaccess);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("kept in memory only"));
}

TEST(WebServerPanel, AStartThatFailedStaysInTheStatusLineWhenTheInterfaceIsFound) {
  House house;
  house.web.taken_ports = {"80", "8080"};
  FrmMain& form = house.open_connected();
  EXPECT_EQ(house.status(), "The web server could not be started on port 80 nor on port 8080");
  EXPECT_EQ(form.Statusbar.panel3.get(), "STATUS: Ready");
  EXPECT_EQ(form.txt_webport.text.get(), "8080");
  house.click(form.Command7);
  EXPECT_EQ(house.status(), "The web server could not be started on port 8080");
}

TEST(WebServerPanel, ClosingTheProgramStopsTheServer) {
  WebHouse house;
  house.close(5s);
  EXPECT_FALSE(house.web.Listening());
  EXPECT_FALSE(house.server_form().loaded);
}

TEST(WebServerPanel, PasswordsAreSetForTheNextStartAndCleared) {
  WebHouse house;
  const auto credentials = House::file("html/htaccess.txt");
  for (const auto& typed : {std::deque<std::string>{""}, {"me", ""}, {"me", "secret", ""}}) {
    house.dialogs.typed = typed;
    house.click(house.form().Command8, 3s);
  }
  house.dialogs.typed = {"me", "secret", "Secret"};
  house.click(house.form().Command8, 3s);
  EXPECT_EQ(house.dialogs.messages.back(), "Error: Sorry, your password did not match");
  house.dialogs.typed = {"me", "\x1A", "\x1A"};
  house.click(house.form().Command8, 3s);
  EXPECT_THAT(house.dialogs.messages.back(), HasSubstr("Western European"))
      << "any letter of that kind would open";
  EXPECT_FALSE(house.files.exists(credentials));

  house.form().txt_webuser.text = "me";
  house.form().txt_webpassword.text = "a:b";
  house.form().txt_webagain.text = "a";
  EXPECT_TRUE(house.form().lab_webmismatch.visible);
  house.form().txt_webagain.text = "a:b";
  EXPECT_FALSE(house.form().lab_webmismatch.visible);
  house.dialogs.typed.clear();
  house.click(house.form().Command8, 3s);
  EXPECT_EQ(house.form().txt_webpassword.text.get(), "") << "it stays to be read";
  EXPECT_EQ(house.dialogs.messages.back(), "Homewarden: Your password has been set");
  EXPECT_EQ(house.files.contents[credentials], "me:a:b\r\n");
  EXPECT_FALSE(house.files.secrets.empty()) << "everybody may read the password";
  EXPECT_THAT(house.form().lab_webstate.caption.get(), HasSubstr("takes effect at its next start"));
  house.form().txt_webport.text = "81";
  house.click(house.form().Command7);
  EXPECT_EQ(house.web.starts.back(), "81 /house/html 1");
  EXPECT_THAT(house.form().lab_webstate.caption.get(), HasSubstr("asks for a password"));

  house.dialogs.says_yes = false;
  house.click(house.form().Command9, 3s);
  EXPECT_TRUE(house.files.exists(credentials));
  house.dialogs.says_yes = true;
  house.files.stop_at(1);
  house.click(house.form().Command9, 3s);
  EXPECT_THAT(house.status(), HasSubstr("could not be removed"));
  house.files.no_stop();
  for (int twice = 0; twice < 2; ++twice) {
    house.click(house.form().Command9, 3s);
    EXPECT_EQ(house.dialogs.messages.back(), "Cleared: Your password has been cleared");
  }
  EXPECT_FALSE(house.files.exists(credentials));
}

// Whatever stands under the name protects the house, even when nobody can be let in any more.
TEST(WebServerPanel, APasswordFileThatCannotBeUsedLetsNobodyInAndSaysSo) {
  WebHouse house;
  house.files.unreadable = {House::file("html/HTACCESS.TXT")};
  house.content("html/HTACCESS.TXT") = "";
  house.web.has_logins = false;
  house.click(house.form().Command7);
  EXPECT_EQ(house.web.starts.back(), "80 /house/html 1");
  EXPECT_THAT(house.form().lab_webstate.caption.get(), HasSubstr("lets nobody in"));
  EXPECT_THAT(house.status(), HasSubstr("htaccess.txt cannot be read"));
}

TEST(WebServerPanel, ASecondClickDoesNotMixWithTheFirst) {
  WebHouse house;
  house.dialogs.typed = {"me", "secret", "secret", "you", "other", "other"};
  house.form().Command8.click();
  house.form().Command8.click();
  house.form().Command7.click();
  EXPECT_FALSE(house.form().Command9.enabled) << "nothing shows that it has to wait";
  house.loop.advance(3s);
  EXPECT_EQ(house.content("html/htaccess.txt"), "me:secret\r\n");
  EXPECT_THAT(house.dialogs.typed, SizeIs(3));
  EXPECT_THAT(house.web.starts, SizeIs(1));
  EXPECT_TRUE(house.form().Command8.enabled);
}

}  // namespace
}  // namespace homewarden::testing
