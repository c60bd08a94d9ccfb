#include "platform/desktop/qt_sound_player.h"

#include <QAudioDevice>
#include <QGuiApplication>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#include <system_error>

namespace homewarden::desktop {

void QtSoundPlayer::play(const std::filesystem::path& file) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) return;
  // Without a screen nobody listens, and the sound system would be started for nothing.
  if (QGuiApplication::platformName() == "offscreen") return;
  if (QMediaDevices::defaultAudioOutput().isNull()) return;
  QSoundEffect*& effect = loaded_[file.string()];
  if (!effect) {
    effect = new QSoundEffect(&effects_);
    effect->setSource(QUrl::fromLocalFile(QString::fromStdString(file.string())));
  }
  effect->play();
}

}  // namespace homewarden::desktop
