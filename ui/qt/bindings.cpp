#include "ui/qt/bindings.h"

#include <QSignalBlocker>

#include "platform/qt/text_codec.h"
#include "ui/qt/row_mark.h"
#include "ui/qt/steady_button.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

// An ampersand in a text of the program is an ampersand.
QString plain(const std::string& text) {
  return qt::from_code_page(text).replace("&", "&&");
}

}  // namespace

void bind_common(Control& control, QWidget* widget, const QString& name) {
  if (!name.isEmpty()) widget->setAccessibleName(name);
  follow(control.visible, widget, [widget](bool visible) { widget->setVisible(visible); });
  follow(control.enabled, widget, [widget](bool enabled) { widget->setEnabled(enabled); });
  follow(control.tool_tip, widget, [widget](const std::string& tip) {
    widget->setToolTip(tip_text(tip));
    widget->setAccessibleDescription(qt::from_code_page(tip));
  });
  watch(control.focus_requested, widget, [widget] { widget->setFocus(Qt::OtherFocusReason); });
}

void bind(Label& control, QLabel* widget) {
  bind_common(control, widget);
  widget->setTextFormat(Qt::PlainText);
  follow(control.caption, widget,
         [widget](const std::string& text) { widget->setText(qt::from_code_page(text)); });
}

void bind(Button& control, QPushButton* widget) {
  bind_common(control, widget);
  follow(control.caption, widget,
         [widget](const std::string& text) { widget->setText(plain(text)); });
  follow(control.bold, widget, [widget](bool bold) {
    QFont font;  // the rest stays what the desktop says
    font.setBold(bold);
    widget->setFont(font);
  });
  QObject::connect(widget, &QPushButton::clicked, widget, [&control] { control.click(); });
}

void bind(CheckBox& control, QCheckBox* widget, const QString& name) {
  bind_common(control, widget, name);
  follow(control.caption, widget,
         [widget](const std::string& text) { widget->setText(plain(text)); });
  follow(control.checked, widget, [widget](bool checked) {
    const QSignalBlocker quiet(widget);
    widget->setChecked(checked);
  });
  // Setting the value raises the control's click.
  QObject::connect(widget, &QCheckBox::toggled, widget,
                   [&control](bool checked) { control.checked = checked; });
}

void bind(TextBox& control, QLineEdit* widget, const QString& name) {
  bind_common(control, widget, name);
  follow(control.text, widget, [widget](const std::string& text) {
    if (qt::to_code_page(widget->text()) != text) widget->setText(qt::from_code_page(text));
  });
  QObject::connect(widget, &QLineEdit::textEdited, widget,
                   [&control](const QString& text) { control.text = qt::to_code_page(text); });
}

namespace {

void show_marks(const ListBox& control, QListWidget* widget) {
  const auto& marks = control.marks.get();
  for (int row = 0; row < widget->count(); ++row) {
    QListWidgetItem& item = *widget->item(row);
    const auto mark = marks.find(row);
    const bool marked = mark != marks.end();
    const QString why = marked ? qt::from_code_page(mark->second) : QString();
    item.setIcon(marked ? mark_icon() : QIcon());
    item.setToolTip(marked ? tip_text(mark->second) : QString());
    item.setData(Qt::AccessibleTextRole, marked ? marked_text(item.text(), why) : item.text());
  }
}

}  // namespace

void bind(ListBox& control, QListWidget* widget, const QString& name) {
  bind_common(control, widget, name);
  follow(control.items, widget, [widget, &control](const auto& items) {
    const QSignalBlocker quiet(widget);
    widget->clear();
    for (const std::string& item : items) widget->addItem(qt::from_code_page(item));
    widget->setCurrentRow(control.selected);
    show_marks(control, widget);
  });
  watch(control.marks.changed, widget, [widget, &control] { show_marks(control, widget); });
  follow(control.selected, widget, [widget](int row) { widget->setCurrentRow(row); });
  QObject::connect(widget, &QListWidget::currentRowChanged, widget,
                   [&control](int row) { control.selected = row; });
  QObject::connect(widget, &QListWidget::itemPressed, widget, [&control] { control.mouse_down(); });
}

QPushButton* make_link(Label& control, QWidget* parent) {
  auto* link = new QPushButton(parent);
  link->setFlat(true);
  link->setCursor(Qt::PointingHandCursor);
  link->setStyleSheet(
      "QPushButton { text-align: left; padding: 6px 2px; border: 1px solid transparent;"
      " border-radius: 6px; color: palette(link); }"
      "QPushButton:hover { text-decoration: underline; }"
      "QPushButton:focus { border-color: palette(highlight); }");
  bind_common(control, link);
  follow(control.caption, link, [link](const std::string& text) { link->setText(plain(text)); });
  QObject::connect(link, &QPushButton::clicked, link, [&control] { control.click(); });
  return link;
}

QLabel* make_notice(Label& control, QWidget* parent) {
  auto* notice = new QLabel(parent);
  notice->setWordWrap(true);
  notice->setStyleSheet(
      "QLabel { background: palette(alternate-base); border: 1px solid palette(highlight);"
      " border-radius: 6px; padding: 8px 10px; }");
  bind(control, notice);
  return notice;
}

QPushButton* make_button(Button& control, QWidget* parent) {
  auto* button = new SteadyButton(parent);
  bind(control, button);
  return button;
}

}  // namespace homewarden::view
