#include "ui/qt/qr_code.h"

#include <qrencode.h>

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <memory>

#include "ui/qt/look.h"
#include "ui/qt/shapes.h"

namespace homewarden::view {
namespace {

constexpr int kQuietEdge = 4;  // modules; ISO/IEC 18004
constexpr int kSide = 192;

struct Free {
  void operator()(QRcode* code) const { QRcode_free(code); }
};

}  // namespace

QrCode::QrCode(QWidget* parent) : QWidget(parent) {
  setFixedSize(kSide, kSide);
}

void QrCode::show_text(const QString& text) {
  const std::unique_ptr<QRcode, Free> code(
      QRcode_encodeString8bit(text.toUtf8().constData(), 0, QR_ECLEVEL_M));
  side_ = code ? code->width : 0;
  modules_.clear();
  for (int i = 0; i < side_ * side_; ++i)
    modules_ += static_cast<char>(code->data[i] & 1);  // the other bits say what it is for
  setAccessibleName(text);
  update();
}

// Whole pixels for every module: a blurred edge is hard to read.
void QrCode::paintEvent(QPaintEvent* /*event*/) {
  if (side_ == 0) return;
  QPainter painter(this);
  const Look& look = look_of(palette());
  draw_box(painter, rect(), kBoxCorner, Qt::white, look.line);
  const double ratio = devicePixelRatioF();
  const double module =
      std::max(1.0, std::floor(width() * ratio / (side_ + 2 * kQuietEdge))) / ratio;
  const double begin = std::floor((width() - module * side_) / 2 * ratio) / ratio;
  for (int row = 0; row < side_; ++row)
    for (int column = 0; column < side_; ++column)
      if (modules_[row * side_ + column] != 0)
        painter.fillRect(QRectF(begin + column * module, begin + row * module, module, module),
                         Qt::black);
}

}  // namespace homewarden::view
