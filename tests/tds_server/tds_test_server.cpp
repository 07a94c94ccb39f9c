#include "tds_test_server.h"

#include "base/text_codec.h"
#include "data/ado/japanese_collation.h"
#include "data/ado/sqlite_dialect.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

#include <sqlite3.h>

#include <cstring>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace tdstest {

namespace {

// Packet types.
constexpr quint8 kSqlBatch = 0x01;
constexpr quint8 kReply = 0x04;
constexpr quint8 kAttention = 0x06;
constexpr quint8 kTransactionManager = 0x0E;
constexpr quint8 kLogin7 = 0x10;
constexpr quint8 kPrelogin = 0x12;
constexpr int kHeader = 8;
constexpr int kLargestPacket = 32767;

// Tokens.
constexpr quint8 kColMetadata = 0x81;
constexpr quint8 kError = 0xAA;
constexpr quint8 kInfo = 0xAB;
constexpr quint8 kLoginAck = 0xAD;
constexpr quint8 kRow = 0xD1;
constexpr quint8 kEnvChange = 0xE3;
constexpr quint8 kDone = 0xFD;

constexpr quint16 kDoneMore = 0x01;
constexpr quint16 kDoneError = 0x02;
constexpr quint16 kDoneCount = 0x10;
constexpr quint16 kDoneAttention = 0x20;

// Japanese_CI_AS: LCID 0x411 with case, kana type and width ignored; sort id 0.
constexpr quint8 kCollation[5] = {0x11, 0x04, 0xD0, 0x00, 0x00};

void put8(QByteArray& b, quint8 v) { b.append(char(v)); }
void put16(QByteArray& b, quint16 v)
{
    b.append(char(v & 0xff));
    b.append(char(v >> 8));
}
void put32(QByteArray& b, quint32 v)
{
    put16(b, quint16(v & 0xffff));
    put16(b, quint16(v >> 16));
}
void put64(QByteArray& b, quint64 v)
{
    put32(b, quint32(v & 0xffffffffu));
    put32(b, quint32(v >> 32));
}
void putUcs2(QByteArray& b, QStringView text)
{
    for (QChar c : text) put16(b, c.unicode());
}
void putBVarchar(QByteArray& b, QStringView text)
{
    put8(b, quint8(text.size()));
    putUcs2(b, text);
}
void putUsVarchar(QByteArray& b, QStringView text)
{
    put16(b, quint16(text.size()));
    putUcs2(b, text);
}
quint16 get16(const QByteArray& b, qsizetype at) { return quint16(quint8(b[at])) | quint16(quint8(b[at + 1])) << 8; }
quint32 get32(const QByteArray& b, qsizetype at) { return quint32(get16(b, at)) | quint32(get16(b, at + 2)) << 16; }

QString ucs2(const QByteArray& b, qsizetype at, qsizetype chars)
{
    if (at < 0 || chars < 0 || at + chars * 2 > b.size()) return {};
    QString text(chars, Qt::Uninitialized);
    for (qsizetype i = 0; i < chars; ++i) text[i] = QChar(get16(b, at + 2 * i));
    return text;
}

// A message of the server: ERROR or INFO token.
void putMessage(QByteArray& b, quint8 token, qint32 number, quint8 severity, const QString& text)
{
    QByteArray body;
    put32(body, quint32(number));
    put8(body, 1);  // state
    put8(body, severity);
    putUsVarchar(body, text);
    putBVarchar(body, u"SEALTDS");
    putBVarchar(body, u"");
    put32(body, 1);  // line
    put8(b, token);
    put16(b, quint16(body.size()));
    b.append(body);
}

void putDone(QByteArray& b, quint16 status, quint16 command, quint64 rows)
{
    put8(b, kDone);
    put16(b, status);
    put16(b, command);
    put64(b, rows);
}

void putEnvChange(QByteArray& b, quint8 type, const QByteArray& newValue, const QByteArray& oldValue)
{
    put8(b, kEnvChange);
    put16(b, quint16(1 + newValue.size() + oldValue.size()));
    put8(b, type);
    b.append(newValue);
    b.append(oldValue);
}

QByteArray bVarchar(QStringView text)
{
    QByteArray b;
    putBVarchar(b, text);
    return b;
}

// The column kinds the server sends, and how each is chosen.
enum class Kind { Int, Bit, Decimal, DateTime, Float, VarChar, NVarChar, VarBinary };

struct Column {
    QString name;
    Kind kind = Kind::NVarChar;
    int size = 4;        // Int: bytes
    int precision = 18;  // Decimal
    int scale = 0;
};

int decimalBytes(int precision) { return precision <= 9 ? 5 : 9; }

Column columnFor(sqlite3_stmt* st, int c, bool haveRow)
{
    Column col;
    col.name = QString::fromUtf8(sqlite3_column_name(st, c));
    const QByteArray decl = QByteArray(sqlite3_column_decltype(st, c) ? sqlite3_column_decltype(st, c) : "").toUpper();
    if (decl.isEmpty()) {
        switch (haveRow ? sqlite3_column_type(st, c) : SQLITE_NULL) {
        case SQLITE_INTEGER: {
            const qint64 v = sqlite3_column_int64(st, c);
            col.kind = Kind::Int;
            col.size = (v >= INT32_MIN && v <= INT32_MAX) ? 4 : 8;
            break;
        }
        case SQLITE_FLOAT:
            col.kind = Kind::Float;
            break;
        case SQLITE_BLOB:
            col.kind = Kind::VarBinary;
            break;
        case SQLITE_TEXT: {
            // A datetime made by an expression (GetDate()) stays a datetime.
            static const QRegularExpression stamp(QStringLiteral(R"(^\d{4}/\d{2}/\d{2}( \d{2}:\d{2}:\d{2})?$)"));
            const QString text = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, c)));
            col.kind = stamp.match(text).hasMatch() ? Kind::DateTime : Kind::NVarChar;
            break;
        }
        default:
            col.kind = Kind::NVarChar;
            break;
        }
        return col;
    }
    if (decl.startsWith("NVARCHAR") || decl.startsWith("NCHAR") || decl.startsWith("NTEXT"))
        col.kind = Kind::NVarChar;
    else if (decl.contains("CHAR") || decl.contains("TEXT") || decl.contains("CLOB"))
        col.kind = Kind::VarChar;
    else if (decl.contains("DATE") || decl.contains("TIME"))
        col.kind = Kind::DateTime;
    else if (decl == "BIT" || decl.startsWith("BOOL"))
        col.kind = Kind::Bit;
    else if (decl.startsWith("SMALLINT"))
        col = {col.name, Kind::Int, 2};
    else if (decl.startsWith("TINYINT"))
        col = {col.name, Kind::Int, 1};
    else if (decl.startsWith("BIGINT"))
        col = {col.name, Kind::Int, 8};
    else if (decl.contains("INT"))
        col = {col.name, Kind::Int, 4};
    else if (decl.startsWith("DECIMAL") || decl.startsWith("NUMERIC")) {
        col.kind = Kind::Decimal;
        static const QRegularExpression ps(QStringLiteral(R"(\(\s*(\d+)\s*(?:,\s*(\d+)\s*)?\))"));
        const auto m = ps.match(QString::fromLatin1(decl));
        if (m.hasMatch()) {
            col.precision = std::clamp(m.captured(1).toInt(), 1, 18);
            col.scale = std::clamp(m.captured(2).toInt(), 0, col.precision);
        }
    } else if (decl.contains("REAL") || decl.contains("FLOA") || decl.contains("DOUB"))
        col.kind = Kind::Float;
    else if (decl.contains("BLOB") || decl.contains("BINARY"))
        col.kind = Kind::VarBinary;
    return col;
}

