#include "data/riyousha_data.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/dates.h"
#include "base/vb_error.h"
#include "data/ado/ado_constants.h"
#include "data/ado/recordset.h"
#include "data/adodb_ini.h"
#include "data/column_binding.h"
#include "data/ct_adodb.h"
#include "data/entity_support.h"

#include <QDateTime>

#include <memory>
#include <utility>
#include <vector>

namespace data {

namespace {

using R = RiyoushaData;

#define BIND(m) SEAL_BIND(R, m)

// The fields in the record's order.
const std::vector<Binding<R>>& binds()
{
    // clang-format off
    static const std::vector<Binding<R>> list = {
        BIND(nIDNo), BIND(cName), BIND(cNameRyaku), BIND(cNameKana), BIND(iSex),
        BIND(cCityNo), BIND(cJukyuNo), BIND(cHokenKigouNo), BIND(cHokenKigouNo2), BIND(cHokenNo),
        BIND(cHokenNo2), BIND(cFutanNo), BIND(tBirthday), BIND(cYubinNo), BIND(cAdress1),
        BIND(cAdress2), BIND(cAddressKana), BIND(cTelNo), BIND(cFaxNo), BIND(cMobNo),
        BIND(cSetaiName), BIND(cSetaiKana), BIND(iSetaiSex), BIND(cSetaiYubinNo), BIND(cSetaiAdress1),
        BIND(cSetaiAdress2), BIND(cSetaiAddKana), BIND(cSetaiTelNo), BIND(cSetaiFaxNo), BIND(cSetaiMobNo),
        BIND(cSetaiTsuzuki), BIND(tSetaiBirthday), BIND(iTikuNo), BIND(nHokui), BIND(nToukei),
        BIND(iHoseUmu), BIND(nLenFix), BIND(nLenInp), BIND(nLenAdd), BIND(nHoseLen),
        BIND(iHoseCol), BIND(iHoseCut), BIND(iVisitFlg), BIND(iOuryoCalType), BIND(nTantou),
        BIND(nTantou2), BIND(nTantou3), BIND(nTantou4), BIND(nTantou5), BIND(cByoumei),
        BIND(iKaigoLevel), BIND(iFutanritsu), BIND(iV), BIND(iSys), BIND(iSejutuBui1),
        BIND(iSejutuBui2), BIND(iSejutuBui3), BIND(iSejutuBui4), BIND(iSejutuBui5), BIND(iHenke),
        BIND(iOnan), BIND(iDenki), BIND(iSejutuBui11), BIND(iSejutuBui12), BIND(iSejutuBui13),
        BIND(iSejutuBui14), BIND(iSejutuBui15), BIND(iOnan1), BIND(iDenki1), BIND(tHenkeSday),
        BIND(tHenKeEday), BIND(tOnanSday), BIND(tOnanEday), BIND(tDenkiSday), BIND(tDenkiEday),
        BIND(iPtype), BIND(iGyoumuUmu), BIND(cGeninKeika), BIND(tHatsubyou), BIND(tSyoryoDay),
        BIND(tSyosinDay), BIND(tStartDay), BIND(tKHkigen), BIND(cHTno), BIND(tHTStartDay),
        BIND(cHTRiyuu), BIND(cHTIryoName), BIND(cHTIryoYubin), BIND(cHTIryoAdd), BIND(cDouiIsiName1),
        BIND(cDouiIsiKikan1), BIND(cDouiIsiAdd1), BIND(cDouiByoumei1), BIND(tDouiDay1), BIND(tDouiKaryoS1),
        BIND(tDouiKaryoE1), BIND(cDouiIsiName2), BIND(cDouiIsiKikan2), BIND(cDouiIsiAdd2), BIND(cDouiByoumei2),
        BIND(tDouiDay2), BIND(tDouiKaryoS2), BIND(tDouiKaryoE2), BIND(cSyoumeiName), BIND(cSyoumeiYubin),
        BIND(cSyoumeiAdd), BIND(cSyoumeiTel), BIND(tSyoumeiDay), BIND(nDairiID), BIND(cSinseiName),
        BIND(cSinseiYubin), BIND(cSinseiAdd), BIND(cSinseiTel), BIND(tSinseiDay), BIND(cSinseiAtena),
        BIND(iSeiKyuKubun), BIND(iTenki), BIND(cTekiyou), BIND(cBikou), BIND(iHoken),
        BIND(iKinSyubetsu), BIND(cKinName), BIND(iKinSiten), BIND(cKinSiten), BIND(iKozaSyubetsu),
        BIND(cKozaNo), BIND(cKozaName), BIND(cKozaKana), BIND(iKozaKubun), BIND(cComment),
        BIND(cYotei), BIND(iPcnt), BIND(cHokenJname), BIND(cHokenJname2), BIND(iSyogai),
        BIND(cSyogaiNo), BIND(cSyogaiJu), BIND(cSyogaiFname), BIND(iSejutsuKubun), BIND(nHKSyobyouCd),
        BIND(cHKSyobyouName), BIND(iHKSyokaiHiyo), BIND(iHKHariUmu), BIND(iHKKyuUmu), BIND(iHKDekiUmu),
        BIND(tHKHariSday), BIND(tHKHariEday), BIND(tHKKyuSday), BIND(tHKKyuEday), BIND(tHKDenkiSday),
        BIND(tHKDenkiEday), BIND(iHKHari1Umu), BIND(iHKKyu1Umu), BIND(iHKDeki1Umu), BIND(tHenkeSday2),
        BIND(tHenKeEday2), BIND(tOnanSday2), BIND(tOnanEday2), BIND(tDenkiSday2), BIND(tDenkiEday2),
        BIND(tHKHariSday2), BIND(tHKHariEday2), BIND(tHKKyuSday2), BIND(tHKKyuEday2), BIND(tHKDenkiSday2),
        BIND(tHKDenkiEday2), BIND(tDouishoSaishutokuFrom), BIND(tDouishoSaishutokuTo), BIND(iOuryouKyoka), BIND(nRoomNo),
        BIND(iRoomAnbunUmu), BIND(cHokenJSubAddress), BIND(cSyogaiFSubAddress), BIND(iJikofutanKubun), BIND(nJikofutanTanka),
        BIND(nTantou6), BIND(nTantou7), BIND(nTantou8), BIND(nTantou9), BIND(nTantou10),
        BIND(cFMCode)};
    // clang-format on
    return list;
}

#undef BIND

}  // namespace

QString sqlRiyoushaData(qint32 nIDNo)
{
    return QStringLiteral("SELECT * FROM ") + QStringLiteral("RIYOUSHA") + QStringLiteral(" WHERE nIDNo = ") +
           QString::number(nIDNo) + QStringLiteral(" and iKyotenCd = ") + QString::number(app::iKyotenCd) +
           QStringLiteral(" and iKyotenEb = ") + QString::number(app::iKyotenEb);
}

short getRiyoushaData(qint32 nIDNo, RiyoushaData& rec)
{
    QString csConnect;
    QString sErr;
    if (iGetConnectString(csConnect, sErr) != 0) {
        app::gsLastError = sErr;
        return 0;
    }
    cT_ADODB db;
    if (db.iInit(csConnect) != 0 || db.iConnect() != 0) {
        app::gsLastError = db.sErrMsg();
        return 0;
    }
    auto rs = std::make_unique<ado::Recordset>();
    rs->setCursorLocation(ado::adUseClient);
    if (db.iOpenRecSet(rs, sqlRiyoushaData(nIDNo), ado::adOpenForwardOnly, ado::adLockReadOnly, ado::adCmdText) != 0) {
        app::gsLastError = db.sErrMsg();
        return 0;
    }
    RiyoushaData local;
    try {
        if (rs->Eof()) {
            db.iCloseRecSet(rs);
            db.iDisConnect();
            return 0;
        }
        // A NULL keeps the empty record's value; text as it stands.
        for (const Binding<R>& bind : binds())
            setMember(local, bind.member, rs->Fields(bind.name).Value(), NullRule::Keep);
    } catch (const base::VbError& fault) {
        app::msgBox(QStringLiteral("Read Error:") + fault.description(), controls::BoxStyle::Plain, QString());
        return 0;
    }
    db.iCloseRecSet(rs);
    db.iDisConnect();
    rec = std::move(local);
    return -1;
}

}  // namespace data
