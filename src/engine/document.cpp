#include "engine/document.h"

#include "base/install_dirs.h"
#include "base/text_codec.h"
#include "engine/engine_error.h"
#include "engine/limits.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>

namespace engine {

struct Document::Part {
    Form form;
    CsvTable data;
    std::unique_ptr<PageRenderer> renderer;
    int firstPage = 0;
};

QString resolvePath(const QString& path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(base::nativePath(path)));
}

namespace {

QString fileNameOf(const QString& path)
{
    QString p = path;
    p.replace(u'\\', u'/');
    return p.section(u'/', -1);
}

QSizeF scriptPaper(Paper p)
{
    switch (p) {
    case Paper::A5:
        return paperSize(QStringLiteral("A5"));
    case Paper::B5:
        return paperSize(QStringLiteral("B5"));
    case Paper::A4:
        break;
    }
    return paperSize(QStringLiteral("A4"));
}

CsvTable readData(const DataBinding& b, const Form& form, const QString& scriptPath)
{
    const QString path = resolvePath(b.file);
    if (!QFileInfo::exists(path))
        throw EngineError(scriptPath, b.line, QStringLiteral("データファイルが見つかりません: %1").arg(b.file));
    CsvTable t = readCsv(path, b.hasTitle);
    if (!b.hasTitle) {
        // Without a title line the columns bind by position, in the form's order.
        if (form.columns.isEmpty())
            throw EngineError(
                form.path, 0,
                QStringLiteral("タイトル行のないデータ (%1) を読むには、フォームに \"columns\" が要ります。")
                    .arg(b.file));
        t.titles = form.columns;
        for (QStringList& row : t.rows) {
            while (row.size() < t.titles.size()) row.append(QString());
        }
        return t;
    }
    QStringList missing;
    for (const QString& c : form.boundColumns())
        if (t.column(c) < 0) missing.append(c);
    if (!missing.isEmpty())
        throw EngineError(path, 1,
                          QStringLiteral("タイトル行がフォーム %1 と合いません。ない列: %2")
                              .arg(fileNameOf(form.path), missing.join(QStringLiteral("、"))));
    return t;
}

// A form where the script says, else in the engine's own forms folders; the path as
// the script says when it is nowhere.
QString formOf(const QString& named, const QString& appDir)
{
    const QString path = resolvePath(named);
    if (QFileInfo::exists(path)) return path;
    for (const QString& folder : base::dataFolders(appDir, QStringLiteral("forms"))) {
        const QString alt = QDir(folder).filePath(fileNameOf(named));
        if (QFileInfo::exists(alt)) return alt;
    }
    return path;
}

}  // namespace

