// Messages in a real window, with clicks and keys.

#include "tests/window/house_window.h"

namespace homewarden::testing {
namespace {

using MessageWindow = HouseWindow;

// Catches: an Undo that cannot be pressed, one that a text field's own Ctrl+Z sets off or a page's
// takes, a message that goes while the keyboard is on it, and a keyboard that is lost with it.
TEST_F(MessageWindow, ADeletedDeviceComesBackByAPressAndByAKey) {
  const std::string before = house.content("rmlst.hwd");
  const auto delete_kettle = [this] {
    open_node("Kitchen");
    house.form().card_order(0, CardOrder::kRemove);
    settle();
    EXPECT_THAT(answer(QMessageBox::Yes), HasSubstr("Kitchen, Kettle (A4)"));
    EXPECT_THAT(answer(QMessageBox::No), HasSubstr("Remove Events?"));
    for (int second = 0; second < 30 && !house.form().message.get().undoable; ++second) settle(1s);
    EXPECT_FALSE(house.form().Tree.find("Kettle~A~4"));
  };
  delete_kettle();
  auto* undo = shown<QAbstractButton>("Undo");
  ASSERT_TRUE(undo);
  QApplication::setActiveWindow(view.get());  // after the questions
  undo->setFocus();
  settle(30s);
  ASSERT_TRUE(undo->isVisible()) << "gone under the keyboard";
  click(undo);
  settle(5s);
  EXPECT_EQ(house.content("rmlst.hwd"), before);
  EXPECT_TRUE(house.form().Tree.find("Kettle~A~4"));

  delete_kettle();
  house.form().Label3.click();
  settle();
  QTest::keyClick(view->focusWidget(), Qt::Key_Z, Qt::ControlModifier);
  settle(5s);
  EXPECT_NE(house.content("rmlst.hwd"), before) << "taken from a field that was typed into";
  open_node("Events");
  auto* chip = shown<QAbstractButton>("Monday");
  ASSERT_TRUE(chip);
  QApplication::setActiveWindow(view.get());
  chip->setFocus();
  QTest::keyClick(chip, Qt::Key_Z, Qt::ControlModifier);
  settle(5s);
  EXPECT_EQ(house.content("rmlst.hwd"), before);
}

// Catches: a failure that the next success wipes out, a list that the keyboard cannot open, work
// and leave, a choice that moves to another message, and a bell that goes on counting what was
// read.
TEST_F(MessageWindow, AFailureIsReadInTheListAfterASuccess) {
  open_node("Kitchen");
  QApplication::setActiveWindow(view.get());
  auto* bell = shown<QAbstractButton>("Messages");
  ASSERT_TRUE(bell);
  house.interface_control.fails = true;
  house.form().device[0].click();
  settle(10s);
  house.interface_control.fails = false;
  house.form().device[1].click();
  settle(10s);
  EXPECT_EQ(bell->accessibleDescription(), "1 unread");
  bell->setFocus();
  QTest::keyClick(bell, Qt::Key_Space);
  settle();
  auto* list = qobject_cast<QListWidget*>(view->focusWidget());
  ASSERT_TRUE(list);
  ASSERT_EQ(list->count(), 1);
  EXPECT_THAT(list->item(0)->data(Qt::AccessibleTextRole).toString().toStdString(),
              HasSubstr("failed, Not sent: Kitchen, Kettle"));
  house.interface_control.fails = true;
  house.form().device[1].click();
  settle(10s);
  EXPECT_EQ(list->count(), 2);
  EXPECT_EQ(list->currentRow(), 1) << "Enter would act on another message";
  QTest::keyClick(list, Qt::Key_Escape);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(view->focusWidget(), bell);
  EXPECT_EQ(bell->accessibleDescription(), "");
  QTest::keyClick(bell, Qt::Key_Space);
  QTest::keyClick(list, Qt::Key_2, Qt::AltModifier);
  EXPECT_TRUE(house.form().frm_event.visible);
  EXPECT_FALSE(list->isVisible()) << "it lies over the page that was asked for";
}

// Catches: a room that is dim without a word while no interface has been found.
TEST_F(MessageWindow, ARoomWithoutAnInterfaceSaysWhy) {
  house.interface_control.TroubleChanged("STATUS: No interface found");
  open_node("Kitchen");
  EXPECT_TRUE(shown<QPushButton>("Look for it now"));
  EXPECT_FALSE(house.form().line_is_up);
}

}  // namespace
}  // namespace homewarden::testing
