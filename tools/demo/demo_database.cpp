#include "demo_database.h"

#include "data/ado/japanese_collation.h"
#include "data/schema.h"
#include "demo_names.h"
#include "demo_random.h"
#include "sqlite_insert.h"

#include <QFile>
#include <QFileInfo>

#include <sqlite3.h>

#include <array>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

namespace demo {

namespace {

const QChar kWideSpace(0x3000);

// Dates are written by hand: the formatting functions of the library cost more than
// the database does when a hundred thousand patients are made.
void putNumber(char16_t*& out, int value, int width)
{
    for (int i = width - 1; i >= 0; --i) {
        out[i] = static_cast<char16_t>(u'0' + value % 10);
        value /= 10;
    }
    out += width;
}

QString ymd(const QDate& d)
{
    int y = 0, m = 0, day = 0;
    d.getDate(&y, &m, &day);
    char16_t text[10];
    char16_t* out = text;
    putNumber(out, y, 4);
    *out++ = u'/';
    putNumber(out, m, 2);
    *out++ = u'/';
    putNumber(out, day, 2);
    return QString(reinterpret_cast<const QChar*>(text), 10);
}

QString ymdTime(const QDate& d, int minuteOfDay)
{
    char16_t text[9];
    char16_t* out = text;
    *out++ = u' ';
    putNumber(out, minuteOfDay / 60, 2);
    *out++ = u':';
    putNumber(out, minuteOfDay % 60, 2);
    *out++ = u':';
    putNumber(out, 0, 2);
    return ymd(d) + QString(reinterpret_cast<const QChar*>(text), 9);
}

QString ym(const QDate& d) { return ymd(d).left(7); }

QString kanjiNumber(int n)
{
    static const char16_t digits[] = u"〇一二三四五六七八九";
    return QString(QChar(digits[n]));
}

QString prefectureCode(const City& city)
{
    return city.prefecture.text == QStringLiteral("埼玉県") ? QStringLiteral("11") : QStringLiteral("13");
}

// The check digit of an insurer or public fund number: from the right, digits are
// weighted 2, 1, 2, ...; the digit sums of the products are added up.
QString withCheckDigit(const QString& body)
{
    int sum = 0;
    bool two = true;
    for (qsizetype i = body.size() - 1; i >= 0; --i) {
        const int d = body.at(i).digitValue() * (two ? 2 : 1);
        sum += d / 10 + d % 10;
        two = !two;
    }
    return body + QChar(u'0' + (10 - sum % 10) % 10);
}

QStringList columnsOf(const char* table)
{
    for (const data::TableDef& t : data::schemaTables())
        if (t.name == QString::fromUtf8(table)) return t.columns;
    throw std::logic_error("table missing from the schema");
}

// The day from which a consent given on `day` needs renewing: one given in the first
// half of a month holds to the end of the third month after, one given later to the
// end of the fourth; deformity correction is consented month by month.
QDate renewalDay(const QDate& day, bool monthly)
{
    if (monthly) return day.addMonths(1);
    const QDate first(day.year(), day.month(), 1);
    return first.addMonths(day.day() < 16 ? 3 : 4);
}

struct Address {
    QString zip;
    QString line1;
    QString line2;  // building and room, empty for a house
    QString kana;
    QString tel;
    Reading town;
    double lat = 0;
    double lon = 0;
};

struct Person {
    Reading family;
    Reading given;
    int sex = 1;  // 1 man, 2 woman
    QDate birthday;

    QString name() const { return family.text + kWideSpace + given.text; }
    QString kana() const { return family.kana + kWideSpace + given.kana; }
};

struct Facility {
    int id = 0;
    SiteKey office{};
    int kind = 1;  // iKikanShubetsu: 1 facility, 2 medical institution
    QString type;
    QString name;
    QString kana;
    QString director;
    Address address;
    QString fax;
};

struct Doctor {
    QString id;
    QString name;
    QString kana;
    int institution = 0;  // index into facilities_
};

struct CareManager {
    int id = 0;
    QString name;
    QString tel;
    int facility = -1;  // index into the facilities, -1 for none
};

struct Insurer {
    enum Kind { Koki, Kokuho, Kyokai, Kumiai, Shogai, Seiho };
    QString no;
    Kind kind;
    QString prefecture;
    QString city;  // for the municipal ones
};

// What is known about one of the two offices while its people are made.
struct Area {
    SiteKey key{};
    const std::vector<City>* cities = nullptr;
    QString name;
    int patients = 0;
    std::vector<int> residences;        // facilities where patients live
    std::vector<int> planCenters;       // care plan offices
    std::vector<int> communityCenters;  // regional support centres
    std::vector<int> medical;           // medical institutions
    std::vector<int> doctors;
    std::vector<int> careManagers;  // the active ones
    std::vector<int> staffCurrent;
    std::vector<int> staffAll;
};

class Builder {
public:
    Builder(sqlite3* db, const DatabaseRequest& request)
            : db_(db), rng_(request.seed), today_(request.today), patientTotal_(request.patients)
    {}

    void run()
    {
        const int first = (patientTotal_ * 65 + 50) / 100;
        areas_[0].key = kFirstOffice;
        areas_[0].cities = &firstOfficeCities();
        areas_[0].name = QStringLiteral("練馬本店");
        areas_[0].patients = first;
        areas_[1].key = kSecondOffice;
        areas_[1].cities = &secondOfficeCities();
        areas_[1].name = QStringLiteral("所沢営業所");
        areas_[1].patients = patientTotal_ - first;
        offices();
        corps();
        insurers();
        for (Area& a : areas_) facilities(a);
        writeFacilities();
        for (Area& a : areas_) doctors(a);
        writeDoctors();
        for (Area& a : areas_) careManagers(a);
        for (Area& a : areas_) staff(a);
        referrers();
        consultations();
        forms();
        deleteLogs();
        fees();
        for (Area& a : areas_) patients(a);
    }

private:
    // ---- people and places -------------------------------------------------------

    Person person(int minAge, int maxAge)
    {
        Person p;
        p.sex = rng_.between(1, 2);
        p.birthday = today_.addYears(-rng_.between(minAge, maxAge)).addDays(-rng_.between(0, 364));
        const bool older = p.birthday.year() < 1960;
        const auto& pool = p.sex == 1 ? (older ? olderMaleNames() : youngerMaleNames())
                                      : (older ? olderFemaleNames() : youngerFemaleNames());
        p.family = rng_.pick(familyNames());
        p.given = rng_.pick(pool);
        return p;
    }

    // Home-visit patients are mostly old; a few are past a hundred.
    enum class AgeBand { Any, Young, Centenarian };
    Person patientPerson(AgeBand band)
    {
        static const std::vector<int> weights = {4, 8, 20, 36, 27, 5};
        static const std::array<std::pair<int, int>, 6> ages = {
            {{20, 59}, {60, 69}, {70, 79}, {80, 89}, {90, 99}, {100, 106}}};
        const std::size_t group = band == AgeBand::Young         ? 0
                                  : band == AgeBand::Centenarian ? 5
                                                                 : static_cast<std::size_t>(rng_.weighted(weights));
        return person(ages.at(group).first, ages.at(group).second);
    }

    QString phone(const City& c)
    {
        const int exchangeLength = c.areaCode.size() == 2 ? 4 : c.areaCode.size() == 3 ? 3 : 2;
        return c.areaCode + QLatin1Char('-') + c.exchangeLead +
               rng_.digits(exchangeLength - static_cast<int>(c.exchangeLead.size())) + QLatin1Char('-') +
               rng_.digits(4);
    }

