#include "data/ado/japanese_collation.h"

#include <sqlite3.h>

#include <mutex>
#include <vector>

namespace data::ado {

namespace {

// One character as the collation sees it: its folded code point and the marks that
// follow it (voicing, accents), which count only to break a tie.
struct Folded {
    char32_t base = 0;
    char32_t marks = 0;  // up to two marks, 16 bits each
    bool operator==(const Folded&) const = default;
};

// The code points of a text, surrogate pairs joined.
template <typename F>
void forEachCodePoint(QStringView text, F&& f)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            c = QChar::surrogateToUcs4(text[i].unicode(), text[i + 1].unicode());
            ++i;
        }
        f(c);
    }
}

bool isMark(char32_t c) { return QChar::category(c) == QChar::Mark_NonSpacing; }

// Width, kana type and case folded away; a voiced kana taken apart into its kana and
// its mark, so that ｶﾞ (two characters) and ガ (one) come out the same.
void foldInto(char32_t c, std::vector<char32_t>& out)
{
    const QChar::Decomposition tag = QChar::decompositionTag(c);
    if (tag == QChar::Wide || tag == QChar::Narrow) {
        const QString d = QChar::decomposition(c);
        if (!d.isEmpty()) c = d.at(0).unicode();
    }
    if (QChar::decompositionTag(c) == QChar::Canonical) {
        forEachCodePoint(QChar::decomposition(c), [&](char32_t p) { foldInto(p, out); });
        return;
    }
    if (c >= 0x30A1 && c <= 0x30F6)
        c -= 0x60;  // katakana -> hiragana
    else if (c == 0x30FD || c == 0x30FE)
        c -= 0x60;  // ヽヾ -> ゝゞ
    out.push_back(QChar::toCaseFolded(c));
}

// trimmed: trailing blanks do not count, as SQL Server pads the shorter text with
// them when it compares (LIKE does not). The result is reused by the next call on
// this thread with the same slot, so a sort allocates nothing per comparison.
const std::vector<Folded>& fold(QStringView text, bool trimmed, int slot)
{
    thread_local std::vector<char32_t> flat;
    thread_local std::vector<Folded> out[2];
    qsizetype n = text.size();
    while (trimmed && n > 0 && text[n - 1] == u' ') --n;
    flat.clear();
    forEachCodePoint(text.left(n), [&](char32_t c) {
        if (c < 0x80) {  // ASCII: only the case to fold
            flat.push_back(c >= u'A' && c <= u'Z' ? c + 32 : c);
            return;
        }
        foldInto(c, flat);
    });
    std::vector<Folded>& folded = out[slot];
    folded.clear();
    for (char32_t c : flat) {
        if (isMark(c) && !folded.empty()) {
            Folded& last = folded.back();
            last.marks = (last.marks << 16) | (c & 0xffff);
        } else {
            folded.push_back({c, 0});
        }
    }
    return folded;
}

int compareFolded(const std::vector<Folded>& a, const std::vector<Folded>& b)
{
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        if (a[i].base != b[i].base) return a[i].base < b[i].base ? -1 : 1;
    }
    if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
    for (size_t i = 0; i < n; ++i) {
        if (a[i].marks != b[i].marks) return a[i].marks < b[i].marks ? -1 : 1;
    }
    return 0;
}

bool likeFrom(const std::vector<Folded>& p, size_t pi, const std::vector<Folded>& t, size_t ti, char32_t escape)
{
    while (pi < p.size()) {
        const Folded& c = p[pi];
        if (escape && c.base == escape && c.marks == 0 && pi + 1 < p.size()) {
            if (ti >= t.size() || !(t[ti] == p[pi + 1])) return false;
            pi += 2;
            ++ti;
        } else if (c.base == U'%' && c.marks == 0) {
            while (pi < p.size() && p[pi].base == U'%' && p[pi].marks == 0) ++pi;
            if (pi == p.size()) return true;
            for (size_t k = ti; k <= t.size(); ++k) {
                if (likeFrom(p, pi, t, k, escape)) return true;
            }
            return false;
        } else if (c.base == U'_' && c.marks == 0) {
            if (ti >= t.size()) return false;
            ++pi;
            ++ti;
        } else {
            if (ti >= t.size() || !(t[ti] == c)) return false;
            ++pi;
            ++ti;
        }
    }
    return ti == t.size();
}

QStringView textOf(sqlite3_value* value)
{
    const auto* data = static_cast<const char16_t*>(sqlite3_value_text16(value));
    return QStringView(data, sqlite3_value_bytes16(value) / 2);
}

int collate(void*, int aBytes, const void* a, int bBytes, const void* b)
{
    return compareJapaneseCi(QStringView(static_cast<const char16_t*>(a), aBytes / 2),
                             QStringView(static_cast<const char16_t*>(b), bBytes / 2));
}

void like(sqlite3_context* context, int argc, sqlite3_value** argv)
{
    for (int i = 0; i < argc; ++i) {
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL) {
            sqlite3_result_null(context);
            return;
        }
    }
    QChar escape;
    if (argc == 3) {
        const QStringView e = textOf(argv[2]);
        if (e.size() != 1) {
            sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
            return;
        }
        escape = e[0];
    }
    // like(pattern, text): SQLite passes the pattern first.
    const QString pattern = textOf(argv[0]).toString();
    const QString text = textOf(argv[1]).toString();
    sqlite3_result_int(context, likeJapaneseCi(pattern, text, escape) ? 1 : 0);
}

int registerOn(sqlite3* db, const char**, const sqlite3_api_routines*)
{
    int rc = sqlite3_create_collation_v2(db, kJapaneseCollation, SQLITE_UTF16, nullptr, &collate, nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function(db, "like", 2, SQLITE_UTF16 | SQLITE_DETERMINISTIC, nullptr, &like, nullptr,
                                     nullptr);
    if (rc == SQLITE_OK)
        rc = sqlite3_create_function(db, "like", 3, SQLITE_UTF16 | SQLITE_DETERMINISTIC, nullptr, &like, nullptr,
                                     nullptr);
    return rc;
}

}  // namespace

void registerJapaneseCollation()
{
    static std::once_flag once;
    std::call_once(once, [] { sqlite3_auto_extension(reinterpret_cast<void (*)()>(&registerOn)); });
}

int addJapaneseCollation(sqlite3* db) { return registerOn(db, nullptr, nullptr); }

int compareJapaneseCi(QStringView a, QStringView b)
{
    if (a == b) return 0;
    return compareFolded(fold(a, true, 0), fold(b, true, 1));
}

bool likeJapaneseCi(QStringView pattern, QStringView text, QChar escape)
{
    return likeFrom(fold(pattern, false, 0), 0, fold(text, false, 1), 0, escape.isNull() ? 0 : escape.unicode());
}

}  // namespace data::ado

#ifdef SEAL_SQLITE_EXTENSION
// The same as a loadable extension, for a program of its own: the sqlite3 shell's
// `.load libseal_japanese_collation` lets it compare and sort the program's database.
extern "C" Q_DECL_EXPORT int sqlite3_sealjapanesecollation_init(sqlite3* db, char**, const sqlite3_api_routines*)
{
    return data::ado::addJapaneseCollation(db);
}
#endif
