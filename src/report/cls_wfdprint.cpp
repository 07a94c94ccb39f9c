#include "report/cls_wfdprint.h"

#include "base/vb_error.h"
#include "data/ado/faults.h"
#include "report/fault_text.h"

#include <utility>

namespace report {

namespace {

// The one document maker of the process, set by the program at its start.
WfdDocumentMaker& registeredMaker()
{
    static WfdDocumentMaker maker;
    return maker;
}

base::VbError cannotCreateObject()
{
    return {429, QStringLiteral("ActiveX コンポーネントはオブジェクトを作成できません。")};
}

}  // namespace

void registerWfdDocument(WfdDocumentMaker maker) { registeredMaker() = std::move(maker); }

std::unique_ptr<WfdDocument> createWfdDocument(const QString& progId)
{
    const WfdDocumentMaker& maker = registeredMaker();
    if (!maker || progId.compare(kWfdDocumentProgId, Qt::CaseInsensitive) != 0) throw cannotCreateObject();
    std::unique_ptr<WfdDocument> doc = maker();
    if (!doc) throw cannotCreateObject();
    return doc;
}

template <class Call>
bool cls_WfdPrint::call(Call&& c)
{
    try {
        if (!objDocument_) throw data::ado::fault::objectNotSet();
        std::forward<Call>(c)(*objDocument_);
        return true;
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        return false;
    }
}

int16_t cls_WfdPrint::iInit(const QString& title)
{
    try {
        objDocument_ = createWfdDocument(kWfdDocumentProgId);
    } catch (const base::VbError& fault) {
        sErrMsg = faultText(fault);
        return -1;
    }
    if (title.isEmpty()) return 0;
    return call([&](WfdDocument& d) { d.setTitle(title); }) ? 0 : -1;
}

int16_t cls_WfdPrint::iSetDataText(const QString& dataName, const QString& fileName)
{
    call([&](WfdDocument& d) { d.SetDataText(dataName, fileName, QString(), QString(), 0); });
    return 0;
}

int16_t cls_WfdPrint::iSetDataTextNoTitle(const QString& dataName, const QString& fileName)
{
    call([&](WfdDocument& d) { d.SetDataText(dataName, fileName, QString(), QString(), 1); });
    return 0;
}

void cls_WfdPrint::iOpen(const QString& wfdFile)
{
    call([&](WfdDocument& d) {
        d.setWindowStyle(4);
        d.Open(wfdFile);
    });
}

void cls_WfdPrint::iPreview()
{
    call([](WfdDocument& d) { d.setShowWindow(2); });
}

void cls_WfdPrint::iPrintBk()
{
    call([](WfdDocument& d) { d.PrintOutBk(QString(), 0, 0); });
}

void cls_WfdPrint::iPrintDialog()
{
    call([](WfdDocument& d) { d.PrintOutFromDialog(); });
}

}  // namespace report
