#include "ui/qt/bindings.h"

#include <QCompleter>
#include <QHeaderView>
#include <QKeyEvent>
#include <QSignalBlocker>

#include "platform/qt/text_codec.h"
#include "ui/qt/key_codes.h"
#include "ui/qt/watch.h"
#include "ui/qt/wheel_guard.h"

namespace homewarden {
namespace {

constexpr int kTwipsPerPixel = 15;

QStringList to_list(const std::vector<std::string>& texts) {
  QStringList list;
  list.reserve(static_cast<qsizetype>(texts.size()));
  for (const std::string& text : texts) list << from_code_page(text);
  return list;
}

// An ampersand in a text of the program is an ampersand.
QString plain(const std::string& text) {
  return from_code_page(text).replace("&", "&&");
}

void show_rows(const ListView& control, QTreeWidget* widget) {
  const QSignalBlocker quiet(widget);
  widget->clear();
  QList<QTreeWidgetItem*> items;
  items.reserve(static_cast<qsizetype>(control.rows.get().size()));
  for (const ListView::Row& row : control.rows.get()) items << new QTreeWidgetItem(to_list(row));
  widget->addTopLevelItems(items);
  widget->setCurrentItem(widget->topLevelItem(control.selected));
}

void show_columns(const std::vector<ListColumn>& columns, QTreeWidget* widget) {
  QStringList captions;
  for (const ListColumn& column : columns) captions << from_code_page(column.caption);
  widget->setColumnCount(static_cast<int>(columns.size()));
  widget->setHeaderLabels(captions);
  for (std::size_t i = 0; i < columns.size(); ++i)
    widget->header()->resizeSection(static_cast<int>(i), columns[i].width / kTwipsPerPixel);
}

// Reports the keys of a list as they arrive, so that a window that takes no input reports none.
class ListKeys : public QObject {
 public:
  ListKeys(ListView& control, QWidget* list) : QObject(list), control_(control) {
    list->installEventFilter(this);
  }

  bool eventFilter(QObject* /*list*/, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() == Qt::Key_D && key.modifiers() == Qt::ControlModifier) {
      control_.key_press(kControlD);
      return true;
    }
    const bool opens = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!opens || control_.selected < 0) return false;
    control_.double_click();  // what the mouse does with two clicks
    return true;
  }

 private:
  ListView& control_;
};

}  // namespace

void bind_common(Control& control, QWidget* widget, const QString& name) {
  if (!name.isEmpty()) widget->setAccessibleName(name);
  follow(control.visible, widget, [widget](bool visible) { widget->setVisible(visible); });
  follow(control.enabled, widget, [widget](bool enabled) { widget->setEnabled(enabled); });
  follow(control.tool_tip, widget, [widget](const std::string& tip) {
    widget->setToolTip(from_code_page(tip));
    widget->setAccessibleDescription(from_code_page(tip));
  });
  watch(control.focus_requested, widget, [widget] { widget->setFocus(Qt::OtherFocusReason); });
}

void bind(Label& control, QLabel* widget) {
  bind_common(control, widget);
  widget->setTextFormat(Qt::PlainText);
  follow(control.caption, widget,
         [widget](const std::string& text) { widget->setText(from_code_page(text)); });
}

void bind(Button& control, QPushButton* widget) {
  bind_common(control, widget);
  follow(control.caption, widget,
         [widget](const std::string& text) { widget->setText(plain(text)); });
  // A caption that turns bold and back, as a flashing one does, moves nothing around it.
  QFont bold_font = widget->font();
  bold_font.setBold(true);
  widget->setFont(bold_font);
  widget->setMinimumWidth(widget->sizeHint().width());
  follow(control.bold, widget, [widget](bool bold) {
    QFont font = widget->font();
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
    if (to_code_page(widget->text()) != text) widget->setText(from_code_page(text));
  });
  QObject::connect(widget, &QLineEdit::textEdited, widget,
                   [&control](const QString& text) { control.text = to_code_page(text); });
}

