// What a person does on the page of a room, with clicks and keys: cards, their menus, pages of ten.

#include <QAccessible>
#include <QSlider>
#include <QToolButton>

#include "tests/window/house_window.h"
#include "ui/qt/card_add.h"
#include "ui/qt/device_card.h"

namespace homewarden::testing {
namespace {

using view::DeviceCard;

std::string hall_of(int count) {
  std::string rooms = "Cellar~~~\r\nAttic~Fan~B~1\r\n";
  for (int number = 1; number <= count; ++number) {
    const int unit = (number - 1) % 16 + 1;
    rooms += "Hall~Lamp " + std::string(number < 10 ? "0" : "") + std::to_string(number) + "~" +
             (number <= 16 ? "C~" : "D~") + std::to_string(unit) + "\r\n";
  }
  return rooms;
}

class RoomPageTest : public HouseWindow {
 protected:
  RoomPageTest() : HouseWindow(hall_of(23)) {
    for (int number = 10; number <= 23; ++number)
      house.settings.write("type", "HallLamp" + std::to_string(number), "bulb");
    view->resize(1100, 800);
    open_node("Hall");
  }

  std::vector<DeviceCard*> cards() {
    std::vector<DeviceCard*> shown_cards;
    for (QWidget* child : view->findChildren<QWidget*>())
      if (auto* card = dynamic_cast<DeviceCard*>(child); card && card->isVisible())
        shown_cards.push_back(card);
    return shown_cards;
  }
  DeviceCard* card(const QString& name) {
    for (DeviceCard* one : cards())
      if (one->accessibleName().startsWith(name + ", ")) return one;
    ADD_FAILURE() << name.toStdString() << " has no card here";
    return nullptr;
  }
  // Chooses from the menu of a card or of the room, which a click on the button opens.
  void choose(QAbstractButton* button, const QString& entry, const QString& below = {}) {
    click(button);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    for (QAction* action : menu->actions()) {
      if (action->text() != entry) continue;
      if (below.isEmpty()) {
        menu->setActiveAction(action);
        QTest::keyClick(menu, Qt::Key_Return);
        return settle(1s);
      }
      for (QAction* room : action->menu()->actions())
        if (room->text() == below) room->trigger();
      menu->close();
      return settle(1s);
    }
    ADD_FAILURE() << "no entry " << entry.toStdString();
  }
  QAbstractButton* menu_of(const QString& name) { return card(name)->findChild<QToolButton*>(); }
  void type_name(const QString& text) {
    auto* name = shown<QLineEdit>("New name");
    EXPECT_TRUE(name->hasFocus()) << "one has to look for the field";
    EXPECT_EQ(name->selectedText(), name->text());
    type_text(name, text);
  }
  std::string rooms() { return house.content("rmlst.hwd"); }
};

TEST_F(RoomPageTest, TwentyThreeDevicesAreOnThreePages) {
  auto* first = shown<QAbstractButton>("Devices 1 to 10");
  auto* last = shown<QAbstractButton>("Devices 21 to 23");
  EXPECT_EQ(cards().size(), 10u);
  // A scroll bar that goes because it came turns the page back and forth until the stack is full.
  for (int width = 1340; width >= 1160; width -= 2) {
    for (const int height : {640, 790, 860}) {
      view->resize(width, height);
      QApplication::processEvents();
    }
  }
  house.interface_control.mains_time = 2s;
  house.form().connected = true;
  click(card("Lamp 03"));
  click(card("Lamp 04"));
  EXPECT_NE(house.form().cardface[3].get().state, CardState::kIdle) << "nothing shows the press";
  click(last);
  EXPECT_EQ(cards().size(), 3u);
  settle(10s);
  EXPECT_EQ(first->accessibleDescription(), "2 on") << "a press was lost with its page";
  EXPECT_EQ(house.form().lab_count.caption.get(), "2 of 23 on");
  card("Lamp 21")->setFocus();
  QTest::keyClick(card("Lamp 21"), Qt::Key_PageUp);
  EXPECT_TRUE(card("Lamp 11")->hasFocus());
  house.interface_control.CommandReceived("D7", 2);  // on another page
  settle(1s);
  EXPECT_EQ(last->accessibleDescription(), "1 on");
  open_node("Lamp 23");
  EXPECT_TRUE(card("Lamp 23"));
  settle(3s);
  click(shown<QPushButton>("Turn room off"));
  settle(10s);
  EXPECT_EQ(house.form().lab_count.caption.get(), "All off");
}

TEST_F(RoomPageTest, ADeviceIsRenamedMovedChangedAndDeletedFromItsCard) {
  choose(menu_of("Lamp 01"), "Rename");
  type_name("Door Lamp");
  QTest::keyClick(shown<QLineEdit>("New name"), Qt::Key_Return);
  settle(1s);
  EXPECT_THAT(rooms(), HasSubstr("Hall~Door Lamp~C~1\r\n"));
  choose(menu_of("Lamp 05"), "Rename");
  type_name("Attic Lamp");  // which comes first
  QTest::keyClick(shown<QLineEdit>("New name"), Qt::Key_Return);
  settle(1s);
  EXPECT_TRUE(card("Attic Lamp")->hasFocus()) << "Space would switch another lamp";
  QTest::keyClick(card("Attic Lamp"), Qt::Key_F2);
  settle();
  QTest::keySequence(shown<QLineEdit>("New name"), QKeySequence::Undo);
  EXPECT_EQ(shown<QLineEdit>("New name")->text(), "Attic Lamp") << "what was typed before";
  QTest::keyClick(shown<QLineEdit>("New name"), Qt::Key_Escape);
  settle();
  card("Lamp 02")->setFocus();
  QTest::keyClick(card("Lamp 02"), Qt::Key_F2);
  type_name("Lamp 03");
  click(shown<QPushButton>("Save"));
  settle(1s);
  auto* wrong = &house.form().change.lab_changewrong;
  EXPECT_THAT(wrong->caption.get(), HasSubstr("There is a device"));
  QTest::keyClick(shown<QLineEdit>("New name"), Qt::Key_Escape);
  settle();
  EXPECT_FALSE(house.form().change.frm_change.visible);

  choose(menu_of("Lamp 02"), "Move to", "Attic");
  EXPECT_THAT(rooms(), HasSubstr("Attic~Lamp 02~C~2\r\n"));
  choose(menu_of("Lamp 03"), "Change type and address");
  type("New house code", "p");
  type("New device number", "9");
  type("New type", "Lamp Module (dimmable)");
  click(shown<QPushButton>("Save"));
  settle(1s);
  EXPECT_THAT(rooms(), HasSubstr("Hall~Lamp 03~P~9\r\n"));
  EXPECT_EQ(house.settings.read("type", "HallLamp03", ""), "bulb2");
  EXPECT_TRUE(card("Lamp 03")->findChild<QSlider*>()->isVisible());

  card("Lamp 04")->setFocus();
  QTest::keyClick(card("Lamp 04"), Qt::Key_D, Qt::ControlModifier);
  settle();
  EXPECT_THAT(answer(QMessageBox::Yes), HasSubstr("Hall, Lamp 04 (C4)"));
  answer(QMessageBox::Yes);
  settle(20s);
  EXPECT_THAT(rooms(), Not(HasSubstr("Lamp 04")));
}

TEST_F(RoomPageTest, ARoomIsRenamedAndANewDeviceGetsTheNextAddress) {
  choose(shown<QToolButton>("Menu of the room"), "Rename");
  type_name("Stairs");
  click(shown<QPushButton>("Save"));
  settle(1s);
  EXPECT_THAT(rooms(), Not(HasSubstr("Hall")));
  click(shown<QAbstractButton>("Devices 21 to 23"));
  click(shown<view::AddCard>("Add device"));
  EXPECT_EQ(shown<QComboBox>("Room")->currentText(), "Stairs");
  EXPECT_EQ(shown<QComboBox>("House code")->currentText(), "D");
  EXPECT_EQ(shown<QComboBox>("Device number")->currentText(), "8");
  EXPECT_TRUE(shown<QLineEdit>("Device name")->hasFocus());
  type_text(shown<QLineEdit>("Device name"), "Zebra");
  QTest::keyClick(shown<QLineEdit>("Device name"), Qt::Key_Return);
  settle(2s);
  EXPECT_EQ(card("Zebra")->accessibleName(), "Zebra, Stairs") << "one is thrown out of the room";
  open_node("Cellar");
  EXPECT_EQ(cards().size(), 0u);
  click(shown<QPushButton>("Add device"));
  EXPECT_EQ(shown<QComboBox>("Room")->currentText(), "Cellar");
  EXPECT_EQ(shown<QComboBox>("House code")->currentText(), "A");
  QTest::keyClick(shown<QLineEdit>("Device name"), Qt::Key_Escape);
  EXPECT_TRUE(house.form().frm_devices.visible);
  EXPECT_EQ(house.form().lab_room.caption.get(), "Cellar");
}

TEST_F(RoomPageTest, ArrowsMoveBetweenCardsAndTabLeavesThem) {
  card("Lamp 01")->setFocus();
  QTest::keyClick(card("Lamp 01"), Qt::Key_Right);
  EXPECT_TRUE(card("Lamp 02")->hasFocus());
  QTest::keyClick(card("Lamp 02"), Qt::Key_Down);
  QTest::keyClick(view->focusWidget(), Qt::Key_End);
  EXPECT_TRUE(card("Lamp 10")->hasFocus());
  QTest::keyClick(view->focusWidget(), Qt::Key_Tab);
  EXPECT_FALSE(dynamic_cast<DeviceCard*>(view->focusWidget())) << "ten stops of the Tab key";
}

// Catches: a device that is out of sight as soon as its new name is saved, and keys that act on
// what is not seen.
TEST_F(RoomPageTest, ARenamedDeviceIsFollowedToItsPageFromCardAndTree) {
  choose(menu_of("Lamp 01"), "Rename");
  type_name("  Zed ");
  QTest::keyClick(shown<QLineEdit>("New name"), Qt::Key_Return);
  settle(1s);
  ASSERT_TRUE(card("Zed"));
  EXPECT_TRUE(card("Zed")->hasFocus());
  click(shown<QAbstractButton>("Settings"));
  click(the_tree()->viewport());  // gives it the keyboard; no node lies there
  open_node("Zed");
  click(shown<QAbstractButton>("Devices 1 to 10"));
  QTest::keyClick(the_tree(), Qt::Key_F2);
  type_name("Aha");
  QTest::keyClick(shown<QLineEdit>("New name"), Qt::Key_Return);
  settle(1s);
  EXPECT_THAT(rooms(), HasSubstr("Hall~Aha~C~1\r\n"));
  EXPECT_TRUE(card("Aha")->hasFocus());
  QTest::keyClick(card("Aha"), Qt::Key_F2);
  type_name("Bee");
  click(shown<QPushButton>("Save"));
  house.form().cmd_settings.click();
  settle(1s);
  EXPECT_FALSE(the_tree()->currentIndex().isValid()) << "marks what is not shown";
}

// Catches: a scroll bar that comes and goes without end where the page fits only without it.
TEST_F(RoomPageTest, EverySizeOfTheWindowIsLaidOutOnce) {
  for (const char* page : {"Devices 1 to 10", "Devices 21 to 23"}) {
    click(shown<QAbstractButton>(page));
    for (int height = 480; height < 1000; height += 13) {
      for (int width = 700; width < 1500; width += 97) {
        view->resize(width, height);
        QApplication::processEvents();
      }
    }
  }
  EXPECT_EQ(cards().size(), 3u);
}

TEST_F(RoomPageTest, KeysOpenTheFixedNodesAndAddWhatThePageIsAbout) {
  const auto press = [this](Qt::Key key, Qt::KeyboardModifier with) {
    QTest::keyClick(view.get(), key, with);
    settle();
  };
  press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(shown<QComboBox>("Room")->currentText(), "Hall");
  EXPECT_TRUE(shown<QLineEdit>("Device name")->hasFocus());
  press(Qt::Key_2, Qt::AltModifier);
  EXPECT_TRUE(house.form().frm_event.visible);
  EXPECT_TRUE(the_tree()->hasFocus()) << view->focusWidget()->metaObject()->className();
  press(Qt::Key_K, Qt::ControlModifier);
  press(Qt::Key_1, Qt::AltModifier);
  EXPECT_TRUE(house.form().frm_home.visible && !house.form().frm_finder.visible);
  press(Qt::Key_N, Qt::ControlModifier);
  EXPECT_TRUE(shown<QLineEdit>("Room name")->hasFocus());
  house.form().Tree.enabled = false;  // an event is edited, or something is being deleted
  press(Qt::Key_3, Qt::AltModifier);
  EXPECT_FALSE(house.form().frm_macros.visible);
}

TEST_F(RoomPageTest, TheFinderKeepsTheKeyboardAndGivesItBack) {
  card("Lamp 02")->setFocus();
  QTest::keyClick(view.get(), Qt::Key_K, Qt::ControlModifier);
  auto* field = shown<QLineEdit>("Find anything");
  for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
    QTest::keyClick(field, key);
    EXPECT_TRUE(field->hasFocus()) << "what is under the scrim is worked";
  }
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_TRUE(card("Lamp 02")->hasFocus());
}

// Below its least level a slider says "Off", and that is what becomes of the lamp.
TEST_F(RoomPageTest, TheSlidersLeftEndSwitchesOff) {
  house.form().connected = true;
  DeviceCard* lamp = card("Lamp 10");
  auto* bar = lamp->findChild<QSlider*>();
  const auto drag_to = [&](int position) {
    bar->setSliderDown(true);
    bar->setSliderPosition(position);
    const QString said = lamp->words();
    bar->setSliderDown(false);
    settle(15s);
    return said.toStdString();
  };
  EXPECT_EQ(drag_to(20), "20\u00A0%");
  EXPECT_EQ(house.machine("HallLamp10") + house.machine("dimHallLamp10"), "True20");
  EXPECT_EQ(lamp->words(), "20\u00A0%");
  EXPECT_EQ(drag_to(17), "20\u00A0%") << "nothing between off and the least level";
  EXPECT_EQ(drag_to(bar->minimum()), "Off");
  EXPECT_EQ(house.machine("HallLamp10"), "False");
  EXPECT_EQ(bar->value(), bar->minimum());
  house.form().connected = false;
  drag_to(60);
  answer();
  EXPECT_EQ(bar->value(), bar->minimum()) << "shows a level that the lamp never got";
  lamp->setFocus();
  house.form().connected = true;
  QTest::keyClick(lamp, Qt::Key_Plus);
  EXPECT_EQ(lamp->words(), "20\u00A0%");
  QTest::keyClick(lamp, Qt::Key_Minus);
  EXPECT_EQ(lamp->words(), "Off");
}

TEST_F(RoomPageTest, AScreenReaderHearsACheckBoxWithALevel) {
  house.form().connected = true;
  house.interface_control.CommandReceived("C10", 2);
  settle(1s);
  DeviceCard* lamp = card("Lamp 10");
  QAccessibleInterface* access = QAccessible::queryAccessibleInterface(lamp);
  ASSERT_TRUE(access);
  EXPECT_EQ(access->role(), QAccessible::CheckBox);
  EXPECT_EQ(access->text(QAccessible::Name), "Lamp 10, Hall");
  EXPECT_TRUE(access->state().checkable && access->state().checked);
  EXPECT_EQ(access->valueInterface()->currentValue().toInt(), 100);
  house.interface_control.fails = true;
  access->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  settle(5s);
  EXPECT_FALSE(access->state().checked);
  EXPECT_TRUE(access->text(QAccessible::Description).startsWith("Not sent"));
  std::vector<std::string> below;
  for (int child = 0; child < access->childCount(); ++child)
    if (!access->child(child)->state().invisible)
      below.push_back(access->child(child)->text(QAccessible::Name).toStdString());
  EXPECT_THAT(below, ::testing::UnorderedElementsAre("Send to Lamp 10 again", "Menu"));
  auto* bar = QAccessible::queryAccessibleInterface(lamp->findChild<QSlider*>());
  EXPECT_EQ(bar->text(QAccessible::Value), "Off");
}

}  // namespace
}  // namespace homewarden::testing
