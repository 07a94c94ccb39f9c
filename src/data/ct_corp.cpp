#include "data/ct_corp.h"

namespace data {

using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("CORP");

QString pick(int value, std::initializer_list<const char16_t*> texts, int first)
{
    const int i = value - first;
    if (i < 0 || i >= static_cast<int>(texts.size()))
        return {};
    return QString::fromUtf16(texts.begin()[i]);
}

}  // namespace

QString cD_CORP::sType() const
{
    switch (iType) {
    case 0: return QStringLiteral("本社（往療基点）");
    case 1:
    case 2: return QStringLiteral("受領代理人");
    case 3: return QStringLiteral("団体請求");
    default: return {};
    }
}

QString cD_CORP::sKinSyubetsu() const { return pick(iKinSyubetsu, {u"銀行", u"金庫", u"農協", u"郵便局"}, 1); }

QString cD_CORP::sKinSiten() const { return pick(iKinSiten, {u"本店", u"支店", u"本所", u"支所", u"出張所"}, 1); }

QString cD_CORP::sKozaType() const { return pick(iKozaType, {u"普通", u"当座", u"通知", u"別段"}, 1); }

const std::vector<Column<cD_CORP>>& cT_CORP::columns()
{
    using R = cD_CORP;
    using W = entity::WriteAs;
    static const std::vector<Column<R>> list = {
        {QStringLiteral("cHokenTourokuKubetsu"), &R::cHokenTourokuKubetsu},
        {QStringLiteral("cJigyousyoNo2"), &R::cJigyousyoNo2},
        {QStringLiteral("cJigyouReceiptName"), &R::cJigyouReceiptName},
        {QStringLiteral("cKinyuNo"), &R::cKinyuNo},
        {QStringLiteral("cKinyuSitenNo"), &R::cKinyuSitenNo},
        {QStringLiteral("cJigyousyoNo"), &R::cJigyousyoNo},
        {QStringLiteral("cAddress1"), &R::cAddress1},
        {QStringLiteral("cAddress2"), &R::cAddress2},
        {QStringLiteral("cAddressKana"), &R::cAddressKana},
        {QStringLiteral("cDaihyo"), &R::cDaihyo},
        {QStringLiteral("cDaihyoKana"), &R::cDaihyoKana},
        {QStringLiteral("cFaxNo"), &R::cFaxNo},
        {QStringLiteral("cKinyuName"), &R::cKinyuName},
        {QStringLiteral("cKinyuSiten"), &R::cKinyuSiten},
        {QStringLiteral("cKozaBangou"), &R::cKozaBangou},
        {QStringLiteral("cKozaKana"), &R::cKozaKana},
        {QStringLiteral("cKozaMeigi1"), &R::cKozaMeigi1},
        {QStringLiteral("cKozaMeigi2"), &R::cKozaMeigi2},
        {QStringLiteral("cShamei1"), &R::cShamei1},
        {QStringLiteral("cShamei2"), &R::cShamei2},
        {QStringLiteral("cShameiKana1"), &R::cShameiKana1},
        {QStringLiteral("cShameiKana2"), &R::cShameiKana2},
        {QStringLiteral("cTelNo"), &R::cTelNo},
        {QStringLiteral("cYubinNo"), &R::cYubinNo},
        {QStringLiteral("iKinSiten"), &R::iKinSiten},
        {QStringLiteral("iKinSyubetsu"), &R::iKinSyubetsu},
        {QStringLiteral("iKozaKubun"), &R::iKozaKubun},
        {QStringLiteral("iKozaType"), &R::iKozaType},
        {QStringLiteral("iType"), &R::iType},
        {QStringLiteral("nIDNo"), &R::nIDNo},
        {QStringLiteral("nLat"), &R::nLat},
        {QStringLiteral("nLon"), &R::nLon},
        {QStringLiteral("cPcName"), &R::cPcName, W::MachineName},
        {QStringLiteral("tUpDateTime"), &R::tUpDateTime, W::ServerTime},
        {QStringLiteral("cMailDestination"), &R::cMailDestination},
        {QStringLiteral("cMailDestinationZipNo"), &R::cMailDestinationZipNo},
        {QStringLiteral("cPersonalNumberCorp"), &R::cPersonalNumberCorp},
        {QStringLiteral("iKyotenToshiNo"), &R::iKyotenToshiNo},
        {QStringLiteral("cKokuhoTourokuNo"), &R::cKokuhoTourokuNo},
        {QStringLiteral("cEmail"), &R::cEmail},
    };
    return list;
}

