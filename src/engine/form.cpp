#include "engine/form.h"

#include "base/text_codec.h"
#include "engine/engine_error.h"
#include "engine/limits.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <cmath>

namespace engine {

namespace {

constexpr char16_t kFormFormat[] = u"sealprint-form/1";
constexpr char16_t kJoinedFormat[] = u"sealprint-joined/1";

// Reads one JSON object, refusing keys it does not know: a misspelt key in a form
// would otherwise silently print nothing.
class Reader {
public:
    Reader(const QJsonObject& o, QString where, const QString& file) : o_(o), where_(std::move(where)), file_(file) {}

    [[noreturn]] void fail(const QString& msg) const
    {
        throw EngineError(file_, 0, QStringLiteral("%1: %2").arg(where_, msg));
    }
    bool has(const char* key) const { return o_.contains(QLatin1String(key)); }
    QJsonValue get(const char* key)
    {
        known_.insert(QString::fromUtf8(key));
        return o_.value(QLatin1String(key));
    }
    double number(const char* key, std::optional<double> def = std::nullopt)
    {
        QJsonValue v = get(key);
        if (v.isUndefined()) {
            if (def) return *def;
            fail(QStringLiteral("\"%1\" がありません。").arg(QLatin1String(key)));
        }
        if (!v.isDouble()) fail(QStringLiteral("\"%1\" は数値で書いてください。").arg(QLatin1String(key)));
        return v.toDouble();
    }
    // A length or position in mm, within the longest paper either way.
    double length(const char* key, std::optional<double> def = std::nullopt)
    {
        return within(key, number(key, def), -limits::kLengthMm, limits::kLengthMm);
    }
    // A number within [low, high]; checked before it is converted or multiplied.
    double within(const char* key, double v, double low, double high)
    {
        if (!(v >= low && v <= high))
            fail(QStringLiteral("\"%1\" は %2 から %3 までの数で書いてください: %4")
                     .arg(QLatin1String(key))
                     .arg(low)
                     .arg(high)
                     .arg(v));
        return v;
    }
    // A whole number from 1 to max.
    int count(const char* key, int max)
    {
        const double v = number(key);
        if (!(v >= 1 && v <= max) || v != std::floor(v))
            fail(QStringLiteral("\"%1\" は 1 から %2 までの整数で書いてください: %3")
                     .arg(QLatin1String(key))
                     .arg(max)
                     .arg(v));
        return int(v);
    }
    QString string(const char* key, const QString& def = QString())
    {
        QJsonValue v = get(key);
        if (v.isUndefined()) return def;
        if (!v.isString()) fail(QStringLiteral("\"%1\" は文字列で書いてください。").arg(QLatin1String(key)));
        return v.toString();
    }
    bool boolean(const char* key, bool def)
    {
        QJsonValue v = get(key);
        if (v.isUndefined()) return def;
        if (!v.isBool()) fail(QStringLiteral("\"%1\" は true か false で書いてください。").arg(QLatin1String(key)));
        return v.toBool();
    }
    template <typename E>
    E choice(const char* key, E def, std::initializer_list<std::pair<const char*, E>> options)
    {
        const QString s = string(key);
        if (s.isEmpty()) return def;
        QStringList names;
        for (auto& [name, value] : options) {
            if (s == QLatin1String(name)) return value;
            names.append(QLatin1String(name));
        }
        fail(QStringLiteral("\"%1\" は %2 のどれかです: %3").arg(QLatin1String(key), names.join(u'/'), s));
    }
    QJsonArray array(const char* key)
    {
        QJsonValue v = get(key);
        if (v.isUndefined()) return {};
        if (!v.isArray()) fail(QStringLiteral("\"%1\" は配列で書いてください。").arg(QLatin1String(key)));
        return v.toArray();
    }
    QJsonObject object(const char* key)
    {
        QJsonValue v = get(key);
        if (!v.isObject()) fail(QStringLiteral("\"%1\" はオブジェクトで書いてください。").arg(QLatin1String(key)));
        return v.toObject();
    }
    const QString& where() const { return where_; }
    const QString& file() const { return file_; }
    void finish() const
    {
        for (auto it = o_.begin(); it != o_.end(); ++it)
            if (!known_.contains(it.key())) fail(QStringLiteral("知らない設定です: \"%1\"").arg(it.key()));
    }

private:
    QJsonObject o_;
    QString where_;
    const QString& file_;
    QSet<QString> known_;
};

QColor parseColor(Reader& r, const char* key)
{
    const QString s = r.string(key, QStringLiteral("#000000"));
    QColor c = QColor::fromString(s);
    if (!c.isValid()) r.fail(QStringLiteral("色が読めません: %1").arg(s));
    return c;
}

// The seven postal-code boxes, laid from the right: the last box's right edge stands
// "right" mm from the field's right edge, the gaps run from the left.
QList<QRectF> postalBoxes(Reader parent, const QJsonObject& o, double fieldWidth)
{
    Reader r(o, parent.where() + QStringLiteral(".boxes"), parent.file());
    const double top = r.length("top");
    const double right = r.length("right");
    const double w = r.length("width");
    const double h = r.length("height");
    QJsonArray gaps = r.array("gaps");
    r.finish();
    if (gaps.size() != 6) r.fail(QStringLiteral("\"gaps\" には六つの間隔を書いてください。"));
    for (const QJsonValue& g : gaps)
        if (!g.isDouble())
            r.fail(QStringLiteral("\"gaps\" は数値で書いてください。"));
        else
            r.within("gaps", g.toDouble(), -limits::kLengthMm, limits::kLengthMm);
    QList<QRectF> boxes(7);
    double x = fieldWidth - right - w;
    for (int i = 6; i >= 0; --i) {
        boxes[i] = QRectF(x, top, w, h);
        if (i > 0) x -= gaps[i - 1].toDouble() + w;
    }
    return boxes;
}

QStringList stringList(Reader& r, const char* key)
{
    QStringList out;
    for (const QJsonValue& v : r.array(key)) {
        if (!v.isString()) r.fail(QStringLiteral("\"%1\" には文字列を並べてください。").arg(QLatin1String(key)));
        out.append(v.toString());
    }
    return out;
}

// A condition: one test on a column, {"any": [...]}, {"all": [...]}, or an array (all).
Condition parseCondition(const QJsonValue& v, const QString& where, const QString& file)
{
    Condition c;
    QJsonArray parts;
    if (v.isArray()) {
        c.test = Condition::All;
        parts = v.toArray();
    } else if (!v.isObject()) {
        throw EngineError(file, 0, QStringLiteral("%1: 条件はオブジェクトか配列で書いてください。").arg(where));
    } else {
        Reader r(v.toObject(), where, file);
        int tests = 0;
        auto is = [&](const char* key, Condition::Test t) {
            if (!r.has(key)) return false;
            c.test = t;
            ++tests;
            return true;
        };
        if (is("any", Condition::Any)) parts = r.array("any");
        if (is("all", Condition::All)) parts = r.array("all");
        if (is("equals", Condition::Equals)) c.values = {r.string("equals")};
        if (is("notEmpty", Condition::NotEmpty) && !r.boolean("notEmpty", true))
            r.fail(QStringLiteral("\"notEmpty\" は true だけが書けます。"));
        if (is("empty", Condition::Equals)) {
            if (!r.boolean("empty", true)) r.fail(QStringLiteral("\"empty\" は true だけが書けます。"));
            c.values = {QString()};
        }
        if (is("in", Condition::In)) c.values = stringList(r, "in");
        if (is("notIn", Condition::NotIn)) c.values = stringList(r, "notIn");
        if (is("sameAs", Condition::SameAs)) c.other = r.string("sameAs");
        if (is("differsFrom", Condition::DiffersFrom)) c.other = r.string("differsFrom");
        if (tests > 1) r.fail(QStringLiteral("条件は一つのオブジェクトに一つだけ書いてください。"));
        const bool group = c.test == Condition::Any || c.test == Condition::All;
        c.column = r.string("column");
        if (!group && c.column.isEmpty()) r.fail(QStringLiteral("\"column\" がありません。"));
        if (group && r.has("column")) r.fail(QStringLiteral("\"any\" と \"all\" には \"column\" を書けません。"));
        if (tests == 0) c.values = {QString()};  // {"column": C}: the column is empty
        if ((c.test == Condition::SameAs || c.test == Condition::DiffersFrom) && c.other.isEmpty())
            r.fail(QStringLiteral("比べる列の名前がありません。"));
        r.finish();
    }
    for (int i = 0; i < parts.size(); ++i)
        c.parts.append(parseCondition(parts[i], QStringLiteral("%1[%2]").arg(where).arg(i), file));
    if ((c.test == Condition::Any || c.test == Condition::All) && c.parts.isEmpty())
        throw EngineError(file, 0,
                          QStringLiteral("%1: \"any\" と \"all\" には条件を一つ以上並べてください。").arg(where));
    return c;
}

Field parseField(const QJsonValue& v, const QString& where, const QString& file)
{
    if (!v.isObject())
        throw EngineError(file, 0, QStringLiteral("%1: フィールドはオブジェクトで書いてください。").arg(where));
    const QJsonObject o = v.toObject();
    Field f;
    f.name = o.value(QLatin1String("name")).toString();
    Reader r(o, f.name.isEmpty() ? where : QStringLiteral("%1 (%2)").arg(where, f.name), file);
    r.string("name");
    f.type = r.choice<FieldType>("type", FieldType::Text,
                                 {{"text", FieldType::Text},
                                  {"postal", FieldType::Postal},
                                  {"frame", FieldType::Frame},
                                  {"line", FieldType::Line}});
    f.rect = QRectF(r.length("x"), r.length("y"), r.length("width", 0.0), r.length("height", 0.0));
    if (f.type != FieldType::Line && (f.rect.width() <= 0 || f.rect.height() <= 0))
        r.fail(QStringLiteral("\"width\" と \"height\" は正の数で書いてください。"));

    QJsonValue col = r.get("column");
    if (col.isString()) {
        f.columns = {col.toString()};
    } else if (col.isArray()) {
        for (const QJsonValue& c : col.toArray()) {
            if (!c.isString()) r.fail(QStringLiteral("\"column\" の配列には列名を書いてください。"));
            f.columns.append(c.toString());
        }
    } else if (!col.isUndefined()) {
        r.fail(QStringLiteral("\"column\" は列名か列名の配列で書いてください。"));
    }
    f.join = r.string("join");
    f.text = r.string("text");
    f.item = r.string("item");
    const int sources = (!f.columns.isEmpty()) + (!f.text.isEmpty()) + (!f.item.isEmpty());
    if (sources > 1) r.fail(QStringLiteral("\"column\"、\"text\"、\"item\" はどれか一つにしてください。"));
    if ((f.type == FieldType::Text || f.type == FieldType::Postal) && sources == 0)
        r.fail(QStringLiteral("表示する内容（\"column\"、\"text\"、\"item\"）がありません。"));

    f.face = r.choice<FontFace>("font", FontFace::Gothic, {{"gothic", FontFace::Gothic}, {"mincho", FontFace::Mincho}});
    f.size = r.number("size", 10.0);
    if (f.size <= 0) r.fail(QStringLiteral("\"size\" は正の数で書いてください。"));
    r.within("size", f.size, 0, limits::kFontPoints);
    f.bold = r.boolean("bold", false);
    f.align = r.choice<HAlign>("align", HAlign::Left,
                               {{"left", HAlign::Left}, {"center", HAlign::Center}, {"right", HAlign::Right}});
    f.valign = r.choice<VAlign>("valign", VAlign::Top,
                                {{"top", VAlign::Top}, {"middle", VAlign::Middle}, {"bottom", VAlign::Bottom}});
    f.vertical = r.boolean("vertical", false);
    f.wrap = r.boolean("wrap", true);
    f.lineSpacing = r.within("lineSpacing", r.number("lineSpacing", 1.15), 0, limits::kLineSpacing);
    f.numerals =
        r.choice<Numerals>("numerals", Numerals::AsIs,
                           {{"asis", Numerals::AsIs}, {"fullwidth", Numerals::FullWidth}, {"kanji", Numerals::Kanji}});
    f.keepWith = r.string("keepWith");
    f.frame = r.boolean("frame", false);
    f.frameWidth = r.length("frameWidth", 0.3);
    f.padding = r.length("padding", 0.0);
    f.color = parseColor(r, "color");
    f.dropLead = r.string("dropLead");
    f.dropTail = r.string("dropTail");
    const QJsonValue honorificAs = r.get("honorificAs");
    if (!honorificAs.isUndefined()) {
        if (!honorificAs.isObject()) r.fail(QStringLiteral("\"honorificAs\" は敬称とその代わりの組で書いてください。"));
        const QJsonObject o = honorificAs.toObject();
        for (auto it = o.begin(); it != o.end(); ++it) {
            if (!it.value().isString()) r.fail(QStringLiteral("\"honorificAs\" の値は文字列で書いてください。"));
            f.honorificAs.insert(it.key(), it.value().toString());
        }
    }
    if (r.has("honorificAsWhen"))
        f.honorificAsWhen =
            parseCondition(r.get("honorificAsWhen"), r.where() + QStringLiteral(".honorificAsWhen"), file);
    if ((!f.honorificAs.isEmpty() || f.honorificAsWhen) && f.keepWith.isEmpty())
        r.fail(QStringLiteral("\"honorificAs\" には敬称の列 \"keepWith\" が要ります。"));
    f.minSize = r.number("minSize", 5.0);
    if (f.minSize <= 0) r.fail(QStringLiteral("\"minSize\" は正の数で書いてください。"));
    r.within("minSize", f.minSize, 0, limits::kFontPoints);
    f.indent = r.number("indent", 0.0);
    if (f.indent < 0) r.fail(QStringLiteral("\"indent\" は 0 以上で書いてください。"));
    // In characters: no line is longer than the longest paper at the smallest size.
    r.within("indent", f.indent, 0, limits::kLengthMm);
    if (r.has("when")) f.when = parseCondition(r.get("when"), r.where() + QStringLiteral(".when"), file);
    QJsonValue boxes = r.get("boxes");
    if (!boxes.isUndefined()) {
        if (f.type != FieldType::Postal) r.fail(QStringLiteral("\"boxes\" は postal のフィールドだけに書けます。"));
        if (!boxes.isObject()) r.fail(QStringLiteral("\"boxes\" はオブジェクトで書いてください。"));
        f.boxes = postalBoxes(r, boxes.toObject(), f.rect.width());
    }
    r.finish();
    return f;
}

QList<Field> parseFields(Reader& r, const char* key)
{
    QList<Field> out;
    const QJsonArray a = r.array(key);
    for (int i = 0; i < a.size(); ++i)
        out.append(parseField(a[i], QStringLiteral("%1[%2]").arg(QLatin1String(key)).arg(i), r.file()));
    return out;
}

QJsonObject parseJsonObject(const QByteArray& json, const QString& fileName)
{
    QJsonParseError err;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &err);
    if (err.error != QJsonParseError::NoError) {
        const int line = 1 + int(json.left(err.offset).count('\n'));
        throw EngineError(fileName, line, QStringLiteral("フォームの JSON が読めません: %1").arg(err.errorString()));
    }
    if (!doc.isObject())
        throw EngineError(fileName, 1, QStringLiteral("フォームは JSON のオブジェクトで書いてください。"));
    return doc.object();
}

void addColumn(QStringList& out, const QString& column)
{
    if (!column.isEmpty() && !out.contains(column)) out.append(column);
}

void addColumns(QStringList& out, const Condition& c)
{
    addColumn(out, c.column);
    addColumn(out, c.other);
    for (const Condition& part : c.parts) addColumns(out, part);
}

void addColumns(QStringList& out, const QList<Field>& fields)
{
    for (const Field& f : fields) {
        for (const QString& c : f.columns) addColumn(out, c);
        if (f.when) addColumns(out, *f.when);
        for (const QString& c : {f.keepWith, f.dropLead, f.dropTail}) addColumn(out, c);
        if (f.honorificAsWhen) addColumns(out, *f.honorificAsWhen);
    }
}

}  // namespace

