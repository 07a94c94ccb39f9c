#pragma once
// Starting another program from a command line composed the original's way
// ("C:\app\Main.exe 2", "wfrfv10.exe /c C:\Program Files\app\TMP\WfdCom.dat").

#include <QString>
#include <QStringList>

namespace app {

struct ProgramCommand {
    QString program;  // as written, e.g. "wfrfv10.exe" or "C:\Program Files\app\Main.exe"
    QStringList arguments;
};

// Splits a command line the way Windows starts it. The program: a quoted first word,
// else everything up to and including its ".exe" (Windows finds "C:\Program
// Files\app\Main.exe" unquoted), else the first word. The arguments: split at blanks
// and tabs, double quotes group, 2n backslashes before a quote give n and the quote
// groups, 2n+1 give n and a literal quote, "" inside quotes is a literal quote, and
// backslashes elsewhere stay as they are.
ProgramCommand parseCommandLine(const QString& commandLine);
QStringList splitWindowsArguments(QStringView arguments);

// The folder of the running program, or empty where there is no application object.
QString runningProgramDir();

// Where a program named "X.exe" is found: "X" or "X.exe" in the installation folder
// (appDir, the program's gsAppPath or --app-dir), then beside the running program
// (ownDir), then on the search path. A program given with a folder is looked for in
// that folder only. Empty when it is nowhere.
QString findProgram(const QString& program, const QString& appDir, const QString& ownDir = runningProgramDir());

// Starts the program without waiting for it. False, with the reason, if it is not
// found or cannot be started.
bool startDetached(const QString& commandLine, const QString& appDir, QString* error = nullptr);

// Runs the program and waits for its end (a run with no display, where nothing would
// be left to show). False, with the reason, if it is not found, cannot be started, or
// ends with a failure.
bool runToEnd(const QString& commandLine, const QString& appDir, QString* error = nullptr);

}  // namespace app
