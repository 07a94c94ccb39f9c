// Japanese text compares as under the clinic's server collation Japanese_CI_AS: case,
// kana type and width are ignored, voicing marks are not but weigh less than the
// letters, and trailing blanks do not count.

#include "data/ado/japanese_collation.h"

#include <gtest/gtest.h>

using data::ado::compareJapaneseCi;
using data::ado::likeJapaneseCi;

namespace {

struct Pair {
    const char* a;
    const char* b;
    int order;  // sign of compare(a, b)
};

class JapaneseCiCompare : public ::testing::TestWithParam<Pair> {};

TEST_P(JapaneseCiCompare, OrdersAsTheServerDoes)
{
    const QString a = QString::fromUtf8(GetParam().a);
    const QString b = QString::fromUtf8(GetParam().b);
    const auto sign = [](int v) { return (v > 0) - (v < 0); };
    EXPECT_EQ(sign(compareJapaneseCi(a, b)), GetParam().order);
    EXPECT_EQ(sign(compareJapaneseCi(b, a)), -GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, JapaneseCiCompare,
    ::testing::Values(Pair{"あおき", "アオキ", 0},                       // kana type
                      Pair{"ｱｵｷ", "アオキ", 0},                          // width
                      Pair{"ｶﾞﾄｳ", "ガトウ", 0},                         // a half-width voiced kana is two characters
                      Pair{"ﾊﾟﾝ", "ぱん", 0}, Pair{"abc", "ＡＢＣ", 0},  // case and width of Latin letters
                      Pair{"Yamada", "yamada", 0}, Pair{"サトウ ", "さとう", 0},  // trailing blanks
                      Pair{"山田　太郎", "山田 太郎", 0},                  // an ideographic blank is a wide blank
                      Pair{"カトウ", "ガトウ", -1},                        // voicing counts ...
                      Pair{"ガトウ", "カネコ", -1},                        // ... after the letters
                      Pair{"ﾊﾞﾝ", "パン", -1}, Pair{"ｻﾄｳ", "スズキ", -1},  // half-width among the full-width
                      Pair{"ｻﾄｳ", "さとう", 0}, Pair{"さと", "さとう", -1}, Pair{"abe", "あべ", -1},
                      Pair{"", "あ", -1}));

struct Like {
    const char* pattern;
    const char* text;
    bool matches;
};

class JapaneseCiLike : public ::testing::TestWithParam<Like> {};

TEST_P(JapaneseCiLike, MatchesAsTheServerDoes)
{
    EXPECT_EQ(likeJapaneseCi(QString::fromUtf8(GetParam().pattern), QString::fromUtf8(GetParam().text)),
              GetParam().matches);
}

INSTANTIATE_TEST_SUITE_P(Patterns, JapaneseCiLike,
                         ::testing::Values(Like{"さと%", "ｻﾄｳ", true}, Like{"さと%", "サトウ", true},
                                           Like{"サト%", "さとう", true}, Like{"%とう", "ｶﾞﾄｳ", true},
                                           Like{"ｶﾞ%", "ガトウ", true}, Like{"ｶﾞ%", "カトウ", false},
                                           Like{"_とう", "ｶﾞﾄｳ", true},  // ｶﾞ is one character
                                           Like{"__とう", "ｶﾞﾄｳ", false}, Like{"%", "", true}, Like{"_", "", false},
                                           Like{"YAMA%", "yamada", true}, Like{"さとう", "さとう ", false},
                                           Like{"%", "あ", true}, Like{"%ず%", "スズキ", true},
                                           Like{"%す%", "スズキ", true}, Like{"%き", "ｽｽﾞｷ", true}));

TEST(JapaneseCiLikeEscape, TheEscapedWildcardIsALetter)
{
    EXPECT_TRUE(likeJapaneseCi(u"100!%", u"100%", u'!'));
    EXPECT_FALSE(likeJapaneseCi(u"100!%", u"1000", u'!'));
    EXPECT_TRUE(likeJapaneseCi(u"a!_b", u"a_b", u'!'));
    EXPECT_FALSE(likeJapaneseCi(u"a!_b", u"axb", u'!'));
}

}  // namespace