    QString mobile()
    {
        static const std::vector<QString> heads = {QStringLiteral("090"), QStringLiteral("080"), QStringLiteral("070")};
        return rng_.pick(heads) + QLatin1Char('-') + QString::number(rng_.between(1, 9)) + rng_.digits(3) +
               QLatin1Char('-') + rng_.digits(4);
    }

    // A building name with a flat number, or with the floor an office is on.
    QString building(const Reading& town, bool office)
    {
        const Reading& pattern = rng_.pick(buildingPatterns());
        const Reading& word = rng_.percent(50) ? town : rng_.pick(nameWords());
        QString name = QString(pattern.text).replace(QStringLiteral("{}"), word.text);
        if (office) return name + QLatin1Char(' ') + QString::number(rng_.between(1, 5)) + QStringLiteral("階");
        return name + QString::number(rng_.between(1, 8)) + QStringLiteral("0") + QString::number(rng_.between(1, 9));
    }

    Address address(const City& c, int buildingPercent, bool office = false)
    {
        Address a;
        const int townIndex = rng_.between(0, static_cast<int>(c.towns.size()) - 1);
        const Reading& town = c.towns.at(static_cast<std::size_t>(townIndex));
        a.zip = c.zip3 + QLatin1Char('-') + QString::asprintf("%04d", townIndex + 1);
        QString street;
        const int banchi = rng_.between(1, 35);
        const int go = rng_.between(1, 28);
        if (rng_.percent(25)) {
            // Areas without chome number their lots in the thousands.
            street = QString::number(rng_.between(100, 2999)) + (rng_.percent(50)
                                                                     ? QStringLiteral("番地") + QString::number(go)
                                                                     : QLatin1Char('-') + QString::number(go));
        } else {
            const int chome = rng_.between(1, 6);
            switch (rng_.between(0, 2)) {
            case 0:
                street = kanjiNumber(chome) + QStringLiteral("丁目") + QString::number(banchi) + QStringLiteral("番") +
                         QString::number(go) + QStringLiteral("号");
                break;
            case 1:
                street = QString::number(chome) + QStringLiteral("丁目") + QString::number(banchi) + QLatin1Char('-') +
                         QString::number(go);
                break;
            default:
                street = QString::number(chome) + QLatin1Char('-') + QString::number(banchi) + QLatin1Char('-') +
                         QString::number(go);
            }
        }
        a.line1 = c.prefecture.text + c.city.text + town.text + street;
        if (rng_.percent(buildingPercent)) a.line2 = building(town, office);
        a.kana = c.prefecture.kana + c.city.kana + town.kana;
        a.town = town;
        a.tel = phone(c);
        a.lat = c.lat + rng_.between(-300, 300) / 10000.0;
        a.lon = c.lon + rng_.between(-300, 300) / 10000.0;
        return a;
    }

    const City& cityOf(const Area& area) { return rng_.pick(*area.cities); }

    // ---- masters -----------------------------------------------------------------

    void offices()
    {
        Insert ins(db_, QStringLiteral("KYOTEN"), columnsOf("KYOTEN"));
        auto office = [&](int eb, const char* name, int used) {
            ins.set("iKyotenCd", 1)
                .set("iKyotenEb", eb)
                .set("cKyotenName", QString::fromUtf8(name))
                .set("iUsedFlg", used);
            ins.row();
        };
        office(0, "ひだまりグループ本部", 0);
        office(kFirstOffice.iKyotenEb, "練馬本店", 1);
        office(kSecondOffice.iKyotenEb, "所沢営業所", 1);
        office(3, "中野出張所（閉鎖）", 0);
    }

    void corps()
    {
        Insert ins(db_, QStringLiteral("CORP"), columnsOf("CORP"));
        for (const Area& area : areas_) {
            const City& c = area.cities->front();
            const Address a = address(c, 100, true);
            const Person head = person(45, 70);
            struct Kind {
                int type;
                QString name;
                QString kana;
            };
            const QString brand = QStringLiteral("ひだまり訪問鍼灸マッサージ");
            const QString brandKana = QStringLiteral("ヒダマリホウモンシンキュウマッサージ");
            std::vector<Kind> kinds = {
                {0, brand + QLatin1Char(' ') + area.name, brandKana},
                {area.key.iKyotenEb == kFirstOffice.iKyotenEb ? 1 : 2,
                 QStringLiteral("ひだまり鍼灸マッサージ院") + QLatin1Char(' ') + area.name,
                 QStringLiteral("ヒダマリシンキュウマッサージイン")},
            };
            if (area.key.iKyotenEb == kFirstOffice.iKyotenEb)
                kinds.push_back({3, QStringLiteral("東日本訪問施術協同組合"),
                                 QStringLiteral("ヒガシニホンホウモンセジュツキョウドウクミアイ")});
            int id = 1;
            for (const Kind& k : kinds) {
                ins.set("iKyotenCd", area.key.iKyotenCd)
                    .set("iKyotenEb", area.key.iKyotenEb)
                    .set("nIDNo", id++)
                    .set("iType", k.type)
                    .set("cShamei1", k.name)
                    .set("cShameiKana1", k.kana)
                    .set("cDaihyo", QStringLiteral("代表取締役") + kWideSpace + head.name())
                    .set("cDaihyoKana", head.kana())
                    .set("cYubinNo", a.zip)
                    .set("cAddress1", a.line1)
                    .text("cAddress2", a.line2)
                    .set("cAddressKana", a.kana)
                    .set("cTelNo", a.tel)
                    .set("cFaxNo", phone(c))
                    .set("cMailDestination", a.line1 + QLatin1Char(' ') + a.line2)
                    .set("cMailDestinationZipNo", a.zip)
                    .set("cKinyuName", QStringLiteral("武蔵野中央銀行"))
                    .set("cKinyuNo", QStringLiteral("0599"))
                    .set("cKinyuSiten", c.city.text.chopped(1) + QStringLiteral("支店"))
                    .set("cKinyuSitenNo", rng_.digits(3))
                    .set("iKinSyubetsu", 1)
                    .set("iKinSiten", 2)
                    .set("iKozaType", 1)
                    .set("iKozaKubun", 1)
                    .set("cKozaBangou", rng_.digits(7))
                    .set("cKozaKana", QStringLiteral("カ）ヒダマリ"))
                    .set("cKozaMeigi1", QStringLiteral("株式会社ひだまり"))
                    .set("cJigyousyoNo", QStringLiteral("13") + rng_.digits(8))
                    .set("cJigyouReceiptName", k.name)
                    .set("cHokenTourokuKubetsu", QStringLiteral("1"))
                    .set("cEmail", QStringLiteral("office%1@example.jp").arg(area.key.iKyotenEb))
                    .set("nLat", a.lat)
                    .set("nLon", a.lon)
                    .set("cPcName", QStringLiteral("OFFICE-PC01"))
                    .set("tUpDateTime", ymdTime(today_, 540));
                ins.row();
            }
        }
    }

