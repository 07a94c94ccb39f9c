#include "extract/print_step.h"

#include "extract/label_csv.h"
#include "report/cls_wfdprintexe.h"

namespace extract {

using namespace Qt::StringLiterals;

SealForm sealForm(bool envelope, int sealTypeIndex, int hutouIndex)
{
    if (!envelope) {
        SealForm f{QString(), u"シール"_s, u"シール"_s, kSealCsvName};
        switch (sealTypeIndex) {
        case 0:
            f.wfdFile = u"シール.wfd"_s;
            break;
        case 1:
            f.wfdFile = u"シール_2X6.wfd"_s;
            break;
        case 2:
            f.wfdFile = u"ビーコン用シール30M.wfd"_s;
            break;
        default:
            break;  // no sheet chosen: no form of its own
        }
        return f;
    }
    SealForm f{QString(), u"封筒"_s, u"封筒"_s, kEnvelopeCsvName};
    switch (hutouIndex) {
    case 0:
        f.wfdFile = u"封筒印刷長3.wfd"_s;
        break;
    case 2:
        f.wfdFile = u"封筒印刷長3_横.wfd"_s;
        break;
    case 3:
        f.wfdFile = u"封筒印刷長3_横窓.wfd"_s;
        break;
    default:
        f.wfdFile = u"封筒印刷角2_2.wfd"_s;
        break;
    }
    return f;
}

PrintSealResult printSeal(short mode, const SealForm& form, const QString& sysPath)
{
    PrintSealResult result;
    report::cls_WfdPrintExe exe;
    if (exe.iInit(sysPath + form.wfdFile, form.title) != 0) {
        result.sErrMsg = exe.sErrMsg;
        return result;
    }
    exe.iSetDataText(1, form.dataName, form.dataFile);
    // Even a print goes through the engine's dialog, where the printer is chosen.
    if (mode == 1)
        exe.iPreviewActX();
    else
        exe.iPrintDialog(0);
    result.status = 0;
    result.sErrMsg = exe.sErrMsg;
    return result;
}

}  // namespace extract
