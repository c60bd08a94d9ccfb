#include "ui/qt/character_view.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/figure_painting.h"
#include "ui/qt/free_place.h"
#include "ui/qt/motion.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr int kUsualLetter = 14;
constexpr int kMargin = 24;  // to the edges of the window
constexpr int kCardGap = 4;  // around the figure, where it stands on a card
constexpr int kFoot = 56;    // the same at its foot, where the status bar is

QString words_of(Pose pose) {
  switch (pose) {
    case Pose::kIdle:
      return tr("waiting");
    case Pose::kListening:
      return tr("listening");
    case Pose::kUnderstood:
      return tr("has understood");
    case Pose::kNotUnderstood:
      return tr("has not understood");
  }
  return {};
}

QString as_entry(const std::string& caption) {
  return qt::from_code_page(caption).replace("&", "&&");
}

}  // namespace

CharacterView::CharacterView(FrmCharacter& form, QWidget* window)
    : form_(form), window_(window), bubble_(form) {
  setContextMenuPolicy(Qt::DefaultContextMenu);
  setCursor(Qt::OpenHandCursor);
  frame_timer_.setSingleShot(true);
  connect(&frame_timer_, &QTimer::timeout, this, [this] { show_next_frame(); });
  connect(&menu_, &QMenu::aboutToShow, this, [this] { fill_menu(); });
  connect(qApp, &QApplication::focusChanged, this, [this] { step_aside(); });
  watch(form.pose.changed, this, [this] { show_pose(); });
  watch(form.figure.changed, this, [this] {
    resize_figure();
    show_pose();
  });
  watch(form.visible.changed, this, [this] { show_visible(); });
  resize_figure();
  show_visible();
}

const FigurePose* CharacterView::pose() const {
  const auto& figure = form_.figure.get();
  return figure ? &figure->in(form_.pose) : nullptr;
}

void CharacterView::show_visible() {
  if (!form_.visible || !form_.figure.get()) {
    frame_timer_.stop();
    menu_.close();
    return hide();
  }
  take_place();
  show();
  show_pose();
}

void CharacterView::show_pose() {
  const QString name = qt::from_code_page(form_.figure.get() ? form_.figure.get()->name : "");
  setWindowTitle(tr("Homewarden: %1").arg(name));
  setAccessibleName(tr("%1, %2").arg(name, words_of(form_.pose)));
  setAccessibleDescription(tr("Its menu has all that can be said"));
  frame_timer_.stop();
  const FigurePose* shown = pose();
  if (!shown || !isVisible()) return;
  // Without motion: what the pose comes to.
  const bool moves = motion_milliseconds(*this) > 0;
  frame_ = moves || shown->repeats ? 0 : shown->frames.size() - 1;
  update();
  if (moves) wait_for_next_frame();
}

void CharacterView::wait_for_next_frame() {
  const FigurePose& shown = *pose();
  if (shown.frames.size() > 1 && (shown.repeats || frame_ + 1 < shown.frames.size()))
    frame_timer_.start(shown.frames[frame_].milliseconds);
}

void CharacterView::show_next_frame() {
  const FigurePose* shown = pose();
  if (!shown) return;
  frame_ = (frame_ + 1) % shown->frames.size();
  update();
  wait_for_next_frame();
}

// Larger text, larger figure.
void CharacterView::resize_figure() {
  const auto& figure = form_.figure.get();
  if (!figure) return;
  const int letter = std::max(kUsualLetter, QFontInfo(font()).pixelSize());
  resize(QSize(figure->width, figure->height) * letter / kUsualLetter);
}

QList<QPoint> CharacterView::places() const {
  QList<QPoint> wanted;
  const auto& own = form_.place.get();
  if (own) wanted << QPoint(own->left, own->top);
  const bool has_window = window_ && window_->isVisible() && !window_->isMinimized();
  const QRect around = has_window ? QRect(window_->mapToGlobal(QPoint(0, 0)), window_->size())
                                  : screen_around(QCursor::pos());
  const int right = around.right() - kMargin - width();
  const int left = around.left() + kMargin;
  const int foot = around.bottom() - kFoot - height();
  const int top = around.top() + kFoot;
  wanted << QPoint(right, foot) << QPoint(right, top) << QPoint(right, (top + foot) / 2)
         << QPoint(left, foot) << QPoint(left, top);
  return wanted;
}

