// The main window with real clicks and keys.

#include <QCheckBox>
#include <QScreen>
#include <QScrollBar>
#include <QSlider>
#include <QToolButton>
#include <algorithm>

#include "tests/window/form_window.h"
#include "ui/qt/device_card.h"
#include "ui/qt/wait_window_view.h"

namespace homewarden::testing {
namespace {

struct WindowTest : FormWindow {
  WindowTest() {
    form.Tree.root_lines = true;
    for (const char* fixed : {"Home", "Events", "Macros"}) form.Tree.add(nullptr, fixed, fixed);
    TreeNode* room = form.Tree.add(nullptr, "B\xFCro", "B\xFCro");
    form.Tree.add(room, "Lamp~A~3", "Lamp");
    form.Tree.add(room, "Fan~A~4", "Fan");
    form.Tree.click.connect([this] { clicks.push_back(form.Tree.selected.get()->text); });
    form.Tree.key_press.connect([this](int key) { keys.push_back(key); });
    form.Tree.mouse_down.connect([this](int button) { buttons.push_back(button); });
    form.frm_home.visible = true;
    open();
    tree = view->findChild<QTreeView*>();
    tree->setFocus();
  }

  QPoint place_of(const char* text) {
    const auto found = tree->model()->match(tree->model()->index(0, 0), Qt::DisplayRole, text, 1,
                                            Qt::MatchExactly | Qt::MatchRecursive);
    EXPECT_EQ(found.size(), 1) << text;
    return found.isEmpty() ? QPoint() : tree->visualRect(found.front()).center();
  }
  void press(const char* text, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(tree->viewport(), button, {}, place_of(text));
  }

  std::vector<std::string> take_clicks() { return std::exchange(clicks, {}); }
  std::string selected() {
    const TreeNode* node = form.Tree.selected;
    return node ? node->text : "";
  }

