#include "data/ado/driver.h"

#include <QDateTime>
#include <QStringDecoder>

#include <cstring>
#include <limits>

namespace data::ado {

namespace {

int digits(QStringView text, qsizetype from, qsizetype count, bool& ok)
{
    int value = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const char16_t c = text[i].unicode();
        if (c < u'0' || c > u'9') {
            ok = false;
            return 0;
        }
        value = value * 10 + (c - u'0');
    }
    return value;
}

struct Stamp {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, msec = 0;
    qint64 key() const
    {
        return ((((((qint64(year) * 13 + month) * 32 + day) * 24 + hour) * 60 + minute) * 60 + second) * 1000) + msec;
    }
};

bool parseStamp(QStringView text, Stamp& s);

}  // namespace

void ResultColumn::appendInteger(qint64 value)
{
    // An int when it fits, as ADO's adInteger; a qlonglong otherwise.
    if (value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max())
        cells_.push_back({quint64(value), 0, Kind::Integer});
    else
        append(QVariant(qlonglong(value)));
}

void ResultColumn::appendDouble(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    cells_.push_back({bits, 0, Kind::Double});
}

qsizetype RecurringTexts::find(const void* data, qsizetype bytes)
{
    pending_ = nullptr;
    if (!looking_ || bytes > kLongest) return -1;
    if (slots_.empty()) slots_.resize(kSlots);
    const auto* p = static_cast<const unsigned char*>(data);
    size_t h = 14695981039346656037ull;
    for (qsizetype i = 0; i < bytes; ++i) h = (h ^ p[i]) * 1099511628211ull;
    Slot& slot = slots_[(h ^ (h >> 29)) & (kSlots - 1)];
    // An empty text may come without any bytes behind it (a null pointer), which
    // memcmp and memcpy must never be handed.
    if (slot.bytes == bytes && (bytes == 0 || std::memcmp(slot.data, data, size_t(bytes)) == 0)) {
        ++hits_;
        return slot.cell;
    }
    if (++misses_ == kTrial && hits_ < misses_) {
        stopLooking();
        return -1;
    }
    slot.bytes = bytes;
    if (bytes > 0) std::memcpy(slot.data, data, size_t(bytes));
    pending_ = &slot;
    return -1;
}

void RecurringTexts::remember(qsizetype cell)
{
    if (pending_) pending_->cell = cell;
    pending_ = nullptr;
}

void RecurringTexts::stopLooking()
{
    looking_ = false;
    pending_ = nullptr;
    slots_ = {};
}

QString RecurringTexts::shared(qsizetype offset, QStringView text) const
{
    if (made_.empty()) made_.resize(kSlots);
    Made& made = made_[size_t(offset * 0x9E3779B97F4A7C15ull >> 54) & (kSlots - 1)];
    if (made.offset != offset) {
        made.offset = offset;
        made.text = text.toString();
    }
    return made.text;
}

bool ResultColumn::appendRecurring(const void* data, qsizetype bytes)
{
    const qsizetype seen = recurring_.find(data, bytes);
    if (seen < 0) {
        recurring_.remember(size());
        return false;
    }
    cells_[size_t(seen)].kind = Kind::SharedText;
    const Cell shared = cells_[size_t(seen)];
    cells_.push_back(shared);
    return true;
}

void ResultColumn::appendTextCell(qsizetype offset, qsizetype length)
{
    cells_.push_back({quint64(offset), quint32(length), Kind::Text});
}

void ResultColumn::appendText(QStringView text)
{
    if (appendRecurring(text.utf16(), text.size() * qsizetype(sizeof(char16_t)))) return;
    const qsizetype offset = qsizetype(texts_.size());
    texts_.insert(texts_.end(), text.utf16(), text.utf16() + text.size());
    appendTextCell(offset, text.size());
}

