#pragma once
// The office's identity for the headers of printed consent papers, read from this
// office's CORP row.

#include <QString>

namespace data {

// Fixed-length texts hold exactly their length: padded with blanks, cut beyond it.
struct CorpInfo {
    QString cName;  // 50: cShamei1 directly followed by cShamei2
    QString cJigyousyoNo;
    QString cYubinNo;   // 8
    QString cAddress1;  // 50
    QString cAddress2;  // 50
    QString cTelNo;     // 14
    QString cFaxNo;     // 14
    QString cYobi1;     // 30, always blank
    double nLat = 0;
    double nLon = 0;
    QString cYobi2;  // always empty
    QString cMailDestination;
    QString cMailDestinationZipNo;
    QString cDaihyo;  // 50
    QString cJigyousyoNo2;
};

// Reads the first CORP row of this office (by nIDNo) into info through "adodb.ini".
// Failures show a critical box: the failing object's text, CR LF, and
// "loadInitCorp でエラー" (settings and database) or "エラーが発生しました。" (the
// table read). bOk is true once info holds a row; without a row info stays as it was.
void loadInitCorp(CorpInfo& info, bool& bOk);

}  // namespace data
