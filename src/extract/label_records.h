#pragma once
// What lands on a label: at print time the ticked addressees are read back out of the
// working grid fpSpread02, the address choice and the rules of each kind are applied,
// and one CSV line is written per copy. The screen's choices arrive as a plain value,
// read from the controls at the moment the operator pressed print.

#include <QString>
#include <QStringList>

#include <array>
#include <functional>
#include <vector>

namespace controls {
class Grid;
}

namespace extract {

class SealCsvFile;

// The cells of one addressee, trimmed, in the order the label step reads them, and
// the three results of the address choice that the label prints.
struct LabelRecord {
    QString cIDno;            // column 3
    QString cName;            // column 4: name with honorific
    QString cNameKana;        // 5
    QString cKikan;           // 6
    QString cDaihyo;          // 7
    QString cYubinNo;         // 8
    QString cAddress1;        // 9
    QString cAddress2;        // 10
    QString cTelNo;           // 11
    QString cFaxNo;           // 12
    QString cMobNo;           // 13
    QString cMst;             // 14
    QString cKeisho;          // 15
    QString nRoomNo;          // "-" and column 16, or empty
    QString cAddress3;        // 17
    QString nTantouID;        // staff number handed over with a doctor
    QString cYubinNo2;        // 27
    QString cYubinNo3;        // 28
    QString cYubinNoSinsei;   // 21
    QString cYubinNoRyosyu;   // 23
    QString cYubinNoRenraku;  // 25
    QString cJusyoSinsei;     // 22
    QString cJusyoRyosyu;     // 24
    QString cJusyoRenraku;    // 26
    QString cJisseki;         // 30, read and not printed
    QString cAtenaSinsei;     // 31
    QString cAtenaRyosyu;     // 32
    QString cAtenaRenraku;    // 33

    QString sOutYubin;
    QString sOutAtena;
    QString sOutAddress;
};

// The sender block of every label: the office's own row.
struct OfficeBlock {
    QString cShamei1;
    QString cMailDestinationZipNo;
    QString cMailDestination;
    QString cTelNo;
    QString cFaxNo;
};

// One line of the print-order list lstCheck.
struct OrderLine {
    QString text;
    qint32 itemData = 0;
};

// The item data no addressee has: a line holding it is not printed.
inline constexpr qint32 kNotAnAddressee = 99999999;

// The operator's choices as the label step reads them from the screen. Option button
// arrays are held as their values, since the address choice is a sum over them.
struct LabelChoices {
    short nMst = 0;
    short nKeisho = 0;
    bool staffChosen = false;  // optMst(5): the staff rule tests the button, not nMst
    std::array<bool, 2> opPMode{true, false};
    std::array<bool, 6> optAdd{true, false, false, false, false, false};
    std::array<bool, 2> optAddHokenja{true, false};
    std::array<bool, 2> optAddKeamane{true, false};
    QString sWaType;
    bool bCheckOrder = false;
    bool bEnterAdd = false;
    short nMaisu = 1;
    short nStartPos = 1;
    int nCheckCount = 0;  // rows found ticked by the check before print
    QStringList asPickedIDs;
    OfficeBlock office;
    QString footnote;

    bool envelope() const { return !opPMode[0]; }
    // Labels follow lstCheck while either order mode is on, else the grid.
    bool followsList() const { return bCheckOrder || bEnterAdd; }
};

// The element of optAdd that chooses the address: the absolute value of the sum of
// (i + 1) x the value of optAdd(i), true being -1; 1 to 6 give elements 0 to 5, and
// anything else element 0.
int addressElement(const std::array<bool, 6>& optAdd);

// Clears the results, then takes postal code, address and name of the element.
void chooseAddress(LabelRecord& r, int element);

// The envelope form of an address: full-width, with "－" turned back into "-".
QString envelopeAddress(const QString& address);

// The status bar text while the labels are made.
QString progressText(int total, int count);

// Walks the chosen addressees in label order and hands each finished record (address
// chosen, the kinds' rules applied, envelope width applied) to emit, once per
// addressee. One record serves the whole walk and is not cleared between addressees.
// status gets the progress text of each addressee.
void walkLabels(const controls::Grid& grid, const std::vector<OrderLine>& lstCheck, const LabelChoices& c,
                const std::function<void(const LabelRecord&)>& emit, const std::function<void(const QString&)>& status);

// The whole label data of one run: the CSV file at path with its title line, the
// blank lines of the start cell, and each addressee's line nMaisu times; then the
// status text is cleared. Each step shows its own box on a fault. 0 for success, 1 on
// failure (the file may then be left partly written).
short makeLabelRows(const QString& csvPath, const controls::Grid& grid, const std::vector<OrderLine>& lstCheck,
                    const LabelChoices& c, const std::function<void(const QString&)>& status);

}  // namespace extract
