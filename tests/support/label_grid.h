#pragma once
// A working grid filled the way the list fill leaves it, for the tests of the label
// data.

#include "support/files.h"
#include "support/globals_scope.h"
#include "support/printers.h"

#include "controls/grid.h"
#include "controls/recording_platform.h"

#include <initializer_list>
#include <memory>
#include <utility>

namespace sealtest {

using Cells = std::initializer_list<std::pair<int, QString>>;

inline std::unique_ptr<controls::Grid> makeGrid(int rows)
{
    auto g = std::make_unique<controls::Grid>(QStringLiteral("fpSpread02"), 33, rows);
    g->setCheckBoxColumn(1);
    return g;
}

inline void setCells(controls::Grid& g, int row, Cells cells)
{
    for (const auto& [col, text] : cells) g.setText(col, row, text);
}

// A patient row as the fill writes it: the number in 2 and 3, name and honorific in
// 4, kind "0", honorific in 15, the room, and every address of the patient.
inline void setPatient(controls::Grid& g, int row, int id, const QString& name)
{
    const QString n = QString::number(id);
    setCells(g, row,
             {{2, n},
              {3, n},
              {4, name + QStringLiteral(" 様")},
              {5, QStringLiteral("ﾔﾏﾀﾞ")},
              {8, QStringLiteral("100-0001")},
              {9, QStringLiteral("東京都千代田区1-1")},
              {10, QStringLiteral("二番目の住所2-2")},
              {11, QStringLiteral("03-1111-2222")},
              {12, QStringLiteral("03-1111-3333")},
              {13, QStringLiteral("090-1234-5678")},
              {14, QStringLiteral("0")},
              {15, QStringLiteral("様")},
              {16, QStringLiteral("203")},
              {17, QStringLiteral("三番目の住所3-3")},
              {21, QStringLiteral("200-0001")},
              {22, QStringLiteral("申請先住所4-4")},
              {23, QStringLiteral("300-0001")},
              {24, QStringLiteral("領収先住所5-5")},
              {25, QStringLiteral("400-0001")},
              {26, QStringLiteral("連絡先住所6-6")},
              {27, QStringLiteral("500-0002")},
              {28, QStringLiteral("600-0003")},
              {30, QStringLiteral("2")},
              {31, QString()},
              {32, QStringLiteral("領収 太郎 様")},
              {33, QStringLiteral("連絡 花子 様")}});
}

// An addressee row of another kind: the number in 2 and 3, the name as shown in 4, the
// kind in 14, and the further cells given.
inline void setAddressee(controls::Grid& g, int row, const QString& id, const QString& shown, const QString& kind,
                         Cells more = {})
{
    setCells(g, row, {{2, id}, {3, id}, {4, shown}, {14, kind}});
    setCells(g, row, more);
}

inline void tick(controls::Grid& g, int row) { g.setText(1, row, QStringLiteral("1")); }

// A grid of one ticked patient.
inline std::unique_ptr<controls::Grid> onePatient(int id = 7, const QString& name = QStringLiteral("山田 太郎"))
{
    auto g = makeGrid(1);
    setPatient(*g, 1, id, name);
    tick(*g, 1);
    return g;
}

// The platform of the process for one test: boxes are recorded, nothing starts.
class PlatformScope {
public:
    PlatformScope() { app::setPlatform(&platform); }
    controls::RecordingPlatform platform;

private:
    GlobalsScope scope_;
};

}  // namespace sealtest
