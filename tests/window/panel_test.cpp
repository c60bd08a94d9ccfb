// What a person does with the boxes and lists of the panels, and which panel is shown.

#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTest>
#include <QTreeView>
#include <memory>

#include "ui/qt/main_window_view.h"

namespace homewarden::testing {
namespace {

struct PanelTest : ::testing::Test {
  PanelTest() {
    form.Tree.add(nullptr, "Home", "Home");
    form.Tree.add(nullptr, "Events", "Events");
    form.frm_home.visible = true;
    view = std::make_unique<view::MainWindowView>(form);
    form.visible = true;
    EXPECT_TRUE(QTest::qWaitForWindowExposed(view.get()));
  }

  void show(Frame& frame) {
    form.frm_home.visible = false;
    frame.visible = true;
    QTest::qWait(0);
  }
  QComboBox* shown_combo(const char* name) {
    for (auto* combo : view->findChildren<QComboBox*>())
      if (combo->accessibleName() == name && combo->isVisible()) return combo;
    return nullptr;
  }

  FrmMain form;
  std::unique_ptr<view::MainWindowView> view;
};

TEST_F(PanelTest, TypingInTheMiddleOfABoxStaysThere) {
  form.com_city.text = "Hall";
  auto* box = shown_combo("City");
  ASSERT_TRUE(box);
  box->setFocus();
  box->lineEdit()->setCursorPosition(0);
  QTest::keyClicks(box->lineEdit(), "XY");
  EXPECT_EQ(form.com_city.text.get(), "XYHall") << "the cursor jumped while typing";
}

TEST_F(PanelTest, TypingTheNameOfAProfileDoesNotSwitchToIt) {
  show(form.Frame5);
  form.com_profile.text = "Standard";
  int choices = 0;
  form.com_profile.click.connect([&] { ++choices; });
  auto* box = shown_combo("Profile");
  ASSERT_TRUE(box);
  for (const Qt::Key leave : {Qt::Key_Tab, Qt::Key_Return}) {
    box->setFocus();
    box->lineEdit()->selectAll();
    QTest::keyClicks(box->lineEdit(), leave == Qt::Key_Tab ? "Holiday" : "Weekends");
    if (QWidget* completions = QApplication::activePopupWidget()) completions->close();
    QTest::keyClick(box->lineEdit(), leave);
  }
  EXPECT_EQ(form.com_profile.text.get(), "Weekends");
  EXPECT_EQ(choices, 0);
}

TEST_F(PanelTest, ANameIsReplacedByTyping) {
  form.txt_roomname.text = "Old";
  show(form.frm_addroom);
  form.txt_roomname.set_focus();
  auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  ASSERT_TRUE(box);
  EXPECT_EQ(box->selectedText(), "Old");
  box->clearFocus();
  const QPoint end(box->width() - 5, 5);
  QTest::mouseClick(box, Qt::LeftButton, {}, end);
  EXPECT_EQ(box->selectedText(), "Old") << "the click that brought the focus took the selection";
  QTest::mouseClick(box, Qt::LeftButton, {}, end);
  EXPECT_TRUE(box->selectedText().isEmpty()) << "a second click cannot place the cursor";
}

TEST_F(PanelTest, TheMacroListShowsTheSelectionThatItsControlHas) {
  show(form.frm_macros);
  form.ListVIew2.items = std::vector<std::string>{"one", "two"};
  form.ListVIew2.selected = 1;
  form.ListVIew2.items = std::vector<std::string>{"one", "three"};
  EXPECT_EQ(view->findChild<QListWidget*>()->currentRow(), 1);
}

TEST_F(PanelTest, OfSeveralPanelsTheOneShownLastThatIsStillVisible) {
  show(form.frm_macros);
  form.Frame3.visible = true;
  EXPECT_FALSE(shown_combo("Trigger device"));
  form.Frame3.visible = false;
  EXPECT_TRUE(shown_combo("Trigger device")) << "a hidden panel stayed on the screen";
  form.frm_macros.visible = false;
  EXPECT_FALSE(shown_combo("Trigger device"));
}

TEST_F(PanelTest, TheMenuKeyOpensTheMenuAtTheNode) {
  auto* tree = view->findChild<QTreeView*>();
  tree->setFocus();
  form.Tree.selected = form.Tree.find("Events");
  form.Tree.mouse_down.connect([&](int) { form.mnuPopup.popped_up(); });
  QCursor::setPos(view->mapToGlobal(QPoint(600, 400)));
  const QPoint anywhere(10, 10);
  QContextMenuEvent key(QContextMenuEvent::Keyboard, anywhere, tree->mapToGlobal(anywhere));
  QApplication::sendEvent(tree->viewport(), &key);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  EXPECT_EQ(menu->pos(),
            tree->viewport()->mapToGlobal(tree->visualRect(tree->currentIndex()).bottomLeft()));
  menu->close();
}

TEST_F(PanelTest, ABusyWindowShowsItWhereverThePointerIs) {
  const auto pointer_at = [&](int x, int y) { return view->childAt(x, y)->cursor().shape(); };
  form.enabled = false;
  form.mouse_pointer = MousePointer::kHourglass;
  view->resize(1100, 700);
  EXPECT_EQ(pointer_at(300, 100), Qt::BusyCursor) << "over a link with a pointer of its own";
  EXPECT_EQ(pointer_at(1090, 690), Qt::BusyCursor);
  form.mouse_pointer = MousePointer::kNormal;
  form.enabled = true;
  EXPECT_NE(pointer_at(300, 100), Qt::BusyCursor);
}

}  // namespace
}  // namespace homewarden::testing
