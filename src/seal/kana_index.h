#pragma once
// The kana index of the search: one button per row of the kana table, captioned in
// hiragana and searched by the half-width katakana of the row.

#include <QString>

#include <array>

namespace seal {

// Captions of cmdAnk(0) to cmdAnk(9).
inline const std::array<QString, 10> kKanaCaptions{
    QStringLiteral("あ"), QStringLiteral("か"), QStringLiteral("さ"), QStringLiteral("た"), QStringLiteral("な"),
    QStringLiteral("は"), QStringLiteral("ま"), QStringLiteral("や"), QStringLiteral("ら"), QStringLiteral("わ"),
};

// The letters of each row; row 10 has no button and stands for no kana filter.
inline const std::array<QString, 11> kKanaRows{
    QStringLiteral("ｱｲｳｴｵ"),
    QStringLiteral("ｶｷｸｹｺ"),
    QStringLiteral("ｻｼｽｾｿ"),
    QStringLiteral("ﾀﾁﾂﾃﾄ"),
    QStringLiteral("ﾅﾆﾇﾈﾉ"),
    QStringLiteral("ﾊﾋﾌﾍﾎ"),
    QStringLiteral("ﾏﾐﾑﾒﾓ"),
    QStringLiteral("ﾔﾕﾖ"),
    QStringLiteral("ﾗﾘﾙﾚﾛ"),
    QStringLiteral("ﾜｦﾝ"),
    QString(),
};

}  // namespace seal