void bind(ComboBox& control, QComboBox* widget, const QString& name) {
  bind_common(control, widget, name);
  widget->setEditable(true);
  widget->setInsertPolicy(QComboBox::NoInsert);
  guard_wheel(widget);
  if (widget->completer()) widget->completer()->setCompletionMode(QCompleter::PopupCompletion);
  const auto show_text = [widget](const std::string& text) {
    const QSignalBlocker quiet(widget);
    const QString shown = from_code_page(text);
    const int row = widget->findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (row == widget->currentIndex() && shown == widget->currentText()) return;
    const bool being_typed = to_code_page(widget->currentText()) == text;
    const int cursor = widget->lineEdit()->cursorPosition();
    // The row goes with the text: otherwise leaving the box would count as choosing an entry.
    widget->setCurrentIndex(row);
    widget->setEditText(shown);
    if (being_typed) widget->lineEdit()->setCursorPosition(cursor);
  };
  follow(control.items, widget, [widget, &control, show_text](const auto& items) {
    {
      const QSignalBlocker quiet(widget);
      widget->clear();
      widget->addItems(to_list(items));
    }
    show_text(control.text);
  });
  follow(control.text, widget, show_text);
  QObject::connect(widget, &QComboBox::editTextChanged, widget,
                   [&control](const QString& text) { control.text = to_code_page(text); });
  QObject::connect(widget, &QComboBox::activated, widget, [widget, &control](int index) {
    control.text = to_code_page(widget->itemText(index));
    control.click();
  });
}

void bind(ListBox& control, QListWidget* widget, const QString& name) {
  bind_common(control, widget, name);
  follow(control.items, widget, [widget, &control](const auto& items) {
    const QSignalBlocker quiet(widget);
    widget->clear();
    widget->addItems(to_list(items));
    widget->setCurrentRow(control.selected);
  });
  follow(control.selected, widget, [widget](int row) { widget->setCurrentRow(row); });
  QObject::connect(widget, &QListWidget::currentRowChanged, widget,
                   [&control](int row) { control.selected = row; });
  QObject::connect(widget, &QListWidget::itemPressed, widget, [&control] { control.mouse_down(); });
}

void bind(ListView& control, QTreeWidget* widget, const QString& name) {
  bind_common(control, widget, name);
  widget->setRootIsDecorated(false);
  widget->setUniformRowHeights(true);
  widget->setAlternatingRowColors(true);
  widget->setContextMenuPolicy(Qt::CustomContextMenu);
  follow(control.columns, widget, [widget](const auto& columns) { show_columns(columns, widget); });
  follow(control.rows, widget, [widget, &control](const auto&) { show_rows(control, widget); });
  follow(control.selected, widget,
         [widget](int row) { widget->setCurrentItem(widget->topLevelItem(row)); });
  QObject::connect(widget, &QTreeWidget::currentItemChanged, widget,
                   [widget, &control](QTreeWidgetItem* item) {
                     control.selected = item ? widget->indexOfTopLevelItem(item) : -1;
                   });
  QObject::connect(widget, &QTreeWidget::itemDoubleClicked, widget,
                   [&control] { control.double_click(); });
  QObject::connect(widget, &QWidget::customContextMenuRequested, widget,
                   [&control] { control.mouse_down(kRightButton); });
  QObject::connect(widget->header(), &QHeaderView::sectionClicked, widget,
                   [&control](int column) { control.column_click(column + 1); });
  widget->header()->setSectionsClickable(true);
  widget->header()->setSortIndicatorShown(true);
  const auto show_order = [widget](int column) {
    widget->header()->setSortIndicator(column, Qt::AscendingOrder);
  };
  follow(control.sort_key, widget, show_order);
  // A click turns the arrow around by itself; the rows keep their order.
  QObject::connect(widget->header(), &QHeaderView::sectionClicked, widget,
                   [&control, show_order] { show_order(control.sort_key); });
  new ListKeys(control, widget);
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

QComboBox* make_combo(ComboBox& control, const QString& name, QWidget* parent) {
  auto* combo = new QComboBox(parent);
  bind(control, combo, name);
  // Long entries do not keep the page wide when the window is small.
  combo->setMinimumWidth(combo->fontMetrics().horizontalAdvance('x') * 6);
  return combo;
}

QPushButton* make_button(Button& control, QWidget* parent) {
  auto* button = new QPushButton(parent);
  bind(control, button);
  return button;
}

}  // namespace homewarden
