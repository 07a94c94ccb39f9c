#include "extract/fill_list.h"

#include "base/conversions.h"
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

// "name honorific"; without a name the blank and the honorific, which the fill makes
// once (blankKeisho) and every such row shares.
QString withHonorific(const QString& name, const QString& sKeisho, const QString& blankKeisho)
{
    const QString n = trimmed(name);
    return n.isEmpty() ? blankKeisho : n + u' ' + sKeisho;
}

// One row as the fill writes it: the 33 cells (index 1 unused: the tick is not
// written) and the keys the narrowing reads.
struct RowOut {
    std::array<QString, kGridCols + 1> col;
    QString name;
    QString number;
    QString kana;
    QString blankKeisho;  // " " and the honorific, made once per fill

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

QString digit(short K) { return base::numberText(K); }

// The columns every kind fills alike: the number (twice), the name and the reading
// kept for the narrowing, and the reading in its column.
void writeIdentity(RowOut& r, QString number, const QString& name, const QString& kana)
{
    r.number = std::move(number);
    r.name = trimmed(name);
    r.kana = trimmed(kana);
    r.col[2] = r.number;
    r.col[3] = r.number;
    r.col[5] = r.kana;
}

// The contact block, the kind's digit and the honorific (columns 8 to 15).
void writeContact(RowOut& r, short kind, const QString& keisho, const QString& yubin, const QString& address1,
                  const QString& address2, const QString& tel, const QString& fax, const QString& mob)
{
    r.col[8] = trimmed(yubin);
    r.col[9] = trimmed(address1);
    r.col[10] = trimmed(address2);
    r.col[11] = trimmed(tel);
    r.col[12] = trimmed(fax);
    r.col[13] = trimmed(mob);
    r.col[14] = digit(kind);
    r.col[15] = keisho;
}

void writePatient(const RiyoushaSealRow& p, const FillConditions& c, RowOut& r)
{
    const QString& k = c.sKeisho;
    writeIdentity(r, QString::number(p.nIDNo), p.cName, p.cNameKana);
    r.col[4] = r.name + u' ' + k;
    writeContact(r, 0, k, p.cYubinNo, p.cAdress1, p.cAdress2, p.cTelNo, p.cFaxNo, p.cMobNo);
    r.col[16] = p.nRoomNo == 0 ? QStringLiteral("0") : QString::number(p.nRoomNo);
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
    r.col[32] = withHonorific(p.cAtenaS0Ryosyu, k, r.blankKeisho);
    r.col[33] = withHonorific(p.cAtenaS0Renraku, k, r.blankKeisho);
}

void writeRow(controls::Grid& g, int row, RowOut& r, bool hidden, const FillConditions& c);

void writeDoctor(const data::DoctorRec& d, const FillConditions& c, RowOut& r)
{
    writeIdentity(r, trimmed(d.cIDno), d.cName, d.cNameKana);
    r.col[4] = withHonorific(d.cName, c.sKeisho, r.blankKeisho);
    r.col[6] = trimmed(d.cKikan);
    r.col[7] = trimmed(d.cDaihyo);
    writeContact(r, 1, c.sKeisho, d.cYubinNo, d.cAddress1, d.cAddress2, d.cTelNo, d.cFaxNo, d.cMobNo);
}

void writeHokenja(const data::HokenjaRec& h, const FillConditions& c, RowOut& r)
{
    writeIdentity(r, trimmed(h.cIDno), h.cName, h.cNameKana);
    r.col[4] = r.name + u' ' + trimmed(h.cDaihyo) + u' ' + c.sKeisho;
    r.col[7] = trimmed(h.cDaihyo);
    writeContact(r, 2, c.sKeisho, h.cYubinNo, h.cAddress1, h.cAddress2, h.cTelNo, h.cFaxNo, h.cMobNo);
    r.col[18] = trimmed(h.cYubinNo2);
    r.col[19] = trimmed(h.cAddress3);
    r.col[20] = withHonorific(h.cName2, c.sKeisho, r.blankKeisho);
}

void writeSyoukai(const data::SyoukaiRec& s, const FillConditions& c, RowOut& r)
{
    writeIdentity(r, QString::number(s.nIDNo), s.cName, s.cNameKana);
    r.col[4] = r.name + u' ' + c.sKeisho;
    r.col[6] = trimmed(s.cJigyousho);
    // The second address line repeats the first: the referrer's cAddress2 never shows.
    writeContact(r, 3, c.sKeisho, s.cYubinNo, s.cAddress1, s.cAddress1, s.cTelNo, s.cFaxNo, s.cMobNo);
}

void writeCaremane(const data::cD_CAREMANE& m, const FillConditions& c, RowOut& r)
{
    writeIdentity(r, QString::number(m.nIDNo), m.cName, m.cNameKana);
    r.col[4] = r.name + u' ' + c.sKeisho;
    r.col[6] = trimmed(m.SISETSUSHAMEI);
    writeContact(r, 4, c.sKeisho, m.cYubinNo, m.cAdress1, m.cAdress2, m.cTelNo, m.cFaxNo, m.cMobNo);
    r.col[21] = trimmed(m.JIGYOSYOSHAMEI);
    r.col[22] = trimmed(m.JIGYOSYOSHURUI);
    r.col[23] = trimmed(m.JIGYOSYOADD1);
    r.col[24] = trimmed(m.JIGYOSYOADD2);
}

void writeStaff(const data::cD_STAFF& m, const FillConditions& c, RowOut& r)
{
    writeIdentity(r, QString::number(m.nIDNo), m.cName, m.cNameKana);
    r.col[4] = r.name + u' ' + c.sKeisho;
    writeContact(r, 5, c.sKeisho, m.cYubinNo, m.cAdress1, m.cAdress2, m.cTelNo, m.cFaxNo, m.cMobNo);
}

// Facilities (6) and medical institutions (8) share the facility table and the digit
// "6"; with the free honorific the department text stands on a line of its own, and an
// institution's name on the line above it.
void writeSisetsu(const data::cD_SISETSU& m, bool iryoukikan, const FillConditions& c, RowOut& r)
{
    const bool free = c.nKeisho == 6;
    writeIdentity(r, QString::number(m.nIDNo), m.cShamei1, m.cShameiKana1);
    r.col[4] = r.name + u' ' + c.sKeisho;
    if (iryoukikan && free) r.col[6] = r.name;
    if (free) r.col[7] = c.sKeisho;
    writeContact(r, 6, c.sKeisho, m.cYubinNo, m.cAddress1, m.cAddress2, m.cTelNo, m.cFaxNo, QString());
}

void writeCorp(const data::cD_CORP& m, const FillConditions& c, RowOut& r)
{
    writeIdentity(r, QString::number(m.nIDNo), m.cShamei1, m.cShameiKana1);
    r.col[4] = r.name + u' ' + c.sKeisho;
    const QString daihyo = trimmed(m.cDaihyo);
    r.col[7] = (daihyo.isEmpty() ? r.name : daihyo) + u' ' + c.sKeisho;
    writeContact(r, 7, c.sKeisho, m.cYubinNo, m.cAddress1, m.cAddress2, m.cTelNo, m.cFaxNo, QString());
}

// One pass over count rows of a kind that is not the patients: each row written in
// full, then narrowed by the texts and the kana row.
template <class Write>
void fillRows(controls::Grid& g, int count, const FillConditions& c, Write write)
{
    g.setMaxRows(count);
    RowOut r;
    r.blankKeisho = u' ' + c.sKeisho;
    for (int i = 0; i < count; ++i) {
        r.clear();
        write(i, r);
        writeRow(g, i + 1, r, narrowedOut(r, c), c);
    }
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

// The count of services as a number: its leading number, empty being 0.
double countOf(const QString& text) { return base::Val(text); }

void writeRow(controls::Grid& g, int row, RowOut& r, bool hidden, const FillConditions& c)
{
    g.setRowHidden(row, false);
    if (c.clearTicks) g.setValue(1, row, 0);
    // The cells take the row's texts over: most share their data with the rows in
    // memory, so the grid holds no second copy of them.
    g.setRowTexts(row, 2, &r.col[2], kGridCols - 1);
    g.setRowHidden(row, hidden);
}

}  // namespace

int ageOf(const QDate& today, const QDate& birthday)
{
    // yyyy.mmdd as a decimal number: the integer divided once is the nearest double to
    // the decimal text, as reading the text would give.
    const auto asNumber = [](const QDate& d) {
        int y = 0, m = 0, day = 0;
        d.getDate(&y, &m, &day);  // one calendar conversion, not three
        return double(y * 10000 + m * 100 + day) / 10000.0;
    };
    return static_cast<int>(asNumber(today) - asNumber(birthday));
}

bool kanaRowMatches(const QString& kana, const QString& sKanaRow)
{
    if (kana.isEmpty()) return false;
    // Only the first letter counts; its half-width form starts with the base letter.
    // A half-width letter is its own form.
    QChar first = kana[0];
    if (first.unicode() < 0xFF61 || first.unicode() > 0xFF9F) {
        const QString key = base::StrConv(kana.left(1), base::vbNarrow);
        first = key.isEmpty() ? QChar() : key[0];
    }
    for (QChar ch : sKanaRow)
        if (ch == first) return true;
    return false;
}

void fillList(controls::Grid& g, AddresseeData& data, const FillConditions& c)
{
    g.setReDraw(false);
    if (g.MaxCols() != kGridCols) g.setMaxCols(kGridCols);

    RowOut r;
    r.blankKeisho = u' ' + c.sKeisho;
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
    case 1:
        fillRows(g, upperBound(data.aDoctor), c,
                 [&](int i, RowOut& r) { writeDoctor(data.aDoctor[static_cast<size_t>(i)], c, r); });
        break;
    case 2:
        fillRows(g, upperBound(data.aHokenja), c,
                 [&](int i, RowOut& r) { writeHokenja(data.aHokenja[static_cast<size_t>(i)], c, r); });
        break;
    case 3:
        fillRows(g, upperBound(data.aSyoukai), c,
                 [&](int i, RowOut& r) { writeSyoukai(data.aSyoukai[static_cast<size_t>(i)], c, r); });
        break;
    case 4:
        fillRows(g, data.oCaremaneList.nデータ数(), c,
                 [&](int i, RowOut& r) { writeCaremane(data.oCaremaneList.clsCAREMANE(i), c, r); });
        break;
    case 5:
        fillRows(g, data.oStaffList.nデータ数(), c,
                 [&](int i, RowOut& r) { writeStaff(data.oStaffList.clsSTAFF(i), c, r); });
        break;
    case 6:
        fillRows(g, data.oSisetsuList.nデータ数(), c,
                 [&](int i, RowOut& r) { writeSisetsu(data.oSisetsuList.clsSisetsu(i), false, c, r); });
        break;
    case 7:
        fillRows(g, data.oCorpList.nデータ数(), c,
                 [&](int i, RowOut& r) { writeCorp(data.oCorpList.clsCORP(i), c, r); });
        break;
    case 8:
        fillRows(g, data.oIryouList.nデータ数(), c,
                 [&](int i, RowOut& r) { writeSisetsu(data.oIryouList.clsSisetsu(i), true, c, r); });
        break;
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
