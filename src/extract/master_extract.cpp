#include "extract/master_extract.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/ini_file.h"
#include "controls/platform.h"

#include <optional>

namespace extract {

namespace {

const QString kDatabaseFailed = QStringLiteral("データベースの抽出に失敗しました。");
const QString kCorpFailed = QStringLiteral("自社関連データの抽出に失敗しました。");

void stopBox(const QString& text) { app::msgBox(text, controls::BoxStyle::Critical); }

// The connection text, or nothing when adodb.ini cannot be opened.
std::optional<QString> connectionText()
{
    base::clsOplIniFile ini;
    if (ini.iInit(app::gsAppPath + QStringLiteral("\\adodb.ini")) != 0) return std::nullopt;
    const QString key = QStringLiteral("接続情報");
    return base::RTrim(base::csCutNull(ini.csGetProfileString(key, key)));
}

// A fresh database object, connected; nullptr after the reason was shown (or, for a
// settings file that cannot be opened, without a box).
std::unique_ptr<data::cT_ADODB> connect()
{
    const std::optional<QString> text = connectionText();
    if (!text) return nullptr;
    auto db = std::make_unique<data::cT_ADODB>();
    if (text->isEmpty() || db->iInit(*text) != 0 || db->iConnect() != 0) {
        stopBox(kDatabaseFailed);
        return nullptr;
    }
    return db;
}

// The order read, disconnect, report: the rows stay even when closing fails.
short disconnect(data::cT_ADODB& db)
{
    if (db.iDisConnect() == 0) return -1;
    app::msgBox(QStringLiteral("Error:") + db.sErrMsg(), controls::BoxStyle::Plain, QString());
    return 0;
}

template <class Rec>
void sizeFor(std::vector<Rec>& a, qint32 count)
{
    a.assign(static_cast<size_t>(count) + 1, Rec{});
}

// A table kind: the table object bound to its own connection, the grid read, the
// disconnect; the kind's failure closes nothing.
template <class Table, class Read>
short readTable(Table& table, Read read, const QString& failureText, AddresseeData& data, short K, short& nCloseState)
{
    std::unique_ptr<data::cT_ADODB>& db = data.db[static_cast<size_t>(K)];
    db = connect();
    if (!db) {
        nCloseState = -1;
        return -1;
    }
    if (table.iInit(*db) != 0 || read() != 0) {
        stopBox(failureText);
        db->iDisConnect();
        nCloseState = -1;
        return -1;
    }
    const short status = disconnect(*db);
    if (status == -1) data.bKindRead[static_cast<size_t>(K)] = true;
    return status;
}

}  // namespace

short readKind(short K, bool hokenjaFromPatients, const QString& failureText, AddresseeData& data, short& nCloseState)
{
    const auto done = [&] { data.bKindRead[static_cast<size_t>(K)] = true; };
    const auto failed = [&] {
        stopBox(failureText);
        nCloseState = 1;
    };
    switch (K) {
    case 1:
        data.nDoctorCount = data::getDoctorCount();
        sizeFor(data.aDoctor, data.nDoctorCount);
        // No doctors at all is a good read; the loader is not asked.
        if (data.nDoctorCount == 0 || data::getDoctorData(data.aDoctor) == -1)
            done();
        else
            failed();
        return -1;
    case 2:
        data.nHokenjaCount = hokenjaFromPatients ? data::getHokenjaUsedCount() : data::getHokenjaCount();
        sizeFor(data.aHokenja, data.nHokenjaCount);
        if ((hokenjaFromPatients ? data::getHokenjaUsedData(data.aHokenja) : data::getHokenjaData(data.aHokenja)) == -1)
            done();
        else
            failed();
        return -1;
    case 3:
        data.nSyoukaiCount = data::getSyoukaicount();
        sizeFor(data.aSyoukai, data.nSyoukaiCount);
        if (data::getSyoukaiData(data.aSyoukai) == -1)
            done();
        else
            failed();
        return -1;
    case 4: {
        const data::cD_CAREMANE filter;
        return readTable(
            data.oCaremaneList, [&] { return data.oCaremaneList.iDataReadGrid(filter); }, failureText, data, K,
            nCloseState);
    }
    case 5: {
        const data::cD_STAFF filter;
        return readTable(
            data.oStaffList, [&] { return data.oStaffList.iDataReadGrid(filter); }, failureText, data, K, nCloseState);
    }
    case 6:
    case 8: {
        data::cD_SISETSU filter;
        filter.iKikanShubetsu = K == 6 ? 1 : 2;
        data::cT_SISETSU& table = K == 6 ? data.oSisetsuList : data.oIryouList;
        return readTable(
            table, [&] { return table.iDataReadGrid(filter); }, failureText, data, K, nCloseState);
    }
    case 7:
        return readTable(
            data.oCorpList, [&] { return data.oCorpList.iDataReadGrid(); }, failureText, data, K, nCloseState);
    default:
        return -1;
    }
}

void readOwnCorp(AddresseeData& data)
{
    data.oOwnCorp = data::cD_CORP{};
    data.ownDb = connect();
    if (!data.ownDb) return;
    // -1 in both keys asks for no condition: every row of this office, by nIDNo.
    data.oOwnCorp.nIDNo = -1;
    data.oOwnCorp.iType = -1;
    if (data.oOwnCorpList.iInit(*data.ownDb) != 0 || data.oOwnCorpList.iDataRead(data.oOwnCorp) != 0) {
        stopBox(kCorpFailed);
        data.ownDb->iDisConnect();
        return;
    }
    disconnect(*data.ownDb);
}

}  // namespace extract
