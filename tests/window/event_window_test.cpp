// The house by the clock as a person meets it: the whole program in a real window, worked with keys
// and clicks only.

#include <gmock/gmock.h>

#include <QMenu>

#include "tests/window/house_window.h"

namespace homewarden::testing {
namespace {

using ::testing::ElementsAre;

class EventWindowTest : public HouseWindow {};

TEST_F(EventWindowTest, AnEventIsMadeSeenChangedAndDeleted) {
  open_node("Events");
  click(shown<QPushButton>("New"));
  type("Device", "Hall Lamp B12");
  choose_last("Hour");
  EXPECT_THAT(answer(), ::testing::StartsWith("Please read: You have selected Sunset"));
  type("Minute", "-1");
  for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Saturday", "Sunday"})
    QTest::mouseClick(shown<QCheckBox>(day), Qt::LeftButton, {}, QPoint(8, 8));
  click(shown<QPushButton>("Save"));
  settle(3s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~100~sSet:-1~on~daily~f"));

  auto* list = shown<QAbstractItemView>("Events");
  ASSERT_EQ(list->model()->rowCount(), 1);
  std::string row;
  for (int column = 0; column < list->model()->columnCount(); ++column)
    row += list->model()->index(0, column).data().toString().toStdString() + "|";
  EXPECT_EQ(row, "Hall Lamp|B|12|100%|sSet:-1|on|daily|f|");

  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row_place(0));
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, row_place(0));
  settle();
  EXPECT_FALSE(list->isEnabled());
  EXPECT_EQ(shown<QComboBox>("Minute")->currentText(), "-1");
  type("Hour", "23");
  type("Minute", "30");
  type("Dim level", "55%");
  click(shown<QPushButton>("Save"));
  settle(5s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~55~23:30~on~daily~f"));
  EXPECT_TRUE(list->isEnabled());

  house.interface_control.take_line_log();
  house.loop.advance(3 * 24h);
  EXPECT_THAT(house.interface_control.take_line_log(),
              ElementsAre("Fri 23:30:00 B12 2", "Fri 23:30:00 B12 5", "Fri 23:30:00 B12 4 45"));

  settle();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, row_place(0));
  QTest::keyClick(list, Qt::Key_D, Qt::ControlModifier);
  settle();
  EXPECT_TRUE(house.event_lines().empty());
  EXPECT_EQ(list->model()->rowCount(), 0);
}

TEST_F(EventWindowTest, MistakesAreToldAndNothingIsWritten) {
  open_node("Events");
  click(shown<QPushButton>("New"));
  type("Hour", "25");
  click(shown<QPushButton>("Save"));
  EXPECT_EQ(answer(), "Please check: Please choose an hour from 00 to 23, or sRise or sSet.");
  type("Device", "Hall Lump");
  click(shown<QPushButton>("Save"));
  EXPECT_THAT(answer(), ::testing::HasSubstr("The device \"Hall Lump\" has no address"));
  EXPECT_THAT(house.event_lines(), ElementsAre("(missing)"));
  EXPECT_TRUE(view->isEnabled());
}

TEST_F(EventWindowTest, TheMenuOfTheListRunsAndDeletesTheEventUnderThePointer) {
  house.files.contents[House::file("evelst.hwd")] =
      "Bell~A~1~ ~06:00~off~daily~m\r\nHall Lamp~B~12~ ~07:00~off~daily~m\r\n";
  house.form().Check1.checked = true;
  open_node("Events");
  click(shown<QPushButton>("New"));
  type("Device", "Kitchen Kettle A4");
  click(shown<QPushButton>("Save"));
  settle(3s);
  auto* list = shown<QAbstractItemView>("Events");
  ASSERT_EQ(list->model()->rowCount(), 3);
  house.interface_control.take_line_log();
  for (const char* entry : {"Run this event now", "Delete this event"}) {
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, row_place(1));
    QContextMenuEvent event(QContextMenuEvent::Mouse, row_place(1),
                            list->viewport()->mapToGlobal(row_place(1)));
    QApplication::sendEvent(list->viewport(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    for (QAction* action : menu->actions())
      if (action->text() == entry)
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    settle(3s);
  }
  EXPECT_THAT(house.interface_control.take_line_log(), ElementsAre("Wed 14:05:05 B12 3"));
  EXPECT_EQ(house.event_lines().size(), 2u);
}

}  // namespace
}  // namespace homewarden::testing
