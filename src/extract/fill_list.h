#pragma once
// The working grid fpSpread02: one row per addressee of the current kind, 33 columns
// of which the label step later reads its data, and the search conditions applied by
// hiding rows, never by removing them.

#include "controls/grid.h"
#include "extract/addressee_data.h"

#include <QDate>
#include <QString>

namespace extract {

inline constexpr int kGridCols = 33;
// Entry 7 of the sixteen-colour palette: the patients without a service in the month.
inline constexpr controls::Color kLightGrey = 0xC0C0C0;

// What the fill reads: the search texts as they stand (untrimmed), the kana row, the
// bounds of the search, the check boxes and the honorific.
struct FillConditions {
    short nMst = 0;
    QString sName;
    QString sID;
    QString sKana;
    QString sKanaRow;
    short nAgeFrom = 0;
    short nAgeTo = 150;
    short nBirthMonth = 0;
    bool jissekiTicked = false;   // chkJisseki
    bool endKanjaTicked = false;  // chkEndKanja
    QDate today;
    QString sKeisho;
    short nKeisho = 0;
    // A change of kind with "印刷対象を変更したら消す" checked: the fill clears the ticks.
    bool clearTicks = false;
};

// Writes every row of the kind into the grid with redraw off, applies the narrowing,
// the colours and the hidden columns, and makes cell 1,1 active. The tick column is
// left as it is (each row keeps the tick of its position) unless clearTicks. A fault
// leaves the rows written so far; the caller switches redraw back on.
void fillList(controls::Grid& fpSpread02, AddresseeData& data, const FillConditions& c);

// The age of the list: the whole part of today and the birthday each written as the
// decimal number yyyy.mmdd, one taken from the other. It rises on the birthday itself.
int ageOf(const QDate& today, const QDate& birthday);

// True if the row's kana, made half-width, starts with one of the letters of the row
// of the kana index. A voiced letter is found by its base letter.
bool kanaRowMatches(const QString& kana, const QString& sKanaRow);

}  // namespace extract
