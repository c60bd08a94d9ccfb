#include "ui/qt/list_editor_page.h"

#include <QEvent>
#include <QFontInfo>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/qt/action_button.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/sized_label.h"

namespace homewarden::view {
namespace {

constexpr double kUsualText = 14;
constexpr int kBesides = 740;  // from this width on both have room
constexpr int kRoomy = 900;
constexpr int kEditor = 336;
constexpr int kRoomyEditor = 376;
constexpr int kMargin = 24;

// Follows the width that it has: nothing in it is wider.
class Column : public QScrollArea {
 public:
  explicit Column(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
  }
};

// Its scroll bar stands in its margin, so that what it holds is as wide with it as without.
class Fields : public Column {
 public:
  using Column::Column;

 protected:
  void resizeEvent(QResizeEvent* event) override {
    Column::resizeEvent(event);
    const int bar = width() - viewport()->width();
    QMargins margins = widget()->layout()->contentsMargins();
    margins.setRight(std::max(0, kMargin - bar));
    widget()->layout()->setContentsMargins(margins);
  }
};

QWidget* make_body(QScrollArea* area) {
  auto* body = new QWidget;
  area->setWidget(body);
  body->setAutoFillBackground(false);
  return body;
}

}  // namespace

double text_scale(const QWidget& widget) {
  return std::max(1.0, QFontInfo(widget.font()).pixelSize() / kUsualText);
}

QLabel* make_caption(const QString& text, QWidget* parent) {
  auto* label = new SizedLabel(0.86, false, SizedLabel::kQuiet, parent);
  label->setText(text);
  return label;
}

ListEditorPage::ListEditorPage(const QString& title, std::function<void()> leave, QWidget* parent)
    : QWidget(parent),
      leave_(std::move(leave)),
      list_(new Column(this)),
      editor_(new QWidget(this)) {
  build_list(title);
  build_editor();
  auto* sides = new QHBoxLayout(this);
  sides->setContentsMargins(0, 0, 0, 0);
  sides->setSpacing(0);
  sides->addWidget(list_, 1);
  sides->addWidget(editor_);
  arrange();
}

void ListEditorPage::build_list(const QString& title) {
  list_body_ = make_body(list_);
  list_rows_ = new QVBoxLayout(list_body_);
  list_rows_->setSpacing(12);
  title_ = new SizedLabel(2.0, true, SizedLabel::kText, list_body_);
  title_->setText(title);
  subtitle_ = new SizedLabel(1.0, false, SizedLabel::kQuiet, list_body_);
  auto* head = new QVBoxLayout;
  head->setSpacing(0);
  head->setContentsMargins(kReach, 0, kReach, 0);
  head->addWidget(title_);
  head->addWidget(subtitle_);
  list_rows_->addLayout(head);
  list_rows_->addSpacing(8);
}

void ListEditorPage::add_to_list(QWidget* widget) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(kReach, 0, kReach, 0);
  row->addWidget(widget);
  list_rows_->addLayout(row);
}

void ListEditorPage::build_editor() {
  auto* all = new QVBoxLayout(editor_);
  all->setContentsMargins(1, 0, 0, 0);
  all->setSpacing(0);
  editor_head_ = new QHBoxLayout;
  back_ = make_sign_button(LineIcon::kLeft, tr("Back to the list"), editor_);
  editor_title_ = new SizedLabel(1.14, true, SizedLabel::kText, editor_);
  editor_head_->addWidget(back_);
  editor_head_->addWidget(editor_title_, 1);
  all->addLayout(editor_head_);
  auto* fields = new Fields(editor_);
  editor_body_ = make_body(fields);
  editor_rows_ = new QVBoxLayout(editor_body_);
  editor_rows_->setContentsMargins(kMargin, 4, kMargin, 12);
  editor_rows_->setSpacing(4);
  all->addWidget(fields, 1);
  foot_ = new QVBoxLayout;
  foot_->setContentsMargins(kMargin, 12, kMargin, 20);
  foot_->setSpacing(12);
  all->addLayout(foot_);
  QObject::connect(back_, &QPushButton::clicked, this, [this] { leave_(); });
}

void ListEditorPage::open_editor(bool open) {
  open_ = open;
  arrange();
}

void ListEditorPage::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

void ListEditorPage::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) arrange();
}

// What had the focus on the side that goes would take the keys with it.
void ListEditorPage::arrange() {
  const double scale = text_scale(*this);
  const double wide = width() / scale;
  narrow_ = wide < kBesides;
  const int margin = wide < 500 ? 16 : wide < kBesides ? 24 : 32;
  list_rows_->setContentsMargins(margin - kReach, 24, margin - kReach, 16);
  const bool covers = narrow_ && open_;
  back_->setVisible(covers);
  editor_head_->setContentsMargins(covers ? kMargin - 12 : kMargin, 24, kMargin, 4);
  editor_->setVisible(!narrow_ || open_);
  list_->setVisible(!covers);
  if (narrow_) {
    editor_->setMinimumWidth(0);
    editor_->setMaximumWidth(QWIDGETSIZE_MAX);
  } else {
    editor_->setFixedWidth(static_cast<int>((wide < kRoomy ? kEditor : kRoomyEditor) * scale));
  }
  update();
}

void ListEditorPage::paintEvent(QPaintEvent* /*event*/) {
  if (editor_->isHidden()) return;
  QPainter painter(this);
  const Look& look = look_of(palette());
  painter.fillRect(editor_->geometry(), look.side);
  if (!narrow_) painter.fillRect(QRect(editor_->x(), 0, 1, height()), look.line);
}

}  // namespace homewarden::view
