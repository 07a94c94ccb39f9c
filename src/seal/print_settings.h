#pragma once
// The choices that outlast a run, in "印刷設定.ini" of the data folder: section
// "タックシール" for the screen's settings and "タックシール脚注" for the footnote list.
// Other programs of the suite keep other sections in the same file; each write changes
// one key only.

#include "controls/buttons.h"
#include "controls/inputs.h"
#include "seal/text_combo.h"

namespace seal {

inline const QString kPrintSettingsFile = QStringLiteral("印刷設定.ini");
inline const QString kSealSection = QStringLiteral("タックシール");
inline const QString kFootnoteSection = QStringLiteral("タックシール脚注");

// The five footnotes a file without any gets.
extern const std::array<QString, 5> kDefaultFootnotes;

// The controls whose state is saved.
struct PrintSettingControls {
    controls::MenuItem& mnCKOnOff0;
    controls::MenuItem& mnCKOnOff1;
    controls::CheckBox& chkCheck;
    controls::CheckBox& chkEnter;
    controls::MenuItem& mnHokenjaDisp0;
    controls::MenuItem& mnHokenjaDisp1;
    controls::TextInput& txtEtc;
};

// Reads the settings into the controls; setting chkCheck and chkEnter runs their
// clicks, and chkEnter ends ticked whatever the file says. A missing file changes
// nothing.
void loadPrintSettings(const QString& iniPath, const PrintSettingControls& c);
// Writes the settings key by key, stopping with a box at the first failed write. A
// missing file is not created.
void savePrintSettings(const QString& iniPath, const PrintSettingControls& c);
// Fills the footnote list from the file, writing the defaults when it has none. No row
// is chosen and the box's text is emptied.
void loadFootnotes(const QString& iniPath, TextComboBox& cboKyakutyuList);
// Adds the box's text to the file's list unless it is there already, then reloads the
// list.
void addFootnote(const QString& iniPath, TextComboBox& cboKyakutyuList);

}  // namespace seal