void putColumnMetadata(QByteArray& b, const std::vector<Column>& columns, bool unknownType)
{
    put8(b, kColMetadata);
    put16(b, quint16(columns.size()));
    for (const Column& col : columns) {
        put32(b, 0);       // user type
        put16(b, 0x0009);  // nullable, updatable unknown
        if (unknownType) {
            put8(b, 0x99);
            unknownType = false;
        } else {
            switch (col.kind) {
            case Kind::Int:
                put8(b, 0x26);
                put8(b, quint8(col.size));
                break;
            case Kind::Bit:
                put8(b, 0x68);
                put8(b, 1);
                break;
            case Kind::Float:
                put8(b, 0x6D);
                put8(b, 8);
                break;
            case Kind::DateTime:
                put8(b, 0x6F);
                put8(b, 8);
                break;
            case Kind::Decimal:
                put8(b, 0x6A);
                put8(b, quint8(decimalBytes(col.precision)));
                put8(b, quint8(col.precision));
                put8(b, quint8(col.scale));
                break;
            case Kind::VarChar:
                put8(b, 0xA7);
                put16(b, 8000);
                b.append(reinterpret_cast<const char*>(kCollation), 5);
                break;
            case Kind::NVarChar:
                put8(b, 0xE7);
                put16(b, 8000);
                b.append(reinterpret_cast<const char*>(kCollation), 5);
                break;
            case Kind::VarBinary:
                put8(b, 0xA5);
                put16(b, 8000);
                break;
            }
        }
        putBVarchar(b, col.name);
    }
}

