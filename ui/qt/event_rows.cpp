#include "ui/qt/event_rows.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "platform/qt/text_codec.h"
#include "ui/key_codes.h"
#include "ui/qt/bindings.h"
#include "ui/qt/event_row_painting.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr EventRows::Sign kSigns[] = {EventRows::Sign::kRun, EventRows::Sign::kEdit,
                                      EventRows::Sign::kDelete};

// All of it in one text, the group with its first event.
QString spoken(const EventFace& face, bool begins_group) {
  QStringList parts;
  if (begins_group) parts << qt::from_code_page(face.group);
  if (!face.time.empty()) parts << qt::from_code_page(face.time);
  parts << event_headline(face) << qt::from_code_page(face.detail);
  if (!face.until.empty()) parts << qt::from_code_page(face.until);
  if (!face.warning.empty()) parts << qt::from_code_page(face.warning);
  return parts.join(", ");
}

}  // namespace

class EventRows::Model : public QAbstractListModel {
 public:
  Model(const EventPanel& panel, QObject* parent) : QAbstractListModel(parent), panel_(panel) {}

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(faces().size());
  }
  const EventFace* face(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    return index.isValid() && row < faces().size() ? &faces()[row] : nullptr;
  }
  bool begins_group(const QModelIndex& index) const {
    const EventFace* before = face(index.siblingAtRow(index.row() - 1));
    return !before || before->group != face(index)->group;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    const EventFace* shown = face(index);
    if (!shown) return {};
    if (role == Qt::DisplayRole) return event_headline(*shown);
    if (role == Qt::AccessibleTextRole) return spoken(*shown, begins_group(index));
    return {};
  }
  int row_of(int row) const {
    const auto found = std::find_if(faces().begin(), faces().end(),
                                    [row](const EventFace& face) { return face.row == row; });
    return found == faces().end() ? -1 : static_cast<int>(found - faces().begin());
  }
  // A list that is read stays where it is while its times change.
  void reload() {
    const auto count = static_cast<int>(faces().size());
    if (count == shown_ && count > 0) {
      emit dataChanged(index(0), index(count - 1));
      return;
    }
    beginResetModel();
    shown_ = count;
    endResetModel();
  }

 private:
  const std::vector<EventFace>& faces() const { return panel_.eventfaces.get(); }

  const EventPanel& panel_;
  int shown_ = 0;
};

class EventRows::Rows : public QStyledItemDelegate {
 public:
  Rows(EventRows& list, const Model& model)
      : QStyledItemDelegate(&list), list_(list), model_(model) {}

  QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& index) const override {
    const EventFace* face = model_.face(index);
    if (!face) return {};
    const int width = list_.viewport()->width();
    return {10, event_row_height(list_, *face, model_.begins_group(index), width)};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override {
    const EventFace* face = model_.face(index);
    if (!face) return;
    EventRowState state;
    state.selected = (option.state & QStyle::State_Selected) != 0;
    state.over = over == index && list_.isEnabled();
    state.focus = list_.hasFocus() && list_.currentIndex() == index &&
                  (option.state & QStyle::State_KeyboardFocusChange) != 0;
    state.begins_group = model_.begins_group(index);
    const QModelIndex next = index.siblingAtRow(index.row() + 1);
    state.ends_group = !next.isValid() || model_.begins_group(next);
    state.signs = list_.isEnabled() && (state.over || state.selected);
    for (int sign = 0; sign < kEventSigns; ++sign)
      if (state.over && kSigns[sign] == over_sign) state.sign_over = sign;
    draw_event_row(*painter, list_, option.rect, *face, state);
  }

  QPersistentModelIndex over;
  Sign over_sign = Sign::kNone;

 private:
  EventRows& list_;
  const Model& model_;
};

EventRows::EventRows(EventPanel& panel, QWidget* parent)
    : QListView(parent),
      panel_(panel),
      model_(new Model(panel, this)),
      rows_(new Rows(*this, *model_)) {
  setModel(model_);
  setItemDelegate(rows_);
  setFrameShape(NoFrame);
  setMouseTracking(true);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setResizeMode(Adjust);
  viewport()->setAutoFillBackground(false);
  setAccessibleName(tr("Events"));
  follow(panel.ListView1.enabled, this, [this](bool enabled) { setEnabled(enabled); });
  follow(panel.ListView1.tool_tip, this,
         [this](const std::string& tip) { setAccessibleDescription(qt::from_code_page(tip)); });
  watch(panel.ListView1.focus_requested, this, [this] { setFocus(Qt::OtherFocusReason); });
  follow(panel.eventfaces, this, [this](const auto&) { show_faces(); });
  watch(panel.ListView1.selected.changed, this, [this] { show_selected(); });
}

EventRows::~EventRows() = default;

