// The combo boxes: editable ones, in which choosing an entry is something else than typing it.

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QSignalBlocker>

#include "platform/qt/text_codec.h"
#include "ui/qt/bindings.h"
#include "ui/qt/watch.h"
#include "ui/qt/wheel_guard.h"

namespace homewarden::view {
namespace {

QStringList to_list(const std::vector<std::string>& texts) {
  QStringList list;
  list.reserve(static_cast<qsizetype>(texts.size()));
  for (const std::string& text : texts) list << qt::from_code_page(text);
  return list;
}

// Enter in the list that opens while a person types chooses the entry that the text clearly means,
// without the arrow keys first: the one that it spells out, or the only one that is offered.
class EnterCompletes : public QObject {
 public:
  explicit EnterCompletes(QCompleter* completer) : QObject(completer), completer_(*completer) {
    completer->popup()->installEventFilter(this);
  }

  bool eventFilter(QObject* /*popup*/, QEvent* event) override {
    if (event->type() != QEvent::KeyPress) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    if (enter && !completer_.popup()->currentIndex().isValid())
      completer_.popup()->setCurrentIndex(meant());
    return false;
  }

 private:
  QModelIndex meant() const {
    const QAbstractItemModel& offered = *completer_.completionModel();
    for (int row = 0; row < offered.rowCount(); ++row) {
      const QModelIndex entry = offered.index(row, completer_.completionColumn());
      const QString text = entry.data().toString();
      if (text.compare(completer_.completionPrefix(), Qt::CaseInsensitive) == 0) return entry;
    }
    return offered.rowCount() == 1 ? offered.index(0, completer_.completionColumn())
                                   : QModelIndex();
  }

  QCompleter& completer_;
};

// As wide as its longest entry. The style's measure leaves no room for the cursor behind
// it, and with large letters is short of a pixel.
class ShortCombo : public QComboBox {
 public:
  explicit ShortCombo(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(AdjustToContents);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }
  QSize sizeHint() const override {
    return QComboBox::sizeHint() + QSize(fontMetrics().averageCharWidth() / 3, 0);
  }
};

// Shows the control's text, and the row of the list that has it: otherwise leaving the box would
// count as choosing that entry.
void show_text(const std::string& text, QComboBox* widget) {
  const QSignalBlocker quiet(widget);
  const QString shown = qt::from_code_page(text);
  const int row = widget->findText(shown, Qt::MatchExactly | Qt::MatchCaseSensitive);
  if (row == widget->currentIndex() && shown == widget->currentText()) return;
  const bool being_typed = qt::to_code_page(widget->currentText()) == text;
  const int cursor = widget->lineEdit()->cursorPosition();
  widget->setCurrentIndex(row);
  widget->setEditText(shown);
  if (being_typed) widget->lineEdit()->setCursorPosition(cursor);
}

}  // namespace

void bind(ComboBox& control, QComboBox* widget, const QString& name) {
  bind_common(control, widget, name);
  widget->setEditable(true);
  // What is typed then replaces the choice.
  watch(control.focus_requested, widget, [widget] { widget->lineEdit()->selectAll(); });
  // A screen reader is told the text as the box's own name.
  widget->lineEdit()->setAccessibleName(name);
  widget->setInsertPolicy(QComboBox::NoInsert);
  guard_wheel(widget);
  widget->completer()->setCompletionMode(QCompleter::PopupCompletion);
  new EnterCompletes(widget->completer());
  follow(control.items, widget, [widget, &control](const auto& items) {
    {
      const QSignalBlocker quiet(widget);
      widget->clear();
      widget->addItems(to_list(items));
    }
    show_text(control.text, widget);
  });
  follow(control.text, widget, [widget](const std::string& text) { show_text(text, widget); });
  QObject::connect(widget, &QComboBox::editTextChanged, widget,
                   [&control](const QString& text) { control.text = qt::to_code_page(text); });
  QObject::connect(widget, &QComboBox::activated, widget, [widget, &control](int index) {
    control.text = qt::to_code_page(widget->itemText(index));
    control.click();
  });
}

QComboBox* make_combo(ComboBox& control, const QString& name, QWidget* parent) {
  auto* combo = new QComboBox(parent);
  bind(control, combo, name);
  combo->setMinimumWidth(combo->fontMetrics().horizontalAdvance('x') * 6);
  return combo;
}

QComboBox* make_short_combo(ComboBox& control, const QString& name, QWidget* parent) {
  auto* combo = new ShortCombo(parent);
  bind(control, combo, name);
  return combo;
}

}  // namespace homewarden::view
