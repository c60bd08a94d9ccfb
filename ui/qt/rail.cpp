#include "ui/qt/rail.h"

#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/fixed_nodes.h"
#include "ui/qt/listen_button.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_label.h"
#include "ui/qt/shapes.h"
#include "ui/qt/side_rows.h"
#include "ui/qt/tree_model.h"
#include "ui/qt/watch.h"
#include "ui/qt/window_keys.h"

namespace homewarden::view {
namespace {

constexpr int kSide = 40;
constexpr int kSign = 20;
constexpr LineIcon kIcons[] = {LineIcon::kHome, LineIcon::kClock, LineIcon::kMacros, LineIcon::kWeb,
                               LineIcon::kProfiles};

}  // namespace

RailButton::RailButton(LineIcon icon, const QString& name, QWidget* parent)
    : QAbstractButton(parent), icon_(icon) {
  setFixedSize(kSide, kSide);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setToolTip(name);
  setAccessibleName(name);
}

void RailButton::set_count(int count) {
  count_ = count;
  setAccessibleDescription(count > 0 ? tr("%1 on").arg(count) : QString());
  update();
}

QSize RailButton::sizeHint() const {
  return {kSide, kSide};
}

void RailButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_side_button(painter, *this, look);
  draw_icon(painter, icon_, centred(rect(), kSign), isChecked() ? look.text : look.quiet);
  if (count_ == 0) return;
  painter.setFont(scaled_font(0.8, true));
  const QString words = QString::number(count_);
  const QFontMetrics metrics = painter.fontMetrics();
  const int width =
      std::min(kSide, std::max(metrics.height(), metrics.horizontalAdvance(words) + 8));
  const QRect badge(kSide - width, 0, width, metrics.height());
  draw_box(painter, badge, badge.height() / 2.0, look.amber, look.line_on);
  painter.setPen(look.ink);
  painter.drawText(badge, Qt::AlignCenter, words);
}

Rail::Rail(FrmMain& form, std::function<void()> open_tree, QWidget* parent)
    : QWidget(parent),
      form_(form),
      rooms_(new RailButton(LineIcon::kDoor, tr("Rooms"), this)),
      gear_(new RailButton(LineIcon::kGear, qt::from_code_page(form.cmd_settings.caption.get()),
                           this)) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins((kWidth - kSide) / 2, 8, (kWidth - kSide) / 2, 8);
  rows->setSpacing(4);
  auto* find = new RailButton(LineIcon::kSearch, tr("Find anything"), this);
  find->setToolTip(tr("Find anything (Ctrl+K)"));
  connect(find, &QAbstractButton::clicked, this, [this] { form_.opened(); });
  rows->addWidget(find);
  rows->addWidget(new ListenButton(form, kSide, ListenButton::Frame::kNone, this));
  for (std::size_t place = 0; place < std::size(kIcons); ++place) {
    const char* name = kFixedNodes[place];
    auto* button = new RailButton(kIcons[place], name, this);
    button->setToolTip(tr("%1 (Alt+%2)").arg(name).arg(place + 1));
    connect(button, &QAbstractButton::clicked, this,
            [this, place] { open_fixed_node(form_.Tree, place); });
    rows->addWidget(button);
    fixed_ << button;
  }
  rows->addWidget(rooms_);
  rows->addStretch();
  rows->addWidget(gear_);
  auto* menu = new RailButton(LineIcon::kMore, tr("Menu"), this);
  rows->addWidget(menu);
  for (RailButton* button : fixed_) button->setCheckable(true);
  for (RailButton* button : {rooms_, gear_}) button->setCheckable(true);
  connect(rooms_, &QAbstractButton::clicked, this, [this, open_tree = std::move(open_tree)] {
    open_tree();
    show_selected();
  });
  connect(gear_, &QAbstractButton::clicked, this, [this] { form_.cmd_settings.click(); });
  connect(menu, &QAbstractButton::clicked, this, [this] { form_.sspp3.popped_up(); });
  watch(form.Tree.selected.changed, this, [this] { show_selected(); });
  watch(form.frm_settings.visible.changed, this, [this] { show_selected(); });
  watch(form.Tree.level_changed, this, [this](const TreeNode&) { show_count(); });
  watch(form.Tree.nodes_changed, this, [this] {
    show_selected();
    show_count();
  });
  // While the tree takes no input, nor does what stands for it.
  follow(form.Tree.enabled, this, [this](bool enabled) {
    for (RailButton* button : fixed_) button->setEnabled(enabled);
    gear_->setEnabled(enabled);
  });
  show_selected();
  show_count();
}

void Rail::show_selected() {
  const TreeNode* node = form_.Tree.selected;
  bool is_fixed = false;
  for (qsizetype place = 0; place < fixed_.size(); ++place) {
    const bool selected = node && node->key == kFixedNodes[place];
    fixed_[place]->setChecked(selected);
    is_fixed = is_fixed || selected;
  }
  rooms_->setChecked(node && !is_fixed);
  gear_->setChecked(form_.frm_settings.visible);
}

void Rail::show_count() {
  int count = 0;
  for (const auto& room : form_.Tree.roots()) count += count_on(*room);
  rooms_->set_count(count);
}

}  // namespace homewarden::view
