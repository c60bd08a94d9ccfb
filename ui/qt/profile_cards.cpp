#include "ui/qt/profile_cards.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOptionButton>
#include <algorithm>

#include "platform/qt/text_codec.h"
#include "ui/qt/event_row_painting.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/page.h"
#include "ui/qt/scaled_font.h"
#include "ui/qt/shapes.h"
#include "ui/qt/tip_text.h"
#include "ui/qt/watch.h"
#include "ui/qt/wrapped_lines.h"

namespace homewarden::view {
namespace {

constexpr int kGap = 12;
constexpr int kSide = 16;
constexpr int kLeastWidth = 34;  // average letters
constexpr int kLines = 2;        // of what it holds

// One of them is looked at: for a screen reader a radio button.
class ProfileCard : public QRadioButton {
 public:
  ProfileCard(ProfilePanel& panel, int number, QWidget* parent) : QRadioButton(parent) {
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    show_face(panel.profilefaces.get()[static_cast<std::size_t>(number)]);
    setChecked(panel.profile_seen == number);
    connect(this, &QRadioButton::clicked, this, [&panel, number] {
      panel.profile_seen = number;
      panel.profile_open = true;
    });
  }

  void show_face(const ProfileFace& face) {
    face_ = face;
    const QString summary = qt::from_code_page(face.summary);
    setAccessibleName(qt::from_code_page(face.name) + (face.active ? ", " + tr("active") : ""));
    setAccessibleDescription(summary);
    setToolTip(tip_text(face.summary));
    update();
  }

  QSize sizeHint() const override {
    return {fontMetrics().averageCharWidth() * kLeastWidth,
            std::max(92, (1 + kLines) * fontMetrics().height() + 2 * kSide + 10)};
  }
  QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }
  bool hitButton(const QPoint& place) const override { return rect().contains(place); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const Look& look = look_of(palette());
    const QColor idle = isDown() ? look.press : underMouse() ? look.over : look.card;
    draw_box(painter, rect(), kCardCorner, isChecked() ? look.selected : idle,
             isChecked()    ? look.primary
             : underMouse() ? look.edge
                            : look.line);
    const QRect room = rect().adjusted(kSide, kSide, -kSide, -kSide);
    const int right = face_.active ? draw_active(painter, room) : room.right();
    const QFont name = scaled_font(font(), 1.14, true);
    painter.setFont(name);
    painter.setPen(look.text);
    painter.drawText(QRect(room.left(), room.top(), right - room.left(), room.height()),
                     Qt::AlignTop,
                     QFontMetrics(name).elidedText(qt::from_code_page(face_.name), Qt::ElideRight,
                                                   right - room.left()));
    painter.setFont(font());
    painter.setPen(look.quiet);
    painter.drawText(room, Qt::AlignBottom,
                     wrapped_lines(qt::from_code_page(face_.summary), font(), room.width(), kLines)
                         .join(QLatin1Char('\n')));
    QStyleOptionButton option;
    initStyleOption(&option);
    if (hasFocus() && (option.state & QStyle::State_KeyboardFocusChange) != 0)
      draw_focus(painter, rect(), kCardCorner, look);
  }

 private:
  int draw_active(QPainter& painter, const QRect& room) const {
    const Look& look = look_of(palette());
    const QFont font = scaled_font(this->font(), 0.86, true);
    const QFontMetrics metrics(font);
    const QString word = tr("Active");
    const int left = room.right() - metrics.horizontalAdvance(word);
    painter.setFont(font);
    painter.setPen(look.ok);
    const int height = QFontMetrics(scaled_font(this->font(), 1.14, true)).height();
    painter.drawText(QRect(left, room.top(), room.width(), height), Qt::AlignVCenter, word);
    const int side = metrics.height();
    const QRect sign(left - side - 4, room.top(), side, height);
    draw_icon(painter, LineIcon::kCheck, centred(sign, side), look.ok);
    return sign.left() - 8;
  }

  ProfileFace face_;
};

}  // namespace

