#include "ui/qt/side_pane.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QSvgRenderer>
#include <QToolButton>
#include <QVBoxLayout>

#include "platform/qt/text_codec.h"
#include "ui/qt/box.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/listen_button.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/side_rows.h"
#include "ui/qt/tree_pane.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kLogo = 28;
constexpr int kSign = 20;
constexpr int kLeastWidth = 216;
constexpr int kMostWidth = 360;
constexpr int kPopUpWidth = 264;

// As a pop-up it has a ground and a border of its own.
class Ground : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    if (!isWindow()) return;
    QPainter painter(this);
    const Look& look = look_of(palette());
    painter.fillRect(rect(), look.line);
    painter.fillRect(rect().adjusted(1, 1, -1, -1), look.side);
  }
};

class Logo : public QWidget {
 public:
  explicit Logo(QWidget* parent) : QWidget(parent) { setFixedSize(kLogo, kLogo); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    static QSvgRenderer drawing(QString(":/pictures/homewarden.svg"));
    QPainter painter(this);
    drawing.render(&painter, rect());
  }
};

}  // namespace

SidePane::SidePane(FrmMain& form, QWidget* parent)
    : QWidget(parent),
      rail_(new Rail(
          form, [this] { open(); }, this)),
      whole_(new Ground(this)) {
  auto* around = new QVBoxLayout(this);
  around->setContentsMargins(0, 0, 1, 0);
  around->setSpacing(0);
  around->addWidget(rail_);
  around->addWidget(whole_);
  rail_->hide();
  auto* rows = new QVBoxLayout(whole_);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(make_brand());
  auto* find = new FindButton(whole_);
  auto* find_place = new QHBoxLayout;
  find_place->setContentsMargins(12, 0, 12, 8);
  find_place->setSpacing(6);
  find_place->addWidget(find);
  find_place->addWidget(new ListenButton(form, kSideRow, ListenButton::Frame::kField, whole_));
  rows->addLayout(find_place);
  connect(find, &QAbstractButton::clicked, this, [&form] { form.opened(); });
  auto* tree = new TreePane(
      form.Tree, [&form] { form.Label3.click(); }, whole_);
  rows->addWidget(tree, 1);
  rows->addWidget(new Rule(whole_));
  rows->addWidget(make_foot(form));
  setMinimumWidth(kLeastWidth);
  setMaximumWidth(kMostWidth);
  // What was looked for is shown; and a window that takes no input has no pop-up that does.
  const auto close = [this] {
    if (narrow_) whole_->hide();
  };
  watch(form.Tree.click, this, close);
  watch(form.cmd_settings.click, this, close);
  watch(form.opened, this, close);
  watch(form.Label3.click, this, close);
  watch(form.enabled.changed, this, close);
}

void SidePane::set_narrow(bool narrow) {
  if (narrow_ == narrow) return;
  const QWidget* focus = window()->focusWidget();
  const bool had_focus = focus && isAncestorOf(focus);
  narrow_ = narrow;
  whole_->hide();
  rail_->setVisible(narrow);
  if (narrow) {
    layout()->removeWidget(whole_);
    whole_->setParent(this, Qt::Popup);
    setFixedWidth(Rail::kWidth + 1);
  } else {
    whole_->setParent(this, Qt::Widget);
    layout()->addWidget(whole_);
    whole_->show();
    setMinimumWidth(kLeastWidth);
    setMaximumWidth(kMostWidth);
  }
  if (had_focus) take_focus();
}

void SidePane::take_focus() {
  QWidget* first = narrow_ ? static_cast<QWidget*>(rail_->findChild<RailButton*>())
                           : whole_->findChild<TreePane*>();
  first->setFocus(Qt::OtherFocusReason);
}

void SidePane::open() {
  const QPoint place = mapToGlobal(QPoint(width(), 0));
  whole_->setGeometry(QRect(place, QSize(kPopUpWidth, height())));
  whole_->show();
  whole_->findChild<TreePane*>()->setFocus(Qt::PopupFocusReason);
}

QWidget* SidePane::make_brand() {
  auto* brand = new QWidget(whole_);
  auto* columns = new QHBoxLayout(brand);
  columns->setContentsMargins(20, 14, 12, 12);
  columns->setSpacing(12);
  columns->addWidget(new Logo(brand));
  auto* name = new ScaledLabel(1.14, true, ScaledLabel::Tone::kText, brand);
  name->setText("Homewarden");
  name->setMinimumWidth(1);
  columns->addWidget(name, 1);
  return brand;
}

QWidget* SidePane::make_foot(FrmMain& form) {
  auto* foot = new QWidget(whole_);
  auto* columns = new QHBoxLayout(foot);
  columns->setContentsMargins(12, 8, 12, 8);
  columns->setSpacing(4);
  auto* gear = new FootRow(foot);
  gear->setText(qt::from_code_page(form.cmd_settings.caption.get()));
  gear->setAccessibleName(gear->text());
  gear->setToolTip(tr("Location, start-up, interface"));
  columns->addWidget(gear, 1);
  connect(gear, &QAbstractButton::clicked, gear, [&form, gear] {
    gear->setChecked(true);  // a second press changes nothing
    form.cmd_settings.click();
  });
  follow(form.Tree.enabled, gear, [gear](bool enabled) { gear->setEnabled(enabled); });
  follow(form.frm_settings.visible, gear, [gear](bool visible) { gear->setChecked(visible); });
  auto* menu = new QToolButton(foot);
  menu->setAutoRaise(true);
  menu->setIcon(make_icon(LineIcon::kMore));
  menu->setIconSize({kSign, kSign});
  menu->setMinimumSize(32, 32);
  menu->setToolTip(tr("About Homewarden, Exit"));
  menu->setAccessibleName(tr("Menu"));
  menu->setFocusPolicy(Qt::StrongFocus);
  columns->addWidget(menu);
  connect(menu, &QToolButton::clicked, menu, [&form] { form.sspp3.popped_up(); });
  return foot;
}

void SidePane::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  painter.fillRect(rect(), look.side);
  painter.fillRect(QRect(width() - 1, 0, 1, height()), look.line);
}

}  // namespace homewarden::view
