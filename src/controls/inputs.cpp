#include "controls/inputs.h"

namespace controls {

void TextInput::setText(const QString& t)
{
    if (text_ == t) return;
    text_ = t;
    notify();
    if (Change) Change();
}

void TextInput::describe(QStringList& out) const
{
    out << QStringLiteral("text=%1").arg(escapeForTranscript(text_));
    Control::describe(out);
}

std::optional<double> NumberInput::value() const
{
    bool ok = false;
    const double v = text().trimmed().toDouble(&ok);
    if (!ok) return std::nullopt;
    return v;
}

void NumberInput::setValue(double v) { setText(QString::number(v, 'g', 15)); }

bool NumberInput::typeText(const QString& t)
{
    const QString s = t.trimmed();
    if (s.isEmpty()) {
        setText(QString());
        return true;
    }
    bool ok = false;
    const double v = s.toDouble(&ok);
    if (!ok || v < min_ || (max_ > min_ && v > max_)) return false;
    setText(s);
    return true;
}

void DateInput::setValue(const QDate& d)
{
    date_ = d.isValid() ? d : QDate();
    if (date_.isValid() && format_ == QLatin1String("yyyy/MM")) date_ = QDate(d.year(), d.month(), 1);
    setText(date_.isValid() ? date_.toString(format_) : QString());
}

bool DateInput::typeText(const QString& t)
{
    const QString s = t.trimmed();
    if (s.isEmpty()) {
        clear();
        return true;
    }
    QDate d = QDate::fromString(s, QStringLiteral("yyyy/MM/dd"));
    if (!d.isValid()) d = QDate::fromString(s, QStringLiteral("yyyy/M/d"));
    if (!d.isValid()) d = QDate::fromString(s + QStringLiteral("/01"), QStringLiteral("yyyy/M/dd"));
    if (!d.isValid()) return false;
    setValue(d);
    return true;
}

}  // namespace controls
