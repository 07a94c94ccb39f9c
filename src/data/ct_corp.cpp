#include "data/ct_corp.h"

namespace data {

using entity::addLine;
using entity::Column;

namespace {

const QString kTable = QStringLiteral("CORP");

QString pick(int value, std::initializer_list<const char16_t*> texts, int first)
{
    const int i = value - first;
    if (i < 0 || i >= static_cast<int>(texts.size())) return {};
    return QString::fromUtf16(texts.begin()[i]);
}

}  // namespace

QString cD_CORP::sType() const
{
    switch (iType) {
    case 0:
        return QStringLiteral("本社（往療基点）");
    case 1:
    case 2:
        return QStringLiteral("受領代理人");
    case 3:
        return QStringLiteral("団体請求");
    default:
        return {};
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
        SEAL_COLUMN(cHokenTourokuKubetsu),
        SEAL_COLUMN(cJigyousyoNo2),
        SEAL_COLUMN(cJigyouReceiptName),
        SEAL_COLUMN(cKinyuNo),
        SEAL_COLUMN(cKinyuSitenNo),
        SEAL_COLUMN(cJigyousyoNo),
        SEAL_COLUMN(cAddress1),
        SEAL_COLUMN(cAddress2),
        SEAL_COLUMN(cAddressKana),
        SEAL_COLUMN(cDaihyo),
        SEAL_COLUMN(cDaihyoKana),
        SEAL_COLUMN(cFaxNo),
        SEAL_COLUMN(cKinyuName),
        SEAL_COLUMN(cKinyuSiten),
        SEAL_COLUMN(cKozaBangou),
        SEAL_COLUMN(cKozaKana),
        SEAL_COLUMN(cKozaMeigi1),
        SEAL_COLUMN(cKozaMeigi2),
        SEAL_COLUMN(cShamei1),
        SEAL_COLUMN(cShamei2),
        SEAL_COLUMN(cShameiKana1),
        SEAL_COLUMN(cShameiKana2),
        SEAL_COLUMN(cTelNo),
        SEAL_COLUMN(cYubinNo),
        SEAL_COLUMN(iKinSiten),
        SEAL_COLUMN(iKinSyubetsu),
        SEAL_COLUMN(iKozaKubun),
        SEAL_COLUMN(iKozaType),
        SEAL_COLUMN(iType),
        SEAL_COLUMN(nIDNo),
        SEAL_COLUMN(nLat),
        SEAL_COLUMN(nLon),
        SEAL_COLUMN(cPcName, W::MachineName),
        SEAL_COLUMN(tUpDateTime, W::ServerTime),
        SEAL_COLUMN(cMailDestination),
        SEAL_COLUMN(cMailDestinationZipNo),
        SEAL_COLUMN(cPersonalNumberCorp),
        SEAL_COLUMN(iKyotenToshiNo),
        SEAL_COLUMN(cKokuhoTourokuNo),
        SEAL_COLUMN(cEmail),
    };
    return list;
}

const QStringList& cT_CORP::gridColumns()
{
    static const QStringList names = {
        QStringLiteral("cAddress1"),
        QStringLiteral("cAddress2"),
        QStringLiteral("cDaihyo"),
        QStringLiteral("cFaxNo"),
        QStringLiteral("cShamei1"),
        QStringLiteral("cShamei2"),
        QStringLiteral("cTelNo"),
        QStringLiteral("cYubinNo"),
        QStringLiteral("iType"),
        QStringLiteral("nIDNo"),
        QStringLiteral("cMailDestination"),
        QStringLiteral("cMailDestinationZipNo"),
        QStringLiteral("cHokenTourokuKubetsu"),
        QStringLiteral("cPersonalNumberCorp"),
        QStringLiteral("iKyotenToshiNo"),
        QStringLiteral("cKokuhoTourokuNo"),
        QStringLiteral("cEmail"),
        QStringLiteral("cJigyouReceiptName"),
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

const QStringList& cT_CORP::writeColumns()
{
    static const QStringList names =
        QStringLiteral(
            "cAddress1 cAddress2 cAddressKana cDaihyo cDaihyoKana cFaxNo cKinyuName cKinyuSiten cKozaBangou "
            "cKozaKana cKozaMeigi1 cKozaMeigi2 cShamei1 cShamei2 cShameiKana1 cShameiKana2 cTelNo cYubinNo "
            "iKinSiten iKinSyubetsu iKozaKubun iKozaType iType nIDNo nLat nLon cPcName tUpDateTime cKinyuNo "
            "cKinyuSitenNo cJigyousyoNo cJigyousyoNo2 cJigyouReceiptName cMailDestination cMailDestinationZipNo "
            "cHokenTourokuKubetsu cPersonalNumberCorp iKyotenToshiNo cKokuhoTourokuNo cEmail")
            .split(u' ');
    return names;
}

const entity::TableSpec<cD_CORP>& cT_CORP::tableSpec()
{
    static const auto s = entity::TableSpec<cD_CORP>(kTable, QStringLiteral("CORPが無効です。"), writeColumns())
                              .reading({}, gridColumns());
    return s;
}

}  // namespace data
