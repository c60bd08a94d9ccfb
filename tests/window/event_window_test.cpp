// The panels of events, macros, profiles and the web server, worked as a person does.

#include <QRadioButton>
#include <QScrollArea>
#include <QStackedWidget>

#include "tests/window/house_window.h"
#include "ui/qt/event_rows.h"

namespace homewarden::testing {
namespace {

using ::testing::HasSubstr, ::testing::StartsWith;

struct EventWindowTest : HouseWindow {
  explicit EventWindowTest(const std::string& events = {}) : HouseWindow(kFurnished, events) {
    view->resize(1280, 800);
    view->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(view.get()));
  }

  QString focus_name() const {
    const QWidget* focus = view->focusWidget();
    if (!focus) return {};
    const auto* box = qobject_cast<const QComboBox*>(focus->parentWidget());
    if (box) focus = box;
    const auto* button = qobject_cast<const QAbstractButton*>(focus);
    return button && focus->accessibleName().isEmpty() ? button->text() : focus->accessibleName();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers with = {}) {
    QTest::keyClick(view->focusWidget(), key, with);
    settle();
  }
  // Goes on with Tab alone.
  void tab_to(const QString& name) {
    for (int step = 0; step < 60; ++step) {
      if (focus_name() == name) return;
      press(Qt::Key_Tab);
    }
    FAIL() << "Tab never comes to " << name.toStdString();
  }
  void write(const QString& text) {
    QTest::keyClick(view->focusWidget(), Qt::Key_A, Qt::ControlModifier);
    type_text(view->focusWidget(), text);
    if (QWidget* popup = QApplication::activePopupWidget()) QTest::keyClick(popup, Qt::Key_Return);
    settle();
  }
  view::EventRows* rows() { return view->findChild<view::EventRows*>(); }
  QPoint place_of(view::EventRows::Sign sign, int row) {
    return rows()->place_of(sign, rows()->model()->index(row, 0)).center();
  }
  void press_sign(view::EventRows::Sign sign, int row) {
    const QPoint place = place_of(sign, row);
    QTest::mouseMove(rows()->viewport(), place);
    QTest::mouseClick(rows()->viewport(), Qt::LeftButton, {}, place);
    settle();
  }
  std::string headline(int row) {
    return rows()->model()->index(row, 0).data().toString().toStdString();
  }
};

TEST_F(EventWindowTest, KeysAloneLeadFromTheStartToASavedEvent) {
  the_tree()->setFocus(Qt::TabFocusReason);
  press(Qt::Key_Home);
  press(Qt::Key_Down);
  ASSERT_TRUE(house.form().frm_event.visible);
  tab_to("New");
  press(Qt::Key_Space);
  ASSERT_EQ(focus_name(), "Device") << "New leaves the focus where nothing is typed";
  write("Hall Lamp B12");
  tab_to("At: Clock");
  press(Qt::Key_S);
  press(Qt::Key_S);
  EXPECT_EQ(house.form().lst_hour.text.get(), "sSet");
  EXPECT_FALSE(QApplication::activeModalWidget()) << "a choice that explains itself asked nothing";
  tab_to("Minute");
  press(Qt::Key_Down);
  tab_to("Weekend");
  press(Qt::Key_Space);
  tab_to("Frequency: daily");
  press(Qt::Key_Left);
  EXPECT_EQ(house.form().lst_freq.text.get(), "once");
  press(Qt::Key_D);
  EXPECT_THAT(house.form().lab_sentence.caption.get(),
              HasSubstr("Weekend 1 hour after sunset, Lamp on."));
  EXPECT_THAT(house.form().lab_nextrun.caption.get(), StartsWith("Next: Saturday at "));
  tab_to("Save");
  press(Qt::Key_Space);
  settle(3s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~100~sSet:+1~on~daily~sr"));
}

TEST_F(EventWindowTest, GoingBackToTheClockFindsTheTimeOfDayAgain) {
  open_node("Events");
  EXPECT_THAT(house.form().lab_nextrun.caption.get(), StartsWith("Next: "))
      << "a warning before anything was done";
  type("Hour", "07");
  type("Minute", "45");
  for (const char* choice : {"At: Sunrise", "At: Sunset"}) click(shown<QRadioButton>(choice));
  EXPECT_EQ(house.form().lst_min.text.get(), "00");
  EXPECT_THAT(house.form().lst_min.items.get(), ::testing::SizeIs(7));
  click(shown<QRadioButton>("At: Clock"));
  EXPECT_EQ(house.form().lst_hour.text.get() + ":" + house.form().lst_min.text.get(), "07:45");
}

struct EventRowsTest : EventWindowTest {
  EventRowsTest()
      : EventWindowTest(
            "Hall Lamp~B~12~100~07:30~on~daily~mtwufsr\r\n"
            "Kitchen Kettle~A~4~ ~18:00~off~daily~mtwufsr\r\n") {
    open_node("Events");
  }
};

TEST_F(EventRowsTest, ARowIsRunDeletedAndBroughtBackInPlace) {
  ASSERT_EQ(headline(0), "Kettle off") << "not in the order of the next runs";
  using Sign = view::EventRows::Sign;
  QTest::mousePress(rows()->viewport(), Qt::LeftButton, {}, place_of(Sign::kRun, 0));
  QTest::mouseRelease(rows()->viewport(), Qt::LeftButton, {}, place_of(Sign::kDelete, 0));
  settle(3s);
  ASSERT_TRUE(house.line().empty() && rows()->model()->rowCount() == 2) << "another sign's press";
  press_sign(view::EventRows::Sign::kRun, 0);
  settle(3s);
  EXPECT_THAT(house.line(), ElementsAre(HasSubstr("A4 3")));
  press_sign(view::EventRows::Sign::kDelete, 0);
  settle(1s);
  EXPECT_EQ(headline(0), "Lamp on");
  EXPECT_EQ(rows()->model()->rowCount(), 1);
  rows()->setFocus();
  press(Qt::Key_Z, Qt::ControlModifier);
  settle(1s);
  EXPECT_EQ(headline(0), "Kettle off");

  press_sign(view::EventRows::Sign::kEdit, 0);
  ASSERT_FALSE(rows()->isEnabled());
  EXPECT_EQ(focus_name(), "Device");
  EXPECT_FALSE(shown<QAbstractButton>("Settings")->isEnabled()) << "leads away from the event";
  press(Qt::Key_Escape);
  EXPECT_TRUE(rows()->isEnabled()) << "Escape does not leave the event as it was";
  EXPECT_EQ(view->focusWidget(), rows());
  press(Qt::Key_Return);
  click(shown<QPushButton>("Delete"));
  settle(1s);
  EXPECT_THAT(house.event_lines(), ElementsAre("Hall Lamp~B~12~100~07:30~on~daily~mtwufsr"));
}

TEST_F(EventRowsTest, TheFilterFindsRoomsAndWordsAndTheSelectionFollows) {
  auto* filter = shown<QLineEdit>("Filter by room or text");
  QTest::mouseClick(filter, Qt::LeftButton);
  type_text(filter, "hall");
  settle();
  ASSERT_EQ(rows()->model()->rowCount(), 1);
  EXPECT_EQ(headline(0), "Lamp on");
  press(Qt::Key_Escape);
  EXPECT_EQ(rows()->model()->rowCount(), 2);
  QTest::mouseClick(rows()->viewport(), Qt::LeftButton, {}, row_place(1));
  EXPECT_EQ(
      house.form()
          .ListView1.rows.get()[static_cast<std::size_t>(house.form().ListView1.selected.get())][0],
      "Hall Lamp");
  click(shown<QPushButton>("Columns"));
  auto* columns = shown<QTreeView>("Events");
  EXPECT_EQ(columns->currentIndex().siblingAtColumn(0).data().toString(), "Hall Lamp")
      << "the columns have another event selected than the sentences";
}

TEST_F(EventRowsTest, OnASmallWindowTheEditorCoversTheListUntilOneGoesBack) {
  view->resize(view->minimumSize());
  settle();
  click(shown<QPushButton>("New"));
  EXPECT_FALSE(rows()->isVisible());
  ASSERT_TRUE(shown<QComboBox>("Device"));
  click(shown<QPushButton>("Back to the list"));
  EXPECT_TRUE(rows()->isVisible());
}

TEST_F(EventRowsTest, AProfileShowsWhatItHoldsBeforeItIsSwitchedTo) {
  house.files.contents[House::file("Holiday.txt")] =
      "Hall Lamp~B~12~100~20:00~on~daily~mtwufsr\r\n";
  open_node("Profiles");
  auto* holiday = shown<QRadioButton>("Holiday");
  EXPECT_EQ(holiday->accessibleDescription(), "1 event: Lamp");
  click(holiday);
  holiday->setFocus();
  house.files.contents[House::file("Holiday.txt")] +=
      "Kitchen Kettle~A~4~ ~21:00~off~daily~mtwufsr\r\n";
  settle(61s);
  EXPECT_EQ(shown<QRadioButton>("Holiday")->accessibleDescription(), "2 events: Lamp, Kettle");
  EXPECT_EQ(view->focusWidget(), holiday) << "what is read anew loses the keyboard";
  EXPECT_TRUE(holiday->isChecked());
  const int now = house.form().profile_seen;
  EXPECT_THAT(house.form().profilefaces.get()[static_cast<std::size_t>(now)].events, SizeIs(2));
  EXPECT_THAT(house.event_lines(), ::testing::SizeIs(2)) << "looking at it switched";
  click(shown<QPushButton>("Switch to Holiday"));
  settle(10s);
  EXPECT_THAT(house.event_lines(), SizeIs(2));
}

// Catches: an offer to undo that would bring an event back into another profile or behind a filter;
// a list that is sorted or filtered and acts on another row than the one that is pressed.
TEST_F(EventRowsTest, WhatIsFilteredAndSortedIsDeletedEditedAndBroughtBack) {
  const std::vector<std::string> before = house.event_lines();
  house.form().txt_eventfilter.text = "kettle";
  settle();
  press_sign(view::EventRows::Sign::kDelete, 0);
  settle(1s);
  EXPECT_TRUE(house.form().lab_nomatch.visible) << "the filter went with the event";
  click(shown<QPushButton>("Show all events"));
  ASSERT_EQ(headline(0), "Lamp on");
  view->findChild<QStackedWidget*>()->currentWidget()->setFocus();
  rows()->setFocus();
  press(Qt::Key_Z, Qt::ControlModifier);
  settle(1s);
  EXPECT_THAT(house.event_lines(), ::testing::UnorderedElementsAreArray(before));

  house.form().lst_eventorder.text = kByDevice;
  settle();
  ASSERT_EQ(headline(1), "Lamp on");
  press_sign(view::EventRows::Sign::kEdit, 1);
  press_sign(view::EventRows::Sign::kRun, 0);
  EXPECT_TRUE(house.line().empty()) << "the list takes input while one of it is edited";
  type("Minute", "45");
  click(shown<QPushButton>("Save"));
  settle(5s);
  EXPECT_THAT(house.event_lines(), Contains("Hall Lamp~B~12~100~07:45~on~daily~mtwufsr"));
  EXPECT_EQ(rows()->currentIndex().row(), 1) << "what was saved is not marked";

  rows()->setFocus();
  press(Qt::Key_Delete);
  settle(1s);
  house.form().com_profile.text = "Holiday";
  house.form().com_profile.click();
  settle(10s);
  shown<QPushButton>("New")->setFocus();
  press(Qt::Key_Z, Qt::ControlModifier);
  settle(1s);
  EXPECT_THAT(house.event_lines(), ElementsAre("(missing)"));
}

TEST_F(EventRowsTest, WhatIsTypedAfterNewReplacesTheDevice) {
  open_node("Events");
  press(Qt::Key_N, Qt::ControlModifier);
  QTest::keyClicks(QApplication::focusWidget(), "Kitchen Kettle A4");
  EXPECT_EQ(house.form().lst_eventdevice.text.get(), "Kitchen Kettle A4");
}

TEST_F(EventRowsTest, TheUntouchedMacroFormOffersNoLoop) {
  open_node("Macros");
  EXPECT_FALSE(shown<QPushButton>("Save")->isEnabled());
  EXPECT_EQ(shown<QComboBox>("Device to switch")->currentText(), "");
  EXPECT_EQ(house.form().lab_macroself.caption.get(), "") << "warns of what nobody has chosen";
  type("Device to switch", shown<QComboBox>("Trigger device")->currentText());
  EXPECT_FALSE(shown<QPushButton>("Save")->isEnabled());
  EXPECT_THAT(house.form().lab_macroself.caption.get(), HasSubstr("goes round for ever"));
  type("Device to switch", "Kitchen Kettle A4");
  EXPECT_TRUE(shown<QPushButton>("Save")->isEnabled());
  click(shown<QPushButton>("Save"));
  settle(1s);
  EXPECT_EQ(shown<QListWidget>("Macros")->item(0)->data(Qt::AccessibleTextRole).toString(),
            "When Table Lamp turns on, turn Kettle on");
}

// Buttons and wrapped texts of a panel that are narrower or lower than what they say.
std::vector<std::string> cut_off(const QWidget& page) {
  std::vector<std::string> found;
  for (const QWidget* widget : page.findChildren<QWidget*>()) {
    if (!widget->isVisible() || qobject_cast<QLineEdit*>(widget->parentWidget())) continue;
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const auto* label = qobject_cast<const QLabel*>(widget);
    const std::string name = (button  ? button->text()
                              : label ? label->text()
                                      : widget->accessibleName())
                                 .toStdString();
    if (button && button->width() < button->minimumSizeHint().width()) found.push_back(name);
    if (label && label->wordWrap() && label->heightForWidth(label->width()) > label->height())
      found.push_back(name + " (end)");
    const auto* area = qobject_cast<const QScrollArea*>(widget);
    if (area && area->widget()->minimumSizeHint().width() > area->viewport()->width())
      found.push_back("wider than its place: " +
                      std::string(area->widget()->metaObject()->className()));
  }
  return found;
}

TEST_F(EventRowsTest, NothingIsCutOffWithTextOfTwiceTheSize) {
  const QFont usual = QApplication::font();
  QFont large = usual;
  large.setPointSizeF(usual.pointSizeF() * 2);
  QApplication::setFont(large);
  for (const QSize size :
       {QSize(1280, 800), QSize(1000, 700), QSize(1920, 1080), QSize(760, 700)}) {
    view->resize(size);
    for (const char* panel : {"Events", "Macros", "Web Server", "Profiles", "Home", "Settings"}) {
      if (panel == std::string("Settings"))
        house.form().cmd_settings.click();
      else
        house.click_node(panel);
      settle();
      QWidget* page = view->findChild<QStackedWidget*>()->currentWidget();
      EXPECT_TRUE(QTest::qWaitFor([&] { return cut_off(*page).empty(); }, 2000))
          << panel << " at " << size.width() << ": " << ::testing::PrintToString(cut_off(*page));
    }
    open_node("Events");
    click(shown<QPushButton>("New"));
    QWidget* page = view->findChild<QStackedWidget*>()->currentWidget();
    EXPECT_TRUE(QTest::qWaitFor([&] { return cut_off(*page).empty(); }, 2000))
        << "editor at " << size.width() << ": " << ::testing::PrintToString(cut_off(*page));
    house.form().editor_open = false;
  }
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace homewarden::testing
