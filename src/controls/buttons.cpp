#include "controls/buttons.h"

namespace controls {

void Button::describe(QStringList& out) const
{
    out << QStringLiteral("caption=%1").arg(escapeForTranscript(caption_));
    Control::describe(out);
}

void OptionButton::setValue(bool on)
{
    if (value_ == on) return;
    if (on && group_) {
        for (OptionButton* other : *group_)
            if (other != this) other->setValueSilently(false);
    }
    setValueSilently(on);
    if (on && Click) Click();
}

void OptionButton::describe(QStringList& out) const
{
    out << QStringLiteral("value=%1").arg(value_ ? 1 : 0);
    Button::describe(out);
}

void CheckBox::setValue(int v)
{
    if (value_ == v) return;
    value_ = v;
    notify();
    if (Click) Click();
}

void CheckBox::describe(QStringList& out) const
{
    out << QStringLiteral("value=%1").arg(value_);
    Button::describe(out);
}

void MenuItem::describe(QStringList& out) const
{
    out << QStringLiteral("checked=%1").arg(checked_ ? 1 : 0);
    Button::describe(out);
}

}  // namespace controls
