// The connection-string translation on any text: a string chooses a driver or is
// refused with a fault, and an OLE DB string for SQL Server becomes an ODBC string
// that hands the server, database, user and password over unchanged, whatever they
// hold (';', braces, blanks at the edges).

#include "base/vb_error.h"
#include "data/ado/connection_string.h"

#include "fuzz_support.h"

namespace {

// The value of the last attribute named key in an ODBC string, by the ODBC grammar:
// attributes separated by ';', a value in braces runs to its closing brace, "}}"
// standing for one brace.
QString odbcValue(const QString& s, QStringView key)
{
    QString found;
    qsizetype i = 0;
    while (i < s.size()) {
        const qsizetype eq = s.indexOf(u'=', i);
        fuzz::check(eq >= 0, "every ODBC attribute has a value");
        const QString name = s.mid(i, eq - i);
        QString value;
        qsizetype j = eq + 1;
        if (j < s.size() && s[j] == u'{') {
            for (++j;; ++j) {
                fuzz::check(j < s.size(), "a braced ODBC value closes");
                if (s[j] == u'}') {
                    if (j + 1 < s.size() && s[j + 1] == u'}') {
                        value += u'}';
                        ++j;
                        continue;
                    }
                    ++j;
                    break;
                }
                value += s[j];
            }
            fuzz::check(j == s.size() || s[j] == u';', "a braced ODBC value ends its attribute");
        } else {
            const qsizetype semi = s.indexOf(u';', j);
            const qsizetype end = semi < 0 ? s.size() : semi;
            value = s.mid(j, end - j);
            j = end;
        }
        if (name.compare(key, Qt::CaseInsensitive) == 0) found = value;
        i = j + 1;
    }
    return found;
}

QString lastValue(const data::ado::ConnectionStringParts& parts, std::initializer_list<QStringView> keys)
{
    QString found;
    for (const auto& [key, value] : parts.parts())
        for (QStringView k : keys)
            if (key.compare(k, Qt::CaseInsensitive) == 0) found = value;
    return found;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace data::ado;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const QString& driver : {QStringLiteral("FreeTDS"), QStringLiteral("ODBC Driver 18 for SQL Server")}) {
        DriverTarget target;
        try {
            target = chooseDriver(text, QStringLiteral("/opt/seal"), driver);
        } catch (const base::VbError& fault) {
            fuzz::check(fault.number() != 0, "a refusal is a fault with a number");
            continue;
        }
        const ConnectionStringParts parts = ConnectionStringParts::parse(text);
        if (target.kind == DriverTarget::Kind::Sqlite) {
            fuzz::check(!target.sqlitePath.isEmpty(), "SQLite names a file");
            continue;
        }
        if (parts.has(u"Driver") || parts.has(u"DSN")) {
            fuzz::check(target.odbcConnectString == text, "an ODBC string passes as it stands");
            continue;
        }
        const QString& odbc = target.odbcConnectString;
        fuzz::check(odbcValue(odbc, u"UID") == lastValue(parts, {u"User ID", u"UID", u"User"}),
                    "the user passes unchanged");
        fuzz::check(odbcValue(odbc, u"PWD") == lastValue(parts, {u"Password", u"PWD"}),
                    "the password passes unchanged");
        fuzz::check(odbcValue(odbc, u"Database") == lastValue(parts, {u"Initial Catalog", u"Database"}),
                    "the database passes unchanged");
    }
    return 0;
}