// A value that SQL Server would refuse for its column: the message it would give.
struct ConversionError {
    qint32 number;
    QString text;
};

// 'YYYY/MM/DD[ HH:MM:SS[.fff]]' (or with '-') as SQL Server's datetime: days since
// 1900-01-01 and 1/300 seconds since midnight.
bool toDateTime(const QString& text, qint32& days, quint32& ticks)
{
    static const QRegularExpression re(QStringLiteral(
        R"(^(\d{4})[/-](\d{1,2})[/-](\d{1,2})(?:[ T](\d{1,2}):(\d{2})(?::(\d{2})(?:\.(\d{1,3}))?)?)?$)"));
    const auto m = re.match(text.trimmed());
    if (!m.hasMatch()) return false;
    const QDate date(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    const QTime time(m.captured(4).toInt(), m.captured(5).toInt(), m.captured(6).toInt(),
                     m.captured(7).leftJustified(3, u'0').toInt());
    if (!date.isValid() || !time.isValid()) return false;
    days = qint32(QDate(1900, 1, 1).daysTo(date));
    ticks = quint32((qint64(time.msecsSinceStartOfDay()) * 3 + 5) / 10);
    return true;
}

// The value as a scaled integer of the column's scale, from its decimal text.
bool toScaled(const QString& text, int scale, bool& negative, quint64& magnitude)
{
    static const QRegularExpression re(QStringLiteral(R"(^([+-]?)(\d*)(?:\.(\d*))?$)"));
    const auto m = re.match(text.trimmed());
    if (!m.hasMatch() || (m.captured(2).isEmpty() && m.captured(3).isEmpty())) return false;
    negative = m.captured(1) == u"-";
    QString digits = m.captured(2) + m.captured(3).leftJustified(scale, u'0').left(scale);
    bool ok = false;
    magnitude = digits.isEmpty() ? 0 : digits.toULongLong(&ok);
    return digits.isEmpty() || ok;
}

QString textOf(sqlite3_stmt* st, int c)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st, c)), sqlite3_column_bytes(st, c));
}

// One ROW token's value of a column; false with the refusal when SQL Server would refuse it.
bool putValue(QByteArray& b, sqlite3_stmt* st, int c, const Column& col, ConversionError& error)
{
    const bool longLength = col.kind == Kind::VarChar || col.kind == Kind::NVarChar || col.kind == Kind::VarBinary;
    if (sqlite3_column_type(st, c) == SQLITE_NULL) {
        // A length that says NULL.
        if (longLength)
            put16(b, 0xFFFF);
        else
            put8(b, 0);
        return true;
    }
    switch (col.kind) {
    case Kind::Int: {
        qint64 v = sqlite3_column_int64(st, c);
        if (sqlite3_column_type(st, c) == SQLITE_TEXT) {
            bool ok = false;
            v = textOf(st, c).trimmed().toLongLong(&ok);
            if (!ok) {
                error = {245,
                         QStringLiteral("Conversion failed when converting the varchar value '%1' to data type int.")
                             .arg(textOf(st, c))};
                return false;
            }
        }
        const qint64 limit = col.size == 8 ? INT64_MAX : (qint64(1) << (col.size * 8 - 1)) - 1;
        if (col.size < 8 && (v > limit || v < -limit - 1) && !(col.size == 1 && v >= 0 && v <= 255)) {
            error = {8115, QStringLiteral("Arithmetic overflow error converting expression to data type int.")};
            return false;
        }
        put8(b, quint8(col.size));
        for (int i = 0; i < col.size; ++i) put8(b, quint8(quint64(v) >> (8 * i)));
        return true;
    }
    case Kind::Bit:
        put8(b, 1);
        put8(b, sqlite3_column_int64(st, c) != 0 ? 1 : 0);
        return true;
    case Kind::Float: {
        const double d = sqlite3_column_double(st, c);
        quint64 bits;
        std::memcpy(&bits, &d, 8);
        put8(b, 8);
        put64(b, bits);
        return true;
    }
    case Kind::DateTime: {
        qint32 days = 0;
        quint32 ticks = 0;
        if (!toDateTime(textOf(st, c), days, ticks)) {
            error = {241, QStringLiteral("Conversion failed when converting date and/or time from character string.")};
            return false;
        }
        put8(b, 8);
        put32(b, quint32(days));
        put32(b, ticks);
        return true;
    }
    case Kind::Decimal: {
        bool negative = false;
        quint64 magnitude = 0;
        if (!toScaled(textOf(st, c), col.scale, negative, magnitude)) {
            error = {8114, QStringLiteral("Error converting data type varchar to numeric.")};
            return false;
        }
        const int bytes = decimalBytes(col.precision);
        put8(b, quint8(bytes));
        put8(b, negative ? 0 : 1);
        for (int i = 0; i < bytes - 1; ++i) put8(b, quint8(magnitude >> (8 * i)));
        return true;
    }
    case Kind::VarChar:
    case Kind::NVarChar:
    case Kind::VarBinary: {
        QByteArray bytes;
        if (col.kind == Kind::VarBinary)
            bytes = QByteArray(static_cast<const char*>(sqlite3_column_blob(st, c)), sqlite3_column_bytes(st, c));
        else if (col.kind == Kind::VarChar)
            bytes = base::toCp932(textOf(st, c));
        else {
            const QString text = textOf(st, c);
            bytes = QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
        }
        if (bytes.size() > 8000) {
            error = {8152, QStringLiteral("String or binary data would be truncated.")};
            return false;
        }
        put16(b, quint16(bytes.size()));
        b.append(bytes);
        return true;
    }
    }
    return true;
}