    void insurers()
    {
        Insert ins(db_, QStringLiteral("HOKENJA"), columnsOf("HOKENJA"));
        auto add = [&](Insurer::Kind kind, const QString& no, const QString& name, const QString& kana,
                       const QString& head, const City& c, const QString& city, bool claimsToUnion) {
            const Address a = address(c, 0);
            ins.set("cIDno", no)
                .set("iType", kind >= Insurer::Shogai ? 2 : 1)
                .set("cName", name)
                .set("cNameKana", kana)
                .set("cDaihyo", head)
                .set("cYubinNo", a.zip)
                .set("cAddress1", a.line1)
                .text("cAddress2", a.line2)
                .set("cAddressKana", a.kana)
                .set("cTelNo", a.tel)
                .set("cFaxNo", phone(c));
            if (no.size() == 8) {
                ins.set("cCodeHou", no.left(2)).set("cCodeKen", no.mid(2, 2)).set("cCodeHok", no.mid(4, 3));
            } else {
                ins.set("cCodeKen", no.left(2)).set("cCodeHok", no.mid(2, 3));
            }
            if (claimsToUnion) {
                const Address u = address(c, 0);
                ins.set("cName2", c.prefecture.text + QStringLiteral("国民健康保険団体連合会"))
                    .set("cYubinNo2", u.zip)
                    .set("cAddress3", u.line1);
            }
            ins.row();
            insurers_.push_back({no, kind, c.prefecture.text, city});
        };
        std::vector<const std::vector<City>*> regions = {&firstOfficeCities(), &secondOfficeCities()};
        for (const auto* cities : regions) {
            const City& capital = cities->front();
            const QString pc = prefectureCode(capital);
            const QString pref = capital.prefecture.text;
            const QString prefKana = capital.prefecture.kana;
            const QString shortPref = pref.chopped(1);
            add(Insurer::Koki, withCheckDigit(QStringLiteral("39") + pc + QStringLiteral("100")),
                pref + QStringLiteral("後期高齢者医療広域連合"),
                prefKana + QStringLiteral("コウキコウレイシャイリョウコウイキレンゴウ"), QStringLiteral("広域連合長"),
                capital, QString(), true);
            add(Insurer::Kyokai, withCheckDigit(QStringLiteral("01") + pc + QStringLiteral("001")),
                QStringLiteral("全国健康保険協会") + shortPref + QStringLiteral("支部"),
                QStringLiteral("ゼンコクケンコウホケンキョウカイ") +
                    prefKana.chopped(prefKana.endsWith(QStringLiteral("ケン")) ? 2 : 1) + QStringLiteral("シブ"),
                QStringLiteral("支部長"), capital, QString(), false);
            int cityNo = 110;
            for (const City& c : *cities) {
                add(Insurer::Kokuho, withCheckDigit(pc + QString::number(cityNo)),
                    c.city.text + QStringLiteral("（国民健康保険）"),
                    c.city.kana + QStringLiteral("コクミンケンコウホケン"),
                    c.city.text.endsWith(QStringLiteral("区")) ? QStringLiteral("区長") : QStringLiteral("市長"), c,
                    c.city.text, true);
                add(Insurer::Seiho, withCheckDigit(QStringLiteral("12") + pc + QString::number(cityNo + 300)),
                    c.city.text + QStringLiteral("福祉事務所"), c.city.kana + QStringLiteral("フクシジムショ"),
                    QStringLiteral("所長"), c, c.city.text, false);
                cityNo += 7;
            }
            add(Insurer::Shogai, withCheckDigit(QStringLiteral("81") + pc + QStringLiteral("301")),
                pref + QStringLiteral("心身障害者医療費助成"),
                prefKana + QStringLiteral("シンシンショウガイシャイリョウヒジョセイ"), QStringLiteral("福祉局長"),
                capital, QString(), false);
        }
        // Health insurance societies of employers; the last two have no patient.
        const char* const societies[][2] = {
            {"武蔵野精機健康保険組合", "ムサシノセイキケンコウホケンクミアイ"},
            {"東都運輸健康保険組合", "トウトウンユケンコウホケンクミアイ"},
            {"関東電材健康保険組合", "カントウデンザイケンコウホケンクミアイ"},
            {"みどり食品健康保険組合", "ミドリショクヒンケンコウホケンクミアイ"},
            {"北辰化学健康保険組合", "ホクシンカガクケンコウホケンクミアイ"},
            {"瑞穂印刷健康保険組合", "ミズホインサツケンコウホケンクミアイ"},
        };
        int societyNo = 131;
        for (const auto& s : societies) {
            add(Insurer::Kumiai, withCheckDigit(QStringLiteral("0613") + QString::number(societyNo)),
                QString::fromUtf8(s[0]), QString::fromUtf8(s[1]), QStringLiteral("理事長"), firstOfficeCities().front(),
                QString(), false);
            societyNo += 11;
        }
        // A prefecture where no patient lives.
        add(Insurer::Koki, withCheckDigit(QStringLiteral("3927100")), QStringLiteral("大阪府後期高齢者医療広域連合"),
            QStringLiteral("オオサカフコウキコウレイシャイリョウコウイキレンゴウ"), QStringLiteral("広域連合長"),
            distantCities().at(2), QString(), true);
    }

    const Insurer* findInsurer(Insurer::Kind kind, const QString& prefecture, const QString& city = {})
    {
        for (const Insurer& i : insurers_)
            if (i.kind == kind && i.prefecture == prefecture && (city.isEmpty() || i.city == city)) return &i;
        return nullptr;
    }

    const Insurer& pickSociety()
    {
        std::vector<const Insurer*> used;
        for (const Insurer& i : insurers_)
            if (i.kind == Insurer::Kumiai) used.push_back(&i);
        return *used.at(static_cast<std::size_t>(rng_.between(0, static_cast<int>(used.size()) - 3)));
    }

    void facilities(Area& area)
    {
        struct Type {
            const char* type;
            const char* prefix;
            const char* prefixKana;
            const char* suffix;
            const char* suffixKana;
            int weight;
        };
        static const Type types[] = {
            {"居宅介護支援事業所", "", "", "ケアプランセンター", "ケアプランセンター", 35},
            {"地域包括支援センター", "", "", "地域包括支援センター", "チイキホウカツシエンセンター", 10},
            {"特別養護老人ホーム", "特別養護老人ホーム", "トクベツヨウゴロウジンホーム", "の里", "ノサト", 12},
            {"介護付有料老人ホーム", "介護付有料老人ホーム", "カイゴツキユウリョウロウジンホーム", "", "", 15},
            {"サービス付き高齢者向け住宅", "サービス付き高齢者向け住宅", "サービスツキコウレイシャムケジュウタク", "",
             "", 13},
            {"グループホーム", "グループホーム", "グループホーム", "", "", 10},
            {"デイサービスセンター", "デイサービスセンター", "デイサービスセンター", "", "", 5},
        };
        std::vector<int> weights;
        for (const Type& t : types) weights.push_back(t.weight);
        const int count = std::max(6, area.patients / 60);
        for (int i = 0; i < count; ++i) {
            // The first three of an area are a care plan office, a support centre and a home.
            const int t = i == 0 ? 0 : i == 1 ? 1 : i == 2 ? 2 : rng_.weighted(weights);
            const Type& type = types[t];
            const City& c = cityOf(area);
            Facility f;
            f.id = static_cast<int>(facilities_.size()) + 1;
            f.office = area.key;
            f.kind = 1;
            f.type = QString::fromUtf8(type.type);
            f.address = address(c, t == 0 || t == 1 ? 50 : 0, true);
            if (t >= 2) f.address.line2 = QString();
            const Reading& word = t == 1 ? f.address.town : rng_.pick(nameWords());
            f.name = QString::fromUtf8(type.prefix) + word.text + QString::fromUtf8(type.suffix);
            f.kana = QString::fromUtf8(type.prefixKana) + word.kana + QString::fromUtf8(type.suffixKana);
            f.director = person(40, 70).name();
            f.fax = phone(c);
            facilities_.push_back(f);
            const int index = static_cast<int>(facilities_.size()) - 1;
            if (t == 0)
                area.planCenters.push_back(index);
            else if (t == 1)
                area.communityCenters.push_back(index);
            else if (t >= 2 && t <= 5)
                area.residences.push_back(index);
        }
        static const char* const clinics[][2] = {
            {"クリニック", "クリニック"}, {"内科医院", "ナイカイイン"},
            {"整形外科", "セイケイゲカ"}, {"在宅診療所", "ザイタクシンリョウジョ"},
            {"病院", "ビョウイン"},       {"内科・リハビリテーション科", "ナイカリハビリテーションカ"},
        };
        const int medical = std::max(4, area.patients / 70);
        for (int i = 0; i < medical; ++i) {
            const City& c = cityOf(area);
            const int k = rng_.between(0, 5);
            Facility f;
            f.id = static_cast<int>(facilities_.size()) + 1;
            f.office = area.key;
            f.kind = 2;
            f.type = k == 4 ? QStringLiteral("病院") : QStringLiteral("診療所");
            const Person owner = person(40, 75);
            const Reading& word = rng_.percent(40)   ? owner.family
                                  : rng_.percent(50) ? rng_.pick(c.towns)
                                                     : rng_.pick(nameWords());
            f.name = word.text + QString::fromUtf8(clinics[k][0]);
            f.kana = word.kana + QString::fromUtf8(clinics[k][1]);
            f.director = owner.name();
            f.address = address(c, 30, true);
            f.fax = phone(c);
            facilities_.push_back(f);
            area.medical.push_back(static_cast<int>(facilities_.size()) - 1);
        }
    }

