#include "data/ado/connection_string.h"

#include "base/text_codec.h"
#include "data/ado/faults.h"

#include <QDir>

namespace data::ado {

namespace {

bool keyIs(const QString& key, std::initializer_list<QStringView> names)
{
    for (QStringView name : names) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

// An ODBC value that holds a separator, a brace or edge blanks goes in braces.
QString odbcValue(const QString& value)
{
    const bool plain =
        !value.contains(u';') && !value.contains(u'{') && !value.contains(u'}') && value.trimmed() == value;
    if (plain) return value;
    QString escaped = value;
    escaped.replace(QStringLiteral("}"), QStringLiteral("}}"));
    return QChar(u'{') + escaped + QChar(u'}');
}

bool isSqlServerProvider(const QString& provider)
{
    return provider.startsWith(u"SQLOLEDB", Qt::CaseInsensitive) ||
           provider.startsWith(u"SQLNCLI", Qt::CaseInsensitive) ||
           provider.startsWith(u"MSOLEDBSQL", Qt::CaseInsensitive);
}

bool isAbsolute(const QString& path)
{
    // A drive letter or a UNC path of the original's settings is absolute everywhere.
    if (path.size() >= 2 && path[1] == u':') return true;
    if (path.startsWith(u"\\\\")) return true;
    return QDir::isAbsolutePath(base::nativePath(path));
}

}  // namespace

ConnectionStringParts ConnectionStringParts::parse(const QString& text)
{
    ConnectionStringParts result;
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        const qsizetype eq = text.indexOf(u'=', i);
        const qsizetype semi = text.indexOf(u';', i);
        if (semi >= 0 && (eq < 0 || semi < eq)) {
            if (!text.mid(i, semi - i).trimmed().isEmpty()) throw fault::badArguments();
            i = semi + 1;
            continue;
        }
        if (eq < 0) {
            if (!text.mid(i).trimmed().isEmpty()) throw fault::badArguments();
            break;
        }
        const QString key = text.mid(i, eq - i).trimmed();
        if (key.isEmpty()) throw fault::badArguments();
        qsizetype j = eq + 1;
        while (j < n && text[j] == u' ') ++j;
        QString value;
        if (j < n && (text[j] == u'"' || text[j] == u'\'' || text[j] == u'{')) {
            const QChar close = text[j] == u'{' ? QChar(u'}') : text[j];
            qsizetype k = j + 1;
            bool closed = false;
            while (k < n) {
                if (text[k] == close) {
                    if (k + 1 < n && text[k + 1] == close) {
                        value += close;
                        k += 2;
                        continue;
                    }
                    closed = true;
                    ++k;
                    break;
                }
                value += text[k++];
            }
            if (!closed) throw fault::badArguments();
            while (k < n && text[k] == u' ') ++k;
            if (k < n && text[k] != u';') throw fault::badArguments();
            i = k + 1;
        } else {
            const qsizetype end = semi < 0 ? n : semi;
            value = text.mid(j, end - j).trimmed();
            i = end + 1;
        }
        result.parts_.append({key, value});
    }
    return result;
}

bool ConnectionStringParts::has(QStringView key) const
{
    for (const auto& part : parts_) {
        if (part.first.compare(key, Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

QString ConnectionStringParts::value(QStringView key) const
{
    QString found;
    for (const auto& part : parts_) {
        if (part.first.compare(key, Qt::CaseInsensitive) == 0) found = part.second;
    }
    return found;
}

QString defaultOdbcDriverName()
{
    const QString fromEnv = qEnvironmentVariable("SEAL_ODBC_DRIVER").trimmed();
    if (!fromEnv.isEmpty()) return fromEnv;
#ifdef Q_OS_WIN
    return QStringLiteral("SQL Server");
#else
    return QStringLiteral("FreeTDS");
#endif
}

QString oledbToOdbc(const ConnectionStringParts& oledb, const QString& odbcDriverName)
{
    const bool freeTds = odbcDriverName.contains(u"freetds", Qt::CaseInsensitive) ||
                         odbcDriverName.contains(u"tdsodbc", Qt::CaseInsensitive);
    QStringList out;
    out << QStringLiteral("Driver=") +
               (odbcDriverName.contains(u'/') ? odbcDriverName : QChar(u'{') + odbcDriverName + QChar(u'}'));
    for (const auto& [key, value] : oledb.parts()) {
        if (keyIs(key, {u"Data Source", u"Server", u"Address", u"Addr", u"Network Address"})) {
            QString server = value;
            QString port;
            if (freeTds) {
                // FreeTDS knows neither the shorthand for this machine nor HOST,PORT;
                // it does take HOST\INSTANCE and finds the instance's port itself.
                if (server.startsWith(u"tcp:", Qt::CaseInsensitive)) server = server.mid(4);
                const qsizetype comma = server.indexOf(u',');
                if (comma >= 0) {
                    port = server.mid(comma + 1).trimmed();
                    server = server.left(comma).trimmed();
                }
                const QString host = server.section(u'\\', 0, 0);
                if (host == u"." || host.compare(u"(local)", Qt::CaseInsensitive) == 0)
                    server = QStringLiteral("localhost") + server.mid(host.size());
            }
            out << QStringLiteral("Server=") + odbcValue(server);
            if (!port.isEmpty()) out << QStringLiteral("Port=") + odbcValue(port);
        } else if (keyIs(key, {u"Initial Catalog", u"Database"})) {
            out << QStringLiteral("Database=") + odbcValue(value);
        } else if (keyIs(key, {u"User ID", u"UID", u"User"})) {
            out << QStringLiteral("UID=") + odbcValue(value);
        } else if (keyIs(key, {u"Password", u"PWD"})) {
            out << QStringLiteral("PWD=") + odbcValue(value);
        } else if (keyIs(key, {u"Integrated Security", u"Trusted_Connection"})) {
            if (keyIs(value, {u"SSPI", u"true", u"yes"})) out << QStringLiteral("Trusted_Connection=yes");
        } else if (keyIs(key, {u"Application Name"})) {
            out << QStringLiteral("APP=") + odbcValue(value);
        } else if (keyIs(key, {u"Workstation ID"})) {
            out << QStringLiteral("WSID=") + odbcValue(value);
        }
        // Provider, Persist Security Info, timeouts and the like mean nothing to ODBC.
    }
    return out.join(u';');
}

DriverTarget chooseDriver(const QString& connectionString, const QString& appPath, const QString& odbcDriverName)
{
    const ConnectionStringParts parts = ConnectionStringParts::parse(connectionString);
    DriverTarget target;
    if (parts.has(u"Driver") || parts.has(u"DSN")) {
        target.kind = DriverTarget::Kind::Odbc;
        target.odbcConnectString = connectionString;
        return target;
    }
    const QString provider = parts.value(u"Provider");
    if (provider.compare(u"SQLite", Qt::CaseInsensitive) == 0) {
        QString path = parts.value(u"Data Source");
        if (path.isEmpty()) throw fault::badArguments();
        if (!isAbsolute(path)) path = appPath + QChar(u'\\') + path;
        target.kind = DriverTarget::Kind::Sqlite;
        target.sqlitePath = base::nativePath(path);
        return target;
    }
    if (isSqlServerProvider(provider)) {
        target.kind = DriverTarget::Kind::Odbc;
        target.odbcConnectString = oledbToOdbc(parts, odbcDriverName);
        return target;
    }
    throw fault::providerNotFound();
}

}  // namespace data::ado
