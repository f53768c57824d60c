#include <QCommandLineParser>

#include "app/EndSignals.h"
#include "app/Program.h"
#include "device/DefaultHome.h"

int main(int count, char** words) {
  inspector::app::EndSignals signals;
  QApplication application(count, words);
  QApplication::setApplicationName(QStringLiteral("Inspector"));
  QApplication::setApplicationVersion(QStringLiteral(INSPECTOR_VERSION));
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Records a home inspection and writes its report."));
  const QCommandLineOption home(
      QStringLiteral("home"),
      QStringLiteral("Device root (default: $INSPECTOR_HOME, else \"inspector\" in the user's data folder)."),
      QStringLiteral("DIR"));
  parser.addOption(home);
  parser.addHelpOption();
  parser.addVersionOption();
  parser.process(application);
  if (parser.isSet(home) && parser.value(home).isEmpty()) parser.showHelp(2);

  inspector::app::ProgramSettings settings;
  settings.signals = &signals;
  settings.home = parser.isSet(home) ? std::filesystem::path(parser.value(home).toStdString())
                                     : inspector::device::DefaultHome();
  return inspector::app::RunProgram(application, settings);
}