    void writeFacilities()
    {
        Insert ins(db_, QStringLiteral("SISETSU"), columnsOf("SISETSU"));
        for (const Facility& f : facilities_) {
            ins.set("iKyotenCd", f.office.iKyotenCd)
                .set("iKyotenEb", f.office.iKyotenEb)
                .set("nIDNo", f.id)
                .set("iKikanShubetsu", f.kind)
                .set("cSisetsuType", f.type)
                .set("cShamei1", f.name)
                .set("cShameiKana1", f.kana)
                .set("cShamei1Ryaku", f.name.left(10))
                .set("cDaihyo", f.director)
                .set("cYubinNo", f.address.zip)
                .set("cAddress1", f.address.line1)
                .text("cAddress2", f.address.line2)
                .set("cAddressKana", f.address.kana)
                .set("cTelNo", f.address.tel)
                .set("cFaxNo", f.fax)
                .set("nLat", f.address.lat)
                .set("nLon", f.address.lon)
                .set("cPcName", QStringLiteral("OFFICE-PC02"))
                .set("tUpDateTime", ymdTime(today_.addDays(-f.id % 300), 600));
            ins.row();
        }
    }

    void doctors(Area& area)
    {
        const int count = std::max(6, area.patients / 25);
        for (int i = 0; i < count; ++i) {
            // Numbers with gaps, so that ordering them as numbers differs from text order.
            nextDoctorId_ += rng_.between(1, 3);
            const Person p = person(35, 75);
            const int institution = i < static_cast<int>(area.medical.size())
                                        ? area.medical.at(static_cast<std::size_t>(i))
                                        : rng_.pick(area.medical);
            doctors_.push_back({QString::number(nextDoctorId_), p.name(), p.kana(), institution});
            area.doctors.push_back(static_cast<int>(doctors_.size()) - 1);
        }
    }

    void writeDoctors()
    {
        Insert ins(db_, QStringLiteral("DOCTOR"), columnsOf("DOCTOR"));
        for (const Doctor& d : doctors_) {
            const Facility& f = facilities_.at(static_cast<std::size_t>(d.institution));
            ins.set("cIDno", d.id)
                .set("cCode", rng_.digits(6))
                .set("cName", d.name)
                .set("cNameKana", d.kana)
                .set("cKikan", f.name)
                .set("cKikanKana", f.kana)
                .set("cDaihyo", f.director)
                .set("cYubinNo", f.address.zip)
                .set("cAddress1", f.address.line1)
                .text("cAddress2", f.address.line2)
                .set("cAddressKana", f.address.kana)
                .set("cTelNo", f.address.tel)
                .set("cFaxNo", f.fax)
                .set("iSisetsuCode", f.id);
            if (rng_.percent(10)) ins.set("cMobNo", mobile());
            ins.row();
        }
    }

    void careManagers(Area& area)
    {
        Insert ins(db_, QStringLiteral("CAREMANE"), columnsOf("CAREMANE"));
        const int count = std::max(6, area.patients / 35);
        for (int i = 0; i < count; ++i) {
            CareManager cm;
            cm.id = ++nextCareManagerId_;
            const Person p = person(30, 65);
            cm.name = p.name();
            const bool alone = i == 1 || (i > 3 && rng_.percent(4));  // neither facility nor office
            // 0 or empty is active; 1 has stopped.
            std::optional<int> stop;
            if (i == 2 || (i > 3 && rng_.percent(12)))
                stop = 1;
            else if (i == 3 || (i > 3 && rng_.percent(8)))
                stop.reset();
            else
                stop = 0;
            ins.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", cm.id)
                .set("cName", cm.name)
                .set("cNameKana", p.kana())
                .set("iSexKubun", p.sex)
                .set("tBirthday", ymd(p.birthday))
                .set("cPcName", QStringLiteral("OFFICE-PC01"))
                .set("tUpDateTime", ymdTime(today_.addDays(-rng_.between(0, 400)), rng_.between(48, 114) * 10));
            if (stop) ins.set("iChusiFlg", *stop);
            if (alone) {
                const Address a = address(cityOf(area), 40);
                ins.set("cYubinNo", a.zip)
                    .set("cAdress1", a.line1)
                    .text("cAdress2", a.line2)
                    .set("cAdressKana", a.kana)
                    .set("cTelNo", a.tel);
                cm.tel = a.tel;
            } else {
                cm.facility = rng_.pick(area.planCenters);
                const Facility& plan = facilities_.at(static_cast<std::size_t>(cm.facility));
                ins.set("iSisetsuCode", plan.id)
                    .set("cYubinNo", plan.address.zip)
                    .set("cAdress1", plan.address.line1)
                    .text("cAdress2", plan.address.line2)
                    .set("cAdressKana", plan.address.kana)
                    .set("cTelNo", plan.address.tel)
                    .set("cFaxNo", plan.fax);
                cm.tel = plan.address.tel;
                if (i == 0 || rng_.percent(50))
                    ins.set("iJigyosyoCode",
                            facilities_.at(static_cast<std::size_t>(rng_.pick(area.communityCenters))).id);
            }
            if (rng_.percent(50)) ins.set("cMobNo", mobile());
            ins.set("cMail", QStringLiteral("cm%1@example.jp").arg(cm.id, 4, 10, QLatin1Char('0')));
            ins.row();
            careManagers_.push_back(cm);
            if (!stop || *stop == 0) area.careManagers.push_back(static_cast<int>(careManagers_.size()) - 1);
        }
    }

