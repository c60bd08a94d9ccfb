#include "ui/qt/disabled_colours.h"

#include <QEvent>
#include <QScopedValueRollback>

#include "ui/qt/look.h"

namespace homewarden::view {
namespace {

// Sets the colours anew whenever the desktop turns dark or light.
class DisabledColours : public QObject {
 public:
  DisabledColours(QWidget* list, QPalette::ColorRole ground)
      : QObject(list), list_(*list), ground_(ground) {
    list->installEventFilter(this);
    apply();
  }

  bool eventFilter(QObject* /*list*/, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange && !applying_) apply();
    return false;
  }

 private:
  void apply() {
    const QScopedValueRollback<bool> applying(applying_, true);
    QPalette colours = list_.palette();
    const QColor text = colours.color(QPalette::Active, QPalette::Text);
    const QColor ground = colours.color(QPalette::Active, ground_);
    const auto set = [&colours](QPalette::ColorRole role, const QColor& colour) {
      colours.setColor(QPalette::Disabled, role, colour);
    };
    set(QPalette::Base, ground);
    set(QPalette::AlternateBase, ground);
    set(QPalette::Text, mixed(text, ground, 58));
    set(QPalette::ButtonText, mixed(text, ground, 58));
    set(QPalette::Highlight, mixed(text, ground, 18));
    set(QPalette::HighlightedText, text);
    list_.setPalette(colours);
  }

  QWidget& list_;
  const QPalette::ColorRole ground_;
  bool applying_ = false;
};

}  // namespace

void keep_readable_when_disabled(QWidget* list, QPalette::ColorRole ground) {
  new DisabledColours(list, ground);
}

}  // namespace homewarden::view
