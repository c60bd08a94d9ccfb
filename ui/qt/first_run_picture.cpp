#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

#include "ui/qt/first_run_page.h"
#include "ui/qt/look.h"

namespace homewarden::view {
namespace {

constexpr int kWidth = 952;
constexpr int kHeight = 216;
constexpr int kMostHeight = 240;

// %1 edges, %2 walls, %3 dark rooms, %4 gable, %5 screen, %6 separators, %7 interface, %8 wire,
// %9 leaves.
constexpr const char* kDrawing =
    R"svg(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 952 216">
<defs><radialGradient id="g" gradientUnits="userSpaceOnUse" cx="0" cy="0" r="100">
<stop offset="0" stop-color="#ffb83d" stop-opacity="0.5"/>
<stop offset="1" stop-color="#ffb83d" stop-opacity="0"/></radialGradient></defs>
<path d="M0 190H952" stroke="%1" stroke-width="3"/>
<g transform="translate(336 8)"><g transform="translate(140 104) scale(2.8 1.12)"><circle cx="0" cy="0" r="100" fill="url(#g)"/></g>
<path d="M40 84V182H240V84L140 16Z" fill="%2" stroke="%1" stroke-width="3"/>
<path d="M14 96 140 10 266 96" fill="none" stroke="#ffb01f" stroke-width="14"
 stroke-linecap="round" stroke-linejoin="round"/>
<rect x="43" y="86" width="95" height="46" fill="%3"/><path d="M40 84 140 16 240 84Z" fill="%4"/>
<rect x="142" y="86" width="97" height="46" fill="#ffe3a1"/>
<rect x="42" y="136" width="97" height="45" fill="#ffe3a1"/>
<rect x="142" y="136" width="97" height="45" fill="%3"/>
<path d="M140 82V182M40 134H240M40 84H240" stroke="%1" stroke-width="3"/></g>
<g transform="translate(512 100)" stroke="#57452f" stroke-width="2.5" stroke-linejoin="round">
<path d="M15 19V36M7 38H23" fill="none"/><path d="M9 4H21L27 19H3Z" fill="#ffb81f"/></g>
<g transform="translate(420 150)" stroke="#57452f" stroke-width="2.5">
<path d="M15 -6V4" fill="none"/><circle cx="15" cy="12" r="8" fill="#ffe162"/></g>
<g transform="translate(48 128)"><rect width="104" height="58" rx="6" fill="%5" stroke="%1"
 stroke-width="3"/><rect x="12" y="12" width="24" height="16" rx="3" fill="#ffb83d"/>
<rect x="42" y="12" width="24" height="16" rx="3" fill="%6"/>
<rect x="72" y="12" width="20" height="16" rx="3" fill="%6"/>
<rect x="12" y="34" width="24" height="12" rx="3" fill="%6"/>
<rect x="42" y="34" width="24" height="12" rx="3" fill="#ffb83d"/>
<path d="M-12 61H116" stroke="%1" stroke-width="5" stroke-linecap="round"/></g>
<path d="M164 184C186 184 184 164 208 164" fill="none" stroke="#5f88b8" stroke-width="4"
 stroke-linecap="round"/>
<g transform="translate(208 140)"><rect width="72" height="50" rx="8" fill="%7"/>
<path d="M40 9 26 28H36L32 42 47 23H37Z" fill="#ffc436"/></g>
<path d="M280 168H300C308 168 306 148 313 148S321 188 328 188 334 168 342 168H376" fill="none"
 stroke="%8" stroke-width="4" stroke-linejoin="round" stroke-linecap="round"/>
<g transform="translate(668 92)"><g transform="translate(12 14) scale(0.44)"><circle cx="0" cy="0" r="100" fill="url(#g)"/></g>
<path d="M12 26V98" stroke="%1" stroke-width="5"/>
<path d="M2 26 5 4H19L22 26Z" fill="#ffe162" stroke="#57452f" stroke-width="2.5"
 stroke-linejoin="round"/><path d="M0 4H24" stroke="#57452f" stroke-width="4"/></g>
<g transform="translate(764 84)" fill="%9"><path d="M40 70V106" stroke="%1" stroke-width="6"/>
<circle cx="40" cy="40" r="36"/><path d="M112 86V106" stroke="%1" stroke-width="5"/>
<circle cx="112" cy="66" r="24"/></g></svg>)svg";

QByteArray drawing_in(const Look& look) {
  return QString(kDrawing)
      .arg(look.edge.name(), look.dark ? "#2b3a4b" : "#ffffff", look.dark ? "#1e2a37" : "#e3edf7",
           look.dark ? "#22303e" : "#f3f8fd", look.card.name(), look.line.name(),
           look.dark ? "#3a5070" : "#5f7ea6", look.dark ? "#ffb83d" : "#d98a10",
           look.dark ? "#2f4a44" : "#9dbfa8")
      .toUtf8();
}

}  // namespace

FirstRunPicture::FirstRunPicture(QWidget* parent) : QWidget(parent) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int FirstRunPicture::heightForWidth(int width) const {
  return std::min(kMostHeight, width * kHeight / kWidth);
}

QSize FirstRunPicture::sizeHint() const {
  return {kWidth / 2, kHeight / 2};
}

void FirstRunPicture::paintEvent(QPaintEvent* /*event*/) {
  QSvgRenderer drawing(drawing_in(look_of(palette())));
  const QSizeF size = QSizeF(kWidth, kHeight).scaled(this->size(), Qt::KeepAspectRatio);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter, QRectF(QPointF((width() - size.width()) / 2, 0), size));
}

}  // namespace homewarden::view
