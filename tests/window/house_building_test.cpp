// A person builds their own house from an empty window.

#include <gmock/gmock.h>

#include <QListWidget>

#include "tests/window/house_window.h"

namespace homewarden::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class HouseBuildingTest : public HouseWindow {
 protected:
  HouseBuildingTest() : HouseWindow("") {}

  void type_name(const QString& box, const QString& text) {
    auto* edit = shown<QLineEdit>(box);
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    type_text(edit, text);
    settle();
  }
  std::string rooms() { return house.files.contents[House::file("rmlst.hwd")]; }
};

TEST_F(HouseBuildingTest, RoomsDevicesAndAMacroAreAddedAndTakenAway) {
  for (const char* room : {"K\u00fcche", "Hall"}) {
    click(shown<QPushButton>("Add a new room"));
    type_name("Room name", room);
    click(shown<QPushButton>("Save"));
  }
  for (const auto& [room, device] : {std::pair("K\u00fcche", "Lamp"), std::pair("Hall", "Bell")}) {
    click(shown<QPushButton>("Add a new device"));
    type("Room", room);
    type_name("Device name", device);
    type("House code", "B");
    type("Device number", room[0] == 'H' ? "12" : "1");
    type("Device type", "Light Module (dimmable)");
    click(shown<QPushButton>("Save"));
  }
  EXPECT_EQ(rooms(),
            "K\xFC"
            "che~~~\r\nHall~~~\r\nK\xFC"
            "che~Lamp~B~1\r\nHall~Bell~B~12\r\n");

  open_node("Macros");
  type("Trigger device", "Hall Bell B12");
  type("Device to switch", "K\u00fcche Lamp B1");
  click(shown<QPushButton>("Save"));
  auto* macros = shown<QListWidget>("Macros");
  ASSERT_EQ(macros->count(), 1);
  house.interface_control.CommandReceived("B12", 2);
  settle(5s);
  EXPECT_THAT(house.interface_control.take_line_log(), ElementsAre(HasSubstr("B1 2")));
  QTest::mouseClick(macros->viewport(), Qt::LeftButton, {},
                    macros->visualItemRect(macros->item(0)).center());
  settle();
  EXPECT_THAT(answer(QMessageBox::Yes), HasSubstr("Do you want to delete the selected Macro?"));
  EXPECT_EQ(macros->count(), 0);

  open_node("Hall");
  QTest::keyClick(view->findChild<QTreeView*>(), Qt::Key_D, Qt::ControlModifier);
  settle();
  EXPECT_THAT(answer(QMessageBox::Yes),
              HasSubstr("DELETE any devices you have setup in this room!"));
  settle(20s);
  EXPECT_EQ(rooms(),
            "K\xFC"
            "che~~~\r\nK\xFC"
            "che~Lamp~B~1\r\n");
  EXPECT_THAT(house.form().lst_eventdevice.items.get(), SizeIs(1));
}

TEST_F(HouseBuildingTest, AProfileIsChosenFromTheList) {
  house.files.contents[House::file("evelst.hwd")] = "Bell~A~1~ ~06:00~off~daily~m\r\n";
  open_node("Profiles");
  choose_last("Profile");
  settle(6s);
  EXPECT_EQ(house.settings.read("data", "profile", ""), "Weekends");
  EXPECT_TRUE(house.files.contents.contains(House::file("Standard.txt")));
  EXPECT_EQ(shown<QPushButton>("New")->isVisible(), true) << "the events are not shown";
}

}  // namespace
}  // namespace homewarden::testing
