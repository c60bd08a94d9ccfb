#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

#include "platform/qt/text_codec.h"
#include "ui/key_codes.h"
#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/breaking_row.h"
#include "ui/qt/empty_list.h"
#include "ui/qt/event_page_editor.h"
#include "ui/qt/event_rows.h"
#include "ui/qt/list_editor_page.h"
#include "ui/qt/list_pane.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/undo_bar.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

// Goes into a row of its own before its words are cut off.
class FilterEdit : public QLineEdit {
 public:
  using QLineEdit::QLineEdit;
  QSize minimumSizeHint() const override {
    return {fontMetrics().averageCharWidth() * 22 + 20, QLineEdit::minimumSizeHint().height()};
  }
};

QLineEdit* make_filter(EventPanel& panel, QWidget* parent) {
  auto* filter = new FilterEdit(parent);
  bind(panel.txt_eventfilter, filter, tr("Filter by room or text"));
  filter->setPlaceholderText(tr("Filter by room or text"));
  filter->addAction(make_icon(LineIcon::kFilter), QLineEdit::LeadingPosition)
      ->setText(filter->placeholderText());
  return filter;
}

// Its entries cannot be typed over: there are no other orders.
QWidget* make_order(ComboBox& control, QWidget* parent) {
  auto* box = new QComboBox(parent);
  bind_common(control, box, tr("Order of the events"));
  for (const std::string& item : control.items.get()) box->addItem(qt::from_code_page(item));
  follow(control.text, box, [box](const std::string& text) {
    box->setCurrentIndex(box->findText(qt::from_code_page(text)));
  });
  QObject::connect(box, &QComboBox::activated, box, [box, &control](int index) {
    control.text = qt::to_code_page(box->itemText(index));
  });
  return box;
}

QWidget* make_columns_button(CheckBox& control, QWidget* parent) {
  auto* button = new ActionButton(LineIcon::kTable, ButtonKind::kPlain, parent);
  bind_common(control, button);
  button->setText(qt::from_code_page(control.caption.get()));
  button->setCheckable(true);
  follow(control.checked, button, [button](bool on) { button->setChecked(on); });
  QObject::connect(button, &QPushButton::clicked, button,
                   [&control](bool on) { control.checked = on; });
  return button;
}

class EventPage : public ListEditorPage {
 public:
  explicit EventPage(EventPanel& panel)
      : ListEditorPage(tr("Events"), [this] { leave(); }), panel_(panel) {
    add_tools();
    add_to_list(make_notice(panel.lab_eventnotice, list_side()));
    add_lists();
    add_to_list(new UndoBar(panel.lab_undo, list_side()));
    device_ = fill_event_editor(panel, this);
    bind(panel.lab_eventcount, subtitle());
    follow(panel.editor_open, this, [this](bool open) { open_editor(open); });
    watch(panel.cmd_cancel.visible.changed, this, [this] { move_focus(); });
    add_keys();
  }

 private:
  void add_tools() {
    auto* tools = new BreakingRow(list_side());
    tools->let_first_grow();
    filter_ = make_filter(panel_, tools);
    tools->first()->addWidget(filter_, 1);
    tools->first()->addWidget(make_order(panel_.lst_eventorder, tools));
    tools->second()->addWidget(make_columns_button(panel_.chk_columns, tools));
    tools->second()->addWidget(
        make_action(panel_.Command5, LineIcon::kPlus, ButtonKind::kPrimary, tools));
    add_to_list(tools);
  }

  void add_lists() {
    auto* lists = new QStackedWidget(list_side());
    lists->setMinimumHeight(200);
    rows_ = new EventRows(panel_, lists);
    auto* columns = new ListPane(panel_.ListView1, tr("Events"), lists);
    auto* none = new EmptyList(
        LineIcon::kClock, panel_.lab_noevents, tr("Add an event"),
        [this] { panel_.Command5.click(); }, lists);
    auto* no_match = new EmptyList(
        LineIcon::kFilter, panel_.lab_nomatch, tr("Show all events"),
        [this] { panel_.txt_eventfilter.text = std::string(); }, lists);
    for (QWidget* page : std::initializer_list<QWidget*>{rows_, columns, none, no_match})
      lists->addWidget(page);
    const auto show = [this, lists, columns, none, no_match] {
      lists->setCurrentWidget(panel_.lab_noevents.visible  ? static_cast<QWidget*>(none)
                              : panel_.chk_columns.checked ? static_cast<QWidget*>(columns)
                              : panel_.lab_nomatch.visible ? static_cast<QWidget*>(no_match)
                                                           : static_cast<QWidget*>(rows_));
    };
    for (Property<bool>* decides :
         {&panel_.lab_noevents.visible, &panel_.lab_nomatch.visible, &panel_.chk_columns.checked})
      follow(*decides, lists, [show](bool) { show(); });
    // The menu and the keys of the list work where its rows would be, too.
    none->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(none, &QWidget::customContextMenuRequested, this,
            [this] { panel_.ListView1.mouse_down(kRightButton); });
    list_rows()->addWidget(lists, 1);
  }

  void add_keys() {
    add_key(Qt::CTRL | Qt::Key_S, [this] {
      if (panel_.Command6.enabled) panel_.Command6.click();
    });
    add_key(Qt::Key_Escape, [this] {
      if (filter_->hasFocus())
        panel_.txt_eventfilter.text = std::string();
      else
        leave();
    });
  }

  template <class Function>
  void add_key(const QKeySequence& key, Function function) {
    auto* shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, function);
  }

  void leave() {
    panel_.cmd_cancel.click();
    panel_.editor_open = false;
    if (is_narrow()) rows_->setFocus(Qt::OtherFocusReason);
  }

  // To where the next thing is done.
  void move_focus() {
    if (panel_.cmd_cancel.visible)
      device_->setFocus(Qt::TabFocusReason);  // what is typed replaces it
    else if (panel_.ListView1.enabled)
      rows_->setFocus(Qt::OtherFocusReason);
  }

  EventPanel& panel_;
  EventRows* rows_ = nullptr;
  QLineEdit* filter_ = nullptr;
  QComboBox* device_ = nullptr;
};

}  // namespace

QWidget* make_event_page(EventPanel& panel) {
  return new EventPage(panel);
}

}  // namespace homewarden::view