    void staff(Area& area)
    {
        Insert ins(db_, QStringLiteral("STAFF"), columnsOf("STAFF"));
        static const char* const licences[] = {"あん摩マッサージ指圧師", "はり師・きゅう師",
                                               "あん摩マッサージ指圧師・はり師・きゅう師"};
        const int count = std::max(8, area.patients / 35);
        for (int i = 0; i < count; ++i) {
            const int id = ++nextStaffId_;
            const Person p = person(24, 66);
            // Management state: 0 or empty is current; 1 and 2 have left.
            std::optional<int> flag;
            if (i == 1 || (i > 3 && rng_.percent(20)))
                flag = 1;
            else if (i == 2 || (i > 3 && rng_.percent(8)))
                flag = 2;
            else if (i == 3 || rng_.percent(12))
                flag.reset();
            else
                flag = 0;
            const bool current = !flag || *flag == 0;
            const City& c = cityOf(area);
            const Address a = address(c, 45);
            const int licence = rng_.between(0, 2);
            const QDate joined = today_.addDays(-rng_.between(60, 15 * 365));
            ins.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", id)
                .set("cName", p.name())
                .set("cNameKana", p.kana())
                .set("cNameRyaku", p.family.text)
                .set("iSexKubun", p.sex)
                .set("tBirthday", ymd(p.birthday))
                .set("cYubinNo", a.zip)
                .set("cAdress1", a.line1)
                .text("cAdress2", a.line2)
                .set("cTelNo", a.tel)
                .set("cMobNo", mobile())
                .set("iShikakuKubun", licence + 1)
                .set("cSikaku", QString::fromUtf8(licences[licence]))
                .set("cTourokuNo", QString::number(rng_.between(100000, 199999)))
                .set("iSyokushuKubun", 1)
                .set("iYaku", i == 0 ? 1 : 0)
                .set("iKanriSekininFlg", i == 0 ? 1 : 0)
                .set("tNyusyaDay", ymd(joined))
                .set("tTourokuDay", ymd(joined.addDays(-rng_.between(30, 900))))
                .set("cEmployeeNumber", QStringLiteral("E%1").arg(id, 5, 10, QLatin1Char('0')))
                .set("cEmail", QStringLiteral("staff%1@example.jp").arg(id, 4, 10, QLatin1Char('0')))
                .set("iContractType", rng_.between(1, 2))
                .set("nLat", a.lat)
                .set("nLon", a.lon)
                .set("cPcName", QStringLiteral("OFFICE-PC01"))
                .set("tUpDateTime", ymdTime(joined, 600));
            if (flag) ins.set("iChusiFlg", *flag);
            if (!current) ins.set("tRday", ymd(today_.addDays(-rng_.between(10, 900))));
            ins.row();
            area.staffAll.push_back(id);
            if (current) area.staffCurrent.push_back(id);
        }
    }

    void referrers()
    {
        Insert ins(db_, QStringLiteral("SYOUKAI"), columnsOf("SYOUKAI"));
        static const char* const jobs[] = {"ケアマネジャー",         "民生委員", "訪問看護師",
                                           "医療ソーシャルワーカー", "ご家族",   "自治会役員"};
        const int count = std::max(6, patientTotal_ / 150);
        for (int i = 0; i < count; ++i) {
            const Area& area = areas_[i % 2];
            const Person p = person(30, 75);
            const Address a = address(cityOf(area), 30);
            const int job = rng_.between(0, 5);
            ins.set("nIDNo", i + 1)
                .set("cName", p.name())
                .set("cNameKana", p.kana())
                .set("cYubinNo", a.zip)
                .set("cAddress1", a.line1)
                .text("cAddress2", a.line2)
                .set("cAddressKana", a.kana)
                .set("cTelNo", a.tel)
                .set("cJob", QString::fromUtf8(jobs[job]));
            if (job < 4) {
                const Facility& f = facilities_.at(
                    static_cast<std::size_t>(job == 0 ? rng_.pick(area.planCenters) : rng_.pick(area.residences)));
                ins.set("cJigyousho", f.name).set("cJigyoushoKana", f.kana).set("cFaxNo", f.fax);
            }
            if (rng_.percent(60)) ins.set("cMobNo", mobile());
            ins.set("cBikou1", QStringLiteral("初回紹介 ") + ymd(today_.addDays(-rng_.between(30, 2000))));
            ins.row();
        }
    }

    void consultations()
    {
        Insert soudan(db_, QStringLiteral("SOUDAN"), columnsOf("SOUDAN"));
        Insert tantou(db_, QStringLiteral("SOUDAN_TANTOU"), columnsOf("SOUDAN_TANTOU"));
        const int count = std::max(4, patientTotal_ / 500);
        for (int i = 0; i < count; ++i) {
            const Area& area = areas_[i % 2];
            const Facility& f = facilities_.at(static_cast<std::size_t>(rng_.pick(area.communityCenters)));
            soudan.set("nIDNo", i + 1)
                .set("iSisetsuCode", f.id)
                .set("cKikan", f.name)
                .set("cKikankana", f.kana)
                .set("cYubinNo", f.address.zip)
                .set("cAdress1", f.address.line1)
                .text("cAdress2", f.address.line2)
                .set("cTelNo", f.address.tel)
                .set("cFaxNo", f.fax)
                .set("tUpdateTime", ymdTime(today_.addDays(-rng_.between(0, 200)), 630));
            soudan.row();
            const int staffCount = i == 0 ? 3 : rng_.between(1, 3);
            for (int s = 0; s < staffCount; ++s) {
                // Now and then a member of the other office helps out.
                const Area& from = (s == 2 || rng_.percent(10)) ? areas_[(i + 1) % 2] : area;
                tantou.set("nIDNo", i + 1)
                    .set("iStaffKyotenCd", from.key.iKyotenCd)
                    .set("iStaffKyotenEb", from.key.iKyotenEb)
                    .set("nStaffIDNo", rng_.pick(from.staffCurrent));
                tantou.row();
            }
        }
    }

    void forms()
    {
        Insert ins(db_, QStringLiteral("SHINSEISYO"), columnsOf("SHINSEISYO"));
        static const char* const layouts[][3] = {
            {"療養費支給申請書_マッサージ.wfd", "療養費支給申請書（マッサージ）", "0"},
            {"療養費支給申請書_変形徒手.wfd", "療養費支給申請書（変形徒手矯正術）", "0"},
            {"療養費支給申請書_はりきゅう.wfd", "療養費支給申請書（はり・きゅう）", "1"},
            {"療養費支給申請書_旧様式.wfd", "療養費支給申請書（旧様式）", "0"},
        };
        for (const Area& area : areas_) {
            int id = 1;
            for (const auto& l : layouts) {
                ins.set("iKyotenCd", area.key.iKyotenCd)
                    .set("iKyotenEb", area.key.iKyotenEb)
                    .set("nIDNo", id)
                    .set("cFileName", QString::fromUtf8(l[0]))
                    .set("cDispName", QString::fromUtf8(l[1]))
                    .set("iSejutsuKubun", QString::fromUtf8(l[2]).toInt())
                    .set("iHokenType", 1)
                    .set("iDelFlg", id == 4 ? 1 : 0)
                    .set("iPrintType", 1)
                    .set("iStateNo", 0)
                    .set("tUpDateTime", ymdTime(today_.addDays(-400), 600));
                ins.row();
                ++id;
            }
        }
    }

    void deleteLogs()
    {
        Insert staffLog(db_, QStringLiteral("STAFF_DELETE_LOG"), columnsOf("STAFF_DELETE_LOG"));
        Insert facilityLog(db_, QStringLiteral("SISETSU_DELETE_LOG"), columnsOf("SISETSU_DELETE_LOG"));
        for (int i = 0; i < 2; ++i) {
            const Area& area = areas_[i];
            staffLog.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", nextStaffId_ + 1 + i)
                .set("cName", person(25, 60).name())
                .set("deleteLoginID", QStringLiteral("admin"))
                .set("deleteDate", ymdTime(today_.addDays(-rng_.between(20, 500)), 1000));
            staffLog.row();
            facilityLog.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", static_cast<int>(facilities_.size()) + 1 + i)
                .set("cName", QStringLiteral("旧") + rng_.pick(nameWords()).text + QStringLiteral("ケアプランセンター"))
                .set("deleteLoginID", QStringLiteral("jimu01"))
                .set("deleteDate", ymdTime(today_.addDays(-rng_.between(20, 500)), 900));
            facilityLog.row();
        }
    }