void ResultColumn::appendUtf8(const char* data, qsizetype bytes)
{
    if (appendRecurring(data, bytes)) return;
    // A UTF-8 text never has more UTF-16 units than bytes.
    const qsizetype offset = qsizetype(texts_.size());
    texts_.resize(size_t(offset + bytes));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    auto* start = reinterpret_cast<QChar*>(texts_.data() + offset);
    const QChar* end = decoder.appendToBuffer(start, QByteArrayView(data, bytes));
    const qsizetype length = end - start;
    texts_.resize(size_t(offset + length));
    appendTextCell(offset, length);
}

void ResultColumn::append(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        appendNull();
        return;
    case QMetaType::Int:
        appendInteger(value.toInt());
        return;
    case QMetaType::Double:
        appendDouble(value.toDouble());
        return;
    case QMetaType::QString:
        appendText(*static_cast<const QString*>(value.constData()));
        return;
    default:
        break;
    }
    cells_.push_back({quint64(others_.size()), 0, Kind::Other});
    others_.push_back(value);
}

QVariant ResultColumn::value(qsizetype row) const
{
    const Cell& cell = cells_[size_t(row)];
    switch (cell.kind) {
    case Kind::Null:
        return {};
    case Kind::Integer:
        return QVariant(int(qint64(cell.payload)));
    case Kind::Double: {
        double value = 0;
        std::memcpy(&value, &cell.payload, sizeof value);
        return QVariant(value);
    }
    case Kind::Text:
    case Kind::SharedText: {
        // An empty text is empty, never null, wherever it lies in the buffer.
        if (cell.length == 0) return QVariant(QStringLiteral(""));
        const QStringView text = textOf(cell);
        return QVariant(cell.kind == Kind::SharedText ? recurring_.shared(qsizetype(cell.payload), text)
                                                      : text.toString());
    }
    case Kind::Other:
        break;
    }
    return others_[size_t(cell.payload)];
}

bool ResultColumn::textAt(qsizetype row, QStringView& text) const
{
    const Cell& cell = cells_[size_t(row)];
    if (cell.kind != Kind::Text) return false;
    text = textOf(cell);
    return true;
}

QVariant parseStoredDateTime(QStringView text)
{
    Stamp s;
    if (!parseStamp(text, s)) return {};
    return QDateTime(QDate(s.year, s.month, s.day), QTime(s.hour, s.minute, s.second, s.msec));
}

QVariant DateTimeCache::parse(QStringView text)
{
    Stamp s;
    if (!parseStamp(text, s)) return {};
    const qint64 key = s.key();
    auto it = seen_.constFind(key);
    if (it != seen_.constEnd()) return it.value();
    QVariant value = QDateTime(QDate(s.year, s.month, s.day), QTime(s.hour, s.minute, s.second, s.msec));
    seen_.insert(key, value);
    return value;
}

namespace {

bool parseStamp(QStringView text, Stamp& s)
{
    if (text.size() < 10) return false;
    const QChar sep = text[4];
    if ((sep != u'/' && sep != u'-') || text[7] != sep) return false;
    bool ok = true;
    const int year = digits(text, 0, 4, ok);
    const int month = digits(text, 5, 2, ok);
    const int day = digits(text, 8, 2, ok);
    if (!ok) return false;
    const QDate date(year, month, day);
    if (!date.isValid()) return false;
    int hour = 0, minute = 0, second = 0, msec = 0;
    if (text.size() > 10) {
        if (text.size() < 19 || (text[10] != u' ' && text[10] != u'T') || text[13] != u':' || text[16] != u':')
            return false;
        hour = digits(text, 11, 2, ok);
        minute = digits(text, 14, 2, ok);
        second = digits(text, 17, 2, ok);
        if (text.size() > 19) {
            if (text[19] != u'.') return false;
            const QStringView fraction = text.mid(20, 3);
            msec = digits(fraction, 0, fraction.size(), ok);
            for (qsizetype k = fraction.size(); k < 3; ++k) msec *= 10;
            if (!ok || digits(text, 23, text.size() - 23, ok) < 0 || !ok) return false;
        }
        if (!ok) return false;
    }
    if (!QTime::isValid(hour, minute, second, msec)) return false;
    s = Stamp{year, month, day, hour, minute, second, msec};
    return true;
}

}  // namespace

}  // namespace data::ado
