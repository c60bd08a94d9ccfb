#pragma once

#include <QDBusVariant>
#include <QObject>
#include <optional>

namespace homewarden::view {

// What the person has asked of all programs, as the desktop's portal tells it
// (org.freedesktop.portal.Settings). Asked without waiting: until the answer comes, and where there
// is no portal, nothing is wished.
class DesktopWishes : public QObject {
  Q_OBJECT
 public:
  DesktopWishes();

  std::optional<bool> dark() const { return dark_; }  // nothing: the desktop does not mind
  bool high_contrast() const { return high_contrast_; }
  bool less_motion() const { return less_motion_; }

 signals:
  void changed();

 private slots:
  void setting_changed(const QString& space, const QString& key, const QDBusVariant& value);

 private:
  void ask(const QString& space, const QString& key);
  void take(const QString& space, const QString& key, const QVariant& value);

  std::optional<bool> dark_;
  bool high_contrast_ = false;
  bool less_motion_ = false;
};

}  // namespace homewarden::view