    void fees()
    {
        Insert price(db_, QStringLiteral("療養費単価"), columnsOf("療養費単価"));
        Insert visit(db_, QStringLiteral("往療費区分"), columnsOf("往療費区分"));
        struct Period {
            const char* from;
            const char* to;
            int step;  // yen added at the later revision
        };
        const Period periods[] = {{"2022/06/01", "2024/09/30", 0}, {"2024/10/01", "2099/12/31", 20}};
        const int prices[][3] = {
            {1, 1, 450},   {1, 2, 470},  {1, 3, 180},   {1, 4, 100},   {1, 11, 1610}, {1, 12, 1770}, {1, 13, 1610},
            {1, 14, 1770}, {1, 15, 100}, {1, 16, 1770}, {1, 17, 1900}, {1, 18, 480},  {2, 1, 2300},  {2, 2, 2550},
            {9, 1, 1000},  {9, 2, 2000}, {9, 3, 3000},  {9, 11, 3000}, {9, 12, 500},
        };
        for (const Period& p : periods) {
            for (const auto& row : prices) {
                price.set("cStartDate", QString::fromUtf8(p.from))
                    .set("cEndDate", QString::fromUtf8(p.to))
                    .set("iTankaKbn", row[0])
                    .set("nTankaCode", row[1])
                    .set("nTanka", row[2] + (row[0] == 1 && row[1] >= 11 && row[1] <= 14 ? p.step : 0));
                price.row();
            }
            const int bands[][2] = {{4, 2300}, {16, 2550}};
            for (const auto& band : bands) {
                visit.set("cStartDate", QString::fromUtf8(p.from))
                    .set("cEndDate", QString::fromUtf8(p.to))
                    .set("nMaxLen", band[0])
                    .set("nKingakuOuryou", band[1]);
                visit.row();
            }
        }
    }

    // ---- patients ----------------------------------------------------------------

    struct Consent {
        QDate day;
        QDate end;
        int doctor = -1;
    };