// SQLite's failure as the SQL Server message number that a client maps to the same
// SQLSTATE (208 -> 42S02, 207 -> 42S22, 102 -> 42000, 2627 -> 23000).
qint32 numberForSqliteMessage(const QString& message)
{
    if (message.startsWith(u"no such table")) return 208;
    if (message.startsWith(u"no such column")) return 207;
    if (message.contains(u"syntax error") || message.startsWith(u"no such function")) return 102;
    if (message.contains(u"constraint failed")) return 2627;
    return 50000;
}

}  // namespace

struct TdsTestServer::State {
    ServerOptions options;
    std::atomic<bool> stopping{false};
    std::atomic<int> logins{0};
    std::atomic<int> batches{0};
    std::atomic<quint16> port{0};
    QString errorText;
    std::thread listener;
    std::thread browser;
    std::mutex mutex;
    std::vector<std::thread> sessions;

    void listen(quint16 wanted, std::promise<quint16>& ready);
    void serve(qintptr descriptor);
    void answerBrowser(std::promise<bool>& ready);
};

namespace {

class Session {
public:
    Session(TdsTestServer::State& state, qintptr descriptor) : state_(state), options_(state.options)
    {
        socket_.setSocketDescriptor(descriptor);
    }
    ~Session()
    {
        if (db_) sqlite3_close_v2(db_);
    }

    void run()
    {
        quint8 type = 0;
        QByteArray payload;
        if (!readMessage(type, payload, options_.readTimeoutMs) || type != kPrelogin) return;
        send(kReply, preloginReply());
        if (!readMessage(type, payload, options_.readTimeoutMs) || type != kLogin7) return;
        if (options_.fault == ServerOptions::Fault::SlowLogin) {
            // The client gives up first; its closing ends the wait.
            readMessage(type, payload, options_.readTimeoutMs);
            return;
        }
        if (!login(payload)) return;
        while (!state_.stopping) {
            if (!readMessage(type, payload, options_.readTimeoutMs)) return;
            bool goOn = true;
            switch (type) {
            case kSqlBatch:
                goOn = batch(payload);
                break;
            case kAttention:
                goOn = replyDone(kDoneAttention, 0);
                break;
            case kTransactionManager:
                goOn = transactionRequest(payload);
                break;
            default: {
                QByteArray reply;
                putMessage(reply, kError, 50000, 16, QStringLiteral("This test server takes SQL batches only."));
                putDone(reply, kDoneError, 0, 0);
                goOn = send(kReply, reply);
            }
            }
            if (!goOn) return;
        }
    }

private:
    // Bytes of the client, each read bounded by time (and by the server stopping).
    bool readExactly(char* out, qint64 n, int timeoutMs)
    {
        QDeadlineTimer deadline(timeoutMs);
        while (socket_.bytesAvailable() < n) {
            if (state_.stopping || deadline.hasExpired() || socket_.state() != QAbstractSocket::ConnectedState)
                return false;
            socket_.waitForReadyRead(int(std::min<qint64>(100, std::max<qint64>(1, deadline.remainingTime()))));
        }
        return socket_.read(out, n) == n;
    }

    // One message of the client, however many packets carry it. False on a time-out,
    // a closed connection or a packet that breaks the rules (the session then ends).
    bool readMessage(quint8& type, QByteArray& payload, int timeoutMs)
    {
        payload.clear();
        for (;;) {
            char header[kHeader];
            if (!readExactly(header, kHeader, timeoutMs)) return false;
            const int length = (quint8(header[2]) << 8) | quint8(header[3]);
            if (length < kHeader || length > kLargestPacket) return false;
            type = quint8(header[0]);
            const qsizetype at = payload.size();
            payload.resize(at + length - kHeader);
            if (!readExactly(payload.data() + at, length - kHeader, timeoutMs)) return false;
            if (quint8(header[1]) & 0x01) return true;
        }
    }

