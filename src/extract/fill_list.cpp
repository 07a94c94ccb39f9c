#include "extract/fill_list.h"

#include "base/str_conv.h"

#include <array>

namespace extract {

namespace {

// Blanks (U+0020) off both ends; the text itself, shared, when there are none.
QString trimmed(const QString& s)
{
    qsizetype a = 0;
    qsizetype z = s.size();
    while (a < z && s[a] == u' ') ++a;
    while (z > a && s[z - 1] == u' ') --z;
    return (a == 0 && z == s.size()) ? s : s.mid(a, z - a);
}

QString rtrimmed(const QString& s)
{
    qsizetype z = s.size();
    while (z > 0 && s[z - 1] == u' ') --z;
    return z == s.size() ? s : s.left(z);
}

// "a b": the first address line, and the second after a blank when it holds more than
// blanks.
QString joinAddress(const QString& first, const QString& second)
{
    const QString b = trimmed(second);
    return b.isEmpty() ? trimmed(first) : trimmed(first) + u' ' + b;
}

QString withHonorific(const QString& name, const QString& sKeisho)
{
    return trimmed(name) + u' ' + sKeisho;
}

// One row as the fill writes it: the 33 cells (index 1 unused: the tick is not
// written) and the keys the narrowing reads.
struct RowOut {
    std::array<QString, kGridCols + 1> col;
    QString name;
    QString number;
    QString kana;

    void clear()
    {
        for (QString& s : col) s.clear();
    }
};

bool narrowedOut(const RowOut& r, const FillConditions& c)
{
    // Only the kana index can show a row, so it comes first; the rest only hide.
    bool hidden = !c.sKanaRow.isEmpty() && !kanaRowMatches(r.kana, c.sKanaRow);
    if (!c.sName.isEmpty() && !r.name.contains(c.sName)) hidden = true;
    if (!c.sID.isEmpty() && rtrimmed(r.number) != c.sID) hidden = true;
    if (!c.sKana.isEmpty() && !r.kana.contains(c.sKana)) hidden = true;
    return hidden;
}

void writePatient(const RiyoushaSealRow& p, const FillConditions& c, RowOut& r)
{
    const QString& k = c.sKeisho;
    r.number = QString::number(p.nIDNo);
    r.name = trimmed(p.cName);
    r.kana = trimmed(p.cNameKana);
    r.col[2] = r.number;
    r.col[3] = r.number;
    r.col[4] = r.name + u' ' + k;
    r.col[5] = r.kana;
    r.col[8] = trimmed(p.cYubinNo);
    r.col[9] = trimmed(p.cAdress1);
    r.col[10] = trimmed(p.cAdress2);
    r.col[11] = trimmed(p.cTelNo);
    r.col[12] = trimmed(p.cFaxNo);
    r.col[13] = trimmed(p.cMobNo);
    r.col[14] = QStringLiteral("0");
    r.col[15] = k;
    r.col[16] = QString::number(p.nRoomNo);
    r.col[17] = trimmed(p.cAdress3);
    r.col[21] = trimmed(p.cYubinNoS0Sinsei);
    r.col[22] = joinAddress(p.cJusyo1S0Sinsei, p.cJusyo2S0Sinsei);
    r.col[23] = trimmed(p.cYubinNoS0Ryosyu);
    r.col[24] = joinAddress(p.cJusyo1S0Ryosyu, p.cJusyo2S0Ryosyu);
    r.col[25] = trimmed(p.cYubinNoS0Renraku);
    r.col[26] = joinAddress(p.cJusyo1S0Renraku, p.cJusyo2S0Renraku);
    r.col[27] = trimmed(p.cYubinNo2);
    r.col[28] = trimmed(p.cYubinNo3);
    r.col[30] = trimmed(p.jisseki_ct);
    r.col[32] = withHonorific(p.cAtenaS0Ryosyu, k);
    r.col[33] = withHonorific(p.cAtenaS0Renraku, k);
}

// The rules only patients go through: age, birth month, end of service.
bool patientNarrowedOut(const RiyoushaSealRow& p, const FillConditions& c)
{
    const int age = ageOf(c.today, p.tBirthday);
    if (age < c.nAgeFrom || age > c.nAgeTo) return true;
    if (c.nBirthMonth != 0 && p.tBirthday.month() != c.nBirthMonth) return true;
    if (!c.endKanjaTicked && p.tExpireDay != QDate(1899, 12, 30) && p.tExpireDay < c.today) return true;
    return false;
}

// The count of services as a number: its leading digits, empty being 0.
double countOf(const QString& text)
{
    bool ok = false;
    const double v = text.toDouble(&ok);
    return ok ? v : 0.0;
}

void writeRow(controls::Grid& g, int row, const RowOut& r, bool hidden, const FillConditions& c)
{
    g.setRowHidden(row, false);
    if (c.clearTicks) g.setValue(1, row, 0);
    for (int col = 2; col <= kGridCols; ++col) g.setText(col, row, r.col[static_cast<size_t>(col)]);
    g.setRowHidden(row, hidden);
}

}  // namespace

int ageOf(const QDate& today, const QDate& birthday)
{
    // yyyy.mmdd as a decimal number: the integer divided once is the nearest double to
    // the decimal text, as reading the text would give.
    const auto asNumber = [](const QDate& d) {
        return double(d.year() * 10000 + d.month() * 100 + d.day()) / 10000.0;
    };
    return static_cast<int>(asNumber(today) - asNumber(birthday));
}

bool kanaRowMatches(const QString& kana, const QString& sKanaRow)
{
    if (kana.isEmpty()) return false;
    // Only the first letter counts; its half-width form starts with the base letter.
    const QString key = base::StrConv(kana.left(1), base::vbNarrow);
    const QChar first = key.isEmpty() ? QChar() : key[0];
    for (QChar ch : sKanaRow)
        if (ch == first) return true;
    return false;
}

void fillList(controls::Grid& g, const AddresseeData& data, const FillConditions& c)
{
    g.setReDraw(false);
    if (g.MaxCols() != kGridCols) g.setMaxCols(kGridCols);

    RowOut r;
    switch (c.nMst) {
    case 0: {
        const RiyoushaArray& a = data.aRiyousha;
        const int count = upperBound(a);
        g.setMaxRows(count);
        for (int i = 0; i < count; ++i) {
            const RiyoushaSealRow& p = a[static_cast<size_t>(i)];
            const int row = i + 1;
            r.clear();
            writePatient(p, c, r);
            const bool hidden = narrowedOut(r, c) || patientNarrowedOut(p, c);
            writeRow(g, row, r, hidden, c);
            const bool grey = c.jissekiTicked && countOf(p.jisseki_ct) < 1;
            const controls::Color fore = grey ? kLightGrey : controls::Colors::Black;
            g.setForeColor(2, row, fore);
            g.setForeColor(4, row, fore);
        }
        break;
    }
    default:
        throw base::VbError::subscriptOutOfRange();
    }

    // Only the tick, the number and the name are shown; insurers show their number
    // from column 3, which the label and tick code key them on.
    for (int col = 5; col <= g.MaxCols(); ++col) g.setColHidden(col, true);
    g.setColHidden(1, false);
    g.setColHidden(4, false);
    const bool hokenja = c.nMst == 2;
    g.setColHidden(2, hokenja);
    g.setColHidden(3, !hokenja);

    g.SetActiveCell(1, 1);
    g.setReDraw(true);
}

}  // namespace extract
