#include "ui/qt/card_access.h"

#include <QAccessibleWidget>

#include "ui/qt/device_card.h"

namespace homewarden::view {
namespace {

constexpr int kFullyOn = 100;

class CardAccess : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit CardAccess(DeviceCard* card) : QAccessibleWidget(card, QAccessible::CheckBox) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = card().is_on();
    state.pressed = card().isDown();
    state.hasPopup = true;
    return state;
  }
  QStringList actionNames() const override {
    return QStringList{toggleAction(), pressAction()} + QAccessibleWidget::actionNames();
  }
  void doAction(const QString& action) override {
    if (action == toggleAction() || action == pressAction())
      card().click();
    else
      QAccessibleWidget::doAction(action);
  }
  // The level is set with the slider below it, which waits for the last step.
  QVariant currentValue() const override { return card().level(); }
  void setCurrentValue(const QVariant& /*value*/) override {}
  QVariant maximumValue() const override { return kFullyOn; }
  QVariant minimumValue() const override { return 0; }
  QVariant minimumStepSize() const override { return 1; }

 private:
  DeviceCard& card() const { return *static_cast<DeviceCard*>(widget()); }
};

// A slider whose left end is "Off".
class BarAccess : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  BarAccess(QSlider* bar, DeviceCard* card)
      : QAccessibleWidget(bar, QAccessible::Slider), card_(*card) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    if (kind == QAccessible::Value) {
      const int level = card_.level_of(bar().value());
      return level == 0 ? QObject::tr("Off") : QObject::tr("%1\u00A0%").arg(level);
    }
    return QAccessibleWidget::text(kind);
  }
  QVariant currentValue() const override { return card_.level_of(bar().value()); }
  void setCurrentValue(const QVariant& value) override { bar().setValue(value.toInt()); }
  QVariant maximumValue() const override { return bar().maximum(); }
  QVariant minimumValue() const override { return 0; }
  QVariant minimumStepSize() const override { return bar().singleStep(); }

 private:
  QSlider& bar() const { return *static_cast<QSlider*>(widget()); }
  DeviceCard& card_;
};

QAccessibleInterface* make_access(const QString& /*class_name*/, QObject* object) {
  if (auto* card = dynamic_cast<DeviceCard*>(object)) return new CardAccess(card);
  auto* bar = qobject_cast<QSlider*>(object);
  auto* card = bar ? dynamic_cast<DeviceCard*>(bar->parentWidget()) : nullptr;
  return card ? new BarAccess(bar, card) : nullptr;
}

}  // namespace

void make_cards_accessible() {
  static const bool kInstalled = [] {
    QAccessible::installFactory(make_access);
    return true;
  }();
  static_cast<void>(kInstalled);
}

void announce_card(DeviceCard& card, bool description_changed) {
  if (!QAccessible::isActive() || !card.isVisible()) return;
  QAccessible::State checked;
  checked.checked = true;
  QAccessibleStateChangeEvent state(&card, checked);
  QAccessible::updateAccessibility(&state);
  QAccessibleValueChangeEvent value(&card, card.level());
  QAccessible::updateAccessibility(&value);
  if (!description_changed) return;
  QAccessibleEvent description(&card, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&description);
}

}  // namespace homewarden::view
