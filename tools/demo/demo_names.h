#pragma once
// Word lists for the demo data: family and given names with their readings, places with
// postal and telephone prefixes, and words for facility and building names. The people
// are made up by combining common names; no list entry is a real person.

#include <QString>

#include <vector>

namespace demo {

// A written form and its full-width katakana reading.
struct Reading {
    QString text;
    QString kana;
};

struct City {
    Reading prefecture;
    Reading city;
    QString zip3;          // first three digits of the city's postal codes
    QString areaCode;      // "03", "04", "048" ...
    QString exchangeLead;  // leading digits of the local exchange
    double lat;
    double lon;
    std::vector<Reading> towns;
};

const std::vector<Reading>& familyNames();
// Names by generation: patients born before 1960 mostly carry the older ones.
const std::vector<Reading>& olderMaleNames();
const std::vector<Reading>& olderFemaleNames();
const std::vector<Reading>& youngerMaleNames();
const std::vector<Reading>& youngerFemaleNames();

// The area of the first office, of the second office, and places further away where
// patients' families live.
const std::vector<City>& firstOfficeCities();
const std::vector<City>& secondOfficeCities();
const std::vector<City>& distantCities();

// Gentle words that facility and building names are made of.
const std::vector<Reading>& nameWords();
// Building kinds; the name goes after "{word}" in the text and the reading.
const std::vector<Reading>& buildingPatterns();

}  // namespace demo
