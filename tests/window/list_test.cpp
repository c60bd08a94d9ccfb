// The list of events in the window: what it shows, and what a person does with mouse and keyboard.

#include <QHeaderView>
#include <QScrollBar>
#include <cstdlib>

#include "core/lists/choice_lists.h"
#include "tests/window/form_window.h"
#include "ui/qt/list_pane.h"

namespace homewarden::testing {
namespace {

using Rows = std::vector<ListView::Row>;

struct ListTest : FormWindow {
  ListTest() {
    fill_event_columns(form);
    form.frm_event.visible = true;
    form.chk_columns.checked = true;
    form.ListView1.rows = Rows{{"Lamp", "A", "1", "100%", "07:30"},
                               {"Fan & Light", "A", "2", " ", "08:00"},
                               {"B\xFCro", "B", "12", "40%", "sRise:-1"}};
    form.ListView1.key_press.connect([this](int key) { keys.push_back(key); });
    form.ListView1.mouse_down.connect([this](int button) { buttons.push_back(button); });
    form.ListView1.column_click.connect([this](int column) { columns.push_back(column); });
    form.ListView1.double_click.connect([this] { opened.push_back(form.ListView1.selected); });
    open();
    list = view->findChild<view::ListPane*>();
  }

  std::string cell(int row, int column) {
    return list->model()->index(row, column).data().toString().toStdString();
  }
  QPoint place_of(int row) { return list->visualRect(list->model()->index(row, 0)).center(); }
  // The rows that are marked, which must be the one that the control has selected.
  std::vector<int> marked() {
    std::vector<int> found;
    for (const QModelIndex& index : list->selectionModel()->selectedRows())
      found.push_back(index.row());
    return found;
  }
  void click_caption(int column) {
    const QPoint place(list->header()->sectionViewportPosition(column) + 8, 8);
    QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {}, place);
  }

  view::ListPane* list = nullptr;
  std::vector<int> keys;
  std::vector<int> buttons;
  std::vector<int> columns;
  std::vector<int> opened;
};

TEST_F(ListTest, TheMarkedRowIsTheSelectedOneWhateverHappens) {
  form.ListView1.selected = 1;
  form.ListView1.rows = Rows{{"Lamp"}, {"Radio"}, {"Fan"}};
  EXPECT_THAT(marked(), ElementsAre(1)) << "an event is selected that nobody sees";
  form.ListView1.sort_by(0);
  EXPECT_THAT(marked(), ElementsAre(2)) << "the mark did not go with its row";

  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, place_of(2));
  EXPECT_THAT(marked(), ElementsAre(2)) << "Ctrl took the mark, but the row stayed selected";
  QTest::keyClick(list, Qt::Key_Space, Qt::ControlModifier);
  EXPECT_THAT(marked(), ElementsAre(2));
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(20, list->height() - 60));
  EXPECT_THAT(marked(), ElementsAre(2)) << "a click below the rows";

  form.ListView1.show(Rows{{"Radio"}, {"Fan"}}, 0);
  EXPECT_TRUE(marked().empty());
  list->clearFocus();
  list->setFocus(Qt::ActiveWindowFocusReason);
  EXPECT_EQ(form.ListView1.selected.get(), -1) << "coming back to the window selected an event";
  list->clearFocus();
  list->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(form.ListView1.selected.get(), 0);
  EXPECT_THAT(marked(), ElementsAre(0));
}

TEST_F(ListTest, KeysMoveOpenAndDelete) {
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_TRUE(opened.empty()) << "opened no event at all";
  for (const auto& [key, row] : std::vector<std::pair<Qt::Key, int>>{{Qt::Key_Down, 0},
                                                                     {Qt::Key_Down, 1},
                                                                     {Qt::Key_End, 2},
                                                                     {Qt::Key_Up, 1},
                                                                     {Qt::Key_Home, 0},
                                                                     {Qt::Key_PageDown, 2},
                                                                     {Qt::Key_PageUp, 0},
                                                                     {Qt::Key_Right, 0}}) {
    QTest::keyClick(list, key);
    EXPECT_EQ(form.ListView1.selected.get(), row) << key;
    EXPECT_THAT(marked(), ElementsAre(row)) << key;
  }
  QTest::keyClick(list, Qt::Key_Return);
  QTest::keyClick(list, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_THAT(opened, ElementsAre(0, 0));
  QTest::keyClick(list, Qt::Key_D, Qt::ControlModifier);
  QTest::keyClick(list, Qt::Key_Delete);
  form.enabled = false;
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_THAT(keys, ElementsAre(4, 127)) << "a window that is busy deleted an event";
}

TEST_F(ListTest, TheMouseSelectsAndOpens) {
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place_of(1));
  EXPECT_EQ(form.ListView1.selected.get(), 1);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place_of(1));
  EXPECT_THAT(opened, ElementsAre(1));
  QTest::mouseDClick(list->viewport(), Qt::RightButton, {}, place_of(1));
  const QPoint below(20, list->height() - 60);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, below);
  EXPECT_THAT(opened, ElementsAre(1)) << "only two left clicks on a row open it";
}

