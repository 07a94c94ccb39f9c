#include "controls/recording_platform.h"

#include "controls/screen.h"

namespace controls {

RecordingPlatform::RecordingPlatform() : now_(QDateTime(QDate(2026, 11, 21), QTime(9, 0))) {}

void RecordingPlatform::record(const QString& line)
{
    lines_ << line;
    if (onLine) onLine(line);
}

int RecordingPlatform::msgBox(const QString& text, int style, const QString& title)
{
    record(QStringLiteral("box %1 %2|%3").arg(style).arg(escapeForTranscript(title), escapeForTranscript(text)));
    if ((style & 7) == BoxStyle::OkCancel && !answers_.empty()) {
        const int a = answers_.front();
        answers_.pop_front();
        return a;
    }
    return BoxAnswer::Ok;
}

bool RecordingPlatform::startProgram(const QString& commandLine, int windowStyle)
{
    record(QStringLiteral("run %1 %2").arg(windowStyle).arg(commandLine));
    if (startFails_) return false;
    return realStart ? realStart(commandLine) : true;
}

void RecordingPlatform::openUrl(const QString& url) { record(QStringLiteral("open %1").arg(url)); }

void RecordingPlatform::beep() { record(QStringLiteral("beep")); }

void RecordingPlatform::sendKey(const QString& key)
{
    if (Screen* s = top(); s && key == QLatin1String("{TAB}")) s->pressKey(QStringLiteral("Tab"));
}

void RecordingPlatform::open(Screen& screen)
{
    record(QStringLiteral("screen open %1").arg(screen.name()));
    screens_.push_back(&screen);
    screen.Unloading = [this](Screen& s) {
        record(QStringLiteral("screen close %1").arg(s.name()));
        std::erase(screens_, &s);
    };
}

void RecordingPlatform::showModal(Screen& screen)
{
    open(screen);
    screen.load();
    if (!screen.isUnloaded()) screen.activate();
    if (!screen.isUnloaded() && modalDriver) modalDriver(screen);
    if (!screen.isUnloaded()) screen.closeByUser();
}

void RecordingPlatform::showModeless(Screen& screen)
{
    open(screen);
    screen.load();
    if (!screen.isUnloaded()) screen.activate();
}

void RecordingPlatform::endProcess(int exitCode) { throw ProcessEnd{exitCode}; }

}  // namespace controls
