#pragma once
// A screen of the program as a model: its controls by name (in focus order), its life
// (load, activation, unload), the focus and the keys. Subclasses hold the handlers.

#include "controls/control.h"
#include "controls/platform.h"

namespace controls {

class MenuItem;

// Key codes as the original's runtime numbers them.
namespace Key {
inline constexpr int Tab = 9;
inline constexpr int Return = 13;
inline constexpr int Escape = 27;
inline constexpr int F1 = 112;
inline constexpr int ShiftMask = 1;
}  // namespace Key

// How a screen is being closed, as the original's QueryUnload tells it.
enum class UnloadMode { ControlMenu = 0, Code = 1 };

class Screen {
public:
    Screen(QString name, Platform& platform) : name_(std::move(name)), platform_(platform) {}
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    const QString& name() const { return name_; }
    Platform& platform() const { return platform_; }
    // The screen's title bar.
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c) { caption_ = c; }

    // Controls in focus order. A control array element is named "optMst(3)".
    void add(Control& control) { controls_.push_back(&control); }
    Control* find(const QString& name) const;
    const std::vector<Control*>& all() const { return controls_; }

    // Life, driven by the platform's showModal / showModeless.
    void load() { Form_Load(); }
    void activate() { Form_Activate(); }
    // Unload by code ("Unload Me"): the screen's unload handlers run at once.
    void Unload() { unload(UnloadMode::Code); }
    // The window's close box.
    void closeByUser() { unload(UnloadMode::ControlMenu); }
    bool isUnloaded() const { return unloaded_; }
    // Told just before the screen's own unload handler runs.
    std::function<void(Screen&)> Unloading;
    // Told when the focus moves to another control (a view moves its own focus).
    std::function<void(Control*)> FocusMoved;

    // Focus and keys. Menu shortcuts come first; with KeyPreview the screen sees a key
    // before the focused control does.
    Control* ActiveControl() const { return focus_; }
    void SetFocus(Control& control);
    void focusNext();
    // "Enter", "Tab", "F1".."F12", "Shift+F12", "Escape". False for an unknown key.
    bool pressKey(const QString& key);
    bool KeyPreview = false;

    void setMousePointer(Pointer p) { platform_.setPointer(p); }

protected:
    virtual void Form_Load() {}
    virtual void Form_Activate() {}
    virtual void Form_QueryUnload(int& cancel, UnloadMode mode) {}
    virtual void Form_Unload(int& cancel) {}
    virtual void Form_KeyDown(int& keyCode, int shift) {}
    virtual void Form_KeyPress(int& keyAscii) {}

private:
    void unload(UnloadMode mode);
    MenuItem* menuForShortcut(const QString& key) const;

    QString name_;
    QString caption_;
    Platform& platform_;
    std::vector<Control*> controls_;
    Control* focus_ = nullptr;
    bool unloaded_ = false;
};

}  // namespace controls
