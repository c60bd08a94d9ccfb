// What a person does with the boxes and lists of the panels, and which panel is shown.

#include <QScrollArea>

#include "tests/window/form_window.h"

namespace homewarden::testing {
namespace {

struct PanelTest : FormWindow {
  PanelTest() {
    form.Tree.add(nullptr, "Home", "Home");
    form.Tree.add(nullptr, "Events", "Events");
    form.frm_home.visible = true;
    open();
  }

  void show(Frame& frame) {
    form.frm_home.visible = false;
    frame.visible = true;
    QTest::qWait(0);
  }
};

TEST_F(PanelTest, TypingInTheMiddleOfABoxStaysThere) {
  form.com_city.text = "Hall";
  auto* box = named<QComboBox>("City");
  ASSERT_TRUE(box);
  box->setFocus();
  box->lineEdit()->setCursorPosition(0);
  QTest::keyClicks(box->lineEdit(), "XY");
  EXPECT_EQ(form.com_city.text.get(), "XYHall") << "the cursor jumped while typing";
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

TEST_F(PanelTest, EnterInTheLineOfAFormSavesIt) {
  int saved = 0;
  for (Button* save : {&form.Command3, &form.Command4, &form.Command7})
    save->click.connect([&] { ++saved; });
  for (Frame* panel : {&form.frm_addroom, &form.frm_adddevice, &form.Frame4}) {
    show(*panel);
    for (auto* line : view->findChildren<QLineEdit*>())
      if (line->isVisible() && !line->accessibleName().isEmpty())
        QTest::keyClick(line, Qt::Key_Return);
    panel->visible = false;
  }
  EXPECT_EQ(saved, 3);
}

TEST_F(PanelTest, NothingIsCutOffOnASmallScreen) {
  view->resize(788, 640);
  for (Frame* panel : {&form.frm_home, &form.frm_addroom, &form.frm_adddevice, &form.Frame4}) {
    show(*panel);
    for (auto* page : shown<QScrollArea>())
      EXPECT_LE(page->widget()->minimumSizeHint().width(), page->width());
    panel->visible = false;
  }
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
  EXPECT_FALSE(named<QComboBox>("Trigger device"));
  form.Frame3.visible = false;
  EXPECT_TRUE(named<QComboBox>("Trigger device")) << "a hidden panel stayed on the screen";
  form.frm_macros.visible = false;
  EXPECT_FALSE(named<QComboBox>("Trigger device"));
}

TEST_F(PanelTest, TheMenuKeyOpensTheMenuAtTheNode) {
  auto* tree = view->findChild<QTreeView*>();
  tree->setFocus();
  form.Tree.selected = form.Tree.find("Events");
  form.Tree.mouse_down.connect([&](int) { form.mnuPopup.popped_up(); });
  QCursor::setPos(view->mapToGlobal(QPoint(600, 400)));
  QMenu* menu = menu_by_key(tree);
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
