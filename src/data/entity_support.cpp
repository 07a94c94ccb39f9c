#include "data/entity_support.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "base/text_codec.h"
#include "base/text_file.h"
#include "controls/platform.h"

namespace data::entity {

void addLine(QString& sql, const QString& piece)
{
    sql += piece;
    sql += QStringLiteral("\r\n");
}

void addSiteKey(QString& sql)
{
    addLine(sql, QStringLiteral(" iKyotenCd = ") + QString::number(app::iKyotenCd));
    addLine(sql, QStringLiteral(" and iKyotenEb = ") + QString::number(app::iKyotenEb));
}

void Conditions::next()
{
    addLine(sql_, any_ ? QStringLiteral(" and") : QStringLiteral(" where"));
    any_ = true;
}

void addFrom(QString& sql, const QString& table)
{
    addLine(sql, QStringLiteral("  FROM"));
    addLine(sql, QStringLiteral("      ") + table);
}

void addOrderByIDNo(QString& sql)
{
    addLine(sql, QStringLiteral("  order by"));
    addLine(sql, QStringLiteral("      nIDNo"));
}

void addLike(Conditions& where, QString& sql, const QString& column, const QString& text)
{
    if (text.isEmpty()) return;
    where.next();
    addLine(sql, QStringLiteral("     ") + column + QStringLiteral(" LIKE '%") + text + QStringLiteral("%'"));
}

void addIDNoFilter(Conditions& where, QString& sql, qint32 nIDNo, bool bExclude)
{
    if (nIDNo <= -1) return;
    where.next();
    addLine(sql,
            (bExclude ? QStringLiteral("    nIDNo <> ") : QStringLiteral("    nIDNo = ")) + QString::number(nIDNo));
}

QString sqlGetMaxIDNo(const QString& table)
{
    QString sql;
    addLine(sql, QStringLiteral("  select"));
    addLine(sql, QStringLiteral("      max(nIDNo) as MaxIDNo"));
    addFrom(sql, table);
    addLine(sql, QStringLiteral(" where"));
    addSiteKey(sql);
    return sql;
}

QString csNull2Trim(const QVariant& value) { return base::IsNull(value) ? QString() : base::Trim(base::CStr(value)); }

qint32 nNull2Lng(const QVariant& value) { return base::nNull2Long(value); }

short iNull2Int(const QVariant& value)
{
    if (base::IsNull(value)) return 0;
    const qint32 n = base::nNull2Long(value);
    if (n < -32768 || n > 32767) throw base::VbError::overflow();
    return static_cast<short>(n);
}

double cuNull2Cur(const QVariant& value)
{
    if (base::IsNull(value)) return 0.0;
    if (value.typeId() == QMetaType::QString) return base::CDbl(value.toString());
    bool ok = false;
    const double d = value.toDouble(&ok);
    if (!ok) throw base::VbError::typeMismatch();
    return d;
}

QString faultText(const base::VbError& fault)
{
    return QString::number(fault.number()) + QStringLiteral("\r\n") + fault.description();
}

short iGetComputerName(QString& csName)
{
    constexpr qsizetype kBuffer = 250;
    const QString name = app::platform().machineName();
    // The call fails when the name and its terminating zero do not fit the buffer.
    if (base::toCp932(name).size() + 1 > kBuffer) return -1;
    const qsizetype nul = name.indexOf(QChar(u'\0'));
    csName = nul < 0 ? name : name.left(nul);
    return 0;
}

}  // namespace data::entity

namespace data::entity {

QString numberText(double value) { return base::CStr(value); }

QString siteKeyCd() { return QString::number(app::iKyotenCd); }

QString siteKeyEb() { return QString::number(app::iKyotenEb); }

QString sqlDelete(const QString& table, qint32 nIDNo)
{
    QString sql;
    addLine(sql, QStringLiteral(" delete from "));
    addLine(sql, QStringLiteral("     ") + table);
    addLine(sql, QStringLiteral(" where"));
    addLine(sql, QStringLiteral("    nIDNo = ") + QString::number(nIDNo));
    addLine(sql, QStringLiteral("    and iKyotenCd = ") + siteKeyCd());
    addLine(sql, QStringLiteral("    and iKyotenEb = ") + siteKeyEb());
    return sql;
}

QString sqlDeleteLog(const QString& logTable, qint32 nIDNo, const QString& cName, const QString& csLoginId)
{
    QString sql;
    addLine(sql, QStringLiteral(" insert into ") + logTable + QStringLiteral(" ("));
    addLine(sql, QStringLiteral("     iKyotenCd, iKyotenEb, nIDNo, cName, deleteLoginID, deleteDate"));
    addLine(sql, QStringLiteral(" )values( "));
    addLine(sql, QStringLiteral("     ") + siteKeyCd() + QStringLiteral(", ") + siteKeyEb() + QStringLiteral(", ") +
                     QString::number(nIDNo) + QStringLiteral(", '") + cName + QStringLiteral("', '") + csLoginId +
                     QStringLiteral("', GETDATE()"));
    addLine(sql, QStringLiteral(" )"));
    return sql;
}

QString csGetLoginId()
{
    const QString prefix = QStringLiteral("[LoginId]=");
    const base::TextFileRead file = base::readTextFile(app::gsAppPath + QStringLiteral("\\loginuser.cid"));
    if (!file.ok) return {};
    for (const QString& line : file.lines)
        if (line.startsWith(prefix)) return line.mid(prefix.size());
    return {};
}

}  // namespace data::entity

namespace data::entity {

QString quoted(const QString& text) { return QChar(u'\'') + text + QChar(u'\''); }

QString sqlUpdatePatients(const QStringList& sets, const QString& condition, const QString& extraFrom)
{
    QString sql;
    addLine(sql, QStringLiteral(" UPDATE RIYOUSHA"));
    for (qsizetype i = 0; i < sets.size(); ++i)
        addLine(sql, (i == 0 ? QStringLiteral(" SET ") : QStringLiteral("     ")) + sets[i] +
                         (i + 1 < sets.size() ? QStringLiteral(",") : QString()));
    addLine(sql, QStringLiteral(" FROM RIYOUSHA_SUB") + extraFrom);
    addLine(sql, QStringLiteral(" WHERE RIYOUSHA_SUB.iKyotenCd = RIYOUSHA.iKyotenCd"));
    addLine(sql, QStringLiteral(" AND RIYOUSHA_SUB.iKyotenEb = RIYOUSHA.iKyotenEb"));
    addLine(sql, QStringLiteral(" AND RIYOUSHA_SUB.nIDNo = RIYOUSHA.nIDNo"));
    addLine(sql, QStringLiteral(" AND ") + condition);
    addLine(sql, QStringLiteral(" AND RIYOUSHA.iKyotenCd = ") + siteKeyCd());
    addLine(sql, QStringLiteral(" AND RIYOUSHA.iKyotenEb = ") + siteKeyEb());
    return sql;
}

QString sqlStampPatients(const QString& condition, const QString& extraFrom)
{
    return sqlUpdatePatients({QStringLiteral("tUpdateTime = getdate()")}, condition, extraFrom);
}

}  // namespace data::entity
