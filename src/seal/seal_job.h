#pragma once
// The vocabulary of one labelling run: the enumerations whose numbers are the indexes
// of the controls that choose them, their captions, texts and forms as data, and
// SealJob, the state the seal screen's handlers share.

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace seal {

enum class AddresseeKind : short {
    Riyousha = 0,
    Doctor = 1,
    Hokenja = 2,
    Syoukai = 3,
    Caremane = 4,
    Staff = 5,
    Sisetsu = 6,
    Corp = 7,
    Iryoukikan = 8,
};

struct AddresseeKindInfo {
    AddresseeKind value;
    QString caption;
    QString failureText;  // the box after a failed extraction of this kind
};
// Indexed by value. The screen shows them in kOnScreenKindOrder.
extern const std::array<AddresseeKindInfo, 9> kAddresseeKinds;
// Top to bottom on the screen: 8 ("医療機関") stands above 7 ("自社").
inline constexpr std::array<short, 9> kOnScreenKindOrder{0, 1, 2, 3, 4, 5, 6, 8, 7};

enum class Honorific : short {
    Sama = 0,
    Dono = 1,
    Onchu = 2,
    Sensei = 3,
    SenseiGojishi = 4,
    Yuki = 5,
    FreeText = 6,
};
// Caption of each optKeisho element; for 0 to 5 it is also the printed text. The free
// text (6) prints the trimmed text of txtEtc, whose default is the caption.
extern const std::array<QString, 7> kHonorificCaptions;
inline const QString kFreeHonorificDefault = QStringLiteral("医事課御中");

enum class SheetType : short { Sheet10 = 0, Sheet12 = 1, Sheet30 = 2 };
struct SheetTypeInfo {
    SheetType value;
    QString listText;
    int labels;
    int cols;
    int rows;
    QString startCellControl;
    QString form;
};
extern const std::array<SheetTypeInfo, 3> kSheetTypes;

enum class EnvelopeType : short { Naga3 = 0, Kaku2 = 1, Naga3Yoko = 2, Naga3YokoMado = 3 };
struct EnvelopeTypeInfo {
    EnvelopeType value;
    QString listText;  // empty: no row of the list reaches it
    int picture;       // index of picFtType, -1 for none
    QString form;
};
extern const std::array<EnvelopeTypeInfo, 4> kEnvelopeTypes;
// The envelope list has exactly three rows.
inline constexpr int kEnvelopeListRows = 3;

enum class PrintMode : short { Seal = 0, Envelope = 1 };
extern const std::array<QString, 2> kPrintModeCaptions;

enum class PatientAddress : short {
    Address1 = 0,
    Address2 = 1,
    Address3 = 2,
    Contact = 3,
    Application = 4,
    Billing = 5,
};
struct PatientAddressInfo {
    PatientAddress value;
    QString caption;
    bool shown;
};
extern const std::array<PatientAddressInfo, 6> kPatientAddresses;

enum class HokenjaAddress : short { Location = 0, Receipt = 1 };
extern const std::array<QString, 2> kHokenjaAddressCaptions;

enum class CaremaneAddress : short { FacilityFirst = 0, OfficeFirst = 1 };
extern const std::array<QString, 2> kCaremaneAddressCaptions;

enum class CollectionFilter : short { None = 0, ExcludeCashAndTransfer = 1, ExcludeHandedOver = 2 };
struct CollectionFilterInfo {
    CollectionFilter value;
    QString listText;
    QString queryPiece;      // added to the patient query
    bool excludeHandedOver;  // also drop rows whose cHTIryoName is "手渡し"
};
extern const std::array<CollectionFilterInfo, 3> kCollectionFilters;

// Flags of the original hold -1 for true and 0 for false.
inline constexpr short kTrue = -1;
inline constexpr short kFalse = 0;

// The state of the run: the private fields of the seal screen, shared by its handlers.
struct SealJob {
    QString sSyokaiSetting;
    QString sWaType;
    short nCloseState = 0;
    int nCheckCount = 0;
    short nMst = 0;
    short nKeisho = 0;
    QString sKeisho = QStringLiteral("様");
    short nMaisu = 1;
    std::optional<short> nAgeFrom;  // unset until the first search
    std::optional<short> nAgeTo;
    std::optional<short> nBirthMonth;
    short nStartPos = 1;
    short nMstShown = -1;
    QString sKanaRow;
    short bCheckOrder = kFalse;
    short bEnterAdd = kFalse;
    QStringList asPickedIDs;
    short bPicked = kFalse;
    short nReturnToMenu = 0;
    short bFilling = 0;
    short bMstChanged = 0;
};

}  // namespace seal
