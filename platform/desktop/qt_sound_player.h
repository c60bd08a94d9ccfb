#pragma once

#include <QObject>
#include <map>
#include <string>

#include "platform/sound_player.h"

class QSoundEffect;

namespace homewarden::desktop {

// Plays wave files through the desktop's sound system. A file is loaded when it is first played.
class QtSoundPlayer : public SoundPlayer {
 public:
  void play(const std::filesystem::path& file) override;

 private:
  QObject effects_;
  std::map<std::string, QSoundEffect*> loaded_;
};

}  // namespace homewarden::desktop
