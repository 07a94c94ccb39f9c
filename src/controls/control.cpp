#include "controls/control.h"

#include <algorithm>

namespace controls {

int Control::observe(Observer observer)
{
    const int id = nextObserverId_++;
    observers_.emplace_back(id, std::move(observer));
    return id;
}

void Control::unobserve(int id)
{
    std::erase_if(observers_, [id](const auto& o) { return o.first == id; });
}

void Control::notify(const Change& change) const
{
    // Observers may unobserve while being told; iterate over a copy of the ids.
    const auto copy = observers_;
    for (const auto& [id, observer] : copy) observer(change);
}

void Control::describe(QStringList& out) const
{
    out << QStringLiteral("enabled=%1").arg(enabled_ ? 1 : 0) << QStringLiteral("visible=%1").arg(visible_ ? 1 : 0);
}

QString escapeForTranscript(const QString& text)
{
    QString s = text;
    s.replace(u'\r', QStringLiteral("\\r"));
    s.replace(u'\n', QStringLiteral("\\n"));
    return s;
}

}  // namespace controls
