#include "app/EndSignals.h"
#include "app/HomeOption.h"
#include "app/Program.h"
#include "device/DefaultHome.h"

int main(int count, char** words) {
  inspector::app::EndSignals signals;
  QApplication application(count, words);
  QApplication::setApplicationName(QStringLiteral("Inspector"));
  QApplication::setApplicationVersion(QStringLiteral(INSPECTOR_VERSION));
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Records a home inspection and writes its report."));
  parser.addVersionOption();
  const auto home = inspector::app::ParseWithHome(
      parser, application,
      QStringLiteral(
          "Device root (default: $INSPECTOR_HOME, else \"inspector\" in the user's data folder)."));

  inspector::app::ProgramSettings settings;
  settings.signals = &signals;
  settings.home = home ? *home : inspector::device::DefaultHome();
  return inspector::app::RunProgram(application, settings);
}
