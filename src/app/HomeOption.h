// The option by which every program with windows is told where its device is.
#pragma once

#include <QCommandLineParser>
#include <QCoreApplication>
#include <filesystem>
#include <optional>

namespace inspector::app {

// Adds --home DIR and --help to what the parser knows by now, and parses the command line of the process. The
// device root, when one was given. An empty one, like whatever the parser refuses, ends the process with its
// help.
std::optional<std::filesystem::path> ParseWithHome(QCommandLineParser& parser,
                                                   const QCoreApplication& application,
                                                   const QString& whatHomeIs);

}  // namespace inspector::app
