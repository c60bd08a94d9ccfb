// The three boxes on the home page: running as a service, starting at logon, starting later.

#include "tests/stories/event_house.h"

namespace homewarden::testing {
namespace {

class BoxHouse : public EventHouse {
 public:
  BoxHouse() { settings.remove("data", "run1"); }

  CheckBox& service() { return form().chk_service; }
  CheckBox& logon() { return form().chk_lww; }
  std::string stored(const std::string& key) { return settings.read("data", key, "none"); }
  std::string notice() { return form().lab_notice.caption; }
  void tick(CheckBox& box, bool ticked = true) {
    box.checked = ticked;
    loop.run_pending();
  }
};

TEST(OptionBoxStory, ServiceModeIsInstalledAskedAboutAndRemoved) {
  BoxHouse house;
  house.open_connected();
  house.tick(house.service());
  EXPECT_EQ(house.services.calls, Texts{"install"}) << "it is started when the window closes";
  house.dialogs.says_yes = false;
  house.tick(house.service(), false);
  EXPECT_EQ(house.dialogs.messages,
            Texts{"Stop service?: Turning this off will disable the Web Server and also mean that "
                  "your events WONT run when you close the program. With the service enabled, your "
                  "events will still run when you close this program and your Web Server will also "
                  "work.\r\n\r\nDo you really want to stop the service?"});
  EXPECT_TRUE(house.service().checked);
  EXPECT_EQ(house.services.calls.size(), 1u) << "No ran the branch of a ticked box";
  EXPECT_EQ(house.stored("service"), "1");
  house.dialogs.says_yes = true;
  house.tick(house.service(), false);
  EXPECT_EQ(house.services.calls, Texts({"install", "remove"}));
  EXPECT_EQ(house.stored("service"), "0");
}

// What else may come while the question is open: a click back, the first full minute, the end.
TEST(OptionBoxStory, AnOpenQuestionIsTakenBackByAClickAndCountsAsNoAtTheEnd) {
  BoxHouse house;
  house.settings.write("data", "service", "1");
  house.open_connected_at(12, 0, 30);
  house.dialogs.is_away = true;
  house.tick(house.service(), false);
  house.tick(house.service());
  EXPECT_EQ(house.dialogs.open_boxes, 0) << "Yes to the old question would remove what is ticked";
  house.tick(house.service(), false);
  house.run_until(12, 2);
  EXPECT_FALSE(house.service().checked) << "the first run answered for the person";
  house.services.calls.clear();
  house.close(5s);
  EXPECT_EQ(house.services.calls, Texts{"start Wardengine"}) << "nobody said that it shall be off";
  EXPECT_EQ(house.stored("service"), "1");
}

TEST(OptionBoxStory, LogonAndDelayAreSwitchedAndWhatFailsIsToldAsLongAsItDoes) {
  BoxHouse house;
  house.open_connected();
  EXPECT_TRUE(house.logon().checked);
  EXPECT_EQ(house.logon_entry.content, "filled") << "on by default, and nothing starts";
  house.tick(house.logon(), false);
  EXPECT_EQ(house.status(), "Homewarden will no longer load with Windows");
  EXPECT_EQ(house.logon_entry.content + house.stored("lww"), "empty0");
  house.logon_entry.writable = false;
  house.tick(house.logon());
  EXPECT_THAT(house.notice(), HasSubstr("will not start"));
  EXPECT_EQ(house.status(), house.notice()) << "the line says the contrary of what is so";
  house.tick(house.logon(), false);
  EXPECT_THAT(house.notice(), HasSubstr("goes on starting"));
  house.logon_entry.writable = true;
  house.tick(house.logon());
  EXPECT_EQ(house.status(), "Homewarden will now load with Windows");
  EXPECT_EQ(house.logon_entry.content + house.stored("lww"), "filled1");
  house.installer.failure = "No.";
  house.tick(house.service());
  EXPECT_EQ(house.notice(), "No.");
  house.installer.failure.clear();
  house.tick(house.service(), false);
  EXPECT_EQ(house.notice(), "");

  for (const bool delayed : {true, false}) {
    house.tick(house.form().chk_startup, delayed);
    EXPECT_EQ(house.registry.read(RegistryRoot::kLocalMachine, kDelayKey, "Homewardendelay")->data,
              delayed ? "delayed" : "notdelayed");
    EXPECT_EQ(house.dialogs.messages.back(),
              "Service Information: Please remember that if you are using the Run as Service "
              "option, that the service will also wait 20 seonds before initializing");
    EXPECT_THAT(house.dialogs.messages, SizeIs(2)) << "the first one asked to stop the service";
  }
}

TEST(OptionBoxStory, ClicksBeforeTheDelayedStepDoNothingAndNothingIsShownThatIsNotSo) {
  BoxHouse house;
  house.settings.write("data", "service", "1");
  house.logon_entry.switched_off = true;
  house.open(0s);
  EXPECT_EQ(house.services.calls, Texts{"install"}) << "settings of another machine";
  house.tick(house.service(), false);
  house.tick(house.logon());
  house.tick(house.form().chk_startup);
  house.loop.advance(500ms);
  EXPECT_THAT(house.dialogs.messages, IsEmpty());
  EXPECT_THAT(house.services.calls, SizeIs(1));
  EXPECT_EQ(house.logon_entry.content, "missing") << "what somebody switched off came back";
  EXPECT_TRUE(house.service().checked);
  EXPECT_FALSE(house.logon().checked);
  EXPECT_FALSE(house.form().chk_startup.checked);

  BoxHouse demo;
  demo.settings.write("data", "service", "1");
  demo.installer.available = demo.logon_entry.available = false;
  demo.open_connected_at(12, 0, 30);
  demo.run_until(12, 2);
  EXPECT_FALSE(demo.service().visible || demo.logon().visible);
  EXPECT_EQ(demo.stored("run1"), "none") << "the first run was used up";
  demo.close(1ms);
  EXPECT_TRUE(demo.loop.has_quit()) << "it waits for a service that cannot be";
  EXPECT_EQ(demo.logon_entry.content, "missing");
}

TEST(OptionBoxStory, AServiceThatNeverCameIsToldOnce) {
  const std::string key = kMachineKey + "\\Service";
  const auto asked = [&key](BoxHouse& house) {
    return house.registry.read(RegistryRoot::kLocalMachine, key, "asked")->data;
  };
  BoxHouse house;
  house.settings.write("data", "service", "1");
  house.open_connected_at(12, 0, 30);
  house.close(5s);
  const std::string call = asked(house);
  EXPECT_NE(call, "");
  for (const bool in_time : {true, false}) {
    BoxHouse next;
    next.settings.write("data", "service", "1");
    next.registry.write(RegistryRoot::kLocalMachine, key, "asked", {RegistryType::kString, call});
    next.open_connected_at(12, in_time ? 1 : 3, 0);
    EXPECT_EQ(next.notice().find("did not start") != std::string::npos, !in_time);
    EXPECT_EQ(asked(next), "") << "told for good";
  }
}

TEST(OptionBoxStory, TheFirstFullMinuteEverTicksServiceModeOnce) {
  BoxHouse house;
  house.open_connected_at(12, 0, 30);
  house.form().ignoreclicks = true;
  house.run_until(12, 0, 59);
  EXPECT_FALSE(house.service().checked);
  house.run_until(12, 1);
  EXPECT_TRUE(house.service().checked);
  EXPECT_EQ(house.services.calls, Texts{"install"}) << "lost with the clicks that are ignored";
  EXPECT_EQ(house.stored("service") + house.stored("run1"), "1True");
  house.loop.advance(4s);
  EXPECT_THAT(house.status(), HasSubstr("From now on a service runs")) << "nobody was told";
  house.form().ignoreclicks = false;
  house.tick(house.service(), false);
  house.run_until(12, 3);
  EXPECT_FALSE(house.service().checked) << "it came back by itself";

  BoxHouse unread;  // settings that cannot be read say nothing of what the person wants
  unread.registry.is_read = false;
  unread.services.state = ServiceState::kRunning;
  unread.open(3min);
  EXPECT_EQ(unread.logon_entry.content, "missing");
  unread.close(5s);
  EXPECT_EQ(unread.services.calls, Texts({"stop Wardengine", "start Wardengine"}));
}

}  // namespace
}  // namespace homewarden::testing