QRectF CellGrid::cell(int index) const
{
    const int c = index % columns;
    const int r = index / columns;
    return QRectF(left + c * (width + hgap), top + r * (height + vgap), width, height);
}

QStringList Form::boundColumns() const
{
    QStringList out;
    addColumns(out, pageFields);
    addColumns(out, cellFields);
    addColumns(out, backFields);
    addColumns(out, rowFields);
    return out;
}

QStringList Form::itemPaths() const
{
    QStringList out;
    for (const QList<Field>* list : {&pageFields, &cellFields, &backFields, &rowFields})
        for (const Field& f : *list)
            if (!f.item.isEmpty()) out.append(f.item);
    return out;
}

QSizeF paperSize(const QString& name)
{
    if (name == u"A4") return {210, 297};
    if (name == u"A5") return {148, 210};
    if (name == u"B5") return {182, 257};
    return {};
}

Form parseForm(const QByteArray& json, const QString& fileName)
{
    const QJsonObject root = parseJsonObject(json, fileName);
    Reader r(root, QStringLiteral("フォーム"), fileName);
    if (r.string("format") != QStringView(kFormFormat))
        r.fail(QStringLiteral("\"format\" が \"%1\" ではありません。").arg(QStringView(kFormFormat)));
    Form form;
    form.path = fileName;
    form.title = r.string("title");

    {
        Reader p(r.object("paper"), QStringLiteral("paper"), fileName);
        form.paperName = p.string("size", QStringLiteral("A4"));
        QSizeF size = paperSize(form.paperName);
        if (form.paperName == u"custom")
            size = QSizeF(p.length("width"), p.length("height"));
        else if (size.isEmpty())
            p.fail(QStringLiteral("\"size\" は A4/A5/B5/custom のどれかです: %1").arg(form.paperName));
        if (size.width() <= 0 || size.height() <= 0) p.fail(QStringLiteral("用紙の大きさが正しくありません。"));
        form.landscape = p.choice<bool>("orientation", false, {{"portrait", false}, {"landscape", true}});
        p.finish();
        form.paper = form.landscape ? size.transposed() : size;
    }

    for (const QJsonValue& c : r.array("columns")) form.columns.append(c.toString());

    if (r.has("cells")) {
        Reader c(r.object("cells"), QStringLiteral("cells"), fileName);
        CellGrid g;
        g.columns = c.count("columns", limits::kSlotsPerPage);
        g.rows = c.count("rows", limits::kSlotsPerPage);
        g.left = c.length("left");
        g.top = c.length("top");
        g.width = c.length("width");
        g.height = c.length("height");
        g.hgap = c.length("hgap", 0.0);
        g.vgap = c.length("vgap", 0.0);
        c.finish();
        if (g.width <= 0 || g.height <= 0) c.fail(QStringLiteral("面の数と大きさは正の数で書いてください。"));
        if (qint64(g.columns) * g.rows > limits::kSlotsPerPage)
            c.fail(QStringLiteral("一枚の面の数 (columns × rows) は %1 までです: %2 × %3")
                       .arg(limits::kSlotsPerPage)
                       .arg(g.columns)
                       .arg(g.rows));
        form.cells = g;
    }
    if (r.has("list")) {
        Reader l(r.object("list"), QStringLiteral("list"), fileName);
        ListSection s;
        s.top = l.length("top");
        s.rowHeight = l.length("rowHeight");
        s.rows = l.count("rows", limits::kSlotsPerPage);
        l.finish();
        if (s.rowHeight <= 0) l.fail(QStringLiteral("行の高さと行数は正の数で書いてください。"));
        form.list = s;
    }
    if (form.cells.has_value() == form.list.has_value())
        r.fail(QStringLiteral("\"cells\"（ラベル・封筒）か \"list\"（一覧）のどちらか一つを書いてください。"));

    form.pageFields = parseFields(r, "pageFields");
    form.cellFields = parseFields(r, "cellFields");
    form.backFields = parseFields(r, "backFields");
    form.rowFields = parseFields(r, "rowFields");
    form.backsAfterFronts = r.boolean("backsAfterFronts", false);
    r.finish();
    if (form.cells && form.cellFields.isEmpty()) r.fail(QStringLiteral("\"cellFields\" がありません。"));
    if (form.list && form.rowFields.isEmpty()) r.fail(QStringLiteral("\"rowFields\" がありません。"));
    if (!form.backFields.isEmpty() && form.cells && form.cells->perPage() != 1)
        r.fail(QStringLiteral("\"backFields\" は一枚に一面のフォーム（封筒）だけに書けます。"));
    if (form.backsAfterFronts && form.backFields.isEmpty())
        r.fail(QStringLiteral("\"backsAfterFronts\" は \"backFields\" のあるフォームだけに書けます。"));
    return form;
}