TEST_F(ListTest, TheMenuIsForTheRowUnderThePointerOrTheMarkedOne) {
  EXPECT_EQ(cell(2, 0), "B\u00FCro");
  form.ListView1.selected = 0;
  ask_for_menu(list, place_of(2));
  EXPECT_EQ(form.ListView1.selected.get(), 2);
  ask_for_menu(list, QPoint(20, list->height() - 60));
  EXPECT_EQ(form.ListView1.selected.get(), 2) << "below the rows the selection stays";
  EXPECT_THAT(buttons, ElementsAre(2, 2));

  form.ListView1.rows = Rows(500, {"Lamp"});
  form.ListView1.selected = 400;
  list->scrollToTop();
  list->setFocus();
  form.ListView1.mouse_down.connect([this](int) { form.mnuPopup1.popped_up(); });
  QMenu* menu = menu_by_key(list);
  ASSERT_TRUE(menu);
  const QRect row = list->visualRect(list->currentIndex());
  EXPECT_TRUE(list->viewport()->rect().intersects(row)) << "the menu of a row out of sight";
  EXPECT_EQ(form.ListView1.selected.get(), 400);
  std::string chosen;
  form.mnu_runeventnow.click.connect([&] { chosen += "run "; });
  form.mnu_delevent.click.connect([&] { chosen += "delete "; });
  for (const char* entry : {"Run this event now", "Delete this event"})
    for (QAction* action : menu->actions())
      if (action->text() == entry) action->trigger();
  EXPECT_EQ(chosen, "run delete ");
  menu->close();
}

TEST_F(ListTest, CaptionsAskForAnOrderAndShowTheOneThereIs) {
  QHeaderView* header = list->header();
  EXPECT_FALSE(header->isSortIndicatorShown()) << "in no order yet";
  click_caption(4);
  click_caption(0);
  EXPECT_THAT(columns, ElementsAre(5, 1));
  EXPECT_EQ(cell(0, 0), "Lamp") << "the list sorted by itself";
  form.ListView1.column_click.connect([this](int column) { form.ListView1.sort_by(column - 1); });
  for (int clicks = 0; clicks < 2; ++clicks) {
    click_caption(4);
    EXPECT_TRUE(header->isSortIndicatorShown());
    EXPECT_EQ(header->sortIndicatorSection(), 4);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::AscendingOrder) << "the arrow says the opposite";
  }
  form.ListView1.sort_key = -1;
  EXPECT_FALSE(header->isSortIndicatorShown());
}

TEST_F(ListTest, AMarkStaysWithItsRowAndSaysWhy) {
  const auto warned = [this](int row) {
    const QModelIndex index = list->model()->index(row, 0);
    const QString text = index.data(Qt::AccessibleTextRole).toString();
    return !index.data(Qt::DecorationRole).isNull() && text.contains("no such device") &&
           index.data(Qt::ToolTipRole) == "no such device";
  };
  form.ListView1.marks = std::map<int, std::string>{{0, "no such device"}, {7, "no such row"}};
  EXPECT_TRUE(warned(0));
  form.ListView1.sort_by(0);  // Fan, Buero, Lamp
  EXPECT_TRUE(warned(2) && !warned(0)) << "the mark stayed where another row is now";
  form.ListView1.show(Rows{{"Radio"}, {"Bell"}}, 0, {{1, "no such device"}});
  EXPECT_TRUE(warned(0) && !warned(1));

  form.frm_macros.visible = true;
  form.ListVIew2.add("one");
  form.ListVIew2.marks = std::map<int, std::string>{{0, "no such device"}};
  form.ListVIew2.add("two");
  const auto* macros = view->findChild<QListWidget*>();
  EXPECT_EQ(macros->item(0)->toolTip(), "no such device");
  EXPECT_TRUE(macros->item(1)->toolTip().isEmpty());
  form.ListVIew2.clear();
  form.ListVIew2.add("three");
  EXPECT_TRUE(macros->item(0)->icon().isNull()) << "a mark of the list before";
}

