#pragma once
// Tests on the side screens' database: the installation, the process values set on it,
// a connection opened once the test's rows are in, and the consents that run out in
// November.

#include "support/consent_db.h"

#include <gtest/gtest.h>

#include <memory>

namespace sealtest {

// Patients 101 and 102 of staff 11 and 103 of staff 12, with massage consents of
// 2026/08/20 and 2026/09/01 by doctor 501 and of 2026/09/10 by doctorOf103.
inline void addNovemberConsents(const ConsentDb& install, const QString& doctorOf103)
{
    install.addConsentPatient(101, QStringLiteral("青木 一"), 11);
    install.addConsentPatient(102, QStringLiteral("井上 二"), 11);
    install.addConsentPatient(103, QStringLiteral("上田 三"), 12);
    install.addConsent(101, QStringLiteral("2026/08/20"), QStringLiteral("501"));
    install.addConsent(102, QStringLiteral("2026/09/01"), QStringLiteral("501"));
    install.addConsent(103, QStringLiteral("2026/09/10"), doctorOf103);
}

class ConsentDbTest : public ::testing::Test {
protected:
    ConsentDbTest() : values(install) {}

    // A connection on the rows put in so far; what the set-up showed is forgotten.
    void connect()
    {
        db = install.connect();
        values.platform.clearTranscript();
    }

    // Opens a side screen in mode and presses its hand-over (button 2) on a connection
    // lost since: the screen stays and hands nothing over; the one line shown is returned.
    template <class Screen>
    QString handOverOnALostConnection(Screen& screen, short mode)
    {
        screen.iInit(*db, mode);
        db->iDisConnect();
        values.platform.clearTranscript();
        screen.btnPrint(2).click();
        EXPECT_FALSE(screen.isUnloaded());
        EXPECT_TRUE(screen.sIshiID_SEAL.isEmpty());
        const QStringList shown = values.platform.transcript();
        EXPECT_EQ(shown.size(), 1) << shown.join(u'\n').toStdString();
        return shown.value(0);
    }

    ConsentDb install;
    ProcessValues values;
    std::unique_ptr<data::cT_ADODB> db;
};

}  // namespace sealtest