Document::Document(const WfdScript& script, const QString& appDir)
        : title_(script.title), mode_(script.mode), zoom_(script.zoom),
          scriptOffset_(script.offsetX / 10.0, script.offsetY / 10.0)
{
    if (script.joined)
        throw EngineError(script.path, 0,
                          QStringLiteral("結合印刷のスクリプトです。先に wfrimg10 で結合フォームを作ってください。"));
    // The form: where the script says, else in the engine's own forms folder.
    const QString formPath = formOf(script.formFile, appDir);
    if (!QFileInfo::exists(formPath))
        throw EngineError(script.path, script.formLine,
                          QStringLiteral("フォームファイルが見つかりません: %1").arg(script.formFile));
    QFile f(formPath);
    if (!f.open(QIODevice::ReadOnly))
        throw EngineError(script.path, script.formLine,
                          QStringLiteral("フォームファイルを開けません: %1").arg(script.formFile));
    const QByteArray bytes = f.readAll();
    f.close();

    if (isJoinedForm(bytes)) {
        const JoinedForm joined = parseJoinedForm(bytes, formPath);
        if (title_.isEmpty()) title_ = joined.title;
        if (joined.reports.isEmpty())
            throw EngineError(formPath, 0, QStringLiteral("結合フォームに帳票が一つもありません。"));
        for (const JoinedForm::Report& r : joined.reports) {
            QList<DataBinding> data;
            for (const auto& [file, hasTitle] : r.data) data.append({QString(), file, hasTitle, 0});
            const QString p = formOf(r.form, appDir);
            WfdScript inner = script;
            inner.path = formPath;  // messages about these data name the joined form
            addPart(p, r.form, 0, data, inner);
        }
    } else {
        addPart(formPath, script.formFile, script.formLine, script.data, script);
    }

    int printable = 0;
    for (const auto& part : parts_) printable += part->renderer->printableRows();
    if (printable == 0) {
        const Part& first = *parts_.front();
        throw EngineError(first.data.path, 0, QStringLiteral("印刷するデータがありません（空白の行だけです）。"));
    }

    // Items name places in the form; one the form does not have would silently vanish.
    for (const ItemValue& item : script.items) {
        bool known = false;
        for (const auto& part : parts_) known = known || part->form.itemPaths().contains(item.path);
        if (!known)
            throw EngineError(script.path, item.line, QStringLiteral("フォームにない項目です: %1").arg(item.path));
    }
    QHash<QString, QString> items;
    for (const ItemValue& item : script.items) items.insert(item.path, item.value);

    qint64 page = 0;
    for (const auto& part : parts_) {
        part->renderer->setItems(items);
        part->renderer->setTitle(title_);
        const int slots = part->renderer->slotsPerPage();
        if (script.repeatStart > slots)
            throw EngineError(
                script.path, script.repeatStartLine,
                QStringLiteral("SectionRepeatStart は一枚の面の数 %1 までです: %2").arg(slots).arg(script.repeatStart));
        if (script.repeatStart >= 1) part->renderer->setStartItem(script.repeatStart);
        if (script.paper && part->form.paperName != u"custom") {
            const QSizeF s = scriptPaper(*script.paper);
            part->renderer->setPaper(part->form.landscape ? s.transposed() : s);
        }
        part->firstPage = page;
        page += part->renderer->nPages();
    }
    if (page > limits::kPagesPerJob)
        throw EngineError(
            parts_.front()->data.path, 0,
            QStringLiteral("ページ数 %1 が一つの印刷の上限 %2 を超えます。データを分けて印刷してください。")
                .arg(page)
                .arg(limits::kPagesPerJob));
    totalPages_ = int(page);
    for (const auto& part : parts_) part->renderer->setPageNumbering(part->firstPage, totalPages_);
    applyOffsets();

    const QString firstData = parts_.front()->data.path;
    const QFileInfo scriptInfo(resolvePath(script.path));
    defaultPdf_ = scriptInfo.dir().filePath(QFileInfo(firstData).completeBaseName() + QStringLiteral(".pdf"));
}

Document::~Document() = default;

void Document::addPart(const QString& formPath, const QString& formRef, int formLine, const QList<DataBinding>& data,
                       const WfdScript& script)
{
    if (!QFileInfo::exists(formPath))
        throw EngineError(script.path, formLine, QStringLiteral("フォームファイルが見つかりません: %1").arg(formRef));
    auto part = std::make_unique<Part>();
    part->form = loadForm(formPath);
    if (data.isEmpty())
        throw EngineError(script.path, 0, QStringLiteral("データファイルの指定 (SetDataText) がありません。"));
    part->data = readData(data.front(), part->form, script.path);
    for (int i = 1; i < data.size(); ++i) {
        // A further file with the same columns continues the first one.
        CsvTable more = readData(data[i], part->form, script.path);
        if (more.titles != part->data.titles)
            throw EngineError(more.path, 1,
                              QStringLiteral("タイトル行が最初のデータファイル %1 と違うため続けて読めません。")
                                  .arg(fileNameOf(part->data.path)));
        part->data.rows.append(more.rows);
        part->data.rowLines.append(more.rowLines);
    }
    part->renderer = std::make_unique<PageRenderer>(part->form, part->data, fonts_);
    parts_.push_back(std::move(part));
}

void Document::setInkRecorder(const std::function<void(const PlacedInk&)>& recorder)
{
    for (const auto& part : parts_) part->renderer->setInkRecorder(recorder);
}

void Document::applyOffsets()
{
    for (const auto& part : parts_) part->renderer->setOffset(scriptOffset_ + calibration_);
}

void Document::setCalibration(QPointF mm)
{
    calibration_ = mm;
    applyOffsets();
}

std::pair<const Document::Part*, int> Document::locate(int page) const
{
    for (auto it = parts_.rbegin(); it != parts_.rend(); ++it)
        if (page >= (*it)->firstPage) return {it->get(), page - (*it)->firstPage};
    return {parts_.front().get(), page};
}

QSizeF Document::pageSize(int page) const
{
    auto [part, local] = locate(page);
    return part->renderer->paperSize();
}

bool Document::landscape(int page) const
{
    auto [part, local] = locate(page);
    return part->renderer->landscape();
}

void Document::printPage(QPainter& painter, int page) const
{
    if (page < 0 || page >= totalPages_) return;
    auto [part, local] = locate(page);
    part->renderer->printPage(painter, local);
}

}  // namespace engine
