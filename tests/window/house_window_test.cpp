// What a person does with a whole house in a real window, with keys and clicks only.

#include "tests/window/house_window.h"

#include <QRadioButton>

namespace homewarden::testing {
namespace {

// A house built from an empty window.
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
  std::string rooms() { return house.content("rmlst.hwd"); }
};

// Catches: a newcomer who has to reach for the mouse, or to read; a box about a name that cannot
// be.
TEST_F(HouseBuildingTest, FromAnEmptyWindowToALampThatSwitchesByTypingAlone) {
  int step = 0;
  for (const char* text : {"Den", "Lamp"}) {
    auto* box = qobject_cast<QLineEdit*>(view->focusWidget());
    ASSERT_TRUE(box) << "nowhere to type " << text;
    type_text(box, text + QString("\""));
    const std::string before = rooms();
    QTest::keyClick(box, Qt::Key_Return);
    settle(1s);
    EXPECT_TRUE(rooms() == before && !QApplication::activeModalWidget()) << text;
    for (const Label* wrong : {&house.form().lab_roomwrong, &house.form().lab_lampwrong})
      EXPECT_EQ(wrong->caption.get().empty(), (wrong == &house.form().lab_roomwrong) != !step);
    QTest::keyClick(box, Qt::Key_Backspace);
    QTest::keyClick(box, Qt::Key_Return);
    settle(1s);
    ++step;
  }
  settle(2s);
  EXPECT_EQ(rooms(), "Den~~~\r\nDen~Lamp~A~1\r\n");
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A1 2")));
  QTest::keyClick(view->focusWidget(), Qt::Key_Space);  // "Try it" once more
  settle(3s);
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A1 3")));
  QTest::keyClick(view->focusWidget(), Qt::Key_Escape);
  settle();
  EXPECT_TRUE(shown<QAbstractButton>("Den, 1 off"));
  click(shown<QAbstractButton>("Den, 1 off"));
  EXPECT_EQ(house.form().lab_room.caption.get(), "Den");
  EXPECT_FALSE(QApplication::activeModalWidget());
}

// Catches: chips that show and do not switch, or lose the keyboard with the first press.
TEST_F(HouseWindow, WhatIsOnIsSwitchedOnTheHomePageWithMouseAndKeys) {
  house.interface_control.CommandReceived("A3", 2);
  house.interface_control.CommandReceived("B12", 2);
  settle(1s);
  auto* lamp = shown<QAbstractButton>("Table Lamp, Kitchen");
  EXPECT_TRUE(lamp->isChecked());
  click(lamp);
  settle(3s);
  EXPECT_FALSE(lamp->isChecked());
  auto* other = shown<QAbstractButton>("Lamp, Hall");
  other->setFocus(Qt::TabFocusReason);
  QTest::keyClick(other, Qt::Key_Space);
  settle(3s);
  EXPECT_EQ(view->focusWidget(), other);
  EXPECT_THAT(house.line(), ElementsAre(EndsWith("A3 3"), EndsWith("B12 3")));
  EXPECT_EQ(house.form().lab_home.caption.get(), "Everything is off");
}

// Catches: a banner of one page, or one that does not go.
TEST_F(HouseWindow, AnUnpluggedInterfaceIsSaidOverEveryPage) {
  for (const char* node : {"Events", "Kitchen", "Home"}) {
    house.interface_control.TroubleChanged("STATUS: Interface unplugged, looking for it");
    open_node(node);
    const auto labels = view->findChildren<QLabel*>();
    const auto said = std::count_if(labels.begin(), labels.end(), [](const QLabel* label) {
      return label->isVisible() && label->text() == "The interface is unplugged.";
    });
    EXPECT_EQ(said, std::string(node) == "Home" ? 2 : 1) << node;
    QApplication::processEvents();
    house.interface_control.TroubleChanged("");
    for (auto* button : view->findChildren<QPushButton*>())
      EXPECT_FALSE(button->isVisible() && button->text() == "Look for it now") << node;
  }
  house.interface_control.TroubleChanged("STATUS: Interface unplugged, looking for it");
  house.notes();
  click(shown<QPushButton>("Look for it now"));
  settle(2s);
  EXPECT_THAT(house.notes(), Contains("open"));
}

TEST_F(HouseBuildingTest, RoomsDevicesAndAMacroAreAddedAndTakenAway) {
  house.form().txt_roomname.text = "Attic";
  click(shown<QPushButton>("Save"));
  settle(1s);
  QTest::keyClick(view->focusWidget(), Qt::Key_Escape);
  settle();
  for (const char* room : {"B\u00fcro", "Hall"}) {
    click(shown<QAbstractButton>("Add a new room"));
    type_name("Room name", room);
    click(shown<QPushButton>("Save"));
  }
  for (const auto& [room, device] : {std::pair("B\u00fcro", "Lamp"), std::pair("Hall", "Bell")}) {
    click(shown<QAbstractButton>("Add a new device"));
    type("Room", room);
    type_name("Device name", device);
    type("House code", "B");
    type("Device number", room[0] == 'H' ? "12" : "1");
    type("Device type", "Light Module (dimmable)");
    click(shown<QPushButton>("Save"));
  }
  EXPECT_EQ(rooms(), "Attic~~~\r\nB\xFCro~~~\r\nHall~~~\r\nB\xFCro~Lamp~B~1\r\nHall~Bell~B~12\r\n");

  open_node("Macros");
  click(shown<QPushButton>("New macro"));
  type("Trigger device", "Hall Bell B12");
  type("Device to switch", "B\u00fcro Lamp B1");
  click(shown<QPushButton>("Save"));
  auto* macros = shown<QListWidget>("Macros");
  ASSERT_EQ(macros->count(), 1);
  house.interface_control.CommandReceived("B12", 2);
  settle(5s);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("B1 2")));
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
  EXPECT_EQ(rooms(), "Attic~~~\r\nB\xFCro~~~\r\nB\xFCro~Lamp~B~1\r\n");
  EXPECT_THAT(house.form().lst_eventdevice.items.get(), SizeIs(1));
}