void CharacterView::stand(const QList<QPoint>& wanted) {
  const QList<QRect> avoid = window_ ? places_in_use(*window_) : QList<QRect>();
  const QRect screen = screen_around(wanted.first() + QPoint(width() / 2, height() / 2));
  move(free_place(wanted, size(), avoid, screen));
  bubble_.stand_beside(geometry(), avoid);
}

void CharacterView::take_place() {
  stand(places());
}

// It stays where it is as long as it covers nothing.
void CharacterView::step_aside() {
  if (!isVisible() || grip_) return;
  stand(QList<QPoint>{pos()} + places());
}

void CharacterView::paintEvent(QPaintEvent* /*event*/) {
  const FigurePose* shown = pose();
  if (!shown) return;
  QPainter painter(this);
  const Look& look = look_of(palette());
  if (!blends()) {
    painter.fillRect(rect(), look.card);
    draw_box(painter, rect(), kBoxCorner, look.card, look.edge);
  }
  const std::size_t frame = std::min(frame_, shown->frames.size() - 1);
  const int gap = blends() ? 0 : kCardGap;
  paint_figure(painter, *form_.figure.get(), shown->frames[frame],
               rect().adjusted(gap, gap, -gap, -gap), look);
}

// Where windows may not place themselves the desktop moves it.
void CharacterView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  dragged_ = false;
  if (QGuiApplication::platformName().startsWith("wayland")) {
    windowHandle()->startSystemMove();
    return;
  }
  grip_ = event->position().toPoint();
}

void CharacterView::mouseMoveEvent(QMouseEvent* event) {
  if (!grip_) return;
  const QPoint wanted = event->globalPosition().toPoint() - *grip_;
  const int far_enough = QApplication::startDragDistance();
  if (!dragged_ && (wanted - pos()).manhattanLength() < far_enough) return;
  dragged_ = true;
  setCursor(Qt::ClosedHandCursor);
  move(free_place({wanted}, size(), {}, screen_around(event->globalPosition().toPoint())));
}

void CharacterView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  grip_.reset();
  setCursor(Qt::OpenHandCursor);
  if (dragged_) form_.place = FigurePlace{x(), y()};
  dragged_ = false;
}

void CharacterView::moveEvent(QMoveEvent* event) {
  FloatingWindow::moveEvent(event);
  if (grip_) bubble_.stand_beside(geometry(), {});
}

void CharacterView::contextMenuEvent(QContextMenuEvent* event) {
  show_commands(event->globalPos());
}

void CharacterView::show_commands(const QPoint& place) {
  menu_.popup(place);
}

// A room's commands lie in a menu of their own: a house has hundreds.
void CharacterView::fill_menu() {
  menu_.clear();
  if (form_.list_visible) {
    QAction* caption = menu_.addAction(as_entry(form_.list_caption.get()));
    caption->setEnabled(false);
    menu_.addSeparator();
    for (const CommandGroup& group : form_.list.get()) {
      QMenu* rows = group.caption.empty() ? &menu_ : menu_.addMenu(as_entry(group.caption));
      for (const CommandChoice& choice : group.choices)
        connect(rows->addAction(as_entry(choice.caption)), &QAction::triggered, this,
                [this, number = choice.number] { form_.command_chosen(number); });
    }
    menu_.addSeparator();
  }
  QAction* hide = menu_.addAction(as_entry(form_.cmd_hide.caption));
  hide->setEnabled(form_.visible);
  connect(hide, &QAction::triggered, this, [this] { form_.cmd_hide.click(); });
}

void CharacterView::changeEvent(QEvent* event) {
  FloatingWindow::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange) {
    resize_figure();
    step_aside();
  }
}

}  // namespace homewarden::view
