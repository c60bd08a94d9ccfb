#include "platform/desktop/qt_desktop.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QUrl>

#include "platform/qt/text_codec.h"

namespace homewarden::desktop {
namespace {

constexpr float kTwipsPerPixel = 15;

QSize screen_size() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  return screen ? screen->virtualSize() : QSize(1024, 768);
}

}  // namespace

float QtDesktop::screen_width() const {
  return static_cast<float>(screen_size().width()) * kTwipsPerPixel;
}

float QtDesktop::screen_height() const {
  return static_cast<float>(screen_size().height()) * kTwipsPerPixel;
}

bool QtDesktop::finds_browser() {
  return !QStandardPaths::findExecutable("xdg-open").isEmpty() ||
         !qEnvironmentVariableIsEmpty("BROWSER");
}

bool QtDesktop::open_address(const std::string& address) {
  return QDesktopServices::openUrl(QUrl(qt::from_code_page(address)));
}

bool QtDesktop::start_demo() {
  return QProcess::startDetached(QCoreApplication::applicationFilePath(), {"--demo"});
}

}  // namespace homewarden::desktop
