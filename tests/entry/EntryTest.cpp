#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "LightEntry.h"
#include "LoadMessages.h"
#include "Mnemonics.h"
#include "RaisedError.h"
#include "StringTable.h"

namespace genvara {
namespace {

TEST(LoadKinds, TellTheNineFormsApart) {
    const struct {
        std::int32_t type;
        const char* form;
        const char* title;
        const char* name;
    } rows[] = {{0, "frmAirCondLoad", "Air Conditioning Load", "<Air Conditioner>"},
                {1, "frmChargerLoad", "Battery Charger Load", "<Battery Charger>"},
                {2, "frmLightLoad", "Lighting Load", "<Lighting>"},
                {3, "frmMedLoad", "Medical Imaging Load", "<Medical Imaging>"},
                {4, "frmMiscLoad", "Misc. Linear Load", "<Misc. Load>"},
                {5, "frmMtrLoad", "Motor Load", "<Motor>"},
                {6, "frmOfficeLoad", "Office Equipment", "<Office Equip.>"},
                {7, "frmUPSLoad", "UPS Load", "<UPS>"},
                {8, "frmVFDLoad", "VFD Load", "<VFD>"}};
    for (const auto& row : rows) {
        const LoadKind* kind = FindLoadKind(row.type);
        ASSERT_NE(kind, nullptr);
        EXPECT_EQ(kind->form, row.form);
        EXPECT_EQ(kind->title, row.title);
        EXPECT_EQ(kind->defaultName, row.name);
        EXPECT_EQ(kind->balancedString, row.type == 2 || row.type == 6 ? 628 : 624);
    }
    EXPECT_EQ(FindLoadKind(4)->title, StringTable::Text(604));
    EXPECT_EQ(FindLoadKind(-1), nullptr);
    EXPECT_EQ(FindLoadKind(9), nullptr);
}

TEST(LoadKinds, OfferPhaseAAloneUnlessTheSiteHasThree) {
    for (const std::int32_t phases : {0, 1, 2, -3}) {
        EXPECT_TRUE(PhasesOffered(phases).single) << phases;
        EXPECT_EQ(PhasesOffered(phases).selected, 1);
    }
    EXPECT_FALSE(PhasesOffered(3).single);
    EXPECT_EQ(PhasesOffered(3).selected, 0);
}

TEST(LoadMessages, ATextThatIsNoNumberGetsTheKindsOwnSentence) {
    const RaisedError mismatch(13, "EntryNumbers", "Type mismatch");
    const struct {
        std::int32_t type;
        const char* blank;
        const char* other;
    } rows[] = {{1, "Parameter can not be blank.", "Parameter must numeric."},
                {2, "Parameter can not be blank.", "Parameter must numeric."},
                {3, "Parameter can not be blank.", "Parameter must numeric."},
                {4, "A numeric value must be entered.", "A numeric value must be entered."},
                {5, "Value can not be blank.", "Value can not be blank."},
                {7, "Parameter can not be blank.", "Parameter must numeric."},
                {8, "Parameter can not be blank.", "Parameter must numeric."}};
    for (const auto& row : rows) {
        EXPECT_EQ(StoreFailureText(*FindLoadKind(row.type), mismatch, ""), row.blank);
        EXPECT_EQ(StoreFailureText(*FindLoadKind(row.type), mismatch, " "), row.other);
        EXPECT_EQ(StoreFailureText(*FindLoadKind(row.type), mismatch, "abc"), row.other);
    }
}

TEST(LoadMessages, OtherFailuresShowNumberAndDescription) {
    const RaisedError range(17, "CMiscLoad::RunningRealPower", "Running real power out of range");
    EXPECT_EQ(StoreFailureText(*FindLoadKind(4), range, "9999"),
              "Error #17\r\nRunning real power out of range");
    EXPECT_EQ(CreateFailureText(RaisedError(7, "x", "Out of memory")),
              "Error #7\r\nUnable to create load.\r\nDo you want to try again?");
    // 0x80040064 less 0x80040000 is 0x64; 13 less 0x80040000, which is -2147221504, is 2147221517.
    EXPECT_EQ(
        AddFailureText(RaisedError(static_cast<std::int32_t>(0x80040064), "x", "Invalid load step number.")),
        "Error #100\r\nInvalid load step number.");
    EXPECT_EQ(AddFailureText(RaisedError(13, "x", "Type mismatch")), "Error #2147221517\r\nType mismatch");
    EXPECT_EQ(DisplayFailureText(RaisedError(5, "x", "No such step")),
              "Error #5\r\nNo such step\r\nCan not display the last load added. Try saving and reloading the "
              "project.");
}

TEST(LoadMessages, ANumberTooLargeToWorkWithHasNoMessage) {
    const RaisedError overflow(6, "EntryNumbers", "Overflow");
    for (std::int32_t type = 0; type <= 8; ++type) {
        EXPECT_EQ(StoreFailureText(*FindLoadKind(type), overflow, "99999999999"), "") << type;
    }
}

TEST(LightEntry, AnIncandescentLampAloneHasNoBallast) {
    EXPECT_FALSE(LampHasBallast(light_type::kIncandescent));
    EXPECT_TRUE(LampHasBallast(light_type::kFluorescent));
    EXPECT_TRUE(LampHasBallast(light_type::kHID));
    EXPECT_EQ(StoredBallast(light_type::kIncandescent, ballast::kElectronic), ballast::kNone);
    EXPECT_EQ(StoredBallast(light_type::kHID, ballast::kElectronic), ballast::kElectronic);
}

TEST(LightEntry, ShowsTheMagneticBallastForAnyThatIsNotElectronic) {
    const std::pair<std::int32_t, std::int32_t> rows[] = {{0, 1}, {1, 1}, {2, 2}, {3, 3}, {4, 1}, {-1, 1}};
    for (const auto& [stored, shown] : rows) {
        EXPECT_EQ(ShownBallast(stored), shown) << stored;
    }
}

/// The marked characters of captions, in upper case.
std::string Keys(const std::vector<std::string>& captions) {
    std::string keys;
    for (const std::string& caption : captions) {
        const std::size_t mark = caption.find('&');
        keys += mark == std::string::npos
                    ? '-'
                    : static_cast<char>(std::toupper(static_cast<unsigned char>(caption[mark + 1])));
    }
    return keys;
}

TEST(Mnemonics, PreferTheBeginningOfAWordAndKeepTheMarksThatAreThere) {
    EXPECT_EQ(WithMnemonics({"Name", "Number", "&Advanced...", "Phase A - N"}),
              (std::vector<std::string>{"&Name", "N&umber", "&Advanced...", "&Phase A - N"}));
}

TEST(Mnemonics, ACaptionMakesRoomForOneThatHasNoOtherLetter) {
    EXPECT_EQ(Keys(WithMnemonics({"kW", "K"})), "WK");
    EXPECT_EQ(Keys(WithMnemonics({"A", "A", "--"})), "A--");
    EXPECT_EQ(WithMnemonics({}), std::vector<std::string>{});
}

TEST(Mnemonics, NoKeyIsGivenTwice) {
    const std::string keys = Keys(WithMnemonics({"Step Number",
                                                 "Quantity",
                                                 "Name",
                                                 "Description",
                                                 "Horsepower",
                                                 "Running kW",
                                                 "Start/Run Amps",
                                                 "Running Amps",
                                                 "Code Letter",
                                                 "Starting Method",
                                                 "&Advanced...",
                                                 "Starting kVA",
                                                 "Starting pF",
                                                 "3 Phase",
                                                 "Phase A - N / A - B",
                                                 "Phase B - N / B - C",
                                                 "Phase C - N / C - A",
                                                 "&Loaded",
                                                 "&Unloaded",
                                                 "&Fire Pump Motor"}));
    EXPECT_EQ(std::set<char>(keys.begin(), keys.end()).size(), keys.size()) << keys;
    EXPECT_EQ(std::ranges::count(keys, '-'), 0);
}

}  // namespace
}  // namespace genvara
