#pragma once
// Everything the screen models ask of the outside world. The Qt front end implements
// it with real widgets; tests and the scenario runner use RecordingPlatform.

#include <QDate>
#include <QDateTime>
#include <QString>

namespace controls {

class Screen;

// Box styles as numbers, as the original passes them to its message box.
namespace BoxStyle {
inline constexpr int Plain = 0;
inline constexpr int OkCancel = 1;
inline constexpr int Critical = 16;
inline constexpr int Question = 32;
inline constexpr int Warning = 48;
inline constexpr int Information = 64;
inline constexpr int DefaultButton2 = 256;
}  // namespace BoxStyle

// Answers of a message box, as the original's runtime numbers them.
namespace BoxAnswer {
inline constexpr int Ok = 1;
inline constexpr int Cancel = 2;
}  // namespace BoxAnswer

// Window styles of a program start.
namespace WindowStyle {
inline constexpr int Hide = 0;
inline constexpr int NormalFocus = 1;
inline constexpr int MinimizedFocus = 2;
inline constexpr int MaximizedFocus = 3;
inline constexpr int NormalNoFocus = 4;
inline constexpr int MinimizedNoFocus = 6;
}  // namespace WindowStyle

enum class Pointer { Normal, Hourglass };

// Thrown by Platform::endProcess: unwinds every handler up to the process's entry,
// which returns the code. Handlers never catch it (they catch base::VbError only).
struct ProcessEnd {
    int exitCode = 0;
};

class Platform {
public:
    virtual ~Platform() = default;

    // A modal box: text, style number, title (empty for the plain box). Returns a
    // BoxAnswer.
    virtual int msgBox(const QString& text, int style, const QString& title) = 0;
    virtual void setPointer(Pointer pointer) = 0;
    // Starts a program without waiting for it. The command line is the original's:
    // program path (with "\"), then arguments. Returns false if it could not start.
    virtual bool startProgram(const QString& commandLine, int windowStyle) = 0;
    virtual void openUrl(const QString& url) = 0;
    virtual void beep() = 0;
    // Sends a key to the control that has the focus ("{TAB}").
    virtual void sendKey(const QString& key) = 0;
    // Lets the system handle pending events (the original's DoEvents).
    virtual void doEvents() = 0;
    virtual QDate today() = 0;
    virtual QDateTime now() = 0;
    virtual QString machineName() = 0;
    // Shows a screen modally: load, activation, then the operator's work until the
    // screen closes; returns after its unload.
    virtual void showModal(Screen& screen) = 0;
    // Shows a screen without waiting (the background window).
    virtual void showModeless(Screen& screen) = 0;
    // Ends the process at once (the original's End). Throws ProcessEnd.
    [[noreturn]] virtual void endProcess(int exitCode) = 0;
};

}  // namespace controls