    void patients(Area& area)
    {
        Insert riyousha(db_, QStringLiteral("RIYOUSHA"), columnsOf("RIYOUSHA"));
        Insert sub(db_, QStringLiteral("RIYOUSHA_SUB"), columnsOf("RIYOUSHA_SUB"));
        Insert consents(db_, QStringLiteral("RIYOUSHA_DOUI_REC"), columnsOf("RIYOUSHA_DOUI_REC"));
        Insert calc(db_, QStringLiteral("DOUIKIROKU"), columnsOf("DOUIKIROKU"));
        Insert visits(db_, QStringLiteral("JISSEKI"), columnsOf("JISSEKI"));
        Insert reports(db_, QStringLiteral("経過報告"), columnsOf("経過報告"));
        Insert map(db_, QStringLiteral("RIYOUSHA_MAP"), columnsOf("RIYOUSHA_MAP"));

        static const char* const illnesses[] = {"脳梗塞後遺症",     "変形性膝関節症", "パーキンソン病", "廃用症候群",
                                                "腰部脊柱管狭窄症", "関節リウマチ",   "頸椎症性脊髄症", "脳出血後遺症"};
        static const char* const acupunctureIllnesses[] = {"神経痛", "リウマチ", "頸腕症候群",
                                                           "五十肩", "腰痛症",   "頸椎捻挫後遺症"};
        static const char* const notes[] = {"駐車場あり（来客用２番）", "インターホン故障中、到着時に電話",
                                            "小型犬あり", "鍵はキーボックス（番号は家族に確認）", "午前中の訪問を希望"};
        static const char* const relations[] = {"長男", "長女", "次男", "妻", "夫", "長男の妻"};

        const QDate visitStart = QDate(today_.year(), today_.month(), 1).addMonths(-2);
        const QDate reportStart = QDate(today_.year(), today_.month(), 1).addMonths(-6);
        const QDate consentHistoryStart = today_.addMonths(-15);

        for (int k = 0; k < area.patients; ++k) {
            const int id = k + 1;
            const bool ended = k == 3 || (k > 13 && rng_.percent(15));
            const Person p = patientPerson(k == 6 ? AgeBand::Centenarian : k == 4 ? AgeBand::Young : AgeBand::Any);
            const int age = p.birthday.daysTo(today_) / 365;
            const City& c = cityOf(area);

            // Service span.
            QDate expire;
            QDate start;
            if (ended) {
                expire = today_.addDays(-rng_.between(k == 3 ? 20 : 1, 3 * 365));
                start = expire.addDays(-rng_.between(60, 6 * 365));
            } else {
                start = today_.addDays(-rng_.between(20, 8 * 365));
            }
            const QDate last = ended ? expire : today_;

            // Where the patient lives.
            Address home;
            int room = 0;
            int residence = -1;
            if (k == 5 || (k > 13 && rng_.percent(12))) {
                residence = rng_.pick(area.residences);
                const Facility& f = facilities_.at(static_cast<std::size_t>(residence));
                home = f.address;
                room = rng_.between(1, 4) * 100 + rng_.between(1, 20);
                home.line1 = f.address.line1 + QLatin1Char(' ') + f.name + QLatin1Char(' ') + QString::number(room) +
                             QStringLiteral("号室");
                home.tel = f.address.tel;
            } else {
                home = address(c, 30);
                if (!home.line2.isEmpty()) home.line1 += QLatin1Char(' ') + home.line2;
            }

            // Family: the householder, and the second, third, billing and contact addresses.
            const Person child = [&] {
                Person f = person(std::max(20, age - 45), std::max(25, age - 20));
                f.family = p.family;
                return f;
            }();
            const bool secondAddress = k == 1 || (k > 13 && rng_.percent(25));
            const bool thirdAddress = k == 2 || (k > 13 && rng_.percent(10));
            const bool billing = k == 2 || (k > 13 && rng_.percent(15));
            const bool contact = k == 1 || (k > 13 && rng_.percent(20));
            Address familyHome;
            if (secondAddress || billing || contact)
                familyHome = address(rng_.percent(60) ? cityOf(area) : rng_.pick(distantCities()), 40);

            // Treatment.
            const bool acupuncture = k == 7 || (k > 13 && rng_.percent(30));
            const bool deformity = !acupuncture && (k == 8 || (k > 13 && rng_.percent(15)));
            std::array<int, 5> parts{};
            if (!acupuncture) {
                for (int& part : parts) part = rng_.percent(55) ? 1 : 0;
                parts[static_cast<std::size_t>(rng_.between(0, 4))] = 1;
                if (deformity) parts[static_cast<std::size_t>(rng_.between(1, 4))] = 2;
            }

            // Insurance.
            const QString pref = c.prefecture.text;
            QString hokenNo;
            if (age >= 75 && !rng_.percent(5)) {
                hokenNo = findInsurer(Insurer::Koki, pref)->no;
            } else {
                const int roll = rng_.between(0, 99);
                if (age >= 65 ? roll < 70 : roll < 30)
                    hokenNo = findInsurer(Insurer::Kokuho, pref, c.city.text)->no;
                else if (age >= 65 ? roll < 85 : roll < 70)
                    hokenNo = findInsurer(Insurer::Kyokai, pref)->no;
                else
                    hokenNo = pickSociety().no;
            }
            QString futanNo;
            if (k == 9 || (k > 13 && rng_.percent(18))) {
                if (rng_.percent(60)) {
                    futanNo = findInsurer(Insurer::Shogai, pref)->no;
                } else {
                    futanNo = findInsurer(Insurer::Seiho, pref, c.city.text)->no;
                    if (age < 75) hokenNo.clear();  // on welfare alone, with no insurance of their own
                }
            }

            // Staff, doctor, care manager.
            const std::vector<int>& staffPool = ended ? area.staffAll : area.staffCurrent;
            const int tantou = rng_.pick(staffPool);
            std::optional<int> tantou2;
            if (rng_.percent(15)) tantou2 = rng_.pick(area.staffCurrent);
            int doctor = rng_.pick(area.doctors);
            std::optional<int> careManager;
            if (k == 0 || (k > 13 && rng_.percent(65))) careManager = rng_.pick(area.careManagers);

            // Consents, from the start of the service on; old ones are not kept.
            std::array<std::optional<Consent>, 2> slots;
            const bool noConsent = k == 13 || (k > 13 && rng_.percent(3));
            if (!noConsent) {
                QDate day = start.addDays(-rng_.between(0, 10));
                int n = 0;
                while (day <= last) {
                    if (rng_.percent(4)) doctor = rng_.pick(area.doctors);
                    const QDate renew = renewalDay(day, deformity);
                    const Consent consent{day, renew.addDays(-1), doctor};
                    slots[static_cast<std::size_t>(n % 2)] = consent;
                    if (day >= consentHistoryStart) {
                        const Doctor& d = doctors_.at(static_cast<std::size_t>(doctor));
                        const Facility& f = facilities_.at(static_cast<std::size_t>(d.institution));
                        consents.set("iKyotenCd", area.key.iKyotenCd)
                            .set("iKyotenEb", area.key.iKyotenEb)
                            .set("nIDNo", id)
                            .set("tDouiDay", ymd(day))
                            .set("tDouiKaryoS", ymd(day))
                            .set("cDouiIsiName", d.name)
                            .set("cDouiIsiKikan", f.name)
                            .set("cDouiIsiAdd", f.address.line1)
                            .set("cIsiCd", d.id);
                        const char* const partColumns[] = {"iSejutuBui1", "iSejutuBui2", "iSejutuBui3", "iSejutuBui4",
                                                           "iSejutuBui5"};
                        for (std::size_t i = 0; i < parts.size(); ++i) consents.set(partColumns[i], parts[i]);
                        consents.row();
                    }
                    day = renew.addDays(-rng_.between(1, deformity ? 5 : 20));
                    if (day <= consent.day) day = consent.day.addDays(1);
                    ++n;
                }
                if (rng_.percent(90)) {
                    static const std::vector<int> calcWeights = {50, 15, 35};
                    calc.set("iKyotenCd", area.key.iKyotenCd)
                        .set("iKyotenEb", area.key.iKyotenEb)
                        .set("nIDNo", id)
                        .set("iDoui1CalcType", rng_.weighted(calcWeights))
                        .set("iDoui2CalcType", rng_.weighted(calcWeights));
                    calc.row();
                }
            }

            // The patient row.
            riyousha.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", id)
                .set("cName", p.name())
                .set("cNameKana", p.kana())
                .set("cNameRyaku", p.family.text)
                .set("iSex", p.sex)
                .set("tBirthday", ymd(p.birthday))
                .set("cYubinNo", home.zip)
                .set("cAdress1", home.line1)
                .set("cAddressKana", home.kana)
                .set("cTelNo", home.tel)
                .set("iTikuNo", rng_.between(1, 9))
                .set("nTantou", tantou)
                .set("cByoumei", QString::fromUtf8(illnesses[rng_.between(0, 7)]))
                .set("iKaigoLevel", rng_.between(0, 7))
                .set("iFutanritsu", age >= 75 ? rng_.weighted({80, 10, 10}) + 1 : 3)
                .set("iHoken", age >= 75 ? 1 : 2)
                .set("iVisitFlg", 1)
                .set("iOuryoCalType", 1)
                .set("iSejutsuKubun", acupuncture ? 1 : 0)
                .set("iHenke", deformity ? 1 : 0)
                .set("iOnan", 0)
                .set("iDenki", 0)
                .set("tStartDay", ymd(start))
                .set("tSyoryoDay", ymd(start))
                .set("tSyosinDay", ymd(start))
                .set("iTenki", ended ? rng_.pick(std::vector<int>{1, 2, 3, 15}) : 0)
                .set("tUpdateTime", ymdTime(today_.addDays(-rng_.between(0, 120)), rng_.between(480, 1200)));
            if (!hokenNo.isEmpty()) riyousha.set("cHokenNo", hokenNo).set("cHokenKigouNo", rng_.digits(8));
            if (!futanNo.isEmpty()) riyousha.set("cFutanNo", futanNo).set("cJukyuNo", rng_.digits(7));
            if (tantou2) riyousha.set("nTantou2", *tantou2);
            if (room > 0) riyousha.set("nRoomNo", room);
            if (ended) riyousha.set("tExpireDay", ymd(expire));
            if (rng_.percent(35)) riyousha.set("cMobNo", mobile());
            if (rng_.percent(5)) riyousha.set("cFaxNo", phone(c));
            if (rng_.percent(8)) riyousha.set("cComment", QString::fromUtf8(notes[rng_.between(0, 4)]));
            if (acupuncture) {
                const int illness = rng_.between(0, 5);
                riyousha.set("nHKSyobyouCd", illness + 1)
                    .set("cHKSyobyouName", QString::fromUtf8(acupunctureIllnesses[illness]))
                    .set("iHKHariUmu", 1)
                    .set("iHKKyuUmu", rng_.percent(70) ? 1 : 0);
            } else {
                const char* const partColumns[] = {"iSejutuBui1", "iSejutuBui2", "iSejutuBui3", "iSejutuBui4",
                                                   "iSejutuBui5"};
                for (std::size_t i = 0; i < parts.size(); ++i) riyousha.set(partColumns[i], parts[i]);
            }
            if (rng_.percent(30)) {
                riyousha.set("cSetaiName", child.name())
                    .set("cSetaiKana", child.kana())
                    .set("iSetaiSex", child.sex)
                    .set("cSetaiTsuzuki", QString::fromUtf8(relations[rng_.between(0, 5)]))
                    .set("tSetaiBirthday", ymd(child.birthday));
            }
            if (secondAddress)
                riyousha.set("cYubinNo2", familyHome.zip)
                    .set("cAdress2",
                         familyHome.line1 +
                             (familyHome.line2.isEmpty() ? QString() : QLatin1Char(' ') + familyHome.line2));
            Address third;
            if (thirdAddress) {
                third = address(cityOf(area), 50);
                riyousha.set("cYubinNo3", third.zip);
            }
            for (std::size_t s = 0; s < slots.size(); ++s) {
                if (!slots[s]) continue;
                const Consent& consent = *slots[s];
                const Doctor& d = doctors_.at(static_cast<std::size_t>(consent.doctor));
                const Facility& f = facilities_.at(static_cast<std::size_t>(d.institution));
                const bool one = s == 0;
                riyousha.set(one ? "tDouiDay1" : "tDouiDay2", ymd(consent.day))
                    .set(one ? "tDouiKaryoS1" : "tDouiKaryoS2", ymd(consent.day))
                    .set(one ? "tDouiKaryoE1" : "tDouiKaryoE2", ymd(consent.end))
                    .set(one ? "cDouiIsiName1" : "cDouiIsiName2", d.name)
                    .set(one ? "cDouiIsiKikan1" : "cDouiIsiKikan2", f.name)
                    .set(one ? "cDouiIsiAdd1" : "cDouiIsiAdd2", f.address.line1)
                    .set(one ? "cDouiByoumei1" : "cDouiByoumei2", QString::fromUtf8(illnesses[rng_.between(0, 7)]));
            }
            // Reimbursed patients; for some the receipt is handed over instead of posted.
            const bool reimbursed = k == 10 || k == 11 || (k > 13 && rng_.percent(20));
            if (reimbursed) {
                static const char* const handed[] = {"手渡し", "　手渡し　", "手渡し\r\n", "\r\n手渡し"};
                if (k == 11)
                    riyousha.set("cHTIryoName", QStringLiteral("　手渡し\r\n"));
                else if (rng_.percent(30))
                    riyousha.set("cHTIryoName", QString::fromUtf8(handed[rng_.between(0, 3)]));
                else if (rng_.percent(60))
                    riyousha.set("cHTIryoName", QStringLiteral("郵送"));
            }
            riyousha.row();

            // The patient's further data.
            sub.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", id)
                .set("iShoukanSiharai", reimbursed ? 1 : 0);
            if (slots[0]) sub.set("iIsiCd", doctors_.at(static_cast<std::size_t>(slots[0]->doctor)).id.toInt());
            if (slots[1]) sub.set("iIsiCd2", doctors_.at(static_cast<std::size_t>(slots[1]->doctor)).id.toInt());
            if (careManager) {
                const CareManager& cm = careManagers_.at(static_cast<std::size_t>(*careManager));
                sub.set("iCareCd", cm.id).set("cCareName", cm.name).set("cCareTelNo", cm.tel);
                if (cm.facility >= 0)
                    sub.set("iCareSisetsuCd", facilities_.at(static_cast<std::size_t>(cm.facility)).id);
            }
            if (residence >= 0) {
                const Facility& f = facilities_.at(static_cast<std::size_t>(residence));
                sub.set("iSyoukaiSisetsuCd", f.id).set("cSyoukaiTelNo", f.address.tel);
            }
            if (thirdAddress)
                sub.set("cAdress3", third.line1 + (third.line2.isEmpty() ? QString() : QLatin1Char(' ') + third.line2));
            if (billing)
                sub.set("cYubinNoS0Ryosyu", familyHome.zip)
                    .set("cJusyo1S0Ryosyu", familyHome.line1)
                    .text("cJusyo2S0Ryosyu", familyHome.line2)
                    .set("cAtenaS0Ryosyu", child.name());
            if (contact)
                sub.set("cYubinNoS0Renraku", familyHome.zip)
                    .set("cJusyo1S0Renraku", familyHome.line1)
                    .text("cJusyo2S0Renraku", familyHome.line2)
                    .set("cAtenaS0Renraku", child.name());
            sub.row();

            // Visits of the last three months, on the patient's fixed weekdays.
            const QDate from = std::max(start, visitStart);
            if (from <= last) {
                static const std::vector<int> frequency = {50, 38, 12};
                const int perWeek = rng_.weighted(frequency) + 1;
                std::array<bool, 8> weekday{};
                for (int n = 0; n < perWeek;) {
                    const int d = rng_.between(1, 6);
                    if (!weekday[static_cast<std::size_t>(d)]) {
                        weekday[static_cast<std::size_t>(d)] = true;
                        ++n;
                    }
                }
                const int time = rng_.between(54, 105) * 10;  // 9:00 to 17:30
                for (QDate d = from; d <= last; d = d.addDays(1)) {
                    if (!weekday[static_cast<std::size_t>(d.dayOfWeek())] || rng_.percent(10)) continue;
                    visits.set("iKyotenCd", area.key.iKyotenCd)
                        .set("iKyotenEb", area.key.iKyotenEb)
                        .set("nRiyoushaIDNo", id)
                        .set("tServicyDayStart", ymdTime(d, time + rng_.between(-2, 2) * 10));
                    visits.row();
                }
            }

            // Monthly progress reports for about half of the patients.
            if (k == 12 || (k > 13 && rng_.percent(50))) {
                for (QDate m = std::max(reportStart, QDate(start.year(), start.month(), 1)); m < today_ && m <= last;
                     m = m.addMonths(1)) {
                    if (m >= QDate(today_.year(), today_.month(), 1)) break;
                    reports.set("iKyotenCd", area.key.iKyotenCd)
                        .set("iKyotenEb", area.key.iKyotenEb)
                        .set("nRiyoushaIDNo", id)
                        .set("tServicyMonth", ym(m))
                        .set("nStaffIDNo", tantou);
                    reports.row();
                    if (tantou2 && *tantou2 != tantou) {
                        reports.set("iKyotenCd", area.key.iKyotenCd)
                            .set("iKyotenEb", area.key.iKyotenEb)
                            .set("nRiyoushaIDNo", id)
                            .set("tServicyMonth", ym(m))
                            .set("nStaffIDNo", *tantou2);
                        reports.row();
                    }
                }
            }

            map.set("iKyotenCd", area.key.iKyotenCd)
                .set("iKyotenEb", area.key.iKyotenEb)
                .set("nIDNo", id)
                .set("nLat", home.lat)
                .set("nLon", home.lon)
                .set("tUpDateTime", ymdTime(start, 600));
            map.row();
        }
    }

