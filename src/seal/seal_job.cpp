#include "seal/seal_job.h"

namespace seal {

const std::array<AddresseeKindInfo, 9> kAddresseeKinds{{
    {AddresseeKind::Riyousha, QStringLiteral("利用者"), QStringLiteral("患者データの抽出に失敗しました。")},
    {AddresseeKind::Doctor, QStringLiteral("医者"), QStringLiteral("医者データの抽出に失敗しました。")},
    {AddresseeKind::Hokenja, QStringLiteral("保険者"), QStringLiteral("保険者データの抽出に失敗しました。")},
    {AddresseeKind::Syoukai, QStringLiteral("紹介者"), QStringLiteral("紹介者データの抽出に失敗しました。")},
    {AddresseeKind::Caremane, QStringLiteral("ケアマネ"), QStringLiteral("ケアマネデータの抽出に失敗しました。")},
    {AddresseeKind::Staff, QStringLiteral("施術者"), QStringLiteral("施術者データの抽出に失敗しました。")},
    {AddresseeKind::Sisetsu, QStringLiteral("施設"), QStringLiteral("施設関連データの抽出に失敗しました。")},
    {AddresseeKind::Corp, QStringLiteral("自社"), QStringLiteral("自社関連データの抽出に失敗しました。")},
    {AddresseeKind::Iryoukikan, QStringLiteral("医療機関"), QStringLiteral("施設関連データの抽出に失敗しました。")},
}};

const std::array<QString, 7> kHonorificCaptions{
    QStringLiteral("様"),         QStringLiteral("殿"), QStringLiteral("御中"),       QStringLiteral("先生"),
    QStringLiteral("先生御侍史"), QStringLiteral("行"), QStringLiteral("医事課御中"),
};

const std::array<SheetTypeInfo, 3> kSheetTypes{{
    {SheetType::Sheet10, QStringLiteral("１０枚シート"), 10, 2, 5, QStringLiteral("fpSpread01"),
     QStringLiteral("シール.wfd")},
    {SheetType::Sheet12, QStringLiteral("１２枚シート"), 12, 2, 6, QStringLiteral("fpSpread_2x6"),
     QStringLiteral("シール_2X6.wfd")},
    {SheetType::Sheet30, QStringLiteral("３０枚シート（ビーコン）"), 30, 3, 10, QStringLiteral("fpSpread_3x10"),
     QStringLiteral("ビーコン用シール30M.wfd")},
}};

const std::array<EnvelopeTypeInfo, 4> kEnvelopeTypes{{
    {EnvelopeType::Naga3, QStringLiteral("長方3号"), 0, QStringLiteral("封筒印刷長3.wfd")},
    {EnvelopeType::Kaku2, QStringLiteral("角形2号"), 1, QStringLiteral("封筒印刷角2_2.wfd")},
    {EnvelopeType::Naga3Yoko, QStringLiteral("長方3号：横"), 2, QStringLiteral("封筒印刷長3_横.wfd")},
    {EnvelopeType::Naga3YokoMado, QString(), -1, QStringLiteral("封筒印刷長3_横窓.wfd")},
}};

const std::array<QString, 2> kPrintModeCaptions{QStringLiteral("シール印刷"), QStringLiteral("封筒印刷")};

const std::array<PatientAddressInfo, 6> kPatientAddresses{{
    {PatientAddress::Address1, QStringLiteral("住所１"), true},
    {PatientAddress::Address2, QStringLiteral("住所２"), true},
    {PatientAddress::Address3, QStringLiteral("住所３"), true},
    {PatientAddress::Contact, QStringLiteral("連絡先"), true},
    {PatientAddress::Application, QStringLiteral("申請書送付先"), false},
    {PatientAddress::Billing, QStringLiteral("領収請求送付先"), true},
}};

const std::array<QString, 2> kHokenjaAddressCaptions{QStringLiteral("所在地"), QStringLiteral("レセプト送付先")};

const std::array<QString, 2> kCaremaneAddressCaptions{QStringLiteral("所属施設優先"), QStringLiteral("所属事業所優先")};

const std::array<CollectionFilterInfo, 3> kCollectionFilters{{
    {CollectionFilter::None, QStringLiteral("設定無し"), QString(), false},
    {CollectionFilter::ExcludeCashAndTransfer, QStringLiteral("現金回収及び口座振込の利用者を外す"),
     QStringLiteral(" AND r_sub.iShoukanSiharai = 1"), false},
    {CollectionFilter::ExcludeHandedOver, QStringLiteral("口座引落だが手渡しの人を外す"),
     QStringLiteral(" AND r_sub.iShoukanSiharai = 1 "), true},
}};

}  // namespace seal
