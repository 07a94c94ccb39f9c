#include "report/cls_jetdb2csv.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/text_codec.h"
#include "base/vb_error.h"
#include "controls/platform.h"
#include "data/ado/ado_constants.h"
#include "data/ado/faults.h"
#include "report/fault_text.h"
#include "report/work_file.h"

#include <vector>

namespace report {

using namespace Qt::StringLiterals;
namespace ado = data::ado;

namespace {

bool isNumberType(int adoType)
{
    switch (adoType) {
    case ado::adSmallInt:
    case ado::adInteger:
    case ado::adSingle:
    case ado::adDouble:
    case ado::adCurrency:
    case ado::adBoolean:
    case ado::adUnsignedTinyInt:
    case ado::adDecimal:
    case ado::adNumeric:
        return true;
    default:
        return false;
    }
}

bool isDateType(int adoType)
{
    return adoType == ado::adDate || adoType == ado::adDBDate || adoType == ado::adDBTime ||
           adoType == ado::adDBTimeStamp;
}

// A flag column reads "True" or "False" whatever number the server keeps it as.
QString flagText(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
        return base::CStr(QVariant(value.toDouble() != 0.0));
    default:
        return base::CStr(value);
    }
}

}  // namespace

QString csvColumnText(int adoType, const QVariant& value)
{
    if (base::IsNull(value)) return QString();
    if (adoType == ado::adBoolean) return flagText(value);
    if (isNumberType(adoType) || isDateType(adoType)) return base::CStr(value);
    return u'"' + base::CStr(value) + u'"';
}

cls_JetDB2CSV::~cls_JetDB2CSV() { iEndJ2C(); }

cls_JetDB2CSV::Failure cls_JetDB2CSV::openCounted(std::unique_ptr<ado::Recordset>& rs, const QString& sSQL,
                                                  qint32& nCount)
{
    rs = std::make_unique<ado::Recordset>();
    rs->setCursorLocation(ado::adUseClient);
    if (adoDb->iOpenRecSet(rs, sSQL, ado::adOpenForwardOnly, ado::adLockReadOnly, ado::adCmdText) != 0) {
        sErrMsg = adoDb->sErrMsg();
        return Failure::Database;
    }
    if (rs->Eof()) {
        nCount = 0;
    } else {
        rs->MoveLast();
        rs->MoveFirst();
        nCount = rs->RecordCount();
    }
    return Failure::None;
}

cls_JetDB2CSV::Failure cls_JetDB2CSV::connectAndOpen(const QString& sSQL, qint32& nCount)
{
    if (!iniFile) iniFile = std::make_unique<base::clsOplIniFile>();
    if (iniFile->iInit(app::gsAppPath + u"\\adodb.ini"_s) != 0) {
        sErrMsg = iniFile->csErrorText();
        return Failure::Settings;
    }
    const QString section = u"接続情報"_s;
    csConnectString = base::RTrim(base::csCutNull(iniFile->csGetProfileString(section, section)));
    if (csConnectString.isEmpty()) {
        sErrMsg = u"接続文字列取得できません。"_s;
        return Failure::Settings;
    }
    adoDb = std::make_unique<data::cT_ADODB>();
    if (adoDb->iInit(csConnectString) != 0 || adoDb->iConnect() != 0) {
        sErrMsg = adoDb->sErrMsg();
        return Failure::Database;
    }
    return openCounted(rsData1, sSQL, nCount);
}

int16_t cls_JetDB2CSV::iInitJ2C(const QString& sSQL, const QString& sCsvPath_, qint32& nCount)
{
    try {
        sCsvPath = sCsvPath_;
        csConnectString.clear();
        if (connectAndOpen(sSQL, nCount) != Failure::None) {
            app::msgBox(u"iInitJ2C() でエラー\r\n"_s + sErrMsg, controls::BoxStyle::Critical);
            return -1;
        }
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        return -1;
    }
}