  // Fills two slots: a lamp with a slider and a fan without.
  void show_devices() {
    form.frm_devices.visible = true;
    form.devicename[0].caption = "Lamp";
    form.devicename[1].caption = "Fan";
    for (const std::size_t slot : {0u, 1u}) form.device[slot].visible = true;
    form.image1[0].visible = true;
    QTest::qWait(0);
  }
  QTreeView* tree = nullptr;
  std::vector<std::string> clicks;
  std::vector<int> keys;
  std::vector<int> buttons;
};

constexpr const char* kOffice = "B\u00FCro";

TEST_F(WindowTest, InTheTreeSelectingIsNotClicking) {
  EXPECT_EQ(place_of("Lamp"), QRect().center()) << "rooms are closed at first";
  press(kOffice);
  press("Lamp");
  press("Lamp");
  EXPECT_THAT(take_clicks(), ElementsAre("B\xFCro", "Lamp", "Lamp"));
  ask_for_menu(tree, place_of("Fan"));
  EXPECT_EQ(selected(), "Fan");
  EXPECT_THAT(buttons, ElementsAre(1, 1, 1, 2));
  for (const auto key : {Qt::Key_Up, Qt::Key_Home, Qt::Key_Down, Qt::Key_End, Qt::Key_L})
    QTest::keyClick(tree, key);
  EXPECT_EQ(selected(), "Lamp") << "typing the beginning of a name selects it";
  EXPECT_TRUE(take_clicks().empty()) << "moving onto a device switched it";
  QTest::keyClick(tree, Qt::Key_Return);
  QTest::keyClick(tree, Qt::Key_Space);
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
  QApplication::sendEvent(tree, &held);
  EXPECT_THAT(take_clicks(), ElementsAre("Lamp", "Lamp")) << "a key held down switches once";
  QTest::keyClick(tree, Qt::Key_D, Qt::ControlModifier);
  QTest::keyClick(tree, Qt::Key_Delete);
  EXPECT_THAT(keys, ElementsAre(4, 127));

  QTest::mousePress(tree->viewport(), Qt::LeftButton, {}, place_of("Events"));
  QTest::mouseRelease(tree->viewport(), Qt::LeftButton, {}, place_of("Fan"));
  EXPECT_TRUE(take_clicks().empty()) << "let go on another node";
  press("Fan");
  take_clicks();
  const QPoint arrow(tree->visualRect(tree->model()->index(3, 0)).left() - 9,
                     place_of(kOffice).y());
  QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, arrow);
  EXPECT_FALSE(tree->isExpanded(tree->model()->index(3, 0)));
  EXPECT_TRUE(take_clicks().empty()) << "the arrow clicked the room";
  EXPECT_EQ(selected(), "B\xFCro") << "a device that cannot be seen stayed what the keys act on";
}

TEST_F(WindowTest, ARightClickBesideAllNodesSelectsNothing) {
  press(kOffice);
  press("Lamp");
  take_clicks();
  buttons.clear();
  ask_for_menu(tree, QPoint(20, tree->viewport()->height() - 5));
  EXPECT_EQ(form.Tree.selected.get(), nullptr) << "its menu or Delete would take the lamp";
  EXPECT_FALSE(tree->currentIndex().isValid());
  EXPECT_TRUE(buttons.empty()) << "a menu for nothing";
  for (const auto key : {Qt::Key_Return, Qt::Key_Space}) QTest::keyClick(tree, key);
  EXPECT_TRUE(take_clicks().empty());
  form.frm_event.visible = true;
  tree->clearFocus();
  tree->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(form.Tree.selected.get(), nullptr) << "coming back selected the first node";
}

TEST_F(WindowTest, ChangingTheTreeKeepsItsOpenRoomsAndItsSelection) {
  press(kOffice);
  press("Lamp");
  take_clicks();
  form.Tree.remove(form.Tree.find("Lamp~A~3"));
  EXPECT_EQ(form.Tree.selected.get(), nullptr);
  {
    const TreeView::Batch batch(form.Tree);
    form.Tree.remove(form.Tree.roots()[3].get());
    TreeNode* room = form.Tree.add(nullptr, "B\xFCro", "B\xFCro");
    form.Tree.selected = form.Tree.add(room, "Radio~A~5", "Radio");
  }
  EXPECT_NE(place_of("Radio"), QRect().center());
  EXPECT_EQ(selected(), "Radio");
  EXPECT_EQ(tree->currentIndex().data().toString(), "Radio");
  form.Tree.selected = form.Tree.find("Events");
  EXPECT_EQ(tree->currentIndex().data().toString(), "Events");
  EXPECT_TRUE(take_clicks().empty()) << "the program's own selection counted as a click";
}

TEST_F(WindowTest, CardsOfDevices) {
  show_devices();
  int presses = 0;
  form.device[1].click.connect([&] { ++presses; });
  const auto cards = shown<view::DeviceCard>();
  ASSERT_EQ(cards.size(), 2u);
  auto* card = cards[1];
  QTest::mouseClick(card, Qt::LeftButton, {}, QPoint(12, 12));
  QTest::mouseClick(card, Qt::LeftButton, {}, QPoint(card->width() / 2, card->height() - 12));
  QTest::keyClick(card, Qt::Key_Space);
  QTest::keyClick(card, Qt::Key_Return);
  EXPECT_EQ(presses, 4) << "the whole card is the target";
  QTest::mousePress(card, Qt::LeftButton, {}, card->rect().center());
  QTest::mouseRelease(card, Qt::LeftButton, {}, QPoint(-20, 2));
  EXPECT_EQ(presses, 4) << "let go elsewhere";
  form.device[1].tool_tip = "Click me to turn this device OFF";
  EXPECT_EQ(card->toolTip(), "Click me to turn this device OFF");
  EXPECT_EQ(shown<QSlider>().size(), 1u) << "a fan has no slider";
  form.Statusbar.panel2 = "Hall <b> Lamp";
  EXPECT_TRUE(named<QLabel>("Status")->toolTip().contains("Hall &lt;b&gt; Lamp"));
}

TEST_F(WindowTest, AMoveOfTheSliderIsReportedOnce) {
  show_devices();
  std::vector<int> moves;
  form.image1[0].moved.connect([&] { moves.push_back(form.image1[0].value); });
  QSlider* slider = shown<QSlider>().front();
  form.image1[0].value = 80;  // the program's move
  EXPECT_EQ(slider->value(), 80);
  QTest::qWait(500);
  EXPECT_TRUE(moves.empty());

  slider->setSliderDown(true);
  for (const int position : {70, 50, 30}) slider->setSliderPosition(position);
  QTest::qWait(500);
  EXPECT_TRUE(moves.empty()) << "reported while it was being dragged";
  slider->setSliderDown(false);
  QTest::qWait(500);
  EXPECT_THAT(moves, ElementsAre(30));

  for (int step = 0; step < 4; ++step) QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_TRUE(QTest::qWaitFor([&] { return moves.size() == 2; }, 2000));
  EXPECT_THAT(moves, ElementsAre(30, 50));

  tree->setFocus();
  QWheelEvent wheel(QPointF(5, 5), slider->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(slider, &wheel);
  EXPECT_EQ(slider->value(), 50) << "scrolling over the page dimmed a lamp";
  QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->width() - 8, slider->height() / 2));
  ASSERT_EQ(moves.size(), 3u);
  EXPECT_GT(moves.back(), 90) << "a click at the end did not bring the handle there";
}

