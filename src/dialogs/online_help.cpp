#include "dialogs/online_help.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/ini_file.h"
#include "dialogs/token_reader.h"

#include <algorithm>

namespace dialogs {

QString sHelpUrl;

namespace {

QString reversed(QString s)
{
    std::reverse(s.begin(), s.end());
    return s;
}

}  // namespace

short iReadHelpAddress()
{
    base::clsOplIniFile ini;
    if (ini.iInit(findFileAnyCase(app::gsAppPath + QStringLiteral("\\Velmio.Ver"))) != 0) return -1;
    const QString raw = ini.csGetProfileString(QStringLiteral("OnlineHelp"), QStringLiteral("ADDRESS"));
    const QString address = base::Trim(raw);
    sHelpUrl = (!address.isEmpty() && address.left(4) == QLatin1String("http")) ? base::RTrim(base::csCutNull(raw))
                                                                                : QString();
    return 0;
}

QString csHelpQuery(short link)
{
    const Tokens file = readTokens(app::gsAppPath + QStringLiteral("\\EmapUser.ini"));
    if (!file.ok) return {};
    QString user, password;
    for (const QString& token : file.tokens) {
        if (token.startsWith(QLatin1String("ZENRIN_USER="))) user = token.mid(12);
        if (token.startsWith(QLatin1String("ZENRIN_PWD="))) password = token.mid(11);
    }
    QString query = QStringLiteral("?zi=") + reversed(user) + QStringLiteral("&zp=") + reversed(password);
    query += link >= 1 ? QStringLiteral("&lk=") + QString::number(link) : QStringLiteral("&lk=1");
    return query;
}

void vDispOnlineHelp(short link)
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB());
    h([&] {
        if (iReadHelpAddress() != 0) {
            app::msgBox(QStringLiteral("環境ファイルの取得に失敗しました。"), controls::BoxStyle::Critical,
                        QStringLiteral("データ参照エラー"));
            h.stop();
        }
    });
    QString query;
    h([&] { query = csHelpQuery(link); });
    h([&] {
        if (sHelpUrl.isEmpty()) {
            app::msgBox(QStringLiteral("オンラインヘルプは現在ご利用いただけません。"), controls::BoxStyle::Warning,
                        QStringLiteral("機能制限中"));
            h.stop();
        }
    });
    h([&] {
        if (!query.isEmpty()) sHelpUrl += query;
        app::platform().openUrl(sHelpUrl);
    });
}

}  // namespace dialogs
