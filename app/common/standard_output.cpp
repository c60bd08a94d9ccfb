#include "app/common/standard_output.h"

#include <unistd.h>

#include <QString>
#include <chrono>

namespace homewarden {
namespace {

constexpr std::chrono::milliseconds kPause{500};

void print_message(QtMsgType type, const QMessageLogContext& context, const QString& text) {
  standard_error().print(qFormatLogMessage(type, context, text).toLocal8Bit().toStdString());
}

}  // namespace

os_linux::LineOutput& standard_output() {
  static os_linux::LineOutput output(STDOUT_FILENO);
  return output;
}

os_linux::LineOutput& standard_error() {
  static os_linux::LineOutput output(STDERR_FILENO);
  return output;
}

PrintFromLoop::PrintFromLoop(EventLoop& loop) : loop_(loop) {
  for (os_linux::LineOutput* output : {&standard_output(), &standard_error()}) {
    output->on_kept = [this] {
      if (call_ == 0) call_ = loop_.call_after(kPause, [this] { try_again(); });
    };
  }
  qInstallMessageHandler(print_message);
}

PrintFromLoop::~PrintFromLoop() {
  qInstallMessageHandler(nullptr);
  standard_output().on_kept = standard_error().on_kept = nullptr;
  loop_.cancel(call_);
}

void PrintFromLoop::try_again() {
  const bool output_done = standard_output().go_on();
  const bool error_done = standard_error().go_on();
  call_ = output_done && error_done ? 0 : loop_.call_after(kPause, [this] { try_again(); });
}

}  // namespace homewarden
