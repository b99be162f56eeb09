// Main of every test program: a GUI application without a display, and a failure for every Qt warning.
#include <gtest/gtest.h>

#include <QApplication>
#include <QString>

#include <cstdio>

namespace {

void FailOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  std::fprintf(stderr, "%s\n", bytes.constData());
  // What the offscreen platform says of windows with a least size, or raised ones; none can do anything about
  // it.
  const bool platformRemark = text.startsWith(QLatin1String("This plugin does not support "));
  if ((type == QtWarningMsg || type == QtCriticalMsg) && !platformRemark) {
    ADD_FAILURE() << "Qt warned: " << bytes.constData();
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  qInstallMessageHandler(FailOnWarning);
  return RUN_ALL_TESTS();
}