    bool writeAll(const QByteArray& bytes)
    {
        socket_.write(bytes);
        QDeadlineTimer deadline(options_.readTimeoutMs);
        while (socket_.bytesToWrite() > 0) {
            if (state_.stopping || deadline.hasExpired() || !socket_.waitForBytesWritten(100)) {
                if (socket_.state() != QAbstractSocket::ConnectedState || deadline.hasExpired() || state_.stopping)
                    return false;
            }
        }
        return true;
    }

    // Sends a message in packets of the negotiated size. With last false, only whole
    // packets are sent and the rest stays in the message for the next call.
    bool sendPackets(quint8 type, QByteArray& message, bool last)
    {
        const int room = packetSize_ - kHeader;
        QByteArray out;
        qsizetype at = 0;
        while (message.size() - at > room || (last && at < message.size()) || (last && message.isEmpty() && at == 0)) {
            const qsizetype chunk = std::min<qsizetype>(room, message.size() - at);
            const bool end = last && at + chunk == message.size();
            put8(out, type);
            put8(out, end ? 0x01 : 0x00);
            out.append(char((chunk + kHeader) >> 8));
            out.append(char((chunk + kHeader) & 0xff));
            put16(out, 0);
            put8(out, quint8(++packetId_));
            put8(out, 0);
            out.append(message.constData() + at, chunk);
            at += chunk;
            if (end) break;
        }
        message.remove(0, at);
        return writeAll(out);
    }

    bool send(quint8 type, QByteArray message) { return sendPackets(type, message, true); }

    bool replyDone(quint16 status, quint64 rows)
    {
        QByteArray b;
        putDone(b, status, 0, rows);
        return send(kReply, b);
    }

    QByteArray preloginReply() const
    {
        // VERSION, ENCRYPTION (not supported), INSTOPT, THREADID, MARS; then their data.
        const quint8 tokens[] = {0, 1, 2, 3, 4};
        const quint16 lengths[] = {6, 1, 1, 4, 1};
        QByteArray b;
        quint16 offset = quint16(5 * 5 + 1);
        for (int i = 0; i < 5; ++i) {
            put8(b, tokens[i]);
            b.append(char(offset >> 8));
            b.append(char(offset & 0xff));
            b.append(char(lengths[i] >> 8));
            b.append(char(lengths[i] & 0xff));
            offset += lengths[i];
        }
        put8(b, 0xFF);
        b.append("\x10\x00\x07\xD0\x00\x00", 6);  // 16.0.2000
        put8(b, 2);                               // ENCRYPT_NOT_SUP
        put8(b, 0);
        put32(b, 0);
        put8(b, 0);
        return b;
    }

    bool login(const QByteArray& p)
    {
        if (p.size() < 94) return false;
        tdsVersion_ = get32(p, 4);
        packetSize_ = int(std::clamp<quint32>(get32(p, 8), 512, kLargestPacket));
        const auto field = [&](int at) { return ucs2(p, get16(p, at), get16(p, at + 2)); };
        const QString user = field(40);
        QByteArray scrambled = p.mid(get16(p, 44), qsizetype(get16(p, 46)) * 2);
        for (char& ch : scrambled) {
            const quint8 x = quint8(ch) ^ 0xA5;
            ch = char(quint8((x << 4) | (x >> 4)));
        }
        const QString password = ucs2(scrambled, 0, scrambled.size() / 2);
        const QString database = field(68);
        // The login refused with the server's message; the session ends.
        const auto refuse = [&](qint32 number, quint8 severity, const QString& text) {
            QByteArray reply;
            putMessage(reply, kError, number, severity, text);
            putDone(reply, kDoneError, 0, 0);
            send(kReply, reply);
            return false;
        };
        if (user != options_.user || password != options_.password)
            return refuse(18456, 14, QStringLiteral("Login failed for user '%1'.").arg(user));
        if (!database.isEmpty() && database.compare(options_.database, Qt::CaseInsensitive) != 0)
            return refuse(
                4060, 11,
                QStringLiteral("Cannot open database \"%1\" requested by the login. The login failed.").arg(database));
        if (sqlite3_open_v2(options_.databasePath.toUtf8().constData(), &db_, SQLITE_OPEN_READWRITE, nullptr) !=
            SQLITE_OK)
            return refuse(
                4060, 11,
                QStringLiteral("Cannot open the database file: %1").arg(QString::fromUtf8(sqlite3_errmsg(db_))));
        QByteArray reply;
        sqlite3_busy_timeout(db_, 5000);
        ++state_.logins;

        putEnvChange(reply, 1, bVarchar(options_.database), bVarchar(u"master"));
        putMessage(reply, kInfo, 5701, 0, QStringLiteral("Changed database context to '%1'.").arg(options_.database));
        putEnvChange(reply, 7, QByteArray("\x05", 1) + QByteArray(reinterpret_cast<const char*>(kCollation), 5),
                     QByteArray(1, '\0'));
        putEnvChange(reply, 2, bVarchar(u"日本語"), bVarchar(u""));
        putEnvChange(reply, 4, bVarchar(QString::number(packetSize_)), bVarchar(u"4096"));
        QByteArray ack;
        put8(ack, 1);
        ack.append("\x74\x00\x00\x04", 4);
        putBVarchar(ack, u"Microsoft SQL Server");
        ack.append("\x10\x00\x07\xD0", 4);
        put8(reply, kLoginAck);
        put16(reply, quint16(ack.size()));
        reply.append(ack);
        putDone(reply, 0, 0, 0);
        return send(kReply, reply);
    }

