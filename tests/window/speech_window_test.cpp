// A person who speaks to the window: keys, figure, bubble and property sheet, with a recogniser
// that hears what the test says.

#include <QComboBox>
#include <QContextMenuEvent>
#include <QKeySequenceEdit>
#include <fstream>
#include <sstream>

#include "tests/platform/fake_recogniser.h"
#include "tests/window/house_window.h"
#include "ui/qt/character_bubble.h"
#include "ui/qt/character_view.h"
#include "ui/qt/free_place.h"
#include "ui/qt/motion.h"
#include "ui/qt/speech_view.h"
#include "voice/agent.h"

namespace homewarden::testing {
namespace {

using Verdict = Heard::Verdict;

// What must be there before the house opens.
struct Voice {
  void prepare(EventHouse& house) {
    std::ifstream file(HOMEWARDEN_SOURCES "/characters/merlin.acs", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    house.files.contents[House::file("merlin.acs")] = text.str();
    recogniser = std::make_unique<FakeRecogniser>(house.loop);
    agent = std::make_unique<Agent>(figure_form, sheet, *recogniser, microphones, house.files,
                                    house.settings, house.loop, House::kFolder);
    house.used_speech = agent.get();
  }

  FrmCharacter figure_form;
  FrmSpeechSheet sheet;
  FakeMicrophones microphones;
  std::unique_ptr<FakeRecogniser> recogniser;
  std::unique_ptr<Agent> agent;
};

class SpeechWindow : public Voice, public HouseWindow {
 protected:
  SpeechWindow() : HouseWindow(kFurnished, {}, [this](EventHouse& now) { prepare(now); }) {
    speech = std::make_unique<view::SpeechView>(house.form(), figure_form, sheet, view.get());
    settle();
    house.line();
  }
  ~SpeechWindow() override {
    view::set_less_motion(false);
    speech.reset();
    view.reset();
    house.forget_program();
    agent.reset();
  }

  template <class Widget>
  static Widget* top_level() {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* one = dynamic_cast<Widget*>(widget); one && one->isVisible()) return one;
    return nullptr;
  }
  void key(Qt::Key which) {
    QWidget* focus = view->focusWidget();
    QTest::keyClick(focus ? focus : view.get(), which);
    settle();
  }
  void listen() {
    key(Qt::Key_ScrollLock);
    ASSERT_TRUE(recogniser->is_listening());
  }
  void hear(Verdict verdict, const std::string& words) {
    recogniser->say(verdict, words);
    settle();
  }

