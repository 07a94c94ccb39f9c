#include "controls/static_controls.h"

namespace controls {

void Label::describe(QStringList& out) const
{
    out << QStringLiteral("caption=%1").arg(escapeForTranscript(caption_))
        << QStringLiteral("backcolor=%1").arg(backColor_, 0, 16);
    Control::describe(out);
}

void Picture::describe(QStringList& out) const
{
    out << QStringLiteral("picture=%1").arg(path_);
    Control::describe(out);
}

void StatusBar::describe(QStringList& out) const
{
    out << QStringLiteral("text=%1").arg(escapeForTranscript(text_));
    Control::describe(out);
}

}  // namespace controls
