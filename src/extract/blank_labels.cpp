#include "extract/blank_labels.h"

#include "app/messages.h"
#include "base/vb_error.h"
#include "extract/label_csv.h"

namespace extract {

namespace {

constexpr short kDoctor = 1;

}  // namespace

QString blankLabelLine(short nMst, const QStringList& asPickedIDs)
{
    QString line = QStringLiteral("0,,,,,,,,,,,,,,,,,,,");
    // Doctors carry the first staff number of a hand-over into the footnote's place;
    // the kind's own choice leaves one empty entry there.
    if (nMst == kDoctor) {
        if (asPickedIDs.isEmpty()) throw base::VbError::subscriptOutOfRange();
        line += asPickedIDs.first();
    }
    return line;
}

int blankLabelCount(short nStartPos) { return nStartPos > 1 ? nStartPos - 1 : 0; }

short writeBlankRows(SealCsvFile& csv, short nStartPos, short nMst, const QStringList& asPickedIDs)
{
    short status = 1;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("空データ作成時にエラーが発生しました。")));
    h([&] {
        const int count = blankLabelCount(nStartPos);
        if (count > 0) {
            const QString line = blankLabelLine(nMst, asPickedIDs);
            for (int i = 0; i < count; ++i) csv.writeLine(line);
        }
        status = 0;
    });
    return status;
}

}  // namespace extract
