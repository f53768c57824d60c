// inspector-screens [--home DIR] FOLDER: needs no display.
#include <QApplication>
#include <QTemporaryDir>
#include <iostream>
#include <sstream>

#include "app/HomeOption.h"
#include "cli/CommandLine.h"
#include "tools/ScreenPictures.h"

namespace {

// What a window off the screen cannot do is no news here.
void PassOnMessage(QtMsgType, const QMessageLogContext&, const QString& text) {
  if (!text.startsWith(QLatin1String("This plugin does not support"))) std::cerr << qPrintable(text) << '\n';
}

bool MakeSampleDevice(const QString& folder) {
  std::ostringstream out;
  return inspector::cli::RunCommandLine({"--home", folder.toStdString(), "init", "--sample"}, out,
                                        std::cerr) == 0;
}

}  // namespace

int main(int count, char** words) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(PassOnMessage);
  QApplication application(count, words);
  QApplication::setQuitOnLastWindowClosed(false);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Writes a picture of every screen as PNG."));
  parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Where the pictures go."));
  const auto home = inspector::app::ParseWithHome(
      parser, application,
      QStringLiteral("Device root whose data is shown (default: a new device with the sample visit)."));
  if (parser.positionalArguments().size() != 1) parser.showHelp(2);
  const std::string folder = parser.positionalArguments().first().toStdString();
  if (home) return inspector::tools::WriteScreenPictures(*home, folder) ? 0 : 1;
  const QTemporaryDir sample;
  return MakeSampleDevice(sample.path()) &&
                 inspector::tools::WriteScreenPictures(sample.path().toStdString(), folder)
             ? 0
             : 1;
}
