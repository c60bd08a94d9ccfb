#include <gtest/gtest.h>

#include <QApplication>

#include "ui/qt/appearance.h"

int main(int argc, char* argv[]) {
  ::testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  homewarden::view::Appearance appearance;
  return RUN_ALL_TESTS();
}