Form loadForm(const QString& path)
{
    QFile f(base::nativePath(path));
    if (!f.exists()) throw EngineError(path, 0, QStringLiteral("フォームファイルが見つかりません。"));
    if (!f.open(QIODevice::ReadOnly))
        throw EngineError(path, 0, QStringLiteral("フォームファイルを開けません: %1").arg(f.errorString()));
    return parseForm(f.readAll(), path);
}

bool isJoinedForm(const QByteArray& json)
{
    const QJsonDocument doc = QJsonDocument::fromJson(json);
    return doc.isObject() && doc.object().value(QLatin1String("format")).toString() == QStringView(kJoinedFormat);
}

JoinedForm parseJoinedForm(const QByteArray& json, const QString& fileName)
{
    Reader r(parseJsonObject(json, fileName), QStringLiteral("結合フォーム"), fileName);
    if (r.string("format") != QStringView(kJoinedFormat))
        r.fail(QStringLiteral("\"format\" が \"%1\" ではありません。").arg(QStringView(kJoinedFormat)));
    JoinedForm j;
    j.title = r.string("title");
    const QJsonArray reports = r.array("reports");
    for (int i = 0; i < reports.size(); ++i) {
        Reader rr(reports[i].toObject(), QStringLiteral("reports[%1]").arg(i), fileName);
        JoinedForm::Report rep;
        rep.form = rr.string("form");
        for (const QJsonValue& d : rr.array("data")) {
            const QJsonObject o = d.toObject();
            rep.data.append(
                {o.value(QLatin1String("file")).toString(), o.value(QLatin1String("hasTitle")).toBool(true)});
        }
        rr.finish();
        j.reports.append(rep);
    }
    r.finish();
    return j;
}

QByteArray joinedFormJson(const JoinedForm& joined)
{
    QJsonArray reports;
    for (const JoinedForm::Report& rep : joined.reports) {
        QJsonArray data;
        for (const auto& [file, hasTitle] : rep.data)
            data.append(QJsonObject{{QStringLiteral("file"), file}, {QStringLiteral("hasTitle"), hasTitle}});
        reports.append(QJsonObject{{QStringLiteral("form"), rep.form}, {QStringLiteral("data"), data}});
    }
    QJsonObject root{{QStringLiteral("format"), QString::fromUtf16(kJoinedFormat)},
                     {QStringLiteral("title"), joined.title},
                     {QStringLiteral("reports"), reports}};
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

}  // namespace engine
