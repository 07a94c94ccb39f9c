#include "seal/print_settings.h"

#include "app/messages.h"
#include "base/conversions.h"
#include "base/ini_file.h"
#include "seal/seal_job.h"

namespace seal {

const std::array<QString, 5> kDefaultFootnotes{
    QStringLiteral("療養費支給申請書在中"), QStringLiteral("同意書在中"),     QStringLiteral("領収書在中"),
    QStringLiteral("請求書在中"),           QStringLiteral("経過報告書在中"),
};

namespace {

const QString kCk = QStringLiteral("印刷対象CK");
const QString kCheckOrder = QStringLiteral("チェック順");
const QString kEnter = QStringLiteral("Enter");
const QString kHokenja = QStringLiteral("種類：保険者データ");
const QString kAtesaki = QStringLiteral("タックシール宛先");
const QString kCount = QStringLiteral("脚注数");

QString readKey(const base::clsOplIniFile& ini, const QString& section, const QString& key)
{
    return base::csCutNull(ini.csGetProfileString(section, key));
}

QString footnoteKey(int n) { return QStringLiteral("脚注") + QString::number(n); }

// A failed write of the profile functions: the reason is csErrorText, which only a
// failed bind sets, so the box usually says no more than "Error:".
void reportWriteFailure(const base::clsOplIniFile& ini)
{
    app::msgBox(QStringLiteral("Error:") + ini.csErrorText(), controls::BoxStyle::Plain, QString());
}

}  // namespace

void loadPrintSettings(const QString& iniPath, const PrintSettingControls& c)
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB());
    h([&] {
        base::clsOplIniFile ini;
        if (ini.iInit(iniPath) != 0) return;

        const bool removeOnChange = base::Val(readKey(ini, kSealSection, kCk)) == 1;
        c.mnCKOnOff1.setChecked(removeOnChange);
        c.mnCKOnOff0.setChecked(!removeOnChange);

        c.chkCheck.setValue(base::Val(readKey(ini, kSealSection, kCheckOrder)) == 1 ? 1 : 0);
        c.chkEnter.setValue(base::Val(readKey(ini, kSealSection, kEnter)) == 1 ? 1 : 0);
        // A start always begins in the add-by-Enter mode.
        c.chkEnter.setValue(1);

        const bool fromPatients = base::Val(readKey(ini, kSealSection, kHokenja)) == 0;
        c.mnHokenjaDisp0.setChecked(fromPatients);
        c.mnHokenjaDisp1.setChecked(!fromPatients);

        const QString atesaki = readKey(ini, kSealSection, kAtesaki);
        c.txtEtc.setText(atesaki.isEmpty() ? kFreeHonorificDefault : atesaki);
    });
}

void savePrintSettings(const QString& iniPath, const PrintSettingControls& c)
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB());
    h([&] {
        base::clsOplIniFile ini;
        if (ini.iInit(iniPath) != 0) return;
        const auto flag = [](bool on) { return on ? QStringLiteral("1") : QStringLiteral("0"); };
        const std::pair<QString, QString> values[] = {
            {kCk, flag(c.mnCKOnOff1.checked())},     {kCheckOrder, flag(c.chkCheck.value() == 1)},
            {kEnter, flag(c.chkEnter.value() == 1)}, {kHokenja, flag(!c.mnHokenjaDisp0.checked())},
            {kAtesaki, base::Trim(c.txtEtc.text())},
        };
        for (const auto& [key, value] : values) {
            if (ini.iWriteProfileString(kSealSection, key, value) == 0) {
                reportWriteFailure(ini);
                return;
            }
        }
    });
}

void loadFootnotes(const QString& iniPath, TextComboBox& cbo)
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB());
    h([&] {
        base::clsOplIniFile ini;
        if (ini.iInit(iniPath) != 0) return;
        cbo.Clear();

        QString count = base::Trim(readKey(ini, kFootnoteSection, kCount));
        if (base::Val(count) == 0) {
            count = QStringLiteral("5");
            bool written = ini.iWriteProfileString(kFootnoteSection, kCount, count) != 0;
            for (int n = 1; written && n <= 5; ++n)
                written = ini.iWriteProfileString(kFootnoteSection, footnoteKey(n), kDefaultFootnotes[n - 1]) != 0;
            if (!written) reportWriteFailure(ini);
        }
        if (!base::IsNumeric(count)) return;
        const int n = base::CInt(count);
        for (int i = 1; i <= n; ++i) cbo.AddItem(readKey(ini, kFootnoteSection, footnoteKey(i)));
    });
}

void addFootnote(const QString& iniPath, TextComboBox& cbo)
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB());
    h([&] {
        const QString text = cbo.text();
        if (text.isEmpty()) return;
        base::clsOplIniFile ini;
        if (ini.iInit(iniPath) != 0) return;

        const QString count = base::Trim(readKey(ini, kFootnoteSection, kCount));
        if (base::Val(count) == 0) {
            // The defaults are written now; the typed text waits for the next press.
            loadFootnotes(iniPath, cbo);
            return;
        }
        if (!base::IsNumeric(count)) return;
        const int n = base::CInt(count);
        for (int i = 1; i <= n; ++i)
            if (base::RTrim(readKey(ini, kFootnoteSection, footnoteKey(i))) == text) return;

        if (ini.iWriteProfileString(kFootnoteSection, kCount, QString::number(n + 1)) == 0 ||
            ini.iWriteProfileString(kFootnoteSection, footnoteKey(n + 1), text) == 0) {
            reportWriteFailure(ini);
            return;
        }
        loadFootnotes(iniPath, cbo);
    });
}

}  // namespace seal