TEST_F(WindowTest, ASliderGoesBackAndForgetsAMoveMeantForAnotherDevice) {
  show_devices();
  Slider& control = form.image1[0];
  control.value = 60;
  int moves = 0;
  control.moved.connect([&] {
    ++moves;
    control.value = 60;  // it cannot be carried out
  });
  QSlider* slider = shown<QSlider>().front();
  slider->setSliderDown(true);
  slider->setSliderPosition(90);
  slider->setSliderDown(false);
  EXPECT_EQ(moves, 1);
  EXPECT_EQ(slider->value(), 60);
  QTest::keyClick(slider, Qt::Key_Right);
  control.put_back();
  EXPECT_EQ(slider->value(), 60);
  QTest::keyClick(slider, Qt::Key_Right);
  form.devicename[0].caption = "Reading lamp";
  slider->setSliderDown(true);
  slider->setSliderPosition(90);
  form.lab_room.caption = "Hall";
  EXPECT_EQ(slider->value(), 60);
  control.value = 10;  // an event's level, below the bar
  slider->setSliderDown(true);
  slider->setSliderDown(false);
  QTest::qWait(500);
  EXPECT_EQ(moves, 1) << "the lamp of one room was moved in another";
}

TEST_F(WindowTest, ACardSaysWhatItIsAndWhatBecameOfAPress) {
  show_devices();
  auto* card = shown<view::DeviceCard>().front();
  auto* retry = card->findChild<QPushButton*>();
  int presses = 0;
  int tries = 0;
  form.device[0].click.connect([&] { ++presses; });
  form.lab_notsent[0].click.connect([&] { ++tries; });
  const QSize size = card->size();
  CardFace lamp;
  lamp.dimmable = true;
  const auto says = [&](CardFace face) {
    form.cardface[0] = face;
    return card->words().toStdString();
  };
  EXPECT_EQ(says(lamp), "Off");
  lamp.on = true;
  lamp.level = 40;
  EXPECT_EQ(says(lamp), "40\u00A0%");
  lamp.state = CardState::kWaiting;
  lamp.wished = 0;
  EXPECT_EQ(says(lamp), "Waiting: off");
  lamp.state = CardState::kSending;
  EXPECT_EQ(says(lamp), "Turning off");
  lamp.wished = 70;
  lamp.wishes_level = true;
  EXPECT_EQ(says(lamp), "Setting 70\u00A0%");
  lamp.wished.reset();
  EXPECT_EQ(says(lamp), "Sending") << "an event's";
  EXPECT_TRUE(card->accessibleDescription().contains("Sending"));
  QTest::mouseClick(card, Qt::LeftButton, {}, QPoint(12, 12));
  EXPECT_EQ(presses, 1) << "a card that waits takes no press";
  form.lab_notsent[0].visible = true;
  EXPECT_FALSE(retry->isVisible()) << "not sent, while it is being sent";
  lamp.state = CardState::kIdle;
  EXPECT_EQ(says(lamp), "Not sent");
  QTest::mouseClick(retry, Qt::LeftButton);
  retry->setFocus();
  QTest::keyClick(retry, Qt::Key_Space);
  EXPECT_EQ(tries, 2);
  EXPECT_EQ(presses, 1) << "sending again switched it as well";
  lamp.state = CardState::kWaiting;
  form.cardface[0] = lamp;
  EXPECT_TRUE(card->hasFocus()) << "the focus went with the button";
  EXPECT_EQ(card->size(), size);
}

TEST_F(WindowTest, BoxesTellTheirControlsOnceAndListenToThem) {
  int clicks_of_box = 0;
  form.frm_home.visible = false;
  form.frm_settings.visible = true;
  QApplication::processEvents();
  form.Check1.click.connect([&] { ++clicks_of_box; });
  QCheckBox* box = nullptr;
  for (QCheckBox* candidate : shown<QCheckBox>())
    if (candidate->text() == "Daylight Saving Time") box = candidate;
  ASSERT_TRUE(box);
  QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
  EXPECT_TRUE(form.Check1.checked);
  EXPECT_EQ(clicks_of_box, 1);
  form.Check1.checked = false;
  EXPECT_FALSE(box->isChecked());
  EXPECT_EQ(clicks_of_box, 2);
}