    // The text of a batch or request after its ALL_HEADERS.
    qsizetype afterHeaders(const QByteArray& p) const
    {
        if (tdsVersion_ < 0x72000000 || p.size() < 4) return 0;
        const quint32 total = get32(p, 0);
        return total <= quint32(p.size()) ? qsizetype(total) : p.size();
    }

    bool exec(const char* sql) { return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }

    bool transactionRequest(const QByteArray& p)
    {
        const qsizetype at = afterHeaders(p);
        if (at + 2 > p.size()) return false;
        const quint16 request = get16(p, at);
        QByteArray reply;
        const QByteArray descriptor("\x08\x01\x00\x00\x00\x00\x00\x00\x00", 9);
        if (request == 5) {  // begin
            exec("BEGIN");
            putEnvChange(reply, 8, descriptor, QByteArray(1, '\0'));
        } else if (request == 7 || request == 8) {  // commit, rollback
            exec(request == 7 ? "COMMIT" : "ROLLBACK");
            putEnvChange(reply, request == 7 ? 9 : 10, QByteArray(1, '\0'), descriptor);
            // A request may open the next transaction at once.
            if (at + 3 < p.size() && (quint8(p[at + 3]) & 0x01)) {
                exec("BEGIN");
                putEnvChange(reply, 8, descriptor, QByteArray(1, '\0'));
            }
        } else {
            putMessage(reply, kError, 50000, 16, QStringLiteral("This transaction request is not supported."));
            putDone(reply, kDoneError, 0, 0);
            return send(kReply, reply);
        }
        putDone(reply, 0, 0, 0);
        return send(kReply, reply);
    }

    bool batch(const QByteArray& p)
    {
        ++state_.batches;
        const qsizetype at = afterHeaders(p);
        const QString sql = ucs2(p, at, (p.size() - at) / 2).trimmed();
        switch (options_.fault) {
        case ServerOptions::Fault::MalformedReply:
            // A packet whose length is shorter than its own header.
            return writeAll(QByteArray("\x04\x01\x00\x04\x00\x00\x01\x00", 8)) && false;
        case ServerOptions::Fault::TruncatedReply: {
            QByteArray half("\x04\x01\x00\x40\x00\x00\x01\x00", 8);
            half.append(QByteArray(8, '\0'));
            writeAll(half);
            // The rest never comes; the session waits until the client gives up.
            quint8 type = 0;
            QByteArray ignored;
            while (readMessage(type, ignored, options_.readTimeoutMs)) {
            }
            return false;
        }
        default:
            break;
        }
        static const QRegularExpression waitfor(QStringLiteral(R"(^WAITFOR\s+DELAY\s+'(\d+):(\d+):(\d+)'\s*;?$)"),
                                                QRegularExpression::CaseInsensitiveOption);
        if (const auto m = waitfor.match(sql); m.hasMatch()) {
            const int ms = ((m.captured(1).toInt() * 60 + m.captured(2).toInt()) * 60 + m.captured(3).toInt()) * 1000;
            quint8 type = 0;
            QByteArray next;
            if (readMessage(type, next, ms)) {
                // Only attention can come while a batch runs.
                return type == kAttention && replyDone(kDoneAttention, 0);
            }
            return socket_.state() == QAbstractSocket::ConnectedState && !state_.stopping && replyDone(0, 0);
        }
        if (sql.startsWith(u"SET ", Qt::CaseInsensitive) || sql.isEmpty()) return replyDone(0, 0);
        static const QRegularExpression tranCount(QStringLiteral(R"(^IF\s+@@TRANCOUNT\s*>\s*0\s+(COMMIT|ROLLBACK))"),
                                                  QRegularExpression::CaseInsensitiveOption);
        if (const auto m = tranCount.match(sql); m.hasMatch()) {
            exec(m.captured(1).compare(u"COMMIT", Qt::CaseInsensitive) == 0 ? "COMMIT" : "ROLLBACK");
            return replyDone(0, 0);
        }
        return runSql(data::ado::toSqliteDialect(sql, QDateTime::currentDateTime()));
    }

