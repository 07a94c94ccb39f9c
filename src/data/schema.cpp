#include "data/schema.h"

#include "data/ado/japanese_collation.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

namespace data {

namespace {

QStringList words(const char* text) { return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts); }

TableDef table(const char* name, const char* columns, const char* key, bool uniqueKey = true)
{
    return TableDef{QString::fromUtf8(name), words(columns), words(key), uniqueKey};
}

std::vector<TableDef> makeTables()
{
    std::vector<TableDef> t;
    t.push_back(table("RIYOUSHA",
                      "iKyotenCd iKyotenEb nIDNo cName cNameRyaku cNameKana iSex cCityNo cJukyuNo "
                      "cHokenKigouNo cHokenKigouNo2 cHokenNo cHokenNo2 cFutanNo tBirthday cYubinNo "
                      "cAdress1 cAdress2 cAddressKana cTelNo cFaxNo cMobNo cSetaiName cSetaiKana iSetaiSex "
                      "cSetaiYubinNo cSetaiAdress1 cSetaiAdress2 cSetaiAddKana cSetaiTelNo cSetaiFaxNo "
                      "cSetaiMobNo cSetaiTsuzuki tSetaiBirthday iTikuNo nHokui nToukei iHoseUmu nLenFix "
                      "nLenInp nLenAdd nHoseLen iHoseCol iHoseCut iVisitFlg iOuryoCalType nTantou nTantou2 "
                      "nTantou3 nTantou4 nTantou5 cByoumei iKaigoLevel iFutanritsu iV iSys iSejutuBui1 "
                      "iSejutuBui2 iSejutuBui3 iSejutuBui4 iSejutuBui5 iHenke iOnan iDenki iSejutuBui11 "
                      "iSejutuBui12 iSejutuBui13 iSejutuBui14 iSejutuBui15 iOnan1 iDenki1 tHenkeSday "
                      "tHenKeEday tOnanSday tOnanEday tDenkiSday tDenkiEday iPtype iGyoumuUmu cGeninKeika "
                      "tHatsubyou tSyoryoDay tSyosinDay tStartDay tKHkigen cHTno tHTStartDay cHTRiyuu "
                      "cHTIryoName cHTIryoYubin cHTIryoAdd cDouiIsiName1 cDouiIsiKikan1 cDouiIsiAdd1 "
                      "cDouiByoumei1 tDouiDay1 tDouiKaryoS1 tDouiKaryoE1 cDouiIsiName2 cDouiIsiKikan2 "
                      "cDouiIsiAdd2 cDouiByoumei2 tDouiDay2 tDouiKaryoS2 tDouiKaryoE2 cSyoumeiName "
                      "cSyoumeiYubin cSyoumeiAdd cSyoumeiTel tSyoumeiDay nDairiID cSinseiName cSinseiYubin "
                      "cSinseiAdd cSinseiTel tSinseiDay cSinseiAtena iSeiKyuKubun iTenki cTekiyou cBikou "
                      "iHoken iKinSyubetsu cKinName iKinSiten cKinSiten iKozaSyubetsu cKozaNo cKozaName "
                      "cKozaKana iKozaKubun cComment cYotei iPcnt cHokenJname cHokenJname2 iSyogai "
                      "cSyogaiNo cSyogaiJu cSyogaiFname iSejutsuKubun nHKSyobyouCd cHKSyobyouName "
                      "iHKSyokaiHiyo iHKHariUmu iHKKyuUmu iHKDekiUmu tHKHariSday tHKHariEday tHKKyuSday "
                      "tHKKyuEday tHKDenkiSday tHKDenkiEday iHKHari1Umu iHKKyu1Umu iHKDeki1Umu tHenkeSday2 "
                      "tHenKeEday2 tOnanSday2 tOnanEday2 tDenkiSday2 tDenkiEday2 tHKHariSday2 tHKHariEday2 "
                      "tHKKyuSday2 tHKKyuEday2 tHKDenkiSday2 tHKDenkiEday2 tDouishoSaishutokuFrom "
                      "tDouishoSaishutokuTo iOuryouKyoka nRoomNo iRoomAnbunUmu cHokenJSubAddress "
                      "cSyogaiFSubAddress iJikofutanKubun nJikofutanTanka nTantou6 nTantou7 nTantou8 "
                      "nTantou9 nTantou10 cFMCode tExpireDay cYubinNo2 cYubinNo3 tUpdateTime",
                      "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("RIYOUSHA_SUB",
                      "iKyotenCd iKyotenEb nIDNo iIsiCd iIsiCd2 iCareCd iCareSisetsuCd iSyoukaiSisetsuCd "
                      "cCareName cCareTelNo cSyoukaiTelNo cAdress3 iShoukanSiharai "
                      "cYubinNoS0Ryosyu cJusyo1S0Ryosyu cJusyo2S0Ryosyu cAtenaS0Ryosyu "
                      "cYubinNoS0Renraku cJusyo1S0Renraku cJusyo2S0Renraku cAtenaS0Renraku",
                      "iKyotenCd iKyotenEb nIDNo"));
    // One row per consent: a patient has many, so the key is an index.
    t.push_back(table("RIYOUSHA_DOUI_REC",
                      "iKyotenCd iKyotenEb nIDNo tDouiDay tDouiKaryoS cDouiIsiName cDouiIsiKikan "
                      "cDouiIsiAdd cIsiCd iSejutuBui1 iSejutuBui2 iSejutuBui3 iSejutuBui4 iSejutuBui5",
                      "iKyotenCd iKyotenEb nIDNo", false));
    t.push_back(
        table("DOUIKIROKU", "iKyotenCd iKyotenEb nIDNo iDoui1CalcType iDoui2CalcType", "iKyotenCd iKyotenEb nIDNo"));
    // One row per visit. The visit time closes the key so that the month count of the
    // patient query is answered from the index alone.
    t.push_back(table("JISSEKI", "iKyotenCd iKyotenEb nRiyoushaIDNo tServicyDayStart",
                      "iKyotenCd iKyotenEb nRiyoushaIDNo tServicyDayStart", false));
    // One report per patient, staff member and month.
    t.push_back(table("経過報告", "iKyotenCd iKyotenEb nRiyoushaIDNo tServicyMonth nStaffIDNo",
                      "iKyotenCd iKyotenEb nRiyoushaIDNo nStaffIDNo tServicyMonth"));
    t.push_back(table("HOKENJA",
                      "cIDno cCodeHou cCodeFuk cCodeHok cCodeKen iType cName cNameKana cKigou iPtype "
                      "cDaihyo cDaihyoKana iFutanH iFutanK cYubinNo cAddress1 cAddress2 cAddressKana "
                      "cTelNo cFaxNo cMobNo cMail1 cMail2 cWeb cYubinNo2 cAddress3 cName2",
                      "cIDno"));
    t.push_back(table("DOCTOR",
                      "cIDno cCode cName cNameKana cKikan cKikanKana cDaihyo cDaihyoKana cYubinNo "
                      "cAddress1 cAddress2 cAddressKana cTelNo cFaxNo cMobNo cMail1 cMail2 cWeb "
                      "iSisetsuCode tUpdateTime",
                      "cIDno"));
    t.push_back(table("SYOUKAI",
                      "nIDNo cName cNameKana cYubinNo cAddress1 cAddress2 cAddressKana cTelNo cFaxNo "
                      "cMobNo cJob cJigyousho cJigyoushoKana cBikou1 cBikou2 cBikou3 cBikou4 cBikou5 "
                      "cBikou6 cBikou7 cBikou8 cBikou9 cBikou10",
                      "nIDNo"));
    t.push_back(table("CAREMANE",
                      "iKyotenCd iKyotenEb cAdress1 cAdress2 cAdressKana cFaxNo cMobNo cMail cName "
                      "cNameKana cTelNo cYubinNo nIDNo iSisetsuCode cPcName tUpDateTime iChusiFlg "
                      "tBirthday iSexKubun iJigyosyoCode",
                      "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("STAFF",
                      "iKyotenCd iKyotenEb cAdress1 cAdress2 cFaxNo cKaiNo cKaiNo2 cKaiNo3 cMobNo cName "
                      "cNameKana cNameRyaku cRken cRno cTelNo cYubinNo iChusiFlg iSexKubun iShikakuKubun "
                      "iSyokushuKubun iYaku nIDNo cEmail iTecAbi iSpeechAbi cPhysical iClaimRate cSikaku "
                      "cTourokuNo cSmileCd tBirthday tKousinDay tNyusyaDay tKisanDay tRday tTourokuDay "
                      "cPcName tUpDateTime cTourokuNo2 iVehicleType cVehicleNumber cVehicleComment "
                      "cEmployeeNumber iLookAllRiyousya iWebLicense iLookCharge iStaffHokenTouroku "
                      "cShikaiNo cShikaiNo_Josei iContractType nLat nLon cIninTourokuNo iIninTourokuChk "
                      "iKanriSekininFlg",
                      "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("SISETSU",
                      "iKyotenCd iKyotenEb cAddress1 cAddress2 cAddressKana cDaihyo cDaihyoKana cFaxNo "
                      "cShamei1 cShamei2 cShameiKana1 cShameiKana2 cTelNo cYubinNo cSisetsuType nIDNo "
                      "nLat nLon cPcName tUpDateTime iKikanShubetsu cDouiIrai cComment nColorCode "
                      "iColorIndex cShamei1Ryaku iPaymentType",
                      "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("CORP",
                      "iKyotenCd iKyotenEb cAddress1 cAddress2 cAddressKana cDaihyo cDaihyoKana cFaxNo "
                      "cKinyuName cKinyuSiten cKozaBangou cKozaKana cKozaMeigi1 cKozaMeigi2 cShamei1 "
                      "cShamei2 cShameiKana1 cShameiKana2 cTelNo cYubinNo iKinSiten iKinSyubetsu "
                      "iKozaKubun iKozaType iType nIDNo nLat nLon cPcName tUpDateTime cKinyuNo "
                      "cKinyuSitenNo cJigyousyoNo cJigyousyoNo2 cJigyouReceiptName cMailDestination "
                      "cMailDestinationZipNo cHokenTourokuKubetsu cPersonalNumberCorp iKyotenToshiNo "
                      "cKokuhoTourokuNo cEmail",
                      "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("KYOTEN", "iKyotenCd iKyotenEb cKyotenName iUsedFlg", "iKyotenCd iKyotenEb"));
    // The consultation's number links it to SOUDAN_TANTOU; the address lines are
    // those the facility cascade writes.
    t.push_back(table("SOUDAN",
                      "nIDNo iSisetsuCode cKikan cKikankana cYubinNo cAdress1 cAdress2 "
                      "cTelNo cFaxNo tUpdateTime",
                      "nIDNo"));
    // A consultation may have several staff members, each of any office.
    t.push_back(table("SOUDAN_TANTOU", "nIDNo iStaffKyotenCd iStaffKyotenEb nStaffIDNo", "nIDNo", false));
    t.push_back(table("SHINSEISYO",
                      "iKyotenCd iKyotenEb nIDNo cFileName cDispName iSejutsuKubun iHokenType iDelFlg "
                      "iSinseiTP iSoufushoTP iDuplexFlg iStateNo iRiyouHokenKbn tUpDateTime iPrintType "
                      "iKubun iKanagawaStaffPrint iJoseiFutanKiriage iTekiyouStaff",
                      "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("RIYOUSHA_MAP", "iKyotenCd iKyotenEb nIDNo nLat nLon tUpDateTime", "iKyotenCd iKyotenEb nIDNo"));
    t.push_back(table("STAFF_DELETE_LOG", "iKyotenCd iKyotenEb nIDNo cName deleteLoginID deleteDate", ""));
    t.push_back(table("SISETSU_DELETE_LOG", "iKyotenCd iKyotenEb nIDNo cName deleteLoginID deleteDate", ""));
    t.push_back(table("療養費単価", "cStartDate cEndDate iTankaKbn nTankaCode nTanka", ""));
    t.push_back(table("往療費区分", "cStartDate cEndDate nMaxLen nKingakuOuryou", ""));
    return t;
}

std::vector<IndexDef> makeIndexes()
{
    auto index = [](const char* name, const char* table, const char* columns) {
        return IndexDef{QString::fromUtf8(name), QString::fromUtf8(table), words(columns)};
    };
    return {
        // The patient query reads one office in reading order. The index carries every
        // column the seal screen's list takes, so that the list is read from the index
        // alone and not from the wide patient rows, one scattered row after another.
        index("IX_RIYOUSHA_KANA", "RIYOUSHA",
              "iKyotenCd iKyotenEb cNameKana nIDNo cName cYubinNo cAdress1 cAdress2 tBirthday cTelNo cFaxNo cMobNo "
              "tExpireDay nRoomNo cYubinNo2 cYubinNo3 cHTIryoName"),
        // The consent list selects one office's consents by date.
        index("IX_RIYOUSHA_DOUI_REC_DAY", "RIYOUSHA_DOUI_REC", "iKyotenCd iKyotenEb tDouiDay"),
        // The services of one office in one month: the patient query counts them per
        // patient. The customers' servers keep the service table keyed by office and
        // day for their monthly reports; the key alone would read every month.
        index("IX_JISSEKI_DAY", "JISSEKI", "iKyotenCd iKyotenEb tServicyDayStart nRiyoushaIDNo"),
        // The label addresses of a patient beside the key, for the same list.
        index("IX_RIYOUSHA_SUB_SEAL", "RIYOUSHA_SUB",
              "iKyotenCd iKyotenEb nIDNo cAdress3 cYubinNoS0Ryosyu cJusyo1S0Ryosyu cJusyo2S0Ryosyu cYubinNoS0Renraku "
              "cJusyo1S0Renraku cJusyo2S0Renraku cAtenaS0Ryosyu cAtenaS0Renraku iShoukanSiharai"),
        // Care managers and doctors are joined to patients through these links.
        index("IX_RIYOUSHA_SUB_CARE", "RIYOUSHA_SUB", "iCareCd"),
    };
}

}  // namespace

const std::vector<TableDef>& schemaTables()
{
    static const std::vector<TableDef> tables = makeTables();
    return tables;
}

const std::vector<IndexDef>& schemaIndexes()
{
    static const std::vector<IndexDef> indexes = makeIndexes();
    return indexes;
}

QString columnType(const QString& table, const QString& column)
{
    if (table.compare(QStringLiteral("経過報告"), Qt::CaseInsensitive) == 0 &&
        column.compare(QStringLiteral("tServicyMonth"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("TEXT");  // 'YYYY/MM', compared as text with month literals
    if (column.compare(QStringLiteral("nLat"), Qt::CaseInsensitive) == 0 ||
        column.compare(QStringLiteral("nLon"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("REAL");
    // The two delete logs break the prefix rule; their columns say what they hold.
    if (column.compare(QStringLiteral("deleteDate"), Qt::CaseInsensitive) == 0) return QStringLiteral("DATETIME");
    if (column.compare(QStringLiteral("deleteLoginID"), Qt::CaseInsensitive) == 0) return QStringLiteral("TEXT");
    switch (column.isEmpty() ? char16_t(0) : column.at(0).unicode()) {
    case u'c':
        // Names, readings and addresses compare as on the clinic's server.
        return QStringLiteral("TEXT COLLATE ") + QLatin1String(ado::kJapaneseCollation);
    case u'i':
    case u'n':
        return QStringLiteral("INTEGER");
    case u't':
        return QStringLiteral("DATETIME");
    default:
        return QStringLiteral("TEXT");
    }
}

QString schemaTablesSql()
{
    QString sql;
    for (const TableDef& t : schemaTables()) {
        const bool primary = t.uniqueKey && !t.key.isEmpty();
        sql += QStringLiteral("CREATE TABLE ") + t.name + QStringLiteral(" (\n");
        for (qsizetype i = 0; i < t.columns.size(); ++i) {
            const QString& c = t.columns.at(i);
            sql += QStringLiteral("  ") + c + QLatin1Char(' ') + columnType(t.name, c);
            if (primary && t.key.contains(c)) sql += QStringLiteral(" NOT NULL");
            if (i + 1 < t.columns.size() || primary) sql += QLatin1Char(',');
            sql += QLatin1Char('\n');
        }
        if (primary)
            sql += QStringLiteral("  PRIMARY KEY (") + t.key.join(QStringLiteral(", ")) + QStringLiteral(")\n");
        sql += QStringLiteral(");\n");
    }
    return sql;
}

QString schemaIndexesSql()
{
    QString sql;
    for (const TableDef& t : schemaTables())
        if (!t.uniqueKey && !t.key.isEmpty())
            sql += QStringLiteral("CREATE INDEX IX_") + t.name + QStringLiteral("_KEY ON ") + t.name +
                   QStringLiteral(" (") + t.key.join(QStringLiteral(", ")) + QStringLiteral(");\n");
    for (const IndexDef& ix : schemaIndexes())
        sql += QStringLiteral("CREATE INDEX ") + ix.name + QStringLiteral(" ON ") + ix.table + QStringLiteral(" (") +
               ix.columns.join(QStringLiteral(", ")) + QStringLiteral(");\n");
    return sql;
}

QString schemaSql() { return schemaTablesSql() + schemaIndexesSql(); }

bool applySchema(sqlite3* db, QString* errorText)
{
    if (!db) {
        if (errorText) *errorText = QStringLiteral("データベースが開かれていません。");
        return false;
    }
    ado::registerJapaneseCollation();
    ado::addJapaneseCollation(db);  // a connection opened before the registration
    char* message = nullptr;
    const QByteArray sql = schemaSql().toUtf8();
    if (sqlite3_exec(db, sql.constData(), nullptr, nullptr, &message) != SQLITE_OK) {
        if (errorText) *errorText = QString::fromUtf8(message ? message : sqlite3_errmsg(db));
        sqlite3_free(message);
        return false;
    }
    return true;
}

bool createSchemaDatabase(const QString& path, QString* errorText)
{
    if (QFileInfo::exists(path)) {
        if (errorText) *errorText = QStringLiteral("ファイルが既にあります: ") + path;
        return false;
    }
    sqlite3* db = nullptr;
    const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    if (rc != SQLITE_OK) {
        if (errorText) *errorText = QString::fromUtf8(db ? sqlite3_errmsg(db) : sqlite3_errstr(rc));
        sqlite3_close(db);
        return false;
    }
    const bool ok = applySchema(db, errorText);
    sqlite3_close(db);
    if (!ok) QFile::remove(path);  // a half-made schema is of no use to anyone
    return ok;
}

}  // namespace data
