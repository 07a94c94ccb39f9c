#pragma once
// The whole patient record: one row of RIYOUSHA in one flat value. The label queries
// read only the columns they need; this is for the suite's patient search.
//
// Each field is named as its column. Types follow the record, not the column prefix:
// tHatsubyou and tSyoryoDay are kept as the database's date text, iRoomAnbunUmu is a
// date and cFMCode a 32-bit number. A date the row leaves NULL stays unset.

#include <QDate>
#include <QString>

#include <optional>

namespace data {

struct RiyoushaData {
    qint32 nIDNo = 0;
    QString cName;
    QString cNameRyaku;
    QString cNameKana;
    short iSex = 0;
    QString cCityNo;
    QString cJukyuNo;
    QString cHokenKigouNo;
    QString cHokenKigouNo2;
    QString cHokenNo;
    QString cHokenNo2;
    QString cFutanNo;
    std::optional<QDate> tBirthday;
    QString cYubinNo;
    QString cAdress1;
    QString cAdress2;
    QString cAddressKana;
    QString cTelNo;
    QString cFaxNo;
    QString cMobNo;
    QString cSetaiName;
    QString cSetaiKana;
    short iSetaiSex = 0;
    QString cSetaiYubinNo;
    QString cSetaiAdress1;
    QString cSetaiAdress2;
    QString cSetaiAddKana;
    QString cSetaiTelNo;
    QString cSetaiFaxNo;
    QString cSetaiMobNo;
    QString cSetaiTsuzuki;
    std::optional<QDate> tSetaiBirthday;
    short iTikuNo = 0;
    qint32 nHokui = 0;
    qint32 nToukei = 0;
    qint32 iHoseUmu = 0;
    qint32 nLenFix = 0;
    qint32 nLenInp = 0;
    qint32 nLenAdd = 0;
    qint32 nHoseLen = 0;
    qint32 iHoseCol = 0;
    qint32 iHoseCut = 0;
    short iVisitFlg = 0;
    short iOuryoCalType = 0;
    qint32 nTantou = 0;
    qint32 nTantou2 = 0;
    qint32 nTantou3 = 0;
    qint32 nTantou4 = 0;
    qint32 nTantou5 = 0;
    QString cByoumei;
    short iKaigoLevel = 0;
    short iFutanritsu = 0;
    short iV = 0;
    short iSys = 0;
    short iSejutuBui1 = 0;
    short iSejutuBui2 = 0;
    short iSejutuBui3 = 0;
    short iSejutuBui4 = 0;
    short iSejutuBui5 = 0;
    short iHenke = 0;
    short iOnan = 0;
    short iDenki = 0;
    qint32 iSejutuBui11 = 0;
    qint32 iSejutuBui12 = 0;
    qint32 iSejutuBui13 = 0;
    qint32 iSejutuBui14 = 0;
    qint32 iSejutuBui15 = 0;
    qint32 iOnan1 = 0;
    qint32 iDenki1 = 0;
    std::optional<QDate> tHenkeSday;
    std::optional<QDate> tHenKeEday;
    std::optional<QDate> tOnanSday;
    std::optional<QDate> tOnanEday;
    std::optional<QDate> tDenkiSday;
    std::optional<QDate> tDenkiEday;
    short iPtype = 0;
    short iGyoumuUmu = 0;
    QString cGeninKeika;
    QString tHatsubyou;
    QString tSyoryoDay;
    std::optional<QDate> tSyosinDay;
    std::optional<QDate> tStartDay;
    std::optional<QDate> tKHkigen;
    QString cHTno;
    std::optional<QDate> tHTStartDay;
    QString cHTRiyuu;
    QString cHTIryoName;
    QString cHTIryoYubin;
    QString cHTIryoAdd;
    QString cDouiIsiName1;
    QString cDouiIsiKikan1;
    QString cDouiIsiAdd1;
    QString cDouiByoumei1;
    std::optional<QDate> tDouiDay1;
    std::optional<QDate> tDouiKaryoS1;
    std::optional<QDate> tDouiKaryoE1;
    QString cDouiIsiName2;
    QString cDouiIsiKikan2;
    QString cDouiIsiAdd2;
    QString cDouiByoumei2;
    std::optional<QDate> tDouiDay2;
    std::optional<QDate> tDouiKaryoS2;
    std::optional<QDate> tDouiKaryoE2;
    QString cSyoumeiName;
    QString cSyoumeiYubin;
    QString cSyoumeiAdd;
    QString cSyoumeiTel;
    std::optional<QDate> tSyoumeiDay;
    qint32 nDairiID = 0;
    QString cSinseiName;
    QString cSinseiYubin;
    QString cSinseiAdd;
    QString cSinseiTel;
    std::optional<QDate> tSinseiDay;
    QString cSinseiAtena;
    short iSeiKyuKubun = 0;
    short iTenki = 0;
    QString cTekiyou;
    QString cBikou;
    short iHoken = 0;
    short iKinSyubetsu = 0;
    QString cKinName;
    short iKinSiten = 0;
    QString cKinSiten;
    short iKozaSyubetsu = 0;
    QString cKozaNo;
    QString cKozaName;
    QString cKozaKana;
    short iKozaKubun = 0;
    QString cComment;
    QString cYotei;
    short iPcnt = 0;
    QString cHokenJname;
    QString cHokenJname2;
    short iSyogai = 0;
    QString cSyogaiNo;
    QString cSyogaiJu;
    QString cSyogaiFname;
    short iSejutsuKubun = 0;
    qint32 nHKSyobyouCd = 0;
    QString cHKSyobyouName;
    short iHKSyokaiHiyo = 0;
    short iHKHariUmu = 0;
    short iHKKyuUmu = 0;
    short iHKDekiUmu = 0;
    std::optional<QDate> tHKHariSday;
    std::optional<QDate> tHKHariEday;
    std::optional<QDate> tHKKyuSday;
    std::optional<QDate> tHKKyuEday;
    std::optional<QDate> tHKDenkiSday;
    std::optional<QDate> tHKDenkiEday;
    qint32 iHKHari1Umu = 0;
    qint32 iHKKyu1Umu = 0;
    qint32 iHKDeki1Umu = 0;
    std::optional<QDate> tHenkeSday2;
    std::optional<QDate> tHenKeEday2;
    std::optional<QDate> tOnanSday2;
    std::optional<QDate> tOnanEday2;
    std::optional<QDate> tDenkiSday2;
    std::optional<QDate> tDenkiEday2;
    std::optional<QDate> tHKHariSday2;
    std::optional<QDate> tHKHariEday2;
    std::optional<QDate> tHKKyuSday2;
    std::optional<QDate> tHKKyuEday2;
    std::optional<QDate> tHKDenkiSday2;
    std::optional<QDate> tHKDenkiEday2;
    std::optional<QDate> tDouishoSaishutokuFrom;
    std::optional<QDate> tDouishoSaishutokuTo;
    qint32 iOuryouKyoka = 0;
    qint32 nRoomNo = 0;
    std::optional<QDate> iRoomAnbunUmu;
    QString cHokenJSubAddress;
    QString cSyogaiFSubAddress;
    short iJikofutanKubun = 0;
    qint32 nJikofutanTanka = 0;
    qint32 nTantou6 = 0;
    qint32 nTantou7 = 0;
    qint32 nTantou8 = 0;
    qint32 nTantou9 = 0;
    qint32 nTantou10 = 0;
    qint32 cFMCode = 0;

    bool operator==(const RiyoushaData&) const = default;
};

// " iKyotenCd = " / " and iKyotenEb = " with this office's SiteKey: the one row of
// nIDNo in this office, all columns.
QString sqlRiyoushaData(qint32 nIDNo);

// Reads the patient nIDNo of this office into rec. True (-1) when the row was read;
// false (0) otherwise, and rec is then untouched, since the record is copied only at
// the end. A failed connection or open leaves its text in app::gsLastError and shows
// nothing; a fault while reading the fields (a missing column, a value of the wrong
// kind) shows "Read Error:" and its description in a plain box.
short getRiyoushaData(qint32 nIDNo, RiyoushaData& rec);

}  // namespace data
