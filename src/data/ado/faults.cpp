#include "data/ado/faults.h"

namespace data::ado {

qint32 hresultForSqlState(const QString& sqlState)
{
    if (sqlState == u"HYT00" || sqlState == u"HYT01") return DB_E_ABORTLIMITREACHED;
    if (sqlState == u"42S02") return DB_E_NOTABLE;
    if (sqlState == u"28000") return DB_SEC_E_AUTH_FAILED;
    if (sqlState.startsWith(u"23")) return DB_E_INTEGRITYVIOLATION;
    if (sqlState.startsWith(u"42") || sqlState.startsWith(u"37") || sqlState.startsWith(u"22"))
        return DB_E_ERRORSINCOMMAND;
    return E_FAIL_;
}

namespace fault {

base::VbError objectNotSet()
{
    return {91, QStringLiteral("オブジェクト変数または With ブロック変数が設定されていません。")};
}

base::VbError badArguments() { return {3001, QStringLiteral("引数が間違った型、許容範囲外、または競合しています。")}; }

base::VbError noCurrentRecord()
{
    return {3021, QStringLiteral("BOF と EOF のいずれかが True になっているか、または現在のレコードが削除されています。"
                                 "要求された操作には、現在のレコードが必要です。")};
}

base::VbError itemNotFound()
{
    return {3265, QStringLiteral("要求された名前、または序数に対応する項目がコレクションで見つかりません。")};
}

base::VbError objectClosed()
{
    return {3704, QStringLiteral("オブジェクトが閉じている場合は、操作は許可されません。")};
}

base::VbError objectOpen() { return {3705, QStringLiteral("オブジェクトが開いている場合は、操作は許可されません。")}; }

base::VbError providerNotFound()
{
    return {3706, QStringLiteral("プロバイダが見つかりません。正しくインストールされていない可能性があります。")};
}

base::VbError connectionInvalid()
{
    return {3709, QStringLiteral(
                      "この操作を実行するために、接続を使用できません。このコンテキストで閉じているか、無効です。")};
}

base::VbError fromProvider(const ProviderFailure& failure)
{
    if (failure.errors.empty()) return {E_FAIL_, QStringLiteral("未定義のエラー")};
    const Error& first = failure.errors.front();
    return {first.Number, first.Description};
}

}  // namespace fault

}  // namespace data::ado