void EventRows::show_faces() {
  const QScopedValueRollback<bool> showing(showing_, true);
  setAutoScroll(false);
  model_->reload();
  show_selected();
  setAutoScroll(true);
  scheduleDelayedItemsLayout();  // other rows begin a group now
}

void EventRows::show_selected() {
  const QScopedValueRollback<bool> showing(showing_, true);
  const int row = model_->row_of(panel_.ListView1.selected);
  if (row == currentIndex().row() && currentIndex().isValid() == (row >= 0)) return;
  if (row < 0)
    setCurrentIndex({});
  else
    setCurrentIndex(model_->index(row));
}

void EventRows::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (showing_) return;
  const EventFace* face = model_->face(current);
  panel_.ListView1.selected = face ? face->row : -1;
}

QRect EventRows::place_of(Sign sign, const QModelIndex& row) const {
  if (!row.isValid() || sign == Sign::kNone) return {};
  const QRect body = event_row_body(*this, visualRect(row), model_->begins_group(row));
  return event_sign(*this, body, static_cast<int>(sign) - 1);
}

EventRows::Sign EventRows::sign_at(const QPoint& place) const {
  const QModelIndex row = indexAt(place);
  for (const Sign sign : kSigns)
    if (place_of(sign, row).contains(place)) return sign;
  return Sign::kNone;
}

void EventRows::press(Sign sign, const QModelIndex& row) {
  setCurrentIndex(row);
  if (sign == Sign::kRun) panel_.mnu_runeventnow.click();
  if (sign == Sign::kEdit) panel_.ListView1.double_click();
  if (sign == Sign::kDelete) panel_.mnu_delevent.click();
}

void EventRows::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_D && event->modifiers() == Qt::ControlModifier)
    panel_.ListView1.key_press(kControlD);
  else if (event->key() == Qt::Key_Delete)
    panel_.ListView1.key_press(kDelete);
  else if (enter && currentIndex().isValid())
    panel_.ListView1.double_click();
  else
    QListView::keyPressEvent(event);
}

// A sign takes the whole press: the row below it is not what was meant by a quick second one.
void EventRows::mousePressEvent(QMouseEvent* event) {
  pressed_sign_ = event->button() == Qt::LeftButton ? sign_at(event->pos()) : Sign::kNone;
  if (pressed_sign_ == Sign::kNone) return QListView::mousePressEvent(event);
  rows_->over = indexAt(event->pos());
}

void EventRows::mouseReleaseEvent(QMouseEvent* event) {
  const Sign sign =
      event->button() == Qt::LeftButton ? std::exchange(pressed_sign_, Sign::kNone) : Sign::kNone;
  if (sign == Sign::kNone) return QListView::mouseReleaseEvent(event);
  const QModelIndex row = indexAt(event->pos());
  if (sign_at(event->pos()) == sign && rows_->over == row) press(sign, row);
}

void EventRows::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) {
    rows_->over = indexAt(event->pos());
    rows_->over_sign = sign_at(event->pos());
    viewport()->update();
  }
  QListView::mouseMoveEvent(event);
}

void EventRows::mouseDoubleClickEvent(QMouseEvent* event) {
  if (sign_at(event->pos()) != Sign::kNone) return mousePressEvent(event);
  QListView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid())
    panel_.ListView1.double_click();
}

void EventRows::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse) {
    const QModelIndex row = indexAt(event->pos());
    if (row.isValid()) setCurrentIndex(row);
  } else if (currentIndex().isValid()) {
    scrollTo(currentIndex());
  }
  panel_.ListView1.mouse_down(kRightButton);
}

// Whoever comes with the keyboard starts at the first row.
void EventRows::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  const bool by_key = event->reason() == Qt::TabFocusReason ||
                      event->reason() == Qt::BacktabFocusReason ||
                      event->reason() == Qt::ShortcutFocusReason;
  if (by_key && panel_.ListView1.selected < 0) setCurrentIndex(model_->index(0));
}

void EventRows::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  if (event->type() == QEvent::FontChange) scheduleDelayedItemsLayout();
}

bool EventRows::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) {
    rows_->over = QModelIndex();
    viewport()->update();
  }
  if (event->type() != QEvent::ToolTip) return QListView::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const EventFace* face = model_->face(indexAt(help->pos()));
  QString tip;
  switch (sign_at(help->pos())) {
    case Sign::kRun:
      tip = tr("Run now");
      break;
    case Sign::kEdit:
      tip = tr("Change");
      break;
    case Sign::kDelete:
      tip = tr("Delete (Ctrl+D)");
      break;
    case Sign::kNone:
      if (face) tip = tip_text(face->warning.empty() ? panel_.ListView1.tool_tip : face->warning);
      break;
  }
  QToolTip::showText(help->globalPos(), tip, this);
  return true;
}

}  // namespace homewarden::view
