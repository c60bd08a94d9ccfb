#include "ui/qt/wrapped_lines.h"

#include <QFontMetrics>
#include <QTextLayout>
#include <algorithm>

namespace homewarden::view {
namespace {

constexpr int kLeastWidth = 40;  // pixels

}  // namespace

QStringList wrapped_lines(const QString& text, const QFont& font, int width, int most) {
  const QFontMetrics metrics(font);
  width = std::max(width, kLeastWidth);
  if (metrics.horizontalAdvance(text) <= width) return {text};
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  QStringList lines;
  while (lines.size() < most) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(width);
    const bool is_last = lines.size() + 1 == most;
    const int length = is_last ? static_cast<int>(text.size()) : line.textLength();
    const QString words = text.mid(line.textStart(), length).trimmed();
    lines << (is_last ? metrics.elidedText(words, Qt::ElideRight, width) : words);
  }
  layout.endLayout();
  return lines;
}

}  // namespace homewarden::view
