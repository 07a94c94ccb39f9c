#pragma once
// Starting another program from a command line composed the original's way
// ("C:\app\Main.exe 2", "wfrfv10.exe /c C:\app\TMP\WfdCom.dat").

#include <QString>
#include <QStringList>

namespace app {

struct ProgramCommand {
    QString program;      // as written, e.g. "wfrfv10.exe" or "C:\app\Main.exe"
    QStringList arguments;
};

// Splits a command line into the program (up to and including its ".exe", or the first
// word) and its arguments (split at blanks).
ProgramCommand parseCommandLine(const QString& commandLine);

// Where a program named "X.exe" is found: "X" or "X.exe" in the program's directory
// (gsAppPath), else on the search path; a program given with a folder is looked for
// in that folder. Empty when it is nowhere.
QString findProgram(const QString& program, const QString& appDir);

// Starts the program without waiting for it. False, with the reason, if it is not
// found or cannot be started.
bool startDetached(const QString& commandLine, const QString& appDir, QString* error = nullptr);

// Runs the program and waits for its end (a run with no display, where nothing would
// be left to show). False, with the reason, if it is not found, cannot be started, or
// ends with a failure.
bool runToEnd(const QString& commandLine, const QString& appDir, QString* error = nullptr);

}  // namespace app
