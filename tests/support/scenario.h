#pragma once
// The program started on an installation the way the suite's menu starts it, with the
// seal screen handed to a test once it is open (drive), or driven by a script of the
// scenario runner (runScript). Today is 2026/11/21 in both.

#include "support/installation.h"

#include "app/process.h"
#include "app/scenario_runner.h"
#include "seal/seal_screen.h"

#include <QDir>

#include <gtest/gtest.h>

#include <type_traits>

namespace sealtest {

struct ProcessRun {
    QStringList transcript;  // what the program did, from its start or from the screen's opening
    int exitCode = 0;
};

// Starts the process with a command line; work(screen) or work(screen, platform) runs
// once, on the seal screen as it opens; screens opened over it are left to themselves.
// With fromOpening, the transcript starts where the seal screen opened.
template <class Work>
ProcessRun startProgram(const SealInstall& install, Work work, const QString& commandLine, bool fromOpening)
{
    controls::RecordingPlatform platform;
    platform.setToday(QDate(2026, 11, 21));
    bool done = false;
    platform.modalDriver = [&](controls::Screen& s) {
        auto* screen = dynamic_cast<seal::frmPrintシール*>(&s);
        if (!screen || done) return;
        done = true;
        if (fromOpening) platform.clearTranscript();
        if constexpr (std::is_invocable_v<Work, seal::frmPrintシール&, controls::RecordingPlatform&>)
            work(*screen, platform);
        else
            work(*screen);
    };
    const int code = app::runProcess({commandLine, install.appDir(), seal::makeSealScreen}, platform);
    return {platform.transcript(), code};
}

// The transcript of what work did on the open seal screen and of the closing after it.
template <class Work>
QStringList drive(const SealInstall& install, Work work)
{
    return startProgram(install, work, QStringLiteral("5"), true).transcript;
}

// The whole transcript of a process started with commandLine, ended by "end CODE" as
// the scenario runner ends it.
template <class Work>
QStringList driveProcess(const SealInstall& install, Work work, const QString& commandLine = QStringLiteral("5"))
{
    ProcessRun r = startProgram(install, work, commandLine, false);
    r.transcript << QStringLiteral("end %1").arg(r.exitCode);
    return r.transcript;
}

// Runs a scenario script on the installation; its transcript, with the program's folder
// written as APP. A script the runner refuses fails the test.
inline QStringList runScript(const SealInstall& install, const QStringList& script)
{
    app::ScenarioRunner runner(script, install.appDir(), seal::makeSealScreen);
    QStringList out;
    QStringList err;
    const int rc = runner.run([&](const QString& l) { out << l; }, [&](const QString& l) { err << l; });
    EXPECT_EQ(rc, 0) << err.join(u'\n').toStdString();
    const QString native = QDir::toNativeSeparators(QDir(install.appDir()).canonicalPath());
    for (QString& l : out) l.replace(native, QStringLiteral("APP"));
    return out;
}

// The same after "today 2026/11/21" and the start line.
inline QStringList runAfterStart(const SealInstall& install, const QStringList& body,
                                 const QString& start = QStringLiteral("start 5"))
{
    return runScript(install, QStringList{QStringLiteral("today 2026/11/21"), start} + body);
}

// The lines between the first opening of a screen and its first closing after it.
inline QStringList whileOpen(const QStringList& transcript, const QString& screen)
{
    const qsizetype open = transcript.indexOf(QStringLiteral("screen open ") + screen);
    const qsizetype close = transcript.indexOf(QStringLiteral("screen close ") + screen, open);
    return transcript.mid(open + 1, close - open - 1);
}

// The texts of a list box, line by line.
template <class List>
QStringList listTexts(const List& l)
{
    QStringList out;
    for (int i = 0; i < l.ListCount(); ++i) out << l.List(i);
    return out;
}

}  // namespace sealtest