    bool fail(QByteArray& reply, qint32 number, const QString& text)
    {
        putMessage(reply, kError, number, 16, text);
        putDone(reply, kDoneError, 0, 0);
        return sendPackets(kReply, reply, true);
    }

    bool runSql(const QString& sql)
    {
        const QByteArray utf8 = sql.toUtf8();
        const char* tail = utf8.constData();
        const char* end = tail + utf8.size();
        QByteArray reply;
        while (tail < end) {
            sqlite3_stmt* st = nullptr;
            const char* next = nullptr;
            int rc = sqlite3_prepare_v2(db_, tail, int(end - tail), &st, &next);
            if (rc != SQLITE_OK) {
                const QString message = QString::fromUtf8(sqlite3_errmsg(db_));
                // SQL Server takes a name in ORDER BY from the select list first.
                const QString outer = data::ado::isAmbiguousColumnMessage(message)
                                          ? data::ado::orderByOverSelect(QString::fromUtf8(tail, end - tail))
                                          : QString();
                const QByteArray outerUtf8 = outer.toUtf8();
                if (outer.isEmpty() ||
                    sqlite3_prepare_v2(db_, outerUtf8.constData(), int(outerUtf8.size()), &st, nullptr) != SQLITE_OK)
                    return fail(reply, numberForSqliteMessage(message), message);
                next = end;
            }
            tail = next;
            if (!st) continue;
            const bool last = QByteArray(tail, end - tail).replace(';', "").trimmed().isEmpty();
            const Outcome outcome = statement(st, reply, last);
            sqlite3_finalize(st);
            if (outcome != Outcome::Next) return outcome == Outcome::Failed;
        }
        if (!reply.isEmpty()) return sendPackets(kReply, reply, true);
        return replyDone(0, 0);
    }

    enum class Outcome { Next, Failed, Closed };

    // One statement's result or row count into the reply. Failed: the batch ended with
    // an error, sent; Closed: the session ends.
    Outcome statement(sqlite3_stmt* st, QByteArray& reply, bool last)
    {
        const quint16 more = last ? 0 : kDoneMore;
        const int columns = sqlite3_column_count(st);
        int rc = sqlite3_step(st);
        if (columns == 0) {
            if (rc != SQLITE_DONE) {
                const QString message = QString::fromUtf8(sqlite3_errmsg(db_));
                return fail(reply, numberForSqliteMessage(message), message) ? Outcome::Failed : Outcome::Closed;
            }
            putDone(reply, kDoneCount | more, 0xC3, quint64(sqlite3_changes(db_)));
            return Outcome::Next;
        }
        std::vector<Column> cols;
        for (int c = 0; c < columns; ++c) cols.push_back(columnFor(st, c, rc == SQLITE_ROW));
        putColumnMetadata(reply, cols, options_.fault == ServerOptions::Fault::UnknownType);
        quint64 rows = 0;
        while (rc == SQLITE_ROW) {
            if (options_.fault == ServerOptions::Fault::CloseMidResult && rows == 1) {
                sendPackets(kReply, reply, false);
                socket_.abort();
                return Outcome::Closed;
            }
            put8(reply, kRow);
            for (int c = 0; c < columns; ++c) {
                ConversionError error;
                if (!putValue(reply, st, c, cols[size_t(c)], error)) {
                    // What is already sent stands; the error ends the result.
                    reply.truncate(0);
                    return fail(reply, error.number, error.text) ? Outcome::Failed : Outcome::Closed;
                }
            }
            ++rows;
            if (reply.size() > 64 * 1024 && !sendPackets(kReply, reply, false)) return Outcome::Closed;
            rc = sqlite3_step(st);
        }
        if (rc != SQLITE_DONE) {
            const QString message = QString::fromUtf8(sqlite3_errmsg(db_));
            return fail(reply, numberForSqliteMessage(message), message) ? Outcome::Failed : Outcome::Closed;
        }
        putDone(reply, kDoneCount | more, 0xC1, rows);
        return Outcome::Next;
    }

