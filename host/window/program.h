#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace shading {

/// What the command line of zeledit asks for.
struct ProgramOptions {
    QStringList documents;
    QString plugin; ///< The path of the plugin's module.
    QStringList libraries;
    QString theme;      ///< "light", "dark", or empty: as it was chosen last.
    QString screenshot; ///< A file; empty: none.
    QSize size = {1440, 900};
    QString compound; ///< A path that the picture shows; empty: the root.
    QString script;
    bool isVerbose = false;
    bool wantsHelp = false;
    bool wantsKeys = false;
};

/// Reads the words behind the program's name. False, with the problem, when the usage is wrong.
bool readProgramOptions(const QStringList& words, ProgramOptions& options, QString& problem);
/// What `--help` prints.
QString programUsage();

/// Runs the program, which has an application, to its end. Returns what it exits with: 0 when all
/// went well, 1 when a document, a script or a picture failed.
int runProgram(const ProgramOptions& options);

} // namespace shading
