#include <gtest/gtest.h>

#include <QApplication>

#include "ui/browser/browser_plugin.h"

// The tests of the windows press real buttons and keys; they need no display.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#ifdef PLUGIN_FOLDER
  tessaril::PrepareForBrowser(PLUGIN_FOLDER);
#endif
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
