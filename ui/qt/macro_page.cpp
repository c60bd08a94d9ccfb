#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>

#include "ui/qt/action_button.h"
#include "ui/qt/bindings.h"
#include "ui/qt/empty_list.h"
#include "ui/qt/list_editor_page.h"
#include "ui/qt/macro_rows.h"
#include "ui/qt/page.h"
#include "ui/qt/pages.h"
#include "ui/qt/segments.h"
#include "ui/qt/sentence_box.h"
#include "ui/qt/sized_label.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

// The number beside what is to be done in it.
void add_step(const QString& number, const QString& text, ListEditorPage* page) {
  QWidget* body = page->editor_side();
  auto* row = new QHBoxLayout;
  row->setSpacing(8);
  row->setContentsMargins(0, 12, 0, 4);
  auto* step = new SizedLabel(1.0, true, SizedLabel::kLink, body);
  step->setWordWrap(false);
  step->setText(number);
  row->addWidget(step, 0, Qt::AlignTop);
  auto* words = new SizedLabel(1.0, false, SizedLabel::kQuiet, body);
  words->setText(text);
  row->addWidget(words, 1, Qt::AlignTop);
  page->editor_rows()->addLayout(row);
}

QComboBox* make_device_box(ComboBox& control, const QString& name, QWidget* parent) {
  QComboBox* box = make_combo(control, name, parent);
  box->lineEdit()->setPlaceholderText(tr("Choose a device"));
  return box;
}

class MacroPage : public ListEditorPage {
 public:
  explicit MacroPage(MacroPanel& panel)
      : ListEditorPage(tr("Macros"), [this] { leave(); }), panel_(panel) {
    subtitle()->setText(tr("One device switches another"));
    add_list();
    add_editor();
    follow(panel.macro_editor_open, this, [this](bool open) { open_editor(open); });
    // What has been saved is in the list.
    watch(panel.ListVIew2.items.changed, this, [this] { panel_.macro_editor_open = false; });
    auto* back = new QShortcut(Qt::Key_Escape, this);
    back->setContext(Qt::WidgetWithChildrenShortcut);
    connect(back, &QShortcut::activated, this, [this] { leave(); });
  }

 private:
  void begin() {
    panel_.macro_editor_open = true;
    panel_.com_sel1.set_focus();
  }

  void leave() {
    panel_.macro_editor_open = false;
    if (is_narrow()) rows_->setFocus(Qt::OtherFocusReason);
  }

  void add_list() {
    auto* head = new QHBoxLayout;
    head->setContentsMargins(kReach, 0, kReach, 0);
    auto* words = new SizedLabel(1.0, false, SizedLabel::kQuiet, list_side());
    words->setText(tr("Below are your active Macro's. Click on the macro to delete it."));
    head->addWidget(words, 1);
    auto* add = new ActionButton(LineIcon::kPlus, ButtonKind::kPrimary, list_side());
    add->setText(tr("New"));
    add->setAccessibleName(tr("New macro"));
    connect(add, &QPushButton::clicked, this, [this] { begin(); });
    head->addWidget(add, 0, Qt::AlignTop);
    list_rows()->addLayout(head);
    add_to_list(make_notice(panel_.lab_macronotice, list_side()));
    add_to_list(make_notice(panel_.lab_macroloop, list_side()));
    auto* lists = new QStackedWidget(list_side());
    lists->setMinimumHeight(160);
    rows_ = new MacroRows(panel_, lists);
    auto* none = new EmptyList(
        LineIcon::kMacros, panel_.lab_nomacros, tr("Add a macro"), [this] { begin(); }, lists);
    lists->addWidget(rows_);
    lists->addWidget(none);
    follow(panel_.lab_nomacros.visible, lists, [this, lists, none](bool empty) {
      lists->setCurrentWidget(empty ? static_cast<QWidget*>(none) : rows_);
    });
    list_rows()->addWidget(lists, 1);
  }

  void add_editor() {
    QWidget* body = editor_side();
    QVBoxLayout* rows = editor_rows();
    editor_title()->setText(tr("New macro"));
    rows->addWidget(make_caption(
        tr("Adding a macro is easy. Just follow the steps below, then whenever your event occurs "
           "the macro will trigger. Macros can start an endless loop if you misconfigure them so "
           "be careful."),
        body));
    add_step(tr("Step 1"),
             tr("This is the trigger, select the device that will trigger your macro"), this);
    rows->addWidget(make_device_box(panel_.com_sel1, tr("Trigger device"), body));
    add_step(tr("Step 2"), tr("Now select what 'event' will trigger this macro."), this);
    rows->addWidget(make_segments(panel_.mac_event, tr("Trigger action"), body), 0, Qt::AlignLeft);
    add_step(tr("Step 3"),
             tr("Finally Select the device to trigger and also the action to take e.g. Turn On."),
             this);
    rows->addWidget(make_device_box(panel_.com_sel2, tr("Device to switch"), body));
    rows->addSpacing(4);
    rows->addWidget(make_segments(panel_.mac_whattodo, tr("Action to take"), body), 0,
                    Qt::AlignLeft);
    rows->addSpacing(12);
    rows->addWidget(new SentenceBox(panel_.lab_macrosentence, panel_.lab_macroself, body));
    rows->addStretch(1);
    QPushButton* save = make_button(panel_.com_savemacro, editor_foot()->parentWidget());
    set_kind(save, ButtonKind::kPrimary);
    editor_foot()->addWidget(save);
  }

  MacroPanel& panel_;
  MacroRows* rows_ = nullptr;
};

}  // namespace

QWidget* make_macro_page(MacroPanel& panel) {
  return new MacroPage(panel);
}

}  // namespace homewarden::view
