#include "ui/qt/listen_button.h"

#include <QPainter>
#include <QWindow>

#include "platform/qt/text_codec.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/page.h"
#include "ui/qt/shapes.h"
#include "ui/qt/watch.h"

namespace homewarden::view {
namespace {

constexpr double kSign = 20;
constexpr double kInner = 28;

}  // namespace

ListenButton::ListenButton(SpeechPanel& panel, int side, Frame frame, QWidget* parent)
    : QAbstractButton(parent), panel_(panel), side_(side), frame_(frame) {
  setFixedSize(side, side);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  connect(this, &QAbstractButton::clicked, this, [this] { panel_.cmd_listen.click(); });
  follow(panel.cmd_listen.visible, this, [this](bool visible) { setVisible(visible); });
  watch(panel.listening.changed, this, [this] { show_state(); });
  watch(panel.listen_level.changed, this, [this] { update(); });
  show_state();
}

void ListenButton::show_state() {
  setAccessibleName(panel_.listening ? tr("Listening") : tr("Listen for a command"));
  setToolTip(panel_.listening ? tr("Listening; Escape gives up")
                              : tr("Say a command (Scroll Lock)"));
  update();
}

void ListenButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Look& look = look_of(palette());
  if (panel_.listening) {
    const double loud = (side_ - kInner) * panel_.listen_level / 100.0;
    QColor ring = look.link;
    ring.setAlphaF(0.35F);
    draw_box(painter, centred(rect(), kInner + loud), (kInner + loud) / 2, ring, Qt::transparent);
    draw_box(painter, centred(rect(), kInner), kInner / 2, look.primary, Qt::transparent);
  } else {
    const bool framed = frame_ == Frame::kField;
    const QColor rest = framed ? look.field : QColor(Qt::transparent);
    const QColor border = !framed ? QColor(Qt::transparent) : underMouse() ? look.edge : look.line;
    draw_box(painter, rect(), kControlCorner,
             isDown()       ? look.press
             : underMouse() ? look.over
                            : rest,
             border);
  }
  draw_icon(painter, LineIcon::kMicrophone, centred(rect(), kSign),
            panel_.listening ? QColor(Qt::white) : look.quiet);
  if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange))
    draw_box(painter, rect(), kControlCorner, Qt::transparent, look.focus, 2);
}

}  // namespace homewarden::view
