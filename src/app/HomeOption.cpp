#include "app/HomeOption.h"

namespace inspector::app {

std::optional<std::filesystem::path> ParseWithHome(QCommandLineParser& parser,
                                                   const QCoreApplication& application,
                                                   const QString& whatHomeIs) {
  const QCommandLineOption home(QStringLiteral("home"), whatHomeIs, QStringLiteral("DIR"));
  parser.addOption(home);
  parser.addHelpOption();
  parser.process(application);
  if (!parser.isSet(home)) return std::nullopt;
  if (parser.value(home).isEmpty()) parser.showHelp(2);
  return parser.value(home).toStdString();
}

}  // namespace inspector::app