int16_t cls_JetDB2CSV::iInitJ2C_WSQL(const QString& sSQL1, const QString& sSQL2, const QString& sCsvPath_,
                                     qint32& nCount)
{
    try {
        sCsvPath = sCsvPath_;
        csConnectString.clear();
        if (connectAndOpen(sSQL1, nCount) != Failure::None) return -1;
        if (openCounted(rsData2, sSQL2, nCount) != Failure::None) return -1;
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        return -1;
    }
}

qint32 cls_JetDB2CSV::exportRows(bool bTwoQueries, int16_t bHeader, const QString& sSiteName)
{
    // A handle left open by an earlier failed export is given up for the new file.
    iFileNo.reset();
    iFileNo = openWorkFile(sCsvPath);

    if (!rsData1 || (bTwoQueries && !rsData2)) throw ado::fault::objectNotSet();
    std::vector<ado::Recordset*> sources{rsData1.get()};
    if (bTwoQueries) sources.push_back(rsData2.get());

    const bool withHeader = bHeader == -1;
    const std::size_t places = bTwoQueries ? kMaxColumnsTwoQueries : kMaxColumns;
    std::vector<int> types;
    QStringList header;
    for (ado::Recordset* rs : sources) {
        const int n = rs->FieldCount();
        for (int i = 0; i < n; ++i) {
            if (types.size() >= places) throw base::VbError::subscriptOutOfRange();
            const ado::Field field = rs->Fields(i);
            types.push_back(field.Type());
            if (withHeader) header << u'"' + field.Name() + u'"';
        }
    }
    // The header names the site column in quotes; the rows carry the name bare.
    const bool withSite = !bTwoQueries && !base::Trim(sSiteName).isEmpty();
    if (withSite) header << u"\"拠点名\""_s;
    if (withHeader) writeWorkFile(*iFileNo, base::toCp932(header.join(u',')) + "\r\n");

    qint32 nCount = 0;
    QString line;
    while (!rsData1->Eof()) {
        line.clear();
        std::size_t col = 0;
        for (ado::Recordset* rs : sources) {
            const int n = rs->FieldCount();
            for (int i = 0; i < n; ++i, ++col) {
                if (col > 0) line += u',';
                line += csvColumnText(types[col], rs->Fields(i).Value());
            }
        }
        if (withSite) line += u',' + sSiteName;
        writeWorkFile(*iFileNo, base::toCp932(line) + "\r\n");
        for (ado::Recordset* rs : sources) rs->MoveNext();
        ++nCount;
        if (evtCnvProcessUp) evtCnvProcessUp(nCount);
    }
    closeWorkFile(*iFileNo);
    iFileNo.reset();
    return nCount;
}

int16_t cls_JetDB2CSV::iExecJ2C(int16_t bHeader) { return nExecJ2C(bHeader, QString()) < 0 ? -1 : 0; }

qint32 cls_JetDB2CSV::nExecJ2C(int16_t bHeader, const QString& sSiteName)
{
    try {
        return exportRows(false, bHeader, sSiteName);
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        if (iFileNo) iFileNo->flush();  // the rows so far stay readable on disk
        return -1;
    }
}

qint32 cls_JetDB2CSV::nExecJ2C_WSQL(int16_t bHeader)
{
    try {
        return exportRows(true, bHeader, QString());
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        if (iFileNo) iFileNo->flush();
        return -1;
    }
}

int16_t cls_JetDB2CSV::iChkRecSet(const std::unique_ptr<ado::Recordset>& rs)
{
    if (!rs) return -1;
    try {
        (void)rs->Eof();
        return 0;
    } catch (const base::VbError&) {
        return -1;
    }
}

int16_t cls_JetDB2CSV::iEndJ2C()
{
    // A file still open after a failed export is closed with what it holds.
    if (iFileNo) {
        iFileNo->close();
        iFileNo.reset();
    }
    try {
        if (iChkRecSet(rsData1) == 0) {
            rsData1->Close();
            rsData1.reset();
        }
        if (iChkRecSet(rsData2) == 0) {
            rsData2->Close();
            rsData2.reset();
        }
        if (!adoDb) throw ado::fault::objectNotSet();
        adoDb->iDisConnect();
        return 0;
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        return -1;
    }
}

}  // namespace report
