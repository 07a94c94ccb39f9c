#pragma once
// What the master table classes (cT_CORP, cT_CAREMANE, cT_STAFF, cT_SISETSU,
// cT_SHINSEISYO) share: statements built piece by piece, each piece a line ending in
// CR LF; the NULL rules of their fields; their columns (a binding of column to row
// property, data/column_binding.h, with how it is written); and the one way every
// read fills its array.
//
// SQL values go into the text as they stand, with no doubling of a quote: a value
// holding an apostrophe breaks the statement, which then fails (a read runs a single
// SELECT only, so it can never become another statement).

#include "base/vb_error.h"
#include "data/ado/ado_constants.h"
#include "data/ado/faults.h"
#include "data/ado/recordset.h"
#include "data/column_binding.h"
#include "data/ct_adodb.h"
#include "data/riyousha_map.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace data::entity {

// --- statement text ---------------------------------------------------------------

// One piece of a statement followed by CR LF.
void addLine(QString& sql, const QString& piece);

// The office of this installation, as two lines: " iKyotenCd = <cd>" and
// " and iKyotenEb = <eb>".
void addSiteKey(QString& sql);

// " where" before the first condition of a statement and " and" before every later
// one, each on a line of its own.
class Conditions {
public:
    explicit Conditions(QString& sql) : sql_(sql) {}
    void next();
    bool any() const { return any_; }

private:
    QString& sql_;
    bool any_ = false;
};

// "  FROM", "      TABLE".
void addFrom(QString& sql, const QString& table);

// "  order by", "      nIDNo": every read of a master table lists by its number.
void addOrderByIDNo(QString& sql);

// A "     column LIKE '%text%'" condition, only where text is set.
void addLike(Conditions& where, QString& sql, const QString& column, const QString& text);

// The filter's own row ("    nIDNo = n") or, for the duplicate check, every other
// row ("    nIDNo <> n"); no condition when nIDNo is -1 or below.
void addIDNoFilter(Conditions& where, QString& sql, qint32 nIDNo, bool bExclude);

// The highest nIDNo of this office in table, as "MaxIDNo".
QString sqlGetMaxIDNo(const QString& table);

// --- NULL rules of the fields ---------------------------------------------------------

// Text trimmed of blanks; NULL gives empty text. Dates and times come as their text.
QString csNull2Trim(const QVariant& value);
// 32-bit number; NULL gives 0 (a text that is no number faults with 13).
qint32 nNull2Lng(const QVariant& value);
// 16-bit number; NULL gives 0 (6 when out of range).
short iNull2Int(const QVariant& value);
// Money and coordinates; NULL gives 0.
double cuNull2Cur(const QVariant& value);

// --- columns and rows -----------------------------------------------------------------

// How a column's value goes into an insert or update.
enum class WriteAs {
    Value,        // text between quotes, a number as a plain decimal
    DateText,     // a date held as text: between quotes, NULL when empty
    MachineName,  // the machine name of the writer
    ServerTime,   // the server's GetDate()
    Never,        // a value a join gives; not a column of the table
};

template <class Row>
struct Column {
    using Member = data::Member<Row>;

    Column(QString name_, Member member_, WriteAs writeAs_ = WriteAs::Value, QString source_ = {})
            : name(std::move(name_)), member(member_), writeAs(writeAs_), source(std::move(source_))
    {}

    QString name;   // the field of the result, and the table's column
    Member member;  // the row property it fills
    WriteAs writeAs = WriteAs::Value;
    QString source;  // select expression when not "<TABLE>.<name>" (joins)
};

