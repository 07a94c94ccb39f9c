#include "controls/screen.h"

#include "controls/buttons.h"

namespace controls {

Control* Screen::find(const QString& name) const
{
    for (Control* c : controls_)
        if (c->name() == name) return c;
    return nullptr;
}

void Screen::SetFocus(Control& control)
{
    if (focus_ == &control) return;
    Control* old = focus_;
    focus_ = &control;
    if (FocusMoved) FocusMoved(focus_);
    if (old && old->LostFocus) old->LostFocus();
    if (control.GotFocus) control.GotFocus();
}

void Screen::focusNext()
{
    if (controls_.empty()) return;
    auto it = std::find(controls_.begin(), controls_.end(), focus_);
    const size_t start = it == controls_.end() ? controls_.size() - 1 : static_cast<size_t>(it - controls_.begin());
    for (size_t step = 1; step <= controls_.size(); ++step) {
        Control* c = controls_[(start + step) % controls_.size()];
        if (c->tabStop() && c->enabled() && c->visible()) {
            SetFocus(*c);
            return;
        }
    }
}

MenuItem* Screen::menuForShortcut(const QString& key) const
{
    for (Control* c : controls_) {
        if (c->kind() != Kind::MenuItem) continue;
        auto* m = static_cast<MenuItem*>(c);
        if (m->shortcut() == key && m->enabled() && m->visible()) return m;
    }
    return nullptr;
}

bool Screen::pressKey(const QString& key)
{
    int keyCode = 0;
    int shift = 0;
    QString k = key;
    if (k.startsWith(QLatin1String("Shift+"))) {
        shift = Key::ShiftMask;
        k = k.mid(6);
    }
    if (k == QLatin1String("Enter"))
        keyCode = Key::Return;
    else if (k == QLatin1String("Tab"))
        keyCode = Key::Tab;
    else if (k == QLatin1String("Escape"))
        keyCode = Key::Escape;
    else if (k.size() >= 2 && k[0] == u'F') {
        bool ok = false;
        const int n = k.mid(1).toInt(&ok);
        if (!ok || n < 1 || n > 12) return false;
        keyCode = Key::F1 + n - 1;
    } else {
        return false;
    }

    if (MenuItem* m = menuForShortcut(key)) {
        m->click();
        return true;
    }
    if (keyCode == Key::Tab) {
        focusNext();
        return true;
    }
    if (KeyPreview) Form_KeyDown(keyCode, shift);
    if (keyCode != 0 && focus_ && focus_->KeyDown) focus_->KeyDown(keyCode, shift);
    if (keyCode == Key::Return || keyCode == Key::Escape) {
        int ascii = keyCode;
        if (KeyPreview) Form_KeyPress(ascii);
        if (ascii != 0 && focus_ && focus_->KeyPress) focus_->KeyPress(ascii);
    }
    return true;
}

void Screen::unload(UnloadMode mode)
{
    if (unloaded_) return;
    int cancel = 0;
    Form_QueryUnload(cancel, mode);
    if (cancel) return;
    if (Unloading) Unloading(*this);
    Form_Unload(cancel);
    if (cancel) return;
    unloaded_ = true;
}

}  // namespace controls