    sqlite3* db_;
    Rng rng_;
    QDate today_;
    int patientTotal_;
    std::array<Area, 2> areas_;
    std::vector<Insurer> insurers_;
    std::vector<Facility> facilities_;
    std::vector<Doctor> doctors_;
    std::vector<CareManager> careManagers_;
    int nextDoctorId_ = 0;
    int nextCareManagerId_ = 0;
    int nextStaffId_ = 0;
};

}  // namespace

void buildDatabase(const DatabaseRequest& request)
{
    if (request.patients < kMinPatients) throw std::invalid_argument("too few patients");
    if (!request.today.isValid()) throw std::invalid_argument("no date to build the data around");
    if (QFileInfo::exists(request.path)) throw std::invalid_argument("the database file exists already");

    // The text columns are declared with the clinic's collation: the connection must know it.
    data::ado::registerJapaneseCollation();
    sqlite3* raw = nullptr;
    const int rc = sqlite3_open_v2(request.path.toUtf8().constData(), &raw,
                                   SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<sqlite3, decltype(&sqlite3_close)> db(raw, &sqlite3_close);
    try {
        if (rc != SQLITE_OK) throw DatabaseError(raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc));
        // A file being built is of no use half-done, so no journal and no waiting for
        // the disk; the caller renames it into place only when it is complete.
        execute(db.get(), QStringLiteral("PRAGMA journal_mode=OFF"));
        execute(db.get(), QStringLiteral("PRAGMA synchronous=OFF"));
        execute(db.get(), QStringLiteral("PRAGMA cache_size=-65536"));
        execute(db.get(), QStringLiteral("BEGIN"));
        execute(db.get(), data::schemaTablesSql());
        Builder(db.get(), request).run();
        // Indexes built over the finished tables cost a sort each, instead of a
        // scattered index update for every row.
        execute(db.get(), data::schemaIndexesSql());
        execute(db.get(), QStringLiteral("COMMIT"));
        // Statistics let the planner pick the office and date indexes; a sample is enough.
        execute(db.get(), QStringLiteral("PRAGMA analysis_limit=1000"));
        execute(db.get(), QStringLiteral("ANALYZE"));
    } catch (...) {
        db.reset();
        QFile::remove(request.path);
        throw;
    }
}

}  // namespace demo
