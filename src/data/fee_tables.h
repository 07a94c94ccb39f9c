#pragma once
// The fee unit prices (療養費単価) and the visit fee bands (往療費区分) valid in a month,
// for the billing programs of the suite. A row is valid in a month when the month, as
// six-digit "yyyymm" text, lies between the year and month of cStartDate and of
// cEndDate.
//
// Unlike the other data classes these show their own boxes: a failed connection step
// ("iGetTanka() でエラー" and the reason), a month without prices, and a fault while
// reading (title "DB Read Error!!", naming the band and code).

#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace data {

// The prices cls単価 holds, in the order it exposes them.
enum class Tanka {
    マッサージ,
    変形徒手,
    温按法,
    電気光線,
    鍼灸1術,
    鍼灸2術,
    鍼灸1術初回,
    鍼灸2術初回,
    電気鍼温灸器,
    基本往療費,
    加算往療費,
    定額料金1割,
    定額料金2割,
    定額料金3割,
    実費施術費,
    実費交通費,
    鍼灸1術初検料,
    鍼灸2術初検料,
    施術報告書交付料,
};
inline constexpr int kTankaCount = 19;

// The price a row of 療養費単価 sets, by its iTankaKbn and nTankaCode; none for a pair
// the suite does not price.
std::optional<Tanka> tankaOf(qint32 iTankaKbn, qint32 nTankaCode);

// The statements, as they go to the server; sYM is the month as "yyyymm".
QString sqlTanka(const QString& sYM);
QString sqlOuryohi(const QString& sYM);

class cls単価 {
public:
    // Reads every price valid in sYM ("yyyymm"); rows come in start date order, so a
    // later row overwrites an earlier one, and a price the month lacks is 0. 0, or -1
    // after a box, with every price as it was.
    short iGetTanka(const QString& sYM);

    qint32 nTanka(Tanka t) const { return n_[static_cast<size_t>(t)]; }
    qint32 nマッサージ() const { return nTanka(Tanka::マッサージ); }
    qint32 n変形徒手() const { return nTanka(Tanka::変形徒手); }
    qint32 n温按法() const { return nTanka(Tanka::温按法); }
    qint32 n電気光線() const { return nTanka(Tanka::電気光線); }
    qint32 n鍼灸1術() const { return nTanka(Tanka::鍼灸1術); }
    qint32 n鍼灸2術() const { return nTanka(Tanka::鍼灸2術); }
    qint32 n鍼灸1術初回() const { return nTanka(Tanka::鍼灸1術初回); }
    qint32 n鍼灸2術初回() const { return nTanka(Tanka::鍼灸2術初回); }
    qint32 n電気鍼温灸器() const { return nTanka(Tanka::電気鍼温灸器); }
    qint32 n基本往療費() const { return nTanka(Tanka::基本往療費); }
    qint32 n加算往療費() const { return nTanka(Tanka::加算往療費); }
    qint32 n定額料金1割() const { return nTanka(Tanka::定額料金1割); }
    qint32 n定額料金2割() const { return nTanka(Tanka::定額料金2割); }
    qint32 n定額料金3割() const { return nTanka(Tanka::定額料金3割); }
    qint32 n実費施術費() const { return nTanka(Tanka::実費施術費); }
    qint32 n実費交通費() const { return nTanka(Tanka::実費交通費); }
    qint32 n鍼灸1術初検料() const { return nTanka(Tanka::鍼灸1術初検料); }
    qint32 n鍼灸2術初検料() const { return nTanka(Tanka::鍼灸2術初検料); }
    qint32 n施術報告書交付料() const { return nTanka(Tanka::施術報告書交付料); }

private:
    std::array<qint32, kTankaCount> n_{};
};

class cls往療費 {
public:
    // Reads the bands valid in sYM ("yyyymm"), shortest distance first, replacing those
    // read before. 0 (also for a month without bands: there are then none), or -1
    // after a box.
    short iGetOuryohiAll(const QString& sYM);

    // Takes band i区分 (1 to i往療区分数) of the last read: its amount becomes
    // n往療単価 and its distance limit n往療距離MAX. iコード is the caller's code of
    // the fee it prices, named in the box when there is no such band. 0, or -1 after
    // the box, with both values as they were.
    short iGetOuryohi(short i区分, short iコード);

    qint32 n往療単価() const { return n往療単価_; }
    qint32 n往療距離MAX() const { return n往療距離MAX_; }
    short i往療区分数() const { return static_cast<short>(n金額_.size()); }

private:
    std::vector<qint32> n金額_;  // nKingakuOuryou of band 1, 2 ...
    std::vector<qint32> n距離_;  // nMaxLen of band 1, 2 ...
    qint32 n往療単価_ = 0;
    qint32 n往療距離MAX_ = 0;
};

}  // namespace data