const QStringList& cT_CORP::gridColumns()
{
    static const QStringList names = {
        QStringLiteral("cAddress1"),        QStringLiteral("cAddress2"),
        QStringLiteral("cDaihyo"),          QStringLiteral("cFaxNo"),
        QStringLiteral("cShamei1"),         QStringLiteral("cShamei2"),
        QStringLiteral("cTelNo"),           QStringLiteral("cYubinNo"),
        QStringLiteral("iType"),            QStringLiteral("nIDNo"),
        QStringLiteral("cMailDestination"), QStringLiteral("cMailDestinationZipNo"),
        QStringLiteral("cHokenTourokuKubetsu"), QStringLiteral("cPersonalNumberCorp"),
        QStringLiteral("iKyotenToshiNo"),   QStringLiteral("cKokuhoTourokuNo"),
        QStringLiteral("cEmail"),           QStringLiteral("cJigyouReceiptName"),
    };
    return names;
}

QString cT_CORP::sqlDataReadGrid()
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    entity::addSelectList(sql, kTable, columns(), gridColumns());
    entity::addFrom(sql, kTable);
    addLine(sql, QStringLiteral(" where"));
    entity::addSiteKey(sql);
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_CORP::sqlDataRead(const cD_CORP& filter, bool bExclude)
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    entity::addSelectList(sql, kTable, columns(), entity::columnNames(columns()));
    entity::addFrom(sql, kTable);
    entity::Conditions where(sql);
    entity::addIDNoFilter(where, sql, filter.nIDNo, bExclude);
    where.next();
    entity::addSiteKey(sql);
    if (filter.iType > -1) {
        where.next();
        addLine(sql, QStringLiteral("     iType = ") + QString::number(filter.iType));
    }
    entity::addOrderByIDNo(sql);
    return sql;
}

QString cT_CORP::sqlDataReadGrid_Jouken(const cD_CORP& filter)
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    entity::addSelectList(sql, kTable, columns(), gridColumns());
    entity::addFrom(sql, kTable);
    entity::Conditions where(sql);
    where.next();
    entity::addSiteKey(sql);
    if (filter.nIDNo > 0) {
        where.next();
        addLine(sql, QStringLiteral("     CORP.nIDNo = ") + QString::number(filter.nIDNo));
    }
    entity::addLike(where, sql, QStringLiteral("CORP.cShamei1"), filter.cShamei1);
    entity::addLike(where, sql, QStringLiteral("CORP.cShameiKana1"), filter.cShameiKana1);
    entity::addOrderByIDNo(sql);
    return sql;
}

short cT_CORP::iDataReadGrid() { return readRows(sqlDataReadGrid(), gridColumns()); }

short cT_CORP::iDataRead(const cD_CORP& filter)
{
    return readRows(sqlDataRead(filter));
}

short cT_CORP::iDataReadChk(const cD_CORP& filter)
{
    return readRows(sqlDataRead(filter, true));
}

short cT_CORP::iDataReadGrid_Jouken(const cD_CORP& filter)
{
    return readRows(sqlDataReadGrid_Jouken(filter), gridColumns());
}

const QStringList& cT_CORP::writeColumns()
{
    static const QStringList names = QStringLiteral(
        "cAddress1 cAddress2 cAddressKana cDaihyo cDaihyoKana cFaxNo cKinyuName cKinyuSiten cKozaBangou "
        "cKozaKana cKozaMeigi1 cKozaMeigi2 cShamei1 cShamei2 cShameiKana1 cShameiKana2 cTelNo cYubinNo "
        "iKinSiten iKinSyubetsu iKozaKubun iKozaType iType nIDNo nLat nLon cPcName tUpDateTime cKinyuNo "
        "cKinyuSitenNo cJigyousyoNo cJigyousyoNo2 cJigyouReceiptName cMailDestination cMailDestinationZipNo "
        "cHokenTourokuKubetsu cPersonalNumberCorp iKyotenToshiNo cKokuhoTourokuNo cEmail")
                                         .split(u' ');
    return names;
}

const entity::TableSpec<cD_CORP>& cT_CORP::spec()
{
    static const entity::TableSpec<cD_CORP> s{kTable, QStringLiteral("CORPが無効です。"), writeColumns(), {}, nullptr};
    return s;
}

}  // namespace data
