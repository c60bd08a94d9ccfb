#include "ui/qt/qt_dialogs.h"

#include <QCoreApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPointer>
#include <coroutine>
#include <memory>

#include "platform/qt/text_codec.h"

namespace homewarden::view {
namespace {

// Waits for a dialog to be closed. The dialog is closed without a word when the wait is given up.
class Closed {
 public:
  explicit Closed(QDialog& dialog) : dialog_(dialog) {}
  Closed(const Closed&) = delete;
  Closed& operator=(const Closed&) = delete;

  bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> waiting) {
    waiting_ = std::make_shared<std::coroutine_handle<>>(waiting);
    // From the loop, not from inside the dialog, which goes with the operation. An answer that is
    // on its way would still come after a disconnection.
    QObject::connect(
        &dialog_, &QDialog::finished, &dialog_,
        [alive = std::weak_ptr(waiting_)] {
          if (const auto operation = alive.lock()) operation->resume();
        },
        Qt::QueuedConnection);
    dialog_.open();
  }
  void await_resume() const noexcept {}

 private:
  QDialog& dialog_;
  std::shared_ptr<std::coroutine_handle<>> waiting_;
};

// The dialog of one question. Whichever goes first takes it along: the operation that asks, or the
// window that the dialog belongs to; in the second case the operation waits for ever.
template <class Dialog>
class Open {
 public:
  explicit Open(Dialog* dialog) : dialog_(dialog) {}
  Open(const Open&) = delete;
  Open& operator=(const Open&) = delete;
  ~Open() {
    if (!dialog_) return;
    dialog_->hide();
    dialog_->deleteLater();  // from the loop: it may still be in the middle of closing
  }

  Dialog& operator*() const { return *dialog_; }
  Dialog* operator->() const { return dialog_; }

 private:
  QPointer<Dialog> dialog_;
};

QMessageBox::Icon icon_of(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kCritical:
      return QMessageBox::Critical;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

// A window that is hidden cannot carry a box; the box then stands alone.
QWidget* visible_parent(QWidget* parent) {
  return parent && parent->isVisible() ? parent : nullptr;
}

}  // namespace

// What was closed when the loop had ended.
QtDialogs::~QtDialogs() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Task<Answer> QtDialogs::message_box(Message message) {
  const bool asks = message.buttons == MessageButtons::kYesNo;
  const Open<QMessageBox> box(new QMessageBox(
      icon_of(message.icon), qt::from_code_page(message.title), qt::from_code_page(message.text),
      asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, visible_parent(parent_)));
  box->setTextFormat(Qt::PlainText);
  box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  if (asks) {
    box->setEscapeButton(QMessageBox::No);
    box->setDefaultButton(message.preselected == Answer::kNo ? QMessageBox::No : QMessageBox::Yes);
  }
  co_await Closed(*box);
  if (!asks) co_return Answer::kOk;
  co_return box->result() == QMessageBox::Yes ? Answer::kYes : Answer::kNo;
}

Task<std::optional<std::string>> QtDialogs::input_box(Question question) {
  const Open<QInputDialog> box(new QInputDialog(visible_parent(parent_)));
  box->setWindowTitle(qt::from_code_page(question.title));
  box->setLabelText(qt::from_code_page(question.prompt));
  box->setTextValue(qt::from_code_page(question.initial));
  if (question.secret) box->setTextEchoMode(QLineEdit::Password);
  co_await Closed(*box);
  if (box->result() != QDialog::Accepted) co_return std::nullopt;
  co_return qt::to_code_page(box->textValue());
}

}  // namespace homewarden::view