TEST_F(WindowTest, ADisabledWindowTakesNoInputButCanBeClosed) {
  show_devices();
  int clicks_of_device = 0;
  int closes = 0;
  form.device[0].click.connect([&] { ++clicks_of_device; });
  form.close_requested.connect([&] { ++closes; });
  auto* button = shown<view::DeviceCard>().front();
  form.enabled = false;
  QTest::mouseClick(button, Qt::LeftButton);
  QTest::keyClick(button, Qt::Key_Space);
  EXPECT_EQ(clicks_of_device, 0);
  view->close();
  EXPECT_EQ(closes, 1);
  EXPECT_TRUE(view->isVisible()) << "it closes when the program has done its last work";
  form.enabled = true;
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(clicks_of_device, 1);
}

TEST_F(WindowTest, PlaceAndPanelFollowTheForm) {
  form.left = 1500;
  form.top = 750;
  EXPECT_EQ(view->pos(), QPoint(100, 50));
  view->move(40, 20);
  EXPECT_EQ(form.left.get(), 600.0F);
  EXPECT_EQ(form.top.get(), 300.0F);
  form.width = 600.0F * 15;
  form.height = 400.0F * 15;
  EXPECT_EQ(view->size(), QSize(600, 400));
  view->resize(640, 360);
  EXPECT_EQ(form.width.get(), 640.0F * 15);
  EXPECT_EQ(form.height.get(), 360.0F * 15);
  form.visible = false;
  form.width = 90000;
  form.visible = true;
  const QRect screen = view->screen()->availableGeometry();
  EXPECT_NEAR(view->frameGeometry().width(), screen.width(), 12) << "parts cannot be reached";
  EXPECT_LE(view->frameGeometry().right(), screen.right());
  EXPECT_EQ(form.width.get(), static_cast<float>(view->width()) * 15);
  form.lab_room.caption = "B\xFCro";
  form.frm_devices.visible = true;
  form.frm_home.visible = false;
  EXPECT_TRUE(shows("B\u00FCro"));
  form.lab_notice.visible = true;  // a page that is not shown stays hidden
  EXPECT_TRUE(shown<QCheckBox>().empty());
}

TEST_F(WindowTest, EverythingHasANameForAScreenReader) {
  show_devices();
  for (Frame* frame :
       {&form.frm_addroom, &form.frm_adddevice, &form.frm_event, &form.frm_macros, &form.Frame4,
        &form.Frame5, &form.Frame3, &form.frm_settings, &form.frm_home})
    frame->visible = true;
  int named = 0;
  for (QWidget* widget : view->findChildren<QWidget*>()) {
    const bool inner = widget->objectName().startsWith("qt_") ||
                       qobject_cast<QScrollBar*>(widget) ||
                       qobject_cast<QComboBox*>(widget->parentWidget());
    if (inner || widget->window() != view.get() || !(widget->focusPolicy() & Qt::TabFocus))
      continue;
    const auto* button = qobject_cast<QAbstractButton*>(widget);
    const bool has_text = button && !button->text().isEmpty();
    if (dynamic_cast<const view::DeviceCard*>(button) && !widget->isVisibleTo(view.get())) continue;
    EXPECT_TRUE(has_text || !widget->accessibleName().isEmpty() || widget->isHidden())
        << widget->metaObject()->className() << " in "
        << widget->parentWidget()->metaObject()->className();
    ++named;
  }
  EXPECT_GT(named, 30);
}

TEST(WaitWindow, ShowsItsStepsAndCanSkipTheDelay) {
  FrmWait form;
  view::WaitWindowView view(form);
  form.visible = true;
  form.Label1.caption = "Time Delay 20";
  EXPECT_TRUE(view.isVisible());
  auto* skip = view.findChild<QPushButton*>();
  EXPECT_FALSE(skip->isVisible());
  form.lab_wait.visible = true;
  int skips = 0;
  form.lab_wait.click.connect([&] { ++skips; });
  QTest::mouseClick(skip, Qt::LeftButton);
  EXPECT_EQ(skips, 1);
  view.close();
  EXPECT_TRUE(view.isVisible());
  form.visible = false;
  EXPECT_FALSE(view.isVisible());
}

}  // namespace
}  // namespace homewarden::testing
