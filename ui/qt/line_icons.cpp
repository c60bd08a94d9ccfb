#include "ui/qt/line_icons.h"

#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>
#include <memory>
#include <utility>

namespace homewarden::view {
namespace {

constexpr int kMostRenderers = 100;

// In a square of 20 units.
const char* path_of(LineIcon icon) {
  switch (icon) {
    case LineIcon::kHome:
      return "M3 9.5 10 3.5l7 6M5 8.5V16.5h10V8.5M8.5 16.5v-4h3v4";
    case LineIcon::kClock:
      return "M10 3a7 7 0 1 0 0 14 7 7 0 0 0 0-14M10 6v4.2l2.8 1.8";
    case LineIcon::kMacros:
      return "M3 9V8a2.5 2.5 0 0 1 2.5-2.5H16M13.2 2.8 16 5.5l-2.8 2.7M17 11v1a2.5 2.5 0 0 1-2.5 "
             "2.5H4M6.8 11.8 4 14.5l2.8 2.7";
    case LineIcon::kWeb:
      return "M10 3a7 7 0 1 0 0 14 7 7 0 0 0 0-14M3 10h14M10 3c-4.5 4.2-4.5 9.8 0 14M10 3c4.5 4.2 "
             "4.5 9.8 0 14";
    case LineIcon::kProfiles:
      return "M10 3 17 6.8 10 10.6 3 6.8ZM3.5 10.2 10 13.7l6.5-3.5M3.5 13.5 10 17l6.5-3.5";
    case LineIcon::kDoor:
      return "M5.5 17V3.5h9V17M3.5 17h13M12 10.2v.6";
    case LineIcon::kPlug:
      return "M7.5 3v4M12.5 3v4M5 7h10v2.5a5 5 0 0 1-10 0ZM10 14.5V17.5";
    case LineIcon::kSearch:
      return "M9 3.5a5.5 5.5 0 1 0 0 11 5.5 5.5 0 0 0 0-11M13 13l4 4";
    case LineIcon::kGear:
      return "M10 8a2 2 0 1 0 0 4 2 2 0 0 0 0-4M10 4.8a5.2 5.2 0 1 0 0 10.4 5.2 5.2 0 0 0 "
             "0-10.4M10 2.3v2.5M10 15.2v2.5M2.3 10h2.5M15.2 10h2.5M4.55 4.55l1.8 1.8M13.65 "
             "13.65l1.8 1.8M15.45 4.55l-1.8 1.8M6.35 13.65l-1.8 1.8";
    case LineIcon::kMore:
      return "M4.5 10h.01M10 10h.01M15.5 10h.01";
    case LineIcon::kPlus:
      return "M10 4v12M4 10h12";
    case LineIcon::kRight:
      return "M8 5.5 12.5 10 8 14.5";
    case LineIcon::kDown:
      return "M5.5 8 10 12.5 14.5 8";
    case LineIcon::kLeft:
      return "M12 5.5 7.5 10 12 14.5";
    case LineIcon::kPower:
      return "M10 3v7M6 5.6a6 6 0 1 0 8 0";
    case LineIcon::kBell:
      return "M5 14h10l-1.3-2V9a3.7 3.7 0 0 0-7.4 0v3ZM8.8 16.5h2.4";
    case LineIcon::kClose:
      return "M5.5 5.5l9 9M14.5 5.5l-9 9";
    case LineIcon::kCheck:
      return "M4.5 10.5 8.5 14.5 15.5 6";
    case LineIcon::kWarning:
      return "M10 3.5 17.5 16.5H2.5ZM10 8.5v3.5M10 14.2v.1";
    case LineIcon::kInfo:
      return "M10 3a7 7 0 1 0 0 14 7 7 0 0 0 0-14M10 9.2V13.5M10 6.6v.1";
    case LineIcon::kRetry:
      return "M16 10a6 6 0 1 1-2-4.5M14.5 2.5v3.3h-3.3";
    case LineIcon::kSunrise:
      return "M3 15.5h14M5.5 15.5a4.5 4.5 0 0 1 9 0M10 3.5V7.5M7.8 5.5 10 3.3l2.2 2.2M3.8 9.3l1.4 "
             "1.2M16.2 9.3l-1.4 1.2";
    case LineIcon::kSunset:
      return "M3 15.5h14M5.5 15.5a4.5 4.5 0 0 1 9 0M10 3V7.2M7.8 5.2 10 7.4l2.2-2.2M3.8 9.3l1.4 "
             "1.2M16.2 9.3l-1.4 1.2";
    case LineIcon::kTrash:
      return "M4 6h12M8 6V4h4v2M5.5 6l.7 10.5h7.6L14.5 6";
    case LineIcon::kPlay:
      return "M7 4.5 15.5 10 7 15.5Z";
    case LineIcon::kTable:
      return "M3.5 5h13v10.5h-13ZM3.5 8.5h13M9 8.5V15.5";
    case LineIcon::kCopy:
      return "M7.5 7.5h8.5v8.5H7.5ZM4 12.5V4h8.5";
    case LineIcon::kLink:
      return "M8.5 11.5l3-3M7 9 5 11a2.8 2.8 0 0 0 4 4l2-2M13 11l2-2a2.8 2.8 0 0 0-4-4L9 7";
    case LineIcon::kLock:
      return "M5 9h10v7.5H5ZM7 9V6.5a3 3 0 0 1 6 0V9";
    case LineIcon::kEdit:
      return "M4 16l.8-3.5L13 4.3l2.7 2.7L7.5 15.2Z";
    case LineIcon::kMove:
      return "M3.5 10h13M13 6.5l3.5 3.5-3.5 3.5";
    case LineIcon::kPin:
      return "M10 17c-3.5-4-5-6-5-8.5a5 5 0 0 1 10 0C15 11 13.5 13 10 17M10 6.8a1.8 1.8 0 1 0 0 "
             "3.6 1.8 1.8 0 0 0 0-3.6";
    case LineIcon::kFilter:
      return "M3.5 5h13M6 10h8M8.5 15h3";
    case LineIcon::kMicrophone:
      return "M10 3a2.5 2.5 0 0 0-2.5 2.5v4a2.5 2.5 0 0 0 5 0v-4A2.5 2.5 0 0 0 10 3M5 9.5a5 5 0 0 "
             "0 10 0M10 14.5V17.5";
    case LineIcon::kPerson:
      return "M10 4a3 3 0 1 0 0 6 3 3 0 0 0 0-6M4 16.5c.8-3 3-4.5 6-4.5s5.2 1.5 6 4.5";
  }
  return "";
}

QByteArray source_of(LineIcon icon, const QColor& colour) {
  // Three dots are points that the pen makes round.
  const double width = icon == LineIcon::kMore ? 2.6 : 1.75;
  return QString(
             "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 20 20'><path d='%1'"
             " fill='none' stroke='%2' stroke-width='%3' stroke-linecap='round'"
             " stroke-linejoin='round'/></svg>")
      .arg(path_of(icon), colour.name())
      .arg(width)
      .toUtf8();
}

class LineIconEngine : public QIconEngine {
 public:
  explicit LineIconEngine(LineIcon icon) : icon_(icon) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    draw_icon(*painter, icon_, place, QGuiApplication::palette().color(group, QPalette::Text));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new LineIconEngine(icon_); }

 private:
  LineIcon icon_;
};

}  // namespace

void draw_icon(QPainter& painter, LineIcon icon, const QRectF& place, const QColor& colour) {
  static QHash<std::pair<int, QRgb>, std::shared_ptr<QSvgRenderer>> renderers;
  if (renderers.size() > kMostRenderers) renderers.clear();
  auto& renderer = renderers[{static_cast<int>(icon), colour.rgb()}];
  if (!renderer) renderer = std::make_shared<QSvgRenderer>(source_of(icon, colour));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setOpacity(painter.opacity() * colour.alphaF());
  renderer->render(&painter, place);
  painter.restore();
}

QIcon make_icon(LineIcon icon) {
  return QIcon(new LineIconEngine(icon));
}

QIcon in_colour(const QIcon& icon, const QSize& size, qreal ratio, const QColor& colour) {
  QPixmap sign = icon.pixmap(size, ratio);
  QPainter over(&sign);
  over.setCompositionMode(QPainter::CompositionMode_SourceIn);
  over.fillRect(QRect(QPoint(), size), colour);
  return sign;
}

}  // namespace homewarden::view
