// The loop, the questions and the code page of the desktop program.

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>

#include "base/operations.h"
#include "platform/qt/qt_loop.h"
#include "platform/qt/text_codec.h"
#include "platform/waiting.h"
#include "ui/qt/qt_dialogs.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

TEST(TextCodec, EveryByteComesBackAndStrangersAreKnownAsSuch) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(qt::to_code_page(qt::from_code_page(text)), text) << byte;
  }
  EXPECT_EQ(qt::from_code_page("\x80 K\xFC"), QString::fromUtf8("\u20AC K\u00FC"));
  EXPECT_EQ(qt::to_code_page(QString::fromUtf8("\u4E2D\U0001F600z?")), "\x1A\x1Az?");
  EXPECT_EQ(qt::from_code_page("\x1A"), QString::fromUtf8("\uFFFD")) << "a person sees no gap";
}

TEST(QtLoop, CallsInOrderOfTimeThenOfAskingAndNotWhenCancelled) {
  qt::QtLoop loop;
  std::vector<int> calls;
  const auto note = [&calls](int number) { return [&calls, number] { calls.push_back(number); }; };
  loop.call_after(30ms, note(4));
  loop.call_after(10ms, note(2));
  loop.call_after(10ms, note(3));
  const auto cancelled = loop.call_after(5ms, note(9));
  loop.call_after(-5ms, note(1));
  loop.cancel(cancelled);
  EXPECT_TRUE(calls.empty()) << "called from inside call_after";
  EXPECT_TRUE(QTest::qWaitFor([&] { return calls.size() == 4; }, 2000));
  EXPECT_THAT(calls, ElementsAre(1, 2, 3, 4));
  loop.cancel(cancelled);
}

TEST(QtLoop, InATimeLapseClockAndCallsRunAsFastAndWhatIsNoneIsRefused) {
  for (const char* text : {"", "60", "60@", "@9", "0@9", "1001@9", "-2@9", "2@-9", "2x@9", "2@9 "})
    EXPECT_FALSE(qt::parse_time_lapse(text)) << text;
  const auto now = QDateTime::currentSecsSinceEpoch();
  qt::QtLoop loop(qt::parse_time_lapse("600@" + std::to_string(now - 3600)).value());
  const int month = QDateTime::fromSecsSinceEpoch(now + 599 * 3600).date().month();
  EXPECT_EQ(loop.local_time().month, month) << "600 hours instead of one";
  bool called = false;
  loop.call_after(std::chrono::minutes(10), [&] { called = true; });
  EXPECT_TRUE(QTest::qWaitFor([&] { return called; }, 30000));
  EXPECT_GE(loop.uptime(), std::chrono::minutes(10));
}

TEST(QtLoop, InputComesBeforeACallWithoutDelay) {
  qt::QtLoop loop;
  std::vector<std::string> order;
  QObject receiver;
  QMetaObject::invokeMethod(
      &receiver, [&] { order.push_back("input"); }, Qt::QueuedConnection);
  loop.call_after(0ms, [&] { order.push_back("call"); });
  EXPECT_TRUE(QTest::qWaitFor([&] { return order.size() == 2; }, 2000));
  EXPECT_THAT(order, ElementsAre("input", "call"));
}

Task<void> ask(view::QtDialogs& dialogs, std::vector<std::string>& answers) {
  Message message{"Are you sure?", "Really Delete?", MessageIcon::kQuestion,
                  MessageButtons::kYesNo};
  const Answer answer = co_await dialogs.message_box(std::move(message));
  answers.push_back(answer == Answer::kYes ? "yes" : "no");
  Question question{"Port", "X10 Interface", "2", false};
  const auto typed = co_await dialogs.input_box(std::move(question));
  answers.push_back(typed.value_or("(cancelled)"));
}

template <class Dialog>
Dialog* open_dialog() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* dialog = qobject_cast<Dialog*>(widget); dialog && dialog->isVisible()) return dialog;
  return nullptr;
}

TEST(QtDialogs, AnsweredWithTheKeyboard) {
  view::QtDialogs dialogs;
  std::vector<std::string> answers;
  Operations operations([](std::exception_ptr) { FAIL(); });
  operations.start(ask(dialogs, answers));
  auto* box = open_dialog<QMessageBox>();
  ASSERT_TRUE(box);
  EXPECT_EQ(box->text(), "Are you sure?");
  QTest::keyClick(box->button(QMessageBox::Yes), Qt::Key_Space);
  ASSERT_TRUE(QTest::qWaitFor([] { return open_dialog<QInputDialog>() != nullptr; }, 2000));
  auto* input = open_dialog<QInputDialog>();
  auto* line = input->findChild<QLineEdit*>();
  EXPECT_EQ(line->text(), "2");
  line->selectAll();
  QTest::keyClicks(line, "7");
  QTest::keyClick(line, Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return answers.size() == 2; }, 2000));
  EXPECT_THAT(answers, ElementsAre("yes", "7"));

  operations.start(ask(dialogs, answers));
  QTest::keyClick(open_dialog<QMessageBox>(), Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitFor([] { return open_dialog<QInputDialog>() != nullptr; }, 2000));
  QTest::keyClick(open_dialog<QInputDialog>(), Qt::Key_Escape);
  EXPECT_TRUE(QTest::qWaitFor([&] { return answers.size() == 4; }, 2000));
  EXPECT_THAT(answers, ElementsAre("yes", "7", "no", "(cancelled)"));
}

}  // namespace
}  // namespace homewarden::testing
