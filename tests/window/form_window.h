#pragma once

#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "ui/qt/main_window_view.h"

namespace homewarden::testing {

using ::testing::ElementsAre, ::testing::IsEmpty;

// The form of the main window in a real window, without the program behind it.
struct FormWindow : ::testing::Test {
  void open() {
    view = std::make_unique<view::MainWindowView>(form);
    form.visible = true;
    EXPECT_TRUE(QTest::qWaitForWindowExposed(view.get()));
    view->resize(1100, 700);  // more than the screen of the tests has
    QApplication::processEvents();
  }

  template <class Widget>
  std::vector<Widget*> shown() {
    std::vector<Widget*> widgets;
    for (QWidget* child : view->findChildren<QWidget*>())
      if (auto* widget = dynamic_cast<Widget*>(child); widget && widget->isVisible())
        widgets.push_back(widget);
    return widgets;
  }
  template <class Widget>
  Widget* named(const char* name) {
    for (Widget* widget : shown<Widget>())
      if (widget->accessibleName() == name) return widget;
    return nullptr;
  }

  bool shows(const QString& text) {
    for (const QLabel* label : shown<QLabel>())
      if (label->text() == text) return true;
    return false;
  }

  // As the right button does: the press, then the request for the menu.
  static void ask_for_menu(QAbstractItemView* list, QPoint place) {
    QTest::mousePress(list->viewport(), Qt::RightButton, {}, place);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, place, list->viewport()->mapToGlobal(place));
    QApplication::sendEvent(list->viewport(), &menu);
    QTest::mouseRelease(list->viewport(), Qt::RightButton, {}, place);
  }
  // The menu that the menu key opens.
  static QMenu* menu_by_key(QAbstractItemView* list) {
    const QPoint anywhere(10, 10);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, anywhere, list->mapToGlobal(anywhere));
    QApplication::sendEvent(list->viewport(), &key);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }

  FrmMain form;
  std::unique_ptr<view::MainWindowView> view;
};

}  // namespace homewarden::testing
