// How long the window is busy while somebody drags its edge over a room of 200 devices, and from a
// press on a card to the card that shows it.

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

double timed(const auto& act) {
  QElapsedTimer timer;
  timer.start();
  act();
  QApplication::processEvents();
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

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

  std::vector<double> drag;
  for (int step = 0; step < 300; ++step) {
    const int by = step < 150 ? step : 300 - step;
    drag.push_back(timed([&] { view.resize(1100 + 4 * by, 700 + 2 * by); }));
  }
  report("a step of a resize drag", std::move(drag));

  auto* card = dynamic_cast<homewarden::view::DeviceCard*>(view.childAt(view.width() / 2, 300));
  for (QWidget* child : view.findChildren<QWidget*>())
    if (auto* one = dynamic_cast<homewarden::view::DeviceCard*>(child); one && !card) card = one;
  if (!card) return 1;
  std::vector<double> press;
  for (int turn = 0; turn < 50; ++turn) {
    press.push_back(timed([&] { QTest::mousePress(card, Qt::LeftButton, {}, QPoint(40, 40)); }));
    QTest::mouseRelease(card, Qt::LeftButton, {}, QPoint(40, 40));
    QApplication::processEvents();
  }
  report("from a press to the card that shows it", std::move(press));
  return 0;
}
