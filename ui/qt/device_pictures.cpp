#include "ui/qt/device_pictures.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <cmath>

namespace homewarden::view {
namespace {

struct Known {
  QDateTime changed;
  qint64 size = -1;
  QString source;
};

QByteArray content(const QString& file) {
  QFile opened(file);
  return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

// The file itself where the person has put a picture of their own, else our drawing of it.
QString find_source(const QFileInfo& file) {
  const QString ours = ":/pictures/" + file.completeBaseName();
  if (!QFile::exists(ours + ".svg")) return file.filePath();
  const QByteArray found = content(file.filePath());
  return found.isEmpty() || found == content(ours + ".gif") ? ours + ".svg" : file.filePath();
}

// Looked at again when the file changes, not for every card.
QString source_of(const QString& name) {
  static QHash<QString, Known> known;
  const QFileInfo file(name);
  Known& entry = known[name];
  if (entry.source.isEmpty() || entry.size != file.size() || entry.changed != file.lastModified())
    entry = {file.lastModified(), file.size(), find_source(file)};
  return entry.source;
}

QPixmap draw(const QString& source, int pixels) {
  if (!source.endsWith(".svg"))
    return QPixmap(source).scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  QSvgRenderer renderer(source);
  QPixmap drawn(pixels, pixels);
  drawn.fill(Qt::transparent);
  QPainter painter(&drawn);
  renderer.render(&painter);
  return drawn;
}

}  // namespace

QPixmap device_picture(const std::string& file, int side, double ratio) {
  if (file.empty() || side <= 0) return {};
  const QString source = source_of(QFile::decodeName(file.c_str()));
  const int pixels = static_cast<int>(std::lround(side * ratio));
  const QString key = source + QString("|%1|%2").arg(pixels).arg(ratio);
  QPixmap picture;
  if (QPixmapCache::find(key, &picture)) return picture;
  picture = draw(source, pixels);
  picture.setDevicePixelRatio(ratio);
  QPixmapCache::insert(key, picture);
  return picture;
}

}  // namespace homewarden::view
