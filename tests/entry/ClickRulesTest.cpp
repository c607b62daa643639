#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <utility>

#include "AirCondEntry.h"
#include "ChargerEntry.h"
#include "ErrorNumbers.h"
#include "InputTypes.h"
#include "OfficeEntry.h"
#include "UPSEntry.h"

/// What a click on an entry form selects and enables besides itself.
namespace genvara {
namespace {

using ups_family::kFastTransfer;
using ups_family::kOffLine;
using ups_family::kOnLine;

/// A state in words: selected phases and family, what is enabled of the phase buttons and of "Fast family,
/// Power figures, Type, Input filter", and whether the warning shows.
std::string Words(const UPSEntry::State& state) {
    std::string words = "0ABC"[state.phases] + std::string(" ");
    words += std::array{"fast", "online", "offline"}[static_cast<std::size_t>(state.family)];
    words += " ";
    for (std::size_t code = 0; code < 4; ++code) {
        words += state.phasesEnabled[code] ? "0ABC"[code] : '-';
    }
    words += " ";
    words += state.fastTransferEnabled ? 'F' : '-';
    words += state.powerEnabled ? 'P' : '-';
    words += state.typeEnabled ? 'T' : '-';
    words += state.filterEnabled ? 'I' : '-';
    words += state.warningVisible ? " warns" : "";
    return words;
}

/// A click: on the phases "0ABC" or on a family "fln" (fast, off-line, on-line).
template <typename Entry>
void ClickAll(Entry& entry, const char* clicks) {
    for (const char click : std::string(clicks)) {
        const std::size_t phase = std::string("0ABC").find(click);
        if (phase != std::string::npos) {
            entry.PhasesClicked(static_cast<std::int32_t>(phase));
        } else {
            entry.FamilyClicked(click == 'f' ? kFastTransfer : click == 'l' ? kOffLine : kOnLine);
        }
    }
}

TEST(UPSEntry, FollowsItsTableOfClicks) {
    const struct {
        std::int32_t systemPhases;
        const char* clicks;
        const char* state;
    } rows[] = {
        // A three-phase system opens with the fast family, which is three-phase alone.
        {3, "", "0 fast 0--- F--- warns"},
        {3, "f", "0 fast 0--- F--- warns"},
        {3, "l", "0 offline 0ABC F--I warns"},
        {3, "n", "0 online 0ABC FPTI"},
        {3, "ln", "0 online 0ABC FPTI"},
        {3, "nl", "0 offline 0ABC F--I warns"},
        {3, "nf", "0 fast 0--- F--- warns"},
        // Without three phases there is no list of input stages and no filter.
        {3, "nA", "A online 0ABC FP--"},
        {3, "nB", "B online 0ABC FP--"},
        {3, "nC0", "0 online 0ABC FPTI"},
        {3, "lB", "B offline 0ABC F--- warns"},
        {3, "lB0", "0 offline 0ABC F--I warns"},
        {3, "lBn", "B online 0ABC FP--"},
        {3, "nCl", "C offline 0ABC F--- warns"},
        // The fast family brings three phases with it.
        {3, "lBf", "0 fast 0--- F--- warns"},
        {3, "nAf", "0 fast 0--- F--- warns"},
        // A stored single-phase load is shown over the fast family: that gives way, and stays away until
        // there are three phases again.
        {3, "B", "B offline 0ABC ---- warns"},
        {3, "Bn", "B online 0ABC -P--"},
        {3, "B0", "0 offline 0ABC F--I warns"},
        {3, "Bn0", "0 online 0ABC FPTI"},
        // A single-phase system offers phase A and two families.
        {1, "", "A offline -A-- ---- warns"},
        {1, "n", "A online -A-- -P--"},
        {1, "nl", "A offline -A-- ---- warns"},
        {0, "", "A offline -A-- ---- warns"},
        // A stored three-phase load in a single-phase system.
        {1, "0", "0 offline -A-- F--I warns"},
        {1, "0f", "0 fast ---- F--- warns"},
        {1, "0n", "A online -A-- FP--"},
        {1, "0l", "A offline -A-- F--- warns"},
        {1, "0fA", "A offline -A-- ---- warns"},
    };
    for (const auto& row : rows) {
        UPSEntry entry(row.systemPhases);
        ClickAll(entry, row.clicks);
        EXPECT_EQ(Words(entry.Shown()), row.state) << row.systemPhases << " phases, clicks " << row.clicks;
    }
}

TEST(UPSEntry, PassesOverAFamilyThatIsNone) {
    UPSEntry entry(3);
    const std::string before = Words(entry.Shown());
    entry.FamilyClicked(3);
    entry.FamilyClicked(-1);
    EXPECT_EQ(Words(entry.Shown()), before);
}

TEST(UPSEntry, HoldsItsPromisesAfterAnyClicksOnWhatIsEnabled) {
    std::mt19937 random(11);
    for (int round = 0; round < 2000; ++round) {
        const std::int32_t systemPhases = round % 2 == 0 ? 3 : 1;
        UPSEntry entry(systemPhases);
        for (int i = 0; i < 12; ++i) {
            const UPSEntry::State& state = entry.Shown();
            const auto phase = random() % 4;
            if (random() % 2 == 0 && state.phasesEnabled[phase]) {
                entry.PhasesClicked(static_cast<std::int32_t>(phase));
            }
            const auto family = static_cast<std::int32_t>(random() % 3);
            if (family != kFastTransfer || state.fastTransferEnabled) {
                entry.FamilyClicked(family);
            }
            EXPECT_TRUE(state.family != kFastTransfer || state.phases == 0);
            EXPECT_EQ(state.filterEnabled, state.phases == 0 && state.family != kFastTransfer);
            EXPECT_EQ(state.typeEnabled, state.phases == 0 && state.family == kOnLine);
            EXPECT_EQ(state.powerEnabled, state.family == kOnLine);
            EXPECT_EQ(state.warningVisible, state.family != kOnLine);
            EXPECT_TRUE(state.phasesEnabled[static_cast<std::size_t>(state.phases)]);
            EXPECT_TRUE(systemPhases == 3 || state.phases == 1) << "three phases in a single-phase system";
        }
    }
}

/// Selected phases and application, and what is enabled of "3 phases, Residential, Input stage".
std::string Words(const ChargerEntry::State& state) {
    std::string words = "0ABC"[state.phases] + std::string(" ");
    words += std::array{"residential", "industrial", "telecom"}[static_cast<std::size_t>(state.application)];
    words += " ";
    words += state.threePhaseEnabled ? '3' : '-';
    words += state.residentialEnabled ? 'R' : '-';
    words += state.inputEnabled ? 'I' : '-';
    return words;
}

/// Clicks on the phases "0ABC" or on an application "rit".
void ClickAll(ChargerEntry& entry, const char* clicks) {
    for (const char click : std::string(clicks)) {
        const std::size_t phase = std::string("0ABC").find(click);
        const std::size_t application = std::string("rit").find(click);
        if (phase != std::string::npos) {
            entry.PhasesClicked(static_cast<std::int32_t>(phase));
        } else {
            entry.ApplicationClicked(static_cast<std::int32_t>(application));
        }
    }
}

TEST(ChargerEntry, FollowsItsTableOfClicks) {
    const struct {
        std::int32_t shown;
        std::int32_t site;
        const char* clicks;
        const char* state;
    } rows[] = {
        {3, 3, "", "0 industrial 3-I"},
        {3, 3, "t", "0 telecom 3--"},
        {3, 3, "ti", "0 industrial 3-I"},
        {3, 3, "A", "A industrial 3RI"},
        {3, 3, "C0", "0 industrial 3-I"},
        {3, 3, "tB", "B telecom 3R-"},
        {3, 3, "Br", "B residential -R-"},
        {3, 3, "BrC", "C residential -R-"},
        {3, 3, "Brt", "B telecom 3R-"},
        {3, 3, "Bri", "B industrial 3RI"},
        {3, 3, "Bri0", "0 industrial 3-I"},
        {3, 3, "Brt0", "0 telecom 3--"},
        // As when a stored load is shown: residential with three phases, and three phases over it.
        {3, 3, "r", "A residential -R-"},
        {3, 3, "Br0", "0 industrial 3-I"},
        {1, 1, "", "A industrial -RI"},
        {1, 1, "r", "A residential -R-"},
        {1, 1, "rt", "A telecom -R-"},
        {1, 1, "ri", "A industrial -RI"},
        {1, 1, "0", "0 industrial --I"},
        {1, 1, "0r", "A residential -R-"},
        // The site as it is stored, and not as it is shown, gives three phases back.
        {3, 1, "Bri", "B industrial -RI"},
        {1, 3, "i", "A industrial 3RI"},
        {0, 1, "", "A industrial -RI"},
    };
    for (const auto& row : rows) {
        ChargerEntry entry(row.shown, row.site);
        ClickAll(entry, row.clicks);
        EXPECT_EQ(Words(entry.Shown()), row.state)
            << row.shown << "/" << row.site << " phases, clicks " << row.clicks;
    }
}

TEST(ChargerEntry, ShowsTheInputStageOfAnIndustrialChargerAlone) {
    const struct {
        std::int32_t code;
        const char* state;
    } rows[] = {{charger_type::kIndustrial, "0 industrial 3-I"},
                {charger_type::kTelecom, "0 telecom 3--"},
                {charger_type::kResidential, "A residential -R-"},
                {7, "0 industrial 3--"}};  // a code of no application
    for (const auto& row : rows) {
        ChargerEntry entry(3, 3);
        entry.ApplicationShown(row.code);
        EXPECT_EQ(Words(entry.Shown()), row.state);
    }
}

TEST(ChargerEntry, NeverMakesAResidentialChargerThreePhase) {
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        ChargerEntry entry(round % 2 == 0 ? 3 : 1, round % 2 == 0 ? 3 : 1);
        for (int i = 0; i < 12; ++i) {
            entry.PhasesClicked(static_cast<std::int32_t>(random() % 4));
            entry.ApplicationClicked(static_cast<std::int32_t>(random() % 3));
            const ChargerEntry::State& state = entry.Shown();
            EXPECT_TRUE(state.application != charger_type::kResidential || state.phases != 0);
            EXPECT_EQ(state.inputEnabled, state.application == charger_type::kIndustrial);
            EXPECT_TRUE(state.application == charger_type::kResidential ? !state.threePhaseEnabled : true);
        }
    }
}

TEST(InputTypes, AreForThreePhasesAndElseASinglePhaseRectifier) {
    EXPECT_EQ(StoredInputType(0, input_type::kActive), 4);
    for (const std::int32_t phases : {1, 2, 3}) {
        EXPECT_EQ(StoredInputType(phases, input_type::kActive), 5);
        EXPECT_FALSE(HasInputTypes(phases));
    }
    EXPECT_TRUE(HasInputTypes(0));
}

TEST(OfficeEntry, ABlankCountIsLeftOut) {
    EXPECT_TRUE(IsLeftOut(""));
    EXPECT_TRUE(IsLeftOut("  "));
    EXPECT_FALSE(IsLeftOut("0"));
    EXPECT_FALSE(IsLeftOut(" x"));
    EXPECT_TRUE(AllLeftOut(std::array<std::string, 4>{"", " ", "", ""}));
    EXPECT_FALSE(AllLeftOut(std::array<std::string, 4>{"", " ", "", "0"}));
}

TEST(AirCondEntry, ShowsTheBoundsOfEachMethod) {
    const auto note = [](std::int32_t method) {
        return BoundsNote(SizeBounds(*FindSizeMethod(method)), EntryNumbers(NumberSigns{}));
    };
    EXPECT_EQ(note(aircond_entry::kBTU), "( 0 - 6250000 BTU/hr )");  // 1000 hp x 6250
    EXPECT_EQ(note(aircond_entry::kTonnage), "( 0 - 500 tons )");    // 1000 hp / 2
    EXPECT_EQ(note(aircond_entry::kHorsepower), "( 0 - 1000 HP )");
    EXPECT_EQ(FindSizeMethod(3), nullptr);
    EXPECT_EQ(FindSizeMethod(-1), nullptr);
}

TEST(AirCondEntry, HasItsOwnMessages) {
    const auto text = [](bool ofQuantity, std::int32_t number) {
        return AirCondFailureText(ofQuantity, RaisedError(number, "Load", "What is wrong"));
    };
    for (const std::int32_t number : {2, errors::kTypeMismatch, errors::kOverflow}) {
        EXPECT_EQ(text(true, number), "The quantity must be a positive integer.");
    }
    EXPECT_EQ(text(false, errors::kTypeMismatch), "The A/C rating must be numeric.");
    for (const std::int32_t number : {15, 20, 21}) {
        EXPECT_EQ(text(false, number), "The A/C rating is out of range.");
    }
    for (const std::int32_t number : {17, 18}) {
        EXPECT_EQ(text(false, number), "");
    }
    EXPECT_EQ(text(false, errors::FromBase(3)), "Error #-2147221501\r\nWhat is wrong");  // 3 - 2147221504
}

}  // namespace
}  // namespace genvara
