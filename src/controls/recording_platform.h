#pragma once
// The platform of tests and of the scenario runner: it records every act on the
// outside world as a transcript line and starts nothing.
//
// Lines: "box STYLE TITLE|TEXT", "run STYLE COMMANDLINE", "open URL", "beep",
// "screen open NAME", "screen close NAME". CR and LF inside texts are written as \r, \n.

#include "controls/platform.h"

#include <QStringList>
#include <deque>
#include <functional>

namespace controls {

class RecordingPlatform : public Platform {
public:
    RecordingPlatform();

    // Every line so far.
    const QStringList& transcript() const { return lines_; }
    void clearTranscript() { lines_.clear(); }
    // Called with each line as it is recorded (the runner prints them).
    std::function<void(const QString&)> onLine;

    // The answer to the next question box; question boxes without a queued answer get OK.
    void queueAnswer(int answer) { answers_.push_back(answer); }
    void setToday(const QDate& d) { now_ = QDateTime(d, QTime(9, 0)); }
    void setMachineName(const QString& n) { machine_ = n; }
    // Fails every program start from now on (a program that cannot be started).
    void setStartFails(bool fails) { startFails_ = fails; }
    // Also starts programs for real after recording them (the headless demo prints
    // through the real engine); its result is the start's result.
    std::function<bool(const QString& commandLine)> realStart;

    // Runs the operator's work while a modal screen is open; returns when there is no
    // more work. The screen is then closed by its close box. Without a driver a modal
    // screen is closed at once after its activation.
    std::function<void(Screen&)> modalDriver;

    // Open screens, the top-most last.
    const std::vector<Screen*>& screens() const { return screens_; }
    Screen* top() const { return screens_.empty() ? nullptr : screens_.back(); }
    Pointer pointer() const { return pointer_; }

    int msgBox(const QString& text, int style, const QString& title) override;
    void setPointer(Pointer pointer) override { pointer_ = pointer; }
    bool startProgram(const QString& commandLine, int windowStyle) override;
    void openUrl(const QString& url) override;
    void beep() override;
    void sendKey(const QString& key) override;
    // Each pass of the event pump moves the clock on by 100 ms, so timed waits end.
    void doEvents() override { now_ = now_.addMSecs(100); }
    QDate today() override { return now_.date(); }
    QDateTime now() override { return now_; }
    QString machineName() override { return machine_; }
    void showModal(Screen& screen) override;
    void showModeless(Screen& screen) override;
    [[noreturn]] void endProcess(int exitCode) override;

    void record(const QString& line);

private:
    void open(Screen& screen);

    QStringList lines_;
    std::deque<int> answers_;
    QDateTime now_;
    QString machine_ = QStringLiteral("OFFICE-PC01");
    bool startFails_ = false;
    std::vector<Screen*> screens_;
    Pointer pointer_ = Pointer::Normal;
};

}  // namespace controls
