#pragma once
// Insurers, doctors and referrers for the label screen: four pairs of a count and a
// load. The caller counts, sizes its array to the count plus the one spare place
// every array of the screen carries, and loads. Each call opens its own connection
// through "adodb.ini", reads and disconnects.
//
// A count gives the number of rows, 0 on failure. A load gives -1 when it has read to
// the end, and 0 when it failed or found no rows (the array is then untouched). The
// insurer and doctor pairs show nothing: their failure text goes to app::gsLastError.
// The referrer pair shows its failure in a critical box.

#include <QString>

#include <vector>

namespace data {

struct HokenjaRec {
    QString cIDno;
    QString cCodeHou;
    QString cCodeFuk;
    QString cCodeHok;
    QString cCodeKen;
    qint32 iType = 0;
    QString cName;
    QString cNameKana;
    QString cKigou;
    qint32 iPtype = 0;
    QString cDaihyo;
    QString cDaihyoKana;
    qint32 iFutanH = 0;
    qint32 iFutanK = 0;
    QString cYubinNo;
    QString cAddress1;
    QString cAddress2;
    QString cAddressKana;
    QString cTelNo;
    QString cFaxNo;
    QString cMobNo;
    QString cMail1;
    QString cMail2;
    QString cWeb;
    QString cYubinNo2;
    QString cAddress3;
    QString cName2;
};

struct DoctorRec {
    QString cIDno;
    QString cCode;
    QString cName;
    QString cNameKana;
    QString cKikan;
    QString cKikanKana;
    QString cDaihyo;
    QString cDaihyoKana;
    QString cYubinNo;
    QString cAddress1;
    QString cAddress2;
    QString cAddressKana;
    QString cTelNo;
    QString cFaxNo;
    QString cMobNo;
    QString cMail1;
    QString cMail2;
    QString cWeb;
};

struct SyoukaiRec {
    qint32 nIDNo = 0;
    QString cName;
    QString cNameKana;
    QString cYubinNo;
    QString cAddress1;
    QString cAddress2;
    QString cAddressKana;
    QString cTelNo;
    QString cFaxNo;
    QString cMobNo;
    QString cJob;
    QString cJigyousho;
    QString cJigyoushoKana;
    QString cBikou1;
    QString cBikou2;
    QString cBikou3;
    QString cBikou4;
    QString cBikou5;
    QString cBikou6;
    QString cBikou7;
    QString cBikou8;
    QString cBikou9;
    QString cBikou10;
};

// All insurers, in the table's own order.
short getHokenjaCount();
short getHokenjaData(std::vector<HokenjaRec>& aHokenja);
// The insurers that patients of this office name as cHokenNo or cFutanNo.
short getHokenjaUsedCount();
short getHokenjaUsedData(std::vector<HokenjaRec>& aHokenja);
// All doctors, by their key read as a number.
short getDoctorCount();
short getDoctorData(std::vector<DoctorRec>& aDoctor);
// All referrers, by nIDNo.
short getSyoukaicount();
short getSyoukaiData(std::vector<SyoukaiRec>& aSyoukai);

// The statements, as they go to the server.
QString sqlHokenjaCount();
QString sqlHokenjaData();
QString sqlHokenjaUsed();
QString sqlDoctorCount();
QString sqlDoctorData();
QString sqlSyoukaiCount();
QString sqlSyoukaiData();

}  // namespace data