// A column named as the row's member m, in a list where R is the row type.
#define SEAL_COLUMN(m, ...)                                                                                            \
    {                                                                                                                  \
        QStringLiteral(#m), &R::m __VA_OPT__(, ) __VA_ARGS__                                                           \
    }

template <class Row>
const Column<Row>* findColumn(const std::vector<Column<Row>>& columns, const QString& name)
{
    for (const Column<Row>& c : columns)
        if (c.name.compare(name, Qt::CaseInsensitive) == 0) return &c;
    return nullptr;
}

// The select list: one line per column, "      TABLE.name as name" (or the column's
// own source expression), a comma behind every line but the last.
template <class Row>
void addSelectList(QString& sql, const QString& table, const std::vector<Column<Row>>& columns,
                   const QStringList& names)
{
    for (qsizetype i = 0; i < names.size(); ++i) {
        const Column<Row>* c = findColumn(columns, names[i]);
        const QString source = c && !c->source.isEmpty() ? c->source : table + u'.' + names[i];
        QString piece = QStringLiteral("      ") + source + QStringLiteral(" as ") + names[i];
        if (i + 1 < names.size()) piece += u',';
        addLine(sql, piece);
    }
}

// The text of a caught runtime fault: its number, CR LF, its description.
QString faultText(const base::VbError& fault);

// One step of a write: 0, or -1 with the reason in the table's sErrMsg.
using Step = std::function<short()>;

// The array of a table class and the steps every read and write shares.
template <class Row>
class RowTable {
public:
    short iInit(cT_ADODB& db)
    {
        db_ = &db;
        rows_.clear();
        count_ = 0;
        return 0;
    }

    cT_ADODB* db() const { return db_; }
    qint32 count() const { return count_; }
    const QString& sErrMsg() const { return sErrMsg_; }
    void setErrMsg(QString text) { sErrMsg_ = std::move(text); }

    // The row at index (from 0); a fault (9) outside the rows read.
    Row& at(qint32 index)
    {
        if (index < 0 || index >= count_) throw base::VbError::subscriptOutOfRange();
        return rows_[static_cast<size_t>(index)];
    }

    // Runs a select and fills the array from the named fields: on a failed open the
    // database object's text and -1; otherwise the count from 0, one row per record,
    // each property by its NULL rule, and 0.
    short read(const QString& sql, const std::vector<Column<Row>>& columns, const QStringList& names)
    {
        std::unique_ptr<ado::Recordset> rs;
        if (!open(rs, sql)) return -1;
        try {
            RecordBinder<Row> fields(NullRule::EmptyTrimmed);
            for (const QString& name : names) {
                const Column<Row>* column = findColumn(columns, name);
                fields.bind(*rs, name, column ? &column->member : nullptr);
            }
            count_ = 0;
            rows_.clear();
            rows_.reserve(static_cast<size_t>(rs->RecordCount()));
            while (!rs->Eof()) {
                fields.fill(rows_.emplace_back());
                ++count_;
                rs->MoveNext();
            }
        } catch (const base::VbError& fault) {
            sErrMsg_ = faultText(fault);
            db_->iCloseRecSet(rs);
            return -1;
        }
        db_->iCloseRecSet(rs);
        return 0;
    }

    // Runs a select of one number (its first field) into value, NULL giving 0.
    short readNumber(const QString& sql, qint32& value)
    {
        std::unique_ptr<ado::Recordset> rs;
        if (!open(rs, sql)) return -1;
        try {
            value = rs->Eof() ? 0 : nNull2Lng(rs->Fields(0).Value());
        } catch (const base::VbError& fault) {
            sErrMsg_ = faultText(fault);
            db_->iCloseRecSet(rs);
            return -1;
        }
        db_->iCloseRecSet(rs);
        return 0;
    }

    // A statement step of a write: 0, or -1 with the database object's text.
    Step statement(QString sql)
    {
        return [this, sql = std::move(sql)] {
            if (db_->iExecSQL(sql) != 0) {
                sErrMsg_ = db_->sErrMsg();
                return short(-1);
            }
            return short(0);
        };
    }

    // Runs the steps of one write in order. With bTrans they run in a transaction of
    // their own: a failed step or commit rolls it back. Without it the caller owns the
    // transaction and decides.
    short run(bool bTrans, const std::vector<Step>& steps)
    {
        if (!db_) {
            sErrMsg_ = faultText(ado::fault::objectNotSet());
            return -1;
        }
        if (bTrans && db_->iBeginTrans() != 0) {
            sErrMsg_ = db_->sErrMsg();
            return -1;
        }
        for (const Step& step : steps) {
            if (step() != 0) {
                if (bTrans) db_->iRollback();
                return -1;
            }
        }
        if (bTrans && db_->iCommitTrans() != 0) {
            sErrMsg_ = db_->sErrMsg();
            db_->iRollback();
            return -1;
        }
        return 0;
    }

private:
    bool open(std::unique_ptr<ado::Recordset>& rs, const QString& sql)
    {
        if (!db_) {
            sErrMsg_ = faultText(ado::fault::objectNotSet());
            return false;
        }
        rs = std::make_unique<ado::Recordset>();
        rs->setCursorLocation(ado::adUseClient);
        if (db_->iOpenRecSet(rs, sql, ado::adOpenForwardOnly, ado::adLockReadOnly, ado::adCmdText) != 0) {
            sErrMsg_ = db_->sErrMsg();
            return false;
        }
        return true;
    }

    cT_ADODB* db_ = nullptr;
    std::vector<Row> rows_;
    qint32 count_ = 0;
    QString sErrMsg_;
};

// The machine name as GetComputerNameA gives it into a buffer of 250 characters, cut
// at its first character of code 0: 0, or -1 when the name does not fit.
short iGetComputerName(QString& csName);

// Names of a column list, in its order.
template <class Row>
QStringList columnNames(const std::vector<Column<Row>>& columns, bool withJoined = true)
{
    QStringList names;
    names.reserve(static_cast<qsizetype>(columns.size()));
    for (const Column<Row>& c : columns)
        if (withJoined || c.writeAs != WriteAs::Never) names << c.name;
    return names;
}

// --- writes ---------------------------------------------------------------------------

// A double as a plain decimal, as the runtime writes it.
QString numberText(double value);

// "'" + text + "'": a value as it stands, with no doubling of a quote.
QString quoted(const QString& text);

// The office's two numbers as decimals.
QString siteKeyCd();
QString siteKeyEb();

// A value as it goes into a write: text between single quotes as it stands (no
// doubling of a quote), a number as a plain decimal, a date text or NULL, the writer's
// machine name, or the server's "GetDate()".
template <class Row>
QString valueText(const Row& row, const Column<Row>& column, const QString& csMachine)
{
    switch (column.writeAs) {
    case WriteAs::MachineName:
        return quoted(csMachine);
    case WriteAs::ServerTime:
        return QStringLiteral("GetDate()");
    default:
        break;
    }
    return std::visit(
        [&](auto member) -> QString {
            using T = std::remove_cvref_t<decltype(row.*member)>;
            const T& v = row.*member;
            if constexpr (std::is_same_v<T, QString>) {
                if (column.writeAs == WriteAs::DateText && v.isEmpty()) return QStringLiteral("NULL");
                return quoted(v);
            } else if constexpr (std::is_same_v<T, double>) {
                return numberText(v);
            } else if constexpr (std::is_same_v<T, std::optional<QDate>>) {
                return v ? quoted(v->toString(QStringLiteral("yyyy/MM/dd"))) : QStringLiteral("NULL");
            } else {
                return QString::number(v);
            }
        },
        column.member);
}

// " insert into ", "   TABLE (", the office's two columns and then the row's in the
// given order, " )values( ", the values in the same order, " )".
template <class Row>
QString sqlInsert(const QString& table, const std::vector<Column<Row>>& columns, const QStringList& order,
                  const Row& row, const QString& csMachine)
{
    QString sql;
    addLine(sql, QStringLiteral(" insert into "));
    addLine(sql, QStringLiteral("   ") + table + QStringLiteral(" ("));
    addLine(sql, QStringLiteral("     iKyotenCd,"));
    addLine(sql, QStringLiteral("     iKyotenEb,"));
    for (qsizetype i = 0; i < order.size(); ++i)
        addLine(sql, QStringLiteral("     ") + order[i] + (i + 1 < order.size() ? QStringLiteral(",") : QString()));
    addLine(sql, QStringLiteral(" )values( "));
    addLine(sql, QStringLiteral("     ") + siteKeyCd() + QStringLiteral(","));
    addLine(sql, QStringLiteral("     ") + siteKeyEb() + QStringLiteral(","));
    for (qsizetype i = 0; i < order.size(); ++i) {
        const Column<Row>* c = findColumn(columns, order[i]);
        addLine(sql, QStringLiteral("     ") + valueText(row, *c, csMachine) +
                         (i + 1 < order.size() ? QStringLiteral(",") : QString()));
    }
    addLine(sql, QStringLiteral(" )"));
    return sql;
}

// " update ", "     TABLE", " set ", one line per column, then the row's key in this
// office: " where", "    nIDNo = ", " and iKyotenCd = ", " and iKyotenEb = ".
template <class Row>
QString sqlUpdate(const QString& table, const std::vector<Column<Row>>& columns, const QStringList& order,
                  const Row& row, qint32 nIDNo, const QString& csMachine)
{
    QString sql;
    addLine(sql, QStringLiteral(" update "));
    addLine(sql, QStringLiteral("     ") + table);
    addLine(sql, QStringLiteral(" set "));
    for (qsizetype i = 0; i < order.size(); ++i) {
        const Column<Row>* c = findColumn(columns, order[i]);
        addLine(sql, QStringLiteral("     ") + order[i] + QStringLiteral(" = ") + valueText(row, *c, csMachine) +
                         (i + 1 < order.size() ? QStringLiteral(",") : QString()));
    }
    addLine(sql, QStringLiteral(" where"));
    addLine(sql, QStringLiteral("    nIDNo = ") + QString::number(nIDNo));
    addLine(sql, QStringLiteral(" and iKyotenCd = ") + siteKeyCd());
    addLine(sql, QStringLiteral(" and iKyotenEb = ") + siteKeyEb());
    return sql;
}

// Cascade: a write that follows a change of a row into other tables; no machine name.
enum class WriteKind { Insert, Update, Delete, Cascade };

// The steps every write of one row shares: an absent row fails with absentText; an
// insert or update first takes the machine name ("コンピューター名の取得に失敗しました。"
// when it cannot); then the statement that build makes, and the steps that after adds,
// run as one write (RowTable::run).
template <class Row>
short writeRow(RowTable<Row>& table, WriteKind kind, const Row* row, bool bTrans, const QString& absentText,
               const std::function<QString(const Row&, const QString&)>& build,
               const std::function<std::vector<Step>(const Row&)>& after = {})
{
    if (!row) {
        table.setErrMsg(absentText);
        return -1;
    }
    QString csMachine;
    const bool stamped = kind == WriteKind::Insert || kind == WriteKind::Update;
    if (stamped && iGetComputerName(csMachine) != 0) {
        table.setErrMsg(QStringLiteral("コンピューター名の取得に失敗しました。"));
        return -1;
    }
    std::vector<Step> steps{table.statement(build(*row, csMachine))};
    if (after)
        for (Step& step : after(*row)) steps.push_back(std::move(step));
    return table.run(bTrans, steps);
}

// The map entry of an inserted or updated row, where the suite's switch is on.
template <class Row>
std::vector<Step> mapEntrySteps(RowTable<Row>& table, qint32 nIDNo, double nLat, double nLon)
{
    if (!bChizuOn()) return {};
    return {[&table, nIDNo, nLat, nLon] {
        QString text;
        if (iChizuLoad(nIDNo, nLat, nLon, text) != 0) {
            table.setErrMsg(text);
            return short(-1);
        }
        return short(0);
    }};
}

// " delete from ", "     TABLE", " where", "    nIDNo = ", "    and iKyotenCd = ",
// "    and iKyotenEb = ".
QString sqlDelete(const QString& table, qint32 nIDNo);

// The row of a delete log: STAFF_DELETE_LOG or SISETSU_DELETE_LOG.
QString sqlDeleteLog(const QString& logTable, qint32 nIDNo, const QString& cName, const QString& csLoginId);

// Stamps the server's time on this office's patients whose RIYOUSHA_SUB row meets
// condition (a text on RIYOUSHA_SUB and the tables of extraFrom, ", CAREMANE").
QString sqlStampPatients(const QString& condition, const QString& extraFrom = {});

// The patients' update of "UPDATE RIYOUSHA SET ... FROM RIYOUSHA_SUB" form: sets
// (each a "column = value" text, with the time stamp last), joined to RIYOUSHA_SUB by
// the key, where condition holds.
QString sqlUpdatePatients(const QStringList& sets, const QString& condition, const QString& extraFrom = {});

// The login id of "loginuser.cid" in the program's folder: the rest of the first line
// that begins "[LoginId]="; empty when no line does or the file is missing.
QString csGetLoginId();

// An insert or update that, where the suite's switch is on, also keeps the row's map
// entry in the same write.
template <class Row>
short writeMappedRow(RowTable<Row>& table, WriteKind kind, const Row* row, bool bTrans, const QString& absentText,
                     QString (*build)(const Row&, const QString&))
{
    return writeRow<Row>(table, kind, row, bTrans, absentText, build,
                         [&table](const Row& r) { return mapEntrySteps(table, r.nIDNo, r.nLat, r.nLon); });
}

// A delete of one row by build; with a logTable, the row's number and its name
// (the logName property) go into that log in the same write, with the login id.
template <class Row>
short deleteRow(RowTable<Row>& table, const Row* row, bool bTrans, const QString& absentText,
                QString (*build)(const Row&), const QString& logTable = {}, QString Row::*logName = nullptr)
{
    std::function<std::vector<Step>(const Row&)> after;
    if (!logTable.isEmpty())
        after = [&table, &logTable, logName](const Row& r) {
            return std::vector<Step>{table.statement(sqlDeleteLog(logTable, r.nIDNo, r.*logName, csGetLoginId()))};
        };
    return writeRow<Row>(
        table, WriteKind::Delete, row, bTrans, absentText, [build](const Row& r, const QString&) { return build(r); },
        after);
}

// What sets one master table class apart from the others besides its columns.
template <class Row>
struct TableSpec {
    TableSpec(QString table_, QString absentText_, QStringList writeColumns_)
            : table(std::move(table_)), absentText(std::move(absentText_)), writeColumns(std::move(writeColumns_))
    {}
    // A delete also writes the row's number and name into log.
    TableSpec& deletesInto(QString log, QString Row::*name)
    {
        deleteLog = std::move(log);
        logName = name;
        return *this;
    }
    // iDataRead and iDataReadChk read readNames, iDataReadGrid_Jouken searchNames.
    TableSpec& reading(QStringList readNames, QStringList searchNames)
    {
        readColumns = std::move(readNames);
        searchColumns = std::move(searchNames);
        return *this;
    }

    QString table;                    // the table as the statements write it
    QString absentText;               // the failure of a write given no row
    QStringList writeColumns;         // the columns an insert and an update write, in order
    QString deleteLog;                // the log a delete also writes the row into, if any
    QString Row::*logName = nullptr;  // the row's name in that log
    QStringList readColumns;          // empty: every column
    QStringList searchColumns;        // empty: every column
};

// The members every master table class shows alike, over the array it reads into.
// Table gives its columns (Table::columns()) and the rest that sets it apart
// (Table::tableSpec()); a row with map coordinates (nLat, nLon) keeps its map entry on an
// insert or update, where the suite's switch is on.
template <class Table, class Row>
class TableClass {
public:
    const QString& sErrMsg() const { return table_.sErrMsg(); }
    qint32 nデータ数() const { return table_.count(); }

    short iGetComputerName(QString& csName) { return entity::iGetComputerName(csName); }
    // Keeps the connected database object and empties the array.
    short iInit(cT_ADODB& db) { return table_.iInit(db); }

    // The highest nIDNo of this office, 0 when it has none.
    short iGetMaxIDNo(qint32& nMaxID) { return table_.readNumber(sqlGetMaxIDNo(), nMaxID); }

    // The rows of Table::sqlDataRead, of Table::sqlDataRead excluding the filter's own
    // row (the duplicate check), and of Table::sqlDataReadGrid_Jouken.
    short iDataRead(const Row& filter)
    {
        return readRows(Table::sqlDataRead(filter), orAll(Table::tableSpec().readColumns));
    }
    short iDataReadChk(const Row& filter)
    {
        return readRows(Table::sqlDataRead(filter, true), orAll(Table::tableSpec().readColumns));
    }
    short iDataReadGrid_Jouken(const Row& filter)
    {
        return readRows(Table::sqlDataReadGrid_Jouken(filter), orAll(Table::tableSpec().searchColumns));
    }

    // Write one row of this office: in a transaction of its own when bTrans, else in
    // the caller's. An absent row fails with the class's own text.
    short iDataInsert(const Row* row, bool bTrans) { return write(WriteKind::Insert, row, bTrans, &sqlDataInsert); }
    short iDataUpdate(const Row* row, bool bTrans) { return write(WriteKind::Update, row, bTrans, &sqlDataUpdate); }
    short iData削除(const Row* row, bool bTrans)
    {
        const TableSpec<Row>& s = Table::tableSpec();
        return deleteRow(table_, row, bTrans, s.absentText, &sqlData削除, s.deleteLog, s.logName);
    }

    static QString sqlGetMaxIDNo() { return entity::sqlGetMaxIDNo(Table::tableSpec().table); }
    static QString sqlDataInsert(const Row& row, const QString& csMachine)
    {
        return sqlInsert(Table::tableSpec().table, Table::columns(), Table::tableSpec().writeColumns, row, csMachine);
    }
    static QString sqlDataUpdate(const Row& row, const QString& csMachine)
    {
        return sqlUpdate(Table::tableSpec().table, Table::columns(), Table::tableSpec().writeColumns, row, row.nIDNo,
                         csMachine);
    }
    static QString sqlData削除(const Row& row) { return sqlDelete(Table::tableSpec().table, row.nIDNo); }

protected:
    // Every column, in the order of the class's list.
    static const QStringList& allColumns()
    {
        static const QStringList names = columnNames(Table::columns());
        return names;
    }
    // "  select" and the select list of names (every column when none are given).
    static QString selectList(const QStringList& names = allColumns())
    {
        QString sql;
        addLine(sql, QStringLiteral("  select"));
        addSelectList(sql, Table::tableSpec().table, Table::columns(), names);
        return sql;
    }
    // The same followed by "  FROM" and the table.
    static QString selectFrom(const QStringList& names = allColumns())
    {
        QString sql = selectList(names);
        addFrom(sql, Table::tableSpec().table);
        return sql;
    }

    // Fills the array from sql's rows, the fields of names (every column when none
    // are given).
    short readRows(const QString& sql, const QStringList& names = allColumns())
    {
        return table_.read(sql, Table::columns(), names);
    }

    // The statements that carry a change of the row into other tables, as one write;
    // an absent row fails with absentText.
    short cascade(const Row* row, bool bTrans, const QString& absentText, QStringList (*statements)(const Row&))
    {
        if (!row) {
            table_.setErrMsg(absentText);
            return -1;
        }
        std::vector<Step> steps;
        for (const QString& sql : statements(*row)) steps.push_back(table_.statement(sql));
        return table_.run(bTrans, steps);
    }

    RowTable<Row> table_;

private:
    static const QStringList& orAll(const QStringList& names) { return names.isEmpty() ? allColumns() : names; }

    short write(WriteKind kind, const Row* row, bool bTrans, QString (*build)(const Row&, const QString&))
    {
        const QString& absent = Table::tableSpec().absentText;
        if constexpr (requires(const Row& r) {
                          r.nLat;
                          r.nLon;
                      })
            return writeMappedRow(table_, kind, row, bTrans, absent, build);
        else
            return writeRow<Row>(table_, kind, row, bTrans, absent, build);
    }
};

}  // namespace data::entity