TEST_F(ListTest, ColumnsCanBeReadInAnyFontAndStayAsAPersonDraggedThem) {
  QHeaderView* header = list->header();
  QFont large = list->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  for (const QFont& font : {list->font(), large}) {
    list->setFont(font);
    for (int column = 0; column < 5; ++column)
      EXPECT_GE(header->sectionSize(column), QFontMetrics(font).horizontalAdvance(
                                                 list->model()->index(2, column).data().toString()))
          << column << " at " << font.pointSizeF();
  }
  list->setFont(QFont());
  view->resize(700, 500);
  QTest::qWait(0);
  EXPECT_EQ(list->horizontalScrollBar()->maximum(), 0) << "wide columns gave up no room";
  view->resize(1300, 700);
  QTest::qWait(0);
  EXPECT_EQ(header->sectionSize(0), 190);

  const QPoint edge(header->sectionViewportPosition(1) - 1, 8);
  QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
  QTest::mouseMove(header->viewport(), edge + QPoint(40, 0));
  QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(40, 0));
  const int dragged = header->sectionSize(0);
  EXPECT_NE(dragged, 190);
  form.ListView1.rows = Rows{{"Lamp"}};
  view->resize(1000, 700);
  QTest::qWait(0);
  EXPECT_EQ(header->sectionSize(0), dragged);
}

TEST_F(ListTest, NewRowsLeaveALongListWhereItIs) {
  form.ListView1.rows = Rows(1000, {"Lamp", "A", "1"});
  QTest::qWait(0);
  list->verticalScrollBar()->setValue(500);
  const int top = list->indexAt(QPoint(5, 5)).row();
  ASSERT_GT(top, 0);
  form.ListView1.rows = Rows(999, {"Lamp", "A", "1"});
  QTest::qWait(0);
  EXPECT_EQ(list->indexAt(QPoint(5, 5)).row(), top);
}

TEST_F(ListTest, AHundredThousandRowsAreShownWithoutReadingThemAll) {
  class CountedModel : public view::ListModel {
   public:
    using view::ListModel::ListModel;
    QVariant data(const QModelIndex& index, int role) const override {
      ++asked;
      return view::ListModel::data(index, role);
    }
    mutable long asked = 0;
  };
  Rows rows(100000, {"Lamp", "A", "1", "100%", "07:30", "on", "daily", "mtwufsr"});
  auto* counted = new CountedModel(form.ListView1, list);
  list->setModel(counted);
  form.ListView1.rows = std::move(rows);
  counted->reload();
  list->grab();
  EXPECT_GT(counted->asked, 0);
  EXPECT_LT(counted->asked, 20000) << "work for rows that nobody sees";
}

TEST_F(ListTest, WhileItIsDisabledItCanBeReadAndTakesNothing) {
  form.ListView1.selected = 1;
  form.ListView1.enabled = false;
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place_of(2));
  EXPECT_EQ(form.ListView1.selected.get(), 1);
  const QPalette usual = QApplication::palette();
  for (const QPalette& desktop : {QPalette(Qt::white), QPalette(QColor(50, 50, 50))}) {
    QApplication::setPalette(desktop);
    const QPalette colours = list->palette();
    const auto lightness = [&colours](QPalette::ColorRole role) {
      return colours.color(QPalette::Disabled, role).lightness();
    };
    EXPECT_GT(std::abs(lightness(QPalette::Text) - lightness(QPalette::Base)), 90);
    EXPECT_GT(std::abs(lightness(QPalette::HighlightedText) - lightness(QPalette::Highlight)), 110);
    EXPECT_NE(lightness(QPalette::Text),
              colours.color(QPalette::Active, QPalette::Text).lightness())
        << "it looks as if it took clicks";
  }
  QApplication::setPalette(usual);
}

TEST_F(ListTest, SaysThatThereAreNoEventsAndHowToBegin) {
  int begun = 0;
  form.Command5.click.connect([&begun] { ++begun; });
  form.ListView1.rows = Rows();
  form.lab_noevents.visible = true;
  QTest::qWait(0);
  ASSERT_FALSE(list->isVisible());
  auto* words = shown<QLabel>().front();
  for (auto* label : shown<QLabel>())
    if (label->text().startsWith("You have no timed events yet.")) words = label;
  ASSERT_TRUE(words->text().startsWith("You have no timed events yet."));
  EXPECT_LE(words->heightForWidth(words->width()), words->height()) << "its end is cut off";
  for (auto* button : shown<QPushButton>())
    if (button->text() == "Add an event") QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(begun, 1);
  QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
  QApplication::sendEvent(words->parentWidget(), &menu);
  EXPECT_THAT(buttons, ElementsAre(2)) << "the menu of the list opens where its rows would be";
}

}  // namespace
}  // namespace homewarden::testing
