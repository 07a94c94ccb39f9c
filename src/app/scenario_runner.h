#pragma once
// The scenario runner: drives the screen models from a script, with no display, and
// writes a transcript of everything the program does to the outside world.
//
// One command a line; a line starting with "#" is a comment; the last argument runs
// to the end of the line. Commands act on the top-most open screen by control name:
//   today yyyy/mm/dd | start ARGS | click NAME | check NAME on|off | choose NAME N
//   type NAME TEXT | key NAME KEY | cell NAME ROW COL | tick NAME ROW on|off
//   select NAME N | dblclick NAME N | answer OK|Cancel | show NAME | close
// "close" closes the top-most screen by its close box. When the script ends while a
// screen is open, the screens are closed the same way. The last line is "end CODE".

#include "app/process.h"
#include "controls/recording_platform.h"

#include <QStringList>

namespace app {

class ScenarioRunner {
public:
    ScenarioRunner(QStringList script, QString appDir, ScreenFactory makeSealScreen);

    // Runs the programs the script's run starts, for real, besides recording them, each
    // to its end (with no display the engine writes its output and ends).
    void startProgramsForReal();

    // Runs the script; every transcript line goes to out. Returns 0, or 2 when the
    // script itself is wrong (the reason goes to err).
    int run(const std::function<void(const QString&)>& out, const std::function<void(const QString&)>& err);

private:
    struct ScriptError {
        QString message;
    };

    void drive(controls::Screen& modal);
    void execute(const QString& line);
    controls::Control& control(const QString& name) const;
    void show(const QString& name);
    void emit(const QString& line) { platform_.record(line); }

    QStringList script_;
    qsizetype next_ = 0;
    QString appDir_;
    ScreenFactory makeSealScreen_;
    controls::RecordingPlatform platform_;
};

}  // namespace app
