#pragma once
// The engine's programs as the system starts them by name. Each entry takes the
// process's arguments and returns its exit code; src/main only calls them.
//
//   wfrfv10 /c SCRIPT [--pdf FILE] [--png DIR]   runs a script: preview, print or export
//   WrVb6Viewer /c SCRIPT                        the same, as the second viewer
//   wfrimg10 OUTPUT.wfd /c SCRIPT                joins the reports of a joined script
//
// Exit codes: 0 done (or the operator cancelled), 1 bad input, 2 bad command line,
// 3 output failed.

#include <QString>
#include <QStringList>

#include <optional>

namespace engine {

struct ViewerArgs {
    QString script;
    QString pdf;  // --pdf FILE
    QString png;  // --png DIR
};

// Parses "/c SCRIPT [--pdf FILE] [--png DIR]"; an error text on a bad command line.
// SCRIPT is every word after "/c" up to the next option ("--..."), joined by blanks:
// the program writes it unquoted, so a path with blanks arrives in pieces.
std::optional<ViewerArgs> parseViewerArgs(const QStringList& args, QString* error);

struct JoinArgs {
    QString output;
    QString script;
};
// Parses "OUTPUT /c SCRIPT"; the words before "/c" are the output, those after it the
// script.
std::optional<JoinArgs> parseJoinArgs(const QStringList& args, QString* error);

// Writes the joined form for a joined script: the reports and their data, in order.
// Throws EngineError.
void joinReports(const QString& scriptPath, const QString& outputPath);

int runViewer(int argc, char** argv, const char* programName);
int runJoiner(int argc, char** argv);

}  // namespace engine
