#include "ui/qt/copy_button.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>

#include "platform/qt/text_codec.h"
#include "ui/qt/action_button.h"
#include "ui/qt/page.h"

namespace homewarden::view {
namespace {

constexpr int kCopiedFor = 2000;  // milliseconds

}  // namespace

QPushButton* make_copy(Button& control, const Property<std::string>& text, QWidget* parent) {
  auto* copy = make_action(control, LineIcon::kCopy, ButtonKind::kPlain, parent);
  QObject::connect(copy, &QPushButton::clicked, copy, [copy, &control, &text] {
    QGuiApplication::clipboard()->setText(qt::from_code_page(text.get()));
    copy->setText(tr("Copied"));
    QTimer::singleShot(kCopiedFor, copy, [copy, &control] {
      copy->setText(qt::from_code_page(control.caption.get()));
    });
  });
  return copy;
}

}  // namespace homewarden::view