ProfileCards::ProfileCards(ProfilePanel& panel, QWidget* parent)
    : QWidget(parent), panel_(panel), places_(new QGridLayout(this)) {
  places_->setContentsMargins(0, 0, 0, 0);
  places_->setSpacing(kGap);
  follow(panel.profilefaces, this, [this](const auto&) { show_faces(); });
  watch(panel.profile_seen.changed, this, [this] {
    const int seen = panel_.profile_seen;
    if (seen >= 0 && seen < cards_.size())
      cards_[seen]->setChecked(true);
    else
      build();  // one of several cannot be unchecked
  });
}

// The cards stay while what they say changes, and the keyboard with them.
void ProfileCards::show_faces() {
  const auto& faces = panel_.profilefaces.get();
  if (faces.size() != static_cast<std::size_t>(cards_.size())) return build();
  for (std::size_t number = 0; number < faces.size(); ++number)
    static_cast<ProfileCard*>(cards_[static_cast<qsizetype>(number)])->show_face(faces[number]);
}

void ProfileCards::build() {
  qDeleteAll(cards_);
  cards_.clear();
  columns_ = 0;
  const int count = static_cast<int>(panel_.profilefaces.get().size());
  for (int number = 0; number < count; ++number) cards_ << new ProfileCard(panel_, number, this);
  for (QWidget* card : cards_) card->show();
  arrange();
}

void ProfileCards::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

void ProfileCards::arrange() {
  if (cards_.isEmpty()) return;
  const int least = cards_.front()->sizeHint().width() + kGap;
  const int columns = std::clamp((width() + kGap) / least, 1, 3);
  if (columns == columns_) return;
  columns_ = columns;
  for (int i = 0; i < cards_.size(); ++i) places_->addWidget(cards_[i], i / columns, i % columns);
}

ProfileEvents::ProfileEvents(ProfilePanel& panel, QWidget* parent)
    : QWidget(parent), panel_(panel) {
  setFocusPolicy(Qt::NoFocus);
  follow(panel.profilefaces, this, [this](const auto&) { show_events(); });
  follow(panel.profile_seen, this, [this](int) { show_events(); });
}

const std::vector<EventFace>& ProfileEvents::events() const {
  static const std::vector<EventFace> kNone;
  const auto& faces = panel_.profilefaces.get();
  const int seen = panel_.profile_seen;
  const bool is_one = seen >= 0 && seen < static_cast<int>(faces.size());
  return is_one ? faces[static_cast<std::size_t>(seen)].events : kNone;
}

// A screen reader gets all of it in one text.
void ProfileEvents::show_events() {
  QStringList texts;
  for (const EventFace& event : events())
    texts << qt::from_code_page(event.group + " " + event.time + ", ") + event_headline(event) +
                 ", " + qt::from_code_page(event.detail);
  setAccessibleName(texts.join(". "));
  setVisible(!texts.isEmpty());
  updateGeometry();
  update();
}

int ProfileEvents::row_height(std::size_t row) const {
  const auto& shown = events();
  const bool begins = row == 0 || shown[row - 1].group != shown[row].group;
  return event_row_height(*this, shown[row], begins, width() + 24);
}

QSize ProfileEvents::sizeHint() const {
  int height = 0;
  for (std::size_t row = 0; row < events().size(); ++row) height += row_height(row);
  return {200, height};
}

QSize ProfileEvents::minimumSizeHint() const {
  return {120, sizeHint().height()};
}

void ProfileEvents::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  updateGeometry();
}

void ProfileEvents::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) updateGeometry();
}

// The rows keep a margin of their own, which the page has already.
void ProfileEvents::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto& shown = events();
  int top = 0;
  for (std::size_t row = 0; row < shown.size(); ++row) {
    EventFace face = shown[row];
    face.until.clear();  // its group says the day
    EventRowState state;
    state.begins_group = row == 0 || shown[row - 1].group != face.group;
    state.ends_group = row + 1 == shown.size() || shown[row + 1].group != face.group;
    const int height = row_height(row);
    draw_event_row(painter, *this, QRect(-12, top, width() + 24, height), face, state);
    top += height;
  }
}

}  // namespace homewarden::view