    TdsTestServer::State& state_;
    const ServerOptions& options_;
    QTcpSocket socket_;
    sqlite3* db_ = nullptr;
    quint32 tdsVersion_ = 0x74000004;
    int packetSize_ = 4096;
    quint8 packetId_ = 0;
};

class Listener : public QTcpServer {
public:
    explicit Listener(TdsTestServer::State& state) : state_(state) {}

protected:
    void incomingConnection(qintptr descriptor) override { state_.serve(descriptor); }

private:
    TdsTestServer::State& state_;
};

}  // namespace

void TdsTestServer::State::serve(qintptr descriptor)
{
    std::lock_guard lock(mutex);
    sessions.emplace_back([this, descriptor] {
        Session session(*this, descriptor);
        session.run();
    });
}

void TdsTestServer::State::listen(quint16 wanted, std::promise<quint16>& ready)
{
    Listener server(*this);
    if (!server.listen(QHostAddress(options.host), wanted)) {
        errorText = server.errorString();
        ready.set_value(0);
        return;
    }
    ready.set_value(server.serverPort());
    while (!stopping) server.waitForNewConnection(100);
}

// The SQL Server Browser's answer for the one instance: where it listens.
void TdsTestServer::State::answerBrowser(std::promise<bool>& ready)
{
    QUdpSocket socket;
    if (!socket.bind(QHostAddress(options.host), 1434)) {
        errorText = socket.errorString();
        ready.set_value(false);
        return;
    }
    ready.set_value(true);
    while (!stopping) {
        if (!socket.waitForReadyRead(100)) continue;
        while (socket.hasPendingDatagrams()) {
            QByteArray question(qsizetype(socket.pendingDatagramSize()), '\0');
            QHostAddress from;
            quint16 fromPort = 0;
            socket.readDatagram(question.data(), question.size(), &from, &fromPort);
            // CLNT_UCAST_INST: 0x04 and the instance's name.
            if (question.isEmpty() || quint8(question[0]) != 0x04) continue;
            const QString asked = QString::fromLatin1(question.mid(1)).remove(QChar(u'\0'));
            if (asked.compare(options.instance, Qt::CaseInsensitive) != 0) continue;
            const QByteArray text =
                QStringLiteral("ServerName;SEALTDS;InstanceName;%1;IsClustered;No;Version;16.0.2000.5;tcp;%2;;")
                    .arg(options.instance)
                    .arg(port.load())
                    .toLatin1();
            QByteArray answer;
            put8(answer, 0x05);
            put16(answer, quint16(text.size()));
            answer.append(text);
            socket.writeDatagram(answer, from, fromPort);
        }
    }
}

TdsTestServer::TdsTestServer(ServerOptions options) : state_(std::make_shared<State>())
{
    state_->options = std::move(options);
    data::ado::registerJapaneseCollation();
}

TdsTestServer::~TdsTestServer() { stop(); }

quint16 TdsTestServer::start(quint16 port)
{
    std::promise<quint16> ready;
    std::future<quint16> bound = ready.get_future();
    state_->listener = std::thread([this, port, &ready] { state_->listen(port, ready); });
    state_->port = bound.get();
    if (state_->port != 0 && !state_->options.instance.isEmpty()) {
        std::promise<bool> answering;
        std::future<bool> bound1434 = answering.get_future();
        state_->browser = std::thread([this, &answering] { state_->answerBrowser(answering); });
        if (!bound1434.get()) {
            stop();
            state_->port = 0;
        }
    }
    return state_->port;
}

void TdsTestServer::stop()
{
    state_->stopping = true;
    if (state_->listener.joinable()) state_->listener.join();
    if (state_->browser.joinable()) state_->browser.join();
    std::vector<std::thread> sessions;
    {
        std::lock_guard lock(state_->mutex);
        sessions.swap(state_->sessions);
    }
    for (std::thread& t : sessions) t.join();
}

quint16 TdsTestServer::port() const { return state_->port; }
QString TdsTestServer::errorText() const { return state_->errorText; }
int TdsTestServer::logins() const { return state_->logins; }
int TdsTestServer::batches() const { return state_->batches; }

QString freeTdsConnectString(quint16 port, const ServerOptions& options)
{
    return QStringLiteral("Driver=%1;Server=%2;Port=%3;Database=%4;UID=%5;PWD=%6;TDS_Version=7.4")
        .arg(QString::fromLatin1(kFreeTdsDriver), options.host)
        .arg(port)
        .arg(options.database, options.user, options.password);
}

}  // namespace tdstest
