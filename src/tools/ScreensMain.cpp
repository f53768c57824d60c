// inspector-screens [--home DIR] FOLDER: needs no display.
#include <QApplication>
#include <QCommandLineParser>

#include "device/DefaultHome.h"
#include "tools/ScreenPictures.h"

int main(int count, char** words) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(count, words);
  QApplication::setQuitOnLastWindowClosed(false);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Writes a picture of every screen as PNG."));
  const QCommandLineOption home(QStringLiteral("home"), QStringLiteral("Device root whose data is shown."),
                                QStringLiteral("DIR"));
  parser.addOption(home);
  parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Where the pictures go."));
  parser.addHelpOption();
  parser.process(application);
  if (parser.positionalArguments().size() != 1) parser.showHelp(2);
  const std::filesystem::path root = parser.isSet(home)
                                         ? std::filesystem::path(parser.value(home).toStdString())
                                         : inspector::device::DefaultHome();
  return inspector::tools::WriteScreenPictures(root, parser.positionalArguments().first().toStdString()) ? 0
                                                                                                         : 1;
}
