#include "ui/qt/button_access.h"

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace homewarden::view {
namespace {

class CheckableAccess : public QAccessibleWidget {
 public:
  explicit CheckableAccess(QAbstractButton* button)
      : QAccessibleWidget(button, QAccessible::CheckBox) {}

  QAccessible::Role role() const override {
    return button().autoExclusive() ? QAccessible::RadioButton : QAccessible::CheckBox;
  }
  QString text(QAccessible::Text kind) const override {
    const QString told = QAccessibleWidget::text(kind);
    return told.isEmpty() && kind == QAccessible::Name ? button().text().remove('&') : told;
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = button().isChecked();
    state.pressed = button().isDown();
    return state;
  }
  QStringList actionNames() const override {
    if (!button().isEnabled()) return QAccessibleWidget::actionNames();
    return QStringList{toggleAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == toggleAction())
      button().click();
    else
      QAccessibleWidget::doAction(action);
  }

 private:
  QAbstractButton& button() const { return *static_cast<QAbstractButton*>(widget()); }
};

QAccessibleInterface* make_access(const QString& /*class_name*/, QObject* object) {
  auto* button = qobject_cast<QAbstractButton*>(object);
  return button && button->isCheckable() ? new CheckableAccess(button) : nullptr;
}

}  // namespace

void make_buttons_accessible() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(make_access);
    return true;
  }();
  static_cast<void>(kInstalled);
}

}  // namespace homewarden::view
