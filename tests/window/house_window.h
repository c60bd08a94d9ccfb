#pragma once

#include <QCheckBox>
#include <QKeyEvent>
#include <QMessageBox>
#include <functional>

#include "tests/stories/event_house.h"
#include "tests/window/form_window.h"
#include "ui/qt/qt_dialogs.h"

namespace homewarden::testing {

// The whole program in a real window, worked with keys and clicks only.
class HouseWindow : public ::testing::Test {
 protected:
  static constexpr const char* kFurnished =
      "Kitchen~~~\r\nKitchen~Table Lamp~A~3\r\nKitchen~Kettle~A~4\r\nHall~~~\r\n"
      "Hall~Lamp~B~12\r\n";

  // The function is called with the house before it opens.
  explicit HouseWindow(const std::string& rooms = kFurnished, const std::string& events = {},
                       const std::function<void(EventHouse&)>& prepare = {}) {
    if (prepare) prepare(house);
    if (!events.empty()) house.files.contents[House::file("evelst.hwd")] = events;
    house.files.contents.erase(House::file("rmlst.hwd"));
    if (!rooms.empty()) house.files.contents[House::file("rmlst.hwd")] = rooms;
    house.used_dialogs = &dialogs;
    house.loop.set_wall_clock(2023, 6, 21, 14, 5, 0);
    view = std::make_unique<view::MainWindowView>(house.open().frm_main);
    dialogs.set_parent(view.get());
    settle(2s);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    view->resize(1100, 700);  // more than the screen of the tests has
    QApplication::processEvents();
  }

  // Lets the window and the house go on.
  void settle(std::chrono::milliseconds length = 0ms) {
    for (int turn = 0; turn < 3; ++turn) {
      QApplication::processEvents();
      house.loop.run_pending();
    }
    house.loop.advance(length);
    QApplication::processEvents();
  }

  template <class Widget>
  Widget* shown(const QString& name) {
    for (auto* widget : view->findChildren<Widget*>()) {
      const auto* button = qobject_cast<QAbstractButton*>(widget);
      const QString text =
          button && widget->accessibleName().isEmpty() ? button->text() : widget->accessibleName();
      if (text == name && widget->isVisible()) return widget;
    }
    ADD_FAILURE() << "nothing named " << name.toStdString() << " is shown";
    return nullptr;
  }

  void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton);
    settle();
  }

  // QTest types ASCII only.
  static void type_text(QWidget* widget, const QString& text) {
    for (const QChar letter : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
      QApplication::sendEvent(widget, &press);
    }
  }

  void type(const QString& box, const QString& text) {
    QLineEdit* edit = shown<QComboBox>(box)->lineEdit();
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
    type_text(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
    settle();
  }

  // Opens the list of a box and takes its last entry.
  void choose_last(const QString& box) {
    auto* combo = shown<QComboBox>(box);
    QTest::keyClick(combo, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(combo->view(), Qt::Key_End);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    settle();
  }

  // The event list has columns of its own.
  QTreeView* the_tree() {
    for (auto* tree : view->findChildren<QTreeView*>())
      if (tree->accessibleName() != "Events") return tree;
    return nullptr;
  }

  void open_node(const QString& text) {
    QTreeView* tree = the_tree();
    const auto found = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, text, 1,
                                            Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(found.size(), 1);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      tree->visualRect(found.front()).center());
    settle();
  }

  // Answers the message that is open, with Enter or by clicking Yes, and gives its text.
  std::string answer(QMessageBox::StandardButton with = QMessageBox::Ok) {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!box) return "";
    const std::string text = (box->windowTitle() + ": " + box->text()).toStdString();
    if (with == QMessageBox::Ok)
      QTest::keyClick(box, Qt::Key_Return);
    else
      QTest::mouseClick(box->button(with), Qt::LeftButton);
    settle();
    return text;
  }

  QPoint row_place(int row) {
    auto* list = shown<QAbstractItemView>("Events");
    return list->visualRect(list->model()->index(row, 0)).center();
  }

  EventHouse house;
  view::QtDialogs dialogs;
  std::unique_ptr<view::MainWindowView> view;
};

}  // namespace homewarden::testing