  std::unique_ptr<view::SpeechView> speech;
};

// Catches: a pose that looks like another; a figure that moves for whoever
// has asked for none.
TEST_F(SpeechWindow, TheFigureShowsWhatBecomesOfACommand) {
  view::set_less_motion(true);
  EXPECT_FALSE(top_level<view::CharacterView>());
  listen();
  auto* figure = top_level<view::CharacterView>();
  ASSERT_TRUE(figure);
  EXPECT_EQ(figure->accessibleName(), "Lantern keeper, listening");
  EXPECT_EQ(house.form().lab_voicestate.caption.get(), "Listening");
  std::vector<QImage> poses{figure->grab().toImage()};
  QTest::qWait(600);  // longer than any frame of it
  EXPECT_EQ(figure->grab().toImage(), poses.back()) << "no motion was asked for";
  hear(Verdict::kAccepted, "Kitchen Table Lamp on");
  poses.push_back(figure->grab().toImage());
  auto* bubble = top_level<view::CharacterBubble>();
  ASSERT_TRUE(bubble);
  EXPECT_EQ(bubble->accessibleName(), "Kitchen Table Lamp on");
  EXPECT_FALSE(bubble->geometry().intersects(figure->geometry()));
  settle(4s);
  EXPECT_THAT(house.line(), ElementsAre(::testing::EndsWith("A3 2")));
  poses.push_back(figure->grab().toImage());
  listen();
  hear(Verdict::kRefused, "kitchen kettle of");
  poses.push_back(figure->grab().toImage());
  for (std::size_t one = 0; one < poses.size(); ++one)
    for (std::size_t other = 0; other < one; ++other) EXPECT_NE(poses[one], poses[other]);
  listen();
  key(Qt::Key_Escape);
  EXPECT_FALSE(recogniser->is_listening());
}

// Catches: a question that only the mouse can answer; an Enter meant for something else that
// switches a lamp.
TEST_F(SpeechWindow, AQuestionIsAnsweredByKeysUntilOthersArePressed) {
  listen();
  hear(Verdict::kNearly, "Hall Lamp on");
  EXPECT_TRUE(top_level<view::CharacterBubble>()->findChild<QPushButton*>()->isVisible());
  key(Qt::Key_Return);
  settle(2s);
  EXPECT_THAT(house.line(), ElementsAre(::testing::EndsWith("B12 2")));
  for (const auto& keys : {std::vector{Qt::Key_Escape, Qt::Key_Return},
                           std::vector{Qt::Key_Shift, Qt::Key_Right, Qt::Key_Return}}) {
    listen();
    hear(Verdict::kNearly, "Hall Lamp on");
    for (const Qt::Key one : keys) key(one);
    settle(9s);
    EXPECT_THAT(house.line(), IsEmpty());
    EXPECT_FALSE(top_level<view::CharacterBubble>() && figure_form.asking);
  }
}

TEST_F(SpeechWindow, TheFigureStaysWhereItIsDraggedAndStepsAsideForAField) {
  listen();
  auto* figure = top_level<view::CharacterView>();
  const auto drag_to = [figure](const QPoint& place) {
    QTest::mousePress(figure, Qt::LeftButton, {}, {20, 20});
    for (int turn = 0; turn < 3; ++turn) {
      const QPoint at = figure->mapFromGlobal(place + QPoint(20, 20));
      QMouseEvent move(QEvent::MouseMove, at, figure->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                       Qt::NoModifier);
      QApplication::sendEvent(figure, &move);
    }
    QTest::mouseRelease(figure, Qt::LeftButton, {}, {20, 20});
  };
  drag_to({300, 260});
  EXPECT_EQ(figure->pos(), QPoint(300, 260));
  EXPECT_EQ(house.settings.read("agent", "Place", ""), "300,260");
  drag_to({5000, -5000});
  const QRect screen = view::screen_around({300, 260});
  EXPECT_TRUE(screen.contains(figure->geometry())) << "it could not be fetched back";

  auto* button = shown<QPushButton>("Speech properties...");
  const QPoint over = button->mapToGlobal(QPoint(0, 0));
  drag_to(over);
  QApplication::setActiveWindow(view.get());
  button->setFocus();
  settle();
  EXPECT_FALSE(figure->geometry().intersects(QRect(over, button->size())));
  EXPECT_EQ(figure_form.place.get()->left, over.x()) << "its own place is not forgotten";
}

// Catches: commands that can be said and not chosen; a menu of another house.
TEST_F(SpeechWindow, EveryCommandCanBeChosenFromTheListByKeys) {
  listen();
  auto* figure = top_level<view::CharacterView>();
  QContextMenuEvent ask(QContextMenuEvent::Mouse, {10, 10}, figure->mapToGlobal(QPoint(10, 10)));
  QApplication::sendEvent(figure, &ask);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_TRUE(menu);
  QStringList entries;
  for (const QAction* entry : menu->actions())
    if (!entry->isSeparator()) entries << entry->text();
  EXPECT_EQ(entries, QStringList({"Homewarden", "Change Speech Properties", "Repeat Command",
                                  "Hall", "Kitchen", "Hide"}));
  menu->setActiveAction(menu->actions()[4]);
  QTest::keyClick(menu, Qt::Key_Right);
  auto* hall = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(hall, menu);
  QTest::keyClick(hall, Qt::Key_Up);  // from the first to the last
  QTest::keyClick(hall, Qt::Key_Return);
  settle(2s);
  EXPECT_THAT(house.line(), ElementsAre(::testing::EndsWith("B12 3")));
}

// Catches: a sheet that blocks the window; a key that counts before it is kept, or not in the
// sheet.
TEST_F(SpeechWindow, ThePropertySheetWorksBesideTheWindow) {
  house.form().cmd_speechproperties.click();
  settle();
  auto* shown_sheet = top_level<view::SpeechSheetView>();
  ASSERT_TRUE(shown_sheet);
  EXPECT_FALSE(shown_sheet->isModal());
  auto* list = shown_sheet->findChild<QComboBox*>();
  QTest::keyClick(list, Qt::Key_Down);
  settle();
  EXPECT_EQ(microphones.chosen, "usb-1");
  auto* keys = shown_sheet->findChild<QKeySequenceEdit*>();
  keys->setFocus();
  QTest::keyClick(keys, Qt::Key_A);
  list->setFocus();
  EXPECT_EQ(sheet.key.get(), "") << "nobody could write an a any more";
  keys->setFocus();
  QTest::keyClick(keys, Qt::Key_F9);
  list->setFocus();
  settle();
  EXPECT_EQ(house.settings.read("agent", "Key", ""), "F9");
  key(Qt::Key_F9);
  EXPECT_TRUE(recogniser->is_listening());
  key(Qt::Key_F9);
  EXPECT_FALSE(recogniser->is_listening());
  recogniser->guessed({{"Zoe", {"zoe"}}});
  settle();
  QLineEdit* spoken = nullptr;
  for (auto* edit : shown_sheet->findChildren<QLineEdit*>())
    if (edit->accessibleName() == "Zoe, spoken as") spoken = edit;
  ASSERT_TRUE(spoken);
  type_text(spoken, "zo ee");
  QTest::keyClick(spoken, Qt::Key_Return);
  settle();
  EXPECT_EQ(house.settings.read("spoken", "Zoe", ""), "zo ee");
  EXPECT_TRUE(shown_sheet->isVisible()) << "Enter in a field is no answer to the sheet";
  QTest::keyClick(shown_sheet, Qt::Key_Escape);
  settle();
  EXPECT_FALSE(sheet.visible);
}

}  // namespace
}  // namespace homewarden::testing
