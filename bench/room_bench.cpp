// How long the window is busy while somebody drags its edge over a room of 200 devices, and from a
// press on a card to the card that shows it.

#include <time.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "ui/frm_main.h"
#include "ui/qt/appearance.h"
#include "ui/qt/device_card.h"
#include "ui/qt/main_window_view.h"

namespace {

using homewarden::CardFace;
using homewarden::FrmMain;
using homewarden::HousePanel;
using homewarden::RoomPage;

constexpr int kDevices = 200;

void furnish(FrmMain& form, const std::string& pictures) {
  homewarden::TreeNode* room = form.Tree.add(nullptr, "Hall", "Hall");
  std::vector<RoomPage> pages;
  for (int number = 1; number <= kDevices; ++number) {
    const std::string name = "Lamp " + std::to_string(number);
    form.Tree.add(room, name, name);
    if (number % HousePanel::kSlots == 1) pages.push_back({number, number + 9, 5});
  }
  form.lab_room.caption = std::string("Hall");
  form.lab_count.caption = std::string("100 of 200 on");
  form.pages = pages;
  for (std::size_t slot = 0; slot < HousePanel::kSlots; ++slot) {
    const bool on = slot % 2 == 0;
    form.devicename[slot].caption = "Lamp " + std::to_string(slot + 1);
    form.device[slot].file = pictures + (on ? "/html/bulbon.gif" : "/html/bulboff.gif");
    form.image1[slot].value = on ? 70 : 20;
    CardFace face;
    face.on = on;
    face.level = on ? 70 : 0;
    face.dimmable = true;
    form.cardface[slot] = face;
    form.image1[slot].visible = true;
    form.device[slot].visible = true;
  }
}

void report(const char* what, std::vector<double> milliseconds) {
  std::sort(milliseconds.begin(), milliseconds.end());
  std::printf("%s: median %.1f ms, 95 %% %.1f ms, longest %.1f ms\n", what,
              milliseconds[milliseconds.size() / 2], milliseconds[milliseconds.size() * 95 / 100],
              milliseconds.back());
}

double processor_time() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// Does something to a window and turns the event loop until the widget has been painted.
class Painted : public QObject {
 public:
  explicit Painted(QWidget& widget) { widget.installEventFilter(this); }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return false;
  }
  void act(const auto& what) {
    QElapsedTimer whole;
    whole.start();
    painted_ = false;
    turn(what);
    while (!painted_ && whole.elapsed() < 1000) turn([] {});
    until_painted.push_back(static_cast<double>(whole.nsecsElapsed()) / 1e6);
    turn([] {});
  }

  std::vector<double> until_painted;  // milliseconds
  std::vector<double> turns;          // those that did something
  std::vector<double> busy;           // their processor time, which other programs do not add to

 private:
  void turn(const auto& what) {
    QElapsedTimer timer;
    timer.start();
    const double begin = processor_time();
    what();
    QApplication::processEvents();
    const double used = processor_time() - begin;
    if (used < 0.05) return;
    turns.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    busy.push_back(used);
  }

  bool painted_ = false;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  homewarden::view::Appearance appearance;
  FrmMain form;
  furnish(form, argc > 1 ? argv[1] : ".");
  form.frm_devices.visible = true;
  homewarden::view::MainWindowView view(form);
  form.visible = true;
  view.resize(1280, 800);
  if (!QTest::qWaitForWindowExposed(&view)) return 1;
  QTest::qWait(500);

  Painted window(view);
  for (int step = 0; step < 300; ++step) {
    const int by = step < 150 ? step : 300 - step;
    window.act([&] { view.resize(1100 + 4 * by, 700 + 2 * by); });
  }
  report("a turn of the loop in a resize drag", std::move(window.turns));
  report("its processor time", std::move(window.busy));

  auto* card = dynamic_cast<homewarden::view::DeviceCard*>(view.childAt(view.width() / 2, 300));
  for (QWidget* child : view.findChildren<QWidget*>())
    if (auto* one = dynamic_cast<homewarden::view::DeviceCard*>(child); one && !card) card = one;
  if (!card) return 1;
  if (!card->isVisible()) return 1;
  Painted pressed(*card);
  for (int turn = 0; turn < 50; ++turn) {
    pressed.act([&] { QTest::mousePress(card, Qt::LeftButton, {}, QPoint(40, 40)); });
    QTest::mouseRelease(card, Qt::LeftButton, {}, QPoint(40, 40));
    QApplication::processEvents();
  }
  report("from a press to the card that shows it", std::move(pressed.until_painted));
  return 0;
}
