#pragma once
// The demo's SQLite database: two offices of a home-visit clinic with their patients,
// treatment and consent records, and every kind of addressee the seal screen offers.

#include <QDate>
#include <QString>

#include <cstdint>

namespace demo {

// SiteKey of the two offices; the installation's BASEID names the first.
struct SiteKey {
    int iKyotenCd;
    int iKyotenEb;
};
inline constexpr SiteKey kFirstOffice{1, 1};
inline constexpr SiteKey kSecondOffice{1, 2};

// The fewest patients that still give every kind of case the demo is meant to show.
inline constexpr int kMinPatients = 20;

struct DatabaseRequest {
    QString path;         // a file that does not exist yet
    int patients = 3000;  // over both offices
    std::uint32_t seed = 1;
    QDate today;  // the day the data is current on
};

// Builds the database. Throws DatabaseError (sqlite_insert.h) on a database failure and
// std::invalid_argument on a bad request; a half-built file is removed.
void buildDatabase(const DatabaseRequest& request);

}  // namespace demo