// Catches: a count that only a mouse finds, or that cannot be dismissed with keys.
TEST_F(HouseWindow, WhatWasNotSentIsReadAloudAndDismissedWithKeys) {
  house.interface_control.fails = true;
  house.form().txt_queue.text = "2A3~";
  settle(6s);
  auto* link = shown<QAbstractButton>("1 not sent");
  const QString said = "1 command could not be sent: Kitchen Table Lamp.";
  EXPECT_TRUE(link->accessibleDescription().startsWith(said));
  EXPECT_EQ(shown<QLabel>("Interface")->accessibleDescription(), said);
  house.form().Statusbar.panel3 = "STATUS: A3 On could not be sent";
  settle();
  const int wide = shown<QLabel>("Interface")->width();
  house.form().Statusbar.panel3 = "STATUS: Ready";
  settle();
  EXPECT_LT(shown<QLabel>("Interface")->width(), wide) << "a gap at its right";
  EXPECT_NE(link->focusPolicy() & Qt::TabFocus, 0);
  QTest::keyClick(link, Qt::Key_Space);
  settle();
  EXPECT_THAT(answer(QMessageBox::Yes), HasSubstr("1 command could not be sent"));
  EXPECT_FALSE(link->isVisible());
}

// Catches: a box that shows the click instead of what holds after No, or loses the keyboard to it.
TEST_F(HouseWindow, ServiceModeStaysOnAfterEscape) {
  click(shown<QAbstractButton>("Settings"));
  auto* box = shown<QCheckBox>("Run as a service");
  EXPECT_NE(box->focusPolicy() & Qt::TabFocus, 0);
  box->setFocus();
  for (int press = 0; press < 2; ++press, settle()) QTest::keyClick(box, Qt::Key_Space);
  EXPECT_FALSE(box->isChecked());
  QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
  settle();
  EXPECT_TRUE(box->isChecked());
  EXPECT_EQ(view->focusWidget(), box);
}

TEST_F(HouseWindow, AnEventIsMadeSeenChangedAndDeleted) {
  open_node("Events");
  click(shown<QPushButton>("New"));
  type("Device", "Hall Lamp B12");
  choose_last("Hour");
  EXPECT_THAT(answer(), StartsWith("Please read: You have selected Sunset"));
  type("Minute", "-1");
  for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Saturday", "Sunday"})
    QTest::mouseClick(shown<QCheckBox>(day), Qt::LeftButton, {}, QPoint(8, 8));
  click(shown<QPushButton>("Save"));
  settle(3s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~100~sSet:-1~on~daily~f"));

  auto* list = shown<QAbstractItemView>("Events");
  ASSERT_EQ(list->model()->rowCount(), 1);
  EXPECT_THAT(list->model()->index(0, 0).data(Qt::AccessibleTextRole).toString().toStdString(),
              HasSubstr("Lamp on, Hall, Fridays, 1 hour before sunset"));
  EXPECT_THAT(
      house.form().ListView1.rows.get(),
      ElementsAre(ListView::Row{"Hall Lamp", "B", "12", "100%", "sSet:-1", "on", "daily", "f"}));

  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row_place(0));
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row_place(0));
  settle();
  EXPECT_FALSE(list->isEnabled());
  EXPECT_EQ(shown<QComboBox>("Minute")->currentText(), "-1");
  click(shown<QRadioButton>("At: Clock"));
  type("Hour", "23");
  type("Minute", "30");
  type("Dim level", "55%");
  click(shown<QPushButton>("Save"));
  settle(5s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~55~23:30~on~daily~f"));
  EXPECT_TRUE(list->isEnabled());
}

}  // namespace
}  // namespace homewarden::testing
