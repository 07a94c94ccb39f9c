#pragma once
// An installation with a database of consents, doctors, staff and progress reports
// for the side screens: office 1, branch 2 (BASEID "0102"), today 2026/11/21.

#include "support/installation.h"

#include "data/ct_adodb.h"

#include <QString>

#include <memory>

namespace sealtest {

// SQL literal of a text, or NULL for a null QString.
inline QString lit(const QString& text) { return text.isNull() ? QStringLiteral("NULL") : u'\'' + text + u'\''; }

class ConsentDb : public SealInstall {
public:
    using SealInstall::SealInstall;

    void addStaff(int id, const QString& name, const QString& chusi = QStringLiteral("0"),
                  const QString& kana = QStringLiteral("セジュツシャ"), int office = 1) const
    {
        exec(QStringLiteral("INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, iChusiFlg) "
                            "VALUES (%1, 2, %2, %3, %4, %5);")
                 .arg(office)
                 .arg(id)
                 .arg(lit(name), lit(kana), chusi));
    }

    void addDoctor(const QString& id, const QString& name, const QString& kikan, const QString& tel = QString(),
                   const QString& sisetsu = QStringLiteral("NULL"), const QString& kikanKana = QString()) const
    {
        exec(QStringLiteral("INSERT INTO DOCTOR (cIDno, cName, cKikan, cTelNo, iSisetsuCode, cKikanKana) "
                            "VALUES (%1, %2, %3, %4, %5, %6);")
                 .arg(lit(id), lit(name), lit(kikan), lit(tel), sisetsu, lit(kikanKana)));
    }

    // A current patient of this office with a staff member (0: none) and kind of
    // treatment (0 massage, 1 acupuncture).
    void addConsentPatient(int id, const QString& name, int tantou, int kubun = 0,
                           const QString& syoryo = QString()) const
    {
        exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, nTantou, "
                            "iSejutsuKubun, tSyoryoDay) VALUES (1, 2, %1, %2, 'カナ', %3, %4, %5);")
                 .arg(id)
                 .arg(lit(name))
                 .arg(tantou ? QString::number(tantou) : QStringLiteral("NULL"))
                 .arg(kubun)
                 .arg(lit(syoryo)));
    }

    // A consent record; parts all 1 (massage) unless bui gives the first part's code.
    void addConsent(int patient, const QString& day, const QString& doctor, int bui = 1,
                    const QString& isiName = QStringLiteral("同意 医師"),
                    const QString& isiKikan = QStringLiteral("同意病院")) const
    {
        exec(QStringLiteral("INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, tDouiDay, cIsiCd, "
                            "cDouiIsiName, cDouiIsiKikan, iSejutuBui1, iSejutuBui2, iSejutuBui3, iSejutuBui4, "
                            "iSejutuBui5) VALUES (1, 2, %1, '%2', %3, %4, %5, %6, 1, 0, 0, 0);")
                 .arg(patient)
                 .arg(day, lit(doctor), lit(isiName), lit(isiKikan))
                 .arg(bui));
    }

    // A connected wrapper on the installation's database.
    std::unique_ptr<data::cT_ADODB> connect() const
    {
        auto db = std::make_unique<data::cT_ADODB>();
        db->iInit(QStringLiteral("Provider=SQLite;Data Source=") + path(QStringLiteral("seal.db")));
        if (db->iConnect() != 0) throw std::runtime_error(db->sErrMsg().toStdString());
        return db;
    }
};

}  // namespace sealtest
