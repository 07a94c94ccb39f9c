#pragma once
// The records both side screens work from: the conditions of one run of the consent
// extraction, and one addressee row of a side screen's result.

#include <QDate>
#include <QString>
#include <QtGlobal>

#include <vector>

namespace selection {

struct DouiCondition {
    short iMode = 0;     // 1: the list for the seal screen; anything else: the ledger
    short iSejutsu = 0;  // 0 massage, 1 deformity correction, 7 acupuncture and moxibustion
    short iKijun = 0;    // 0 consent date, 1 need of treatment, 2 first treatment
    short iKikan = 0;    // index of the chosen period
    short nKikanMonths = 3;
    QDate tFrom;           // inclusive
    QDate tTo;             // exclusive
    short iSort = 0;       // 0: base date, then patient; 1: patient, then base date
    short iEachStaff = 1;  // 1: rows keep their staff number
    short iIsiMatome = 0;  // 1: one hand-over entry per doctor
    short iIsiTel = 0;     // 1: the doctor's telephone number is looked up
    short iDouiRec1 = 0;   // 1: the consent's doctor is read from the record's first slot
};

// One patient (consent screen) or one addressee (progress screen). Dates are texts.
struct ConsentRow {
    qint32 nIDNo = 0;
    QString RiyouName;
    QString KijunDay;
    QString DouiKigen;
    QString ShinDouiDay;
    short nKeika = 0;
    qint32 nTantou = 0;
    QString StaffName;
    QString IraiDay;
    QString IshiIDno;
    QString IshiName;
    QString IshiKikanName;
    QString IshiTel;
    qint32 ShokaiFlg = 0;
    qint32 EmptyFlg = 0;
};

using ConsentRows = std::vector<ConsentRow>;

}  // namespace selection
