// Windows, boxes and operations that go in every order. Only the sanitizers see most of the faults
// this would catch: a box deleted twice, a dead window drawn, an operation resumed by a dead box.

#include <QInputDialog>

#include "tests/window/house_window.h"
#include "ui/qt/tray_view.h"
#include "ui/qt/wait_window_view.h"

namespace homewarden::testing {
namespace {

Task<void> show_message(view::QtDialogs& dialogs) {
  Message message{"Sorry", "ERROR!", MessageIcon::kCritical};
  co_await dialogs.message_box(std::move(message));
  ADD_FAILURE() << "answered by nobody";
}

Task<void> ask_for_text(view::QtDialogs& dialogs) {
  Question question{"Password", "Password", "", true};
  co_await dialogs.input_box(std::move(question));
  ADD_FAILURE() << "answered by nobody";
}

int open_dialogs() {
  int open = 0;
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (qobject_cast<QDialog*>(widget) && widget->isVisible()) ++open;
  return open;
}

TEST(Teardown, ABoxGoesWithItsWindowOrItsOperationWhicheverIsFirst) {
  for (const auto& ask : {show_message, ask_for_text}) {
    for (const bool window_first : {true, false}) {
      auto window = std::make_unique<QWidget>();
      auto dialogs = std::make_unique<view::QtDialogs>();
      dialogs->set_parent(window.get());
      window->show();
      auto operations = std::make_unique<Operations>([](std::exception_ptr) { FAIL(); });
      operations->start(ask(*dialogs));
      EXPECT_EQ(open_dialogs(), 1);
      if (window_first) window.reset();
      EXPECT_EQ(open_dialogs(), window_first ? 0 : 1);
      operations.reset();
      EXPECT_EQ(open_dialogs(), 0) << "it stays until the loop turns, or for ever";
      EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the window takes no input";
      dialogs.reset();
      window.reset();
      QApplication::processEvents();
    }
  }
}

// Answered and ended in the same turn: the answer is on its way to an operation that is gone.
TEST(Teardown, AnAnswerOnItsWayReachesNoOperationThatWasEnded) {
  view::QtDialogs dialogs;
  Operations operations([](std::exception_ptr) { FAIL(); });
  const auto id = operations.start(show_message(dialogs));
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) box->accept();
  operations.end(id);
  QApplication::processEvents();
  EXPECT_EQ(operations.running(), 0u);
}

// The whole program ends while the message that nothing was found is open, and a prompt on it.
TEST(Teardown, TheProgramAndItsWindowsGoInEitherOrderWithBoxesOpen) {
  enum class First { kViews, kOperations, kProgram };
  for (const First first : {First::kViews, First::kOperations, First::kProgram}) {
    view::QtDialogs dialogs;
    House house;
    house.interface_control.status_of_port.clear();
    house.used_dialogs = &dialogs;
    Program& program = house.open();
    auto wait = std::make_unique<view::WaitWindowView>(program.frm_wait);
    auto window = std::make_unique<view::MainWindowView>(program.frm_main);
    auto tray = std::make_unique<view::TrayView>(program.frmSysTray, program.frm_main);
    dialogs.set_parent(window.get());
    house.loop.advance(2s);
    program.frm_main.Label63.click();
    QApplication::processEvents();
    EXPECT_EQ(open_dialogs(), 2);
    if (first == First::kOperations) program.end();
    if (first == First::kProgram) house.forget_program();
    tray.reset();
    window.reset();
    wait.reset();
    EXPECT_EQ(open_dialogs(), 0);
    house.forget_program();
    QApplication::processEvents();
  }
}

}  // namespace
}  // namespace homewarden::testing
