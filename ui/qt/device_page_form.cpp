#include "ui/qt/device_page_form.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/qt/bindings.h"
#include "ui/qt/house_style.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kMargin = 20;
constexpr int kRing = 4;  // as far as the cards beside it begin below their rings

// Says why something was not saved, in the colour of what failed.
class FailureLabel : public QLabel {
 public:
  FailureLabel(Label& control, QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
    bind(control, this);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPalette colours = palette();
    const QColor failed = look_of(colours).failed;
    if (colours.color(QPalette::WindowText) != failed) {
      colours.setColor(QPalette::WindowText, failed);
      setPalette(colours);
    }
    QLabel::paintEvent(event);
  }
};

}  // namespace

ChangeForm::ChangeForm(ChangePanel& panel, QWidget* parent) : QWidget(parent), panel_(panel) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kMargin, kMargin + kRing, kMargin, kMargin);
  rows->setSpacing(8);
  QLabel* heading = make_heading(QString(), this);
  bind(panel.lab_change, heading);
  rows->addWidget(heading);

  rows->addSpacing(4);
  rows->addWidget(new QLabel(tr("Name"), this));
  auto* name = new QLineEdit(this);
  bind(panel.txt_changename, name, tr("New name"));
  watch(panel.txt_changename.focus_requested, name, [name] { name->selectAll(); });
  rows->addWidget(name);

  auto* more = new QWidget(this);  // what a room does not have
  auto* fields = new QVBoxLayout(more);
  fields->setContentsMargins(0, 0, 0, 0);
  fields->setSpacing(8);
  const auto add = [fields, more](const QString& words, QWidget* field) {
    fields->addWidget(new QLabel(words, more));
    fields->addWidget(field);
  };
  add(tr("Room"), make_combo(panel.lst_changeroom, tr("New room"), more));
  auto* address = new QWidget(more);
  auto* pair = new QHBoxLayout(address);
  pair->setContentsMargins(0, 0, 0, 0);
  pair->setSpacing(8);
  pair->addWidget(make_combo(panel.lst_changecode, tr("New house code"), address), 1);
  pair->addWidget(make_combo(panel.lst_changenumber, tr("New device number"), address), 1);
  add(tr("House code and device number"), address);
  QLabel* hint = make_quiet_label(more);
  bind(panel.lab_changehint, hint);
  fields->addWidget(hint);
  add(tr("Type"), make_combo(panel.lst_changetype, tr("New type"), more));
  rows->addWidget(more);

  rows->addWidget(new FailureLabel(panel.lab_changewrong, this));
  auto* buttons = new QHBoxLayout;
  buttons->setSpacing(8);
  auto* save = make_button(panel.cmd_change, this);
  set_kind(save, ButtonKind::kPrimary);
  buttons->addWidget(save);
  buttons->addWidget(make_button(panel.cmd_cancelchange, this));
  buttons->addStretch();
  rows->addSpacing(8);
  rows->addLayout(buttons);

  connect(name, &QLineEdit::returnPressed, this, [&panel] { panel.cmd_change.click(); });
  // Of the room or of a device: told when it opens.
  follow(panel.frm_change.visible, this, [this, &panel, more, name](bool visible) {
    if (visible) {
      more->setVisible(!panel.of_room);
      name->setText(name->text());  // Ctrl+Z is not to bring what was typed for another
    } else {                        // Qt gives the keyboard to what comes next
      had_keyboard_ = isAncestorOf(window()->focusWidget());
    }
    setVisible(visible);
  });
}

void ChangeForm::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect().adjusted(0, kRing, 0, 0), kBoxCorner, look.side, look.line);
}

void ChangeForm::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    panel_.cmd_cancelchange.click();
  else
    QWidget::keyPressEvent(event);
}

}  // namespace homewarden::view
