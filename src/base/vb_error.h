#pragma once
// A runtime fault as the original's runtime raises it: a number and a description.
// Handlers catch it and report it in their own pattern (app/messages.h).

#include <QString>
#include <exception>

namespace base {

class VbError : public std::exception {
public:
    VbError(int number, QString description) : number_(number), description_(std::move(description)) {}

    int number() const { return number_; }
    const QString& description() const { return description_; }
    const char* what() const noexcept override { return "VbError"; }

    // The faults the program can meet, with the runtime's Japanese descriptions.
    static VbError typeMismatch() { return {13, QStringLiteral("型が一致しません。")}; }
    static VbError overflow() { return {6, QStringLiteral("オーバーフローしました。")}; }
    static VbError subscriptOutOfRange() { return {9, QStringLiteral("インデックスが有効範囲にありません。")}; }
    static VbError invalidProcedureCall()
    {
        return {5, QStringLiteral("プロシージャの呼び出し、または引数が不正です。")};
    }
    static VbError fileNotFound() { return {53, QStringLiteral("ファイルが見つかりません。")}; }
    static VbError pathNotFound() { return {76, QStringLiteral("パスが見つかりません。")}; }
    static VbError permissionDenied() { return {70, QStringLiteral("書き込みできません。")}; }
    static VbError pathFileAccess() { return {75, QStringLiteral("パス名が無効です。")}; }

private:
    int number_;
    QString description_;
};

}  // namespace base
