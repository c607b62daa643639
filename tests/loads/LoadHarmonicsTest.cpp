#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <cmath>
#include <memory>

#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "LoadFactory.h"

namespace genvara {
namespace {

const MotorConversions kMotors{.MotorHP = {50, 100},
                               .MotorRunningKW = {40, 80},
                               .MotorRunningKVA = {45, 90},
                               .MotorStartPF = {0.4, 0.35}};

/// Figures on phases A, B and C [W].
using PerPhase = std::array<double, 3>;

/// All that a load reports through rectifiers and ballasts [W]; what a row leaves out is 0.
struct Harmonics {
    double sixPulse = 0.0;
    double twelvePulse = 0.0;
    double sixPulseFiltered = 0.0;
    double twelvePulseFiltered = 0.0;
    PerPhase rectifier{};
    PerPhase electronic{};
    PerPhase magnetic{};
};

void ExpectHarmonics(const Load& load, const Harmonics& expected) {
    constexpr double kTolerance = 1e-6;  // W
    EXPECT_NEAR(load.ThreePhaseSixPulseRectPower(), expected.sixPulse, kTolerance);
    EXPECT_NEAR(load.ThreePhaseTwelvePulseRectPower(), expected.twelvePulse, kTolerance);
    EXPECT_NEAR(load.ThreePhaseSixPulseRectFilteredPower(), expected.sixPulseFiltered, kTolerance);
    EXPECT_NEAR(load.ThreePhaseTwelvePulseRectFilteredPower(), expected.twelvePulseFiltered, kTolerance);
    EXPECT_EQ(load.ThreePhaseSixPulsePPCRectPower(), 0.0);
    for (const std::int32_t phase : {1, 2, 3}) {
        SCOPED_TRACE(phase);
        const auto place = static_cast<std::size_t>(phase - 1);
        EXPECT_NEAR(load.SinglePhaseRectPower(phase), expected.rectifier[place], kTolerance);
        EXPECT_NEAR(load.SinglePhaseElectBallastPower(phase), expected.electronic[place], kTolerance);
        EXPECT_NEAR(load.SinglePhaseMagBallastPower(phase), expected.magnetic[place], kTolerance);
    }
}

double OverPhases(const Load& load, double (Load::*member)(std::int32_t) const) {
    return (load.*member)(1) + (load.*member)(2) + (load.*member)(3);
}

bool Near(double left, double right) {
    return std::abs(left - right) <= 1e-9 * (std::abs(right) + 1.0);
}

TEST(LinearLoads, TakeNoPartInTheDistortion) {
    for (const std::int32_t kind : {load_type::kMiscellaneous, load_type::kMotor, load_type::kAirConditioning,
                                    load_type::kMedicalImaging}) {
        for (const std::int32_t phases : {0, 1, 2, 3}) {
            SCOPED_TRACE(kind * 10 + phases);
            const std::unique_ptr<Load> load = MakeLoad(kind, kMotors);
            load->Phases(phases);
            ExpectHarmonics(*load, {});
        }
    }
}

TEST(MedicalLoad, TakesNoPartInTheDistortionWhateverItsInput) {
    for (const std::int32_t input : {0, 1, 2, 3, 4, 5}) {
        for (const std::int32_t phases : {0, 1, 2, 3}) {
            SCOPED_TRACE(input * 10 + phases);
            CMedEquipLoad load;
            load.ContVA(50000);
            load.PeakVA(300000);
            load.InputType(input);
            load.Phases(phases);
            ExpectHarmonics(load, {});
        }
    }
}

TEST(LightLoad, ReportsTheBallastOfItsLampsAlone) {
    struct Case {
        std::int32_t ballast;
        std::int32_t phases;
        Harmonics expected;
    };
    const Case cases[] = {
        {ballast::kNone, 0, {}},
        {ballast::kHighEffMagnetic, 0, {.magnetic = {10000, 10000, 10000}}},
        {ballast::kHighEffMagnetic, 1, {.magnetic = {30000, 0, 0}}},
        {ballast::kElectronic, 0, {.electronic = {10000, 10000, 10000}}},
        {ballast::kElectronic, 2, {.electronic = {0, 30000, 0}}},
        {ballast::kElectronic, 3, {.electronic = {0, 0, 30000}}},
        {ballast::kLowDistElectronic, 0, {}},
        {ballast::kLowDistElectronic, 2, {}},
        {4, 0, {}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.ballast * 10 + row.phases);
        CLightLoad load;
        load.RunningRealPower(30000);
        load.StartingRealPower(60000);  // only the running power counts
        load.Ballast(row.ballast);
        load.Phases(row.phases);
        ExpectHarmonics(load, row.expected);
        EXPECT_EQ(load.SinglePhaseElectBallastPower(0) + load.SinglePhaseMagBallastPower(0), 0.0);
    }
}

TEST(UPSLoad, IsCountedByFamilyInputFilterAndPhase) {
    struct Case {
        std::int32_t family;
        std::int32_t input;
        bool filter;
        std::int32_t phases;
        Harmonics expected;
    };
    // A rating of 95 kVA. On-line, three-phase: 95 / 0.95 x 1.1 x 0.95 = 104.5 kW. On-line, one phase:
    // 95 / 0.9 x 1.1 x 0.85 = 98.6944 kW. The others: 95 / 0.9 x 1.1 x 0.95 = 110.30556 kW.
    constexpr double kOnLine = 104500.0;
    constexpr double kOnLineSingle = 95000.0 * 11.0 * 17.0 / 180.0;
    constexpr double kByRating = 95000.0 * 11.0 * 19.0 / 180.0;
    const Case cases[] = {
        {ups_family::kOnLine, input_type::kSixPulse, false, 0, {.sixPulse = kOnLine}},
        {ups_family::kOnLine,
         input_type::kSixPulse,
         true,
         0,
         {.sixPulse = kOnLine, .sixPulseFiltered = kOnLine}},
        {ups_family::kOnLine, input_type::kTwelvePulse, false, 0, {.twelvePulse = kOnLine}},
        {ups_family::kOnLine,
         input_type::kTwelvePulse,
         true,
         0,
         {.twelvePulse = kOnLine, .twelvePulseFiltered = kOnLine}},
        {ups_family::kOnLine, input_type::kAboveTwelvePulse, true, 0, {}},
        {ups_family::kOnLine, input_type::kActive, true, 0, {}},
        {ups_family::kOnLine, input_type::kSinglePhase, true, 0, {}},
        {ups_family::kOnLine, 0, true, 0, {}},
        {ups_family::kOnLine, input_type::kSinglePhase, true, 1, {.rectifier = {kOnLineSingle, 0, 0}}},
        {ups_family::kOnLine, input_type::kSinglePhase, false, 2, {.rectifier = {0, kOnLineSingle, 0}}},
        {ups_family::kOnLine, input_type::kSinglePhase, false, 3, {.rectifier = {0, 0, kOnLineSingle}}},
        {ups_family::kOnLine, input_type::kSixPulse, true, 1, {}},
        {ups_family::kOnLine, input_type::kTwelvePulse, true, 1, {}},
        {ups_family::kFastTransfer, input_type::kSixPulse, false, 0, {}},
        {ups_family::kFastTransfer, input_type::kSixPulse, true, 0, {.sixPulseFiltered = kByRating}},
        {ups_family::kFastTransfer, input_type::kTwelvePulse, false, 0, {}},
        {ups_family::kOffLine, input_type::kSixPulse, false, 0, {}},
        {ups_family::kOffLine, input_type::kTwelvePulse, true, 0, {.twelvePulseFiltered = kByRating}},
        {ups_family::kOffLine, input_type::kSinglePhase, true, 2, {}},
        {ups_family::kFastTransfer, input_type::kSinglePhase, true, 2, {}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.family * 1000 + row.input * 100 + row.filter * 10 + row.phases);
        CUPSLoad load;
        load.OutputRating(95000);
        load.Family(row.family);
        load.InputType(row.input);
        load.InputFilterInstalled(row.filter);
        load.Phases(row.phases);
        ExpectHarmonics(load, row.expected);
    }
}

TEST(VFDLoad, IsCountedByInputFilterAndPhase) {
    struct Case {
        std::int32_t input;
        bool filter;
        std::int32_t phases;
        Harmonics expected;
    };
    constexpr double kPower = 100000.0;  // 80 kW of 100 hp / 0.8
    const Case cases[] = {
        {input_type::kSixPulse, false, 0, {.sixPulse = kPower}},
        {input_type::kSixPulse, true, 0, {.sixPulse = kPower, .sixPulseFiltered = kPower}},
        {input_type::kTwelvePulse, false, 0, {.twelvePulse = kPower}},
        {input_type::kTwelvePulse, true, 0, {.twelvePulse = kPower, .twelvePulseFiltered = kPower}},
        {input_type::kAboveTwelvePulse, true, 0, {}},
        {input_type::kAboveTwelvePulse, false, 0, {}},
        {input_type::kActive, true, 0, {}},
        {input_type::kActive, false, 0, {}},
        {0, true, 0, {}},
        {input_type::kSixPulse, true, 2, {}},
        {input_type::kTwelvePulse, true, 2, {}},
        {input_type::kSinglePhase, true, 0, {}},
        {input_type::kSinglePhase, true, 1, {.rectifier = {kPower, 0, 0}}},
        {input_type::kSinglePhase, false, 2, {.rectifier = {0, kPower, 0}}},
        {input_type::kSinglePhase, false, 3, {.rectifier = {0, 0, kPower}}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.input * 100 + row.filter * 10 + row.phases);
        CVFDLoad load(kMotors);
        load.MtrRating(100);
        load.Efficiency(80);
        load.InputType(row.input);
        load.InputFilterInstalled(row.filter);
        load.Phases(row.phases);
        ExpectHarmonics(load, row.expected);
    }
}

TEST(BatteryCharger, IsCountedByItsInputStage) {
    struct Case {
        std::int32_t input;
        std::int32_t phases;
        Harmonics expected;
    };
    // 100 V x 1.1 x 90 A / 0.9 = 11 kVA, x 0.95 = 10.45 kW.
    constexpr double kPower = 10450.0;
    const Case cases[] = {
        {charger_input::kSCR, 0, {.sixPulse = kPower}},
        {charger_input::kSCR, 1, {.rectifier = {kPower, kPower, kPower}}},
        {charger_input::kSCR, 3, {.rectifier = {kPower, kPower, kPower}}},
        {charger_input::kFerroResonant, 0, {}},
        {charger_input::kFerroResonant, 2, {}},
        {2, 0, {}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.input * 10 + row.phases);
        CBatChrgLoad load;
        load.ChargerType(charger_type::kTelecom);
        load.BatteryVoltage(100);
        load.ChargeCurrent(90);
        load.ChargerInput(row.input);
        load.Phases(row.phases);
        ExpectHarmonics(load, row.expected);
    }
}

TEST(OfficeLoad, IsAllOfItOnSinglePhaseRectifiers) {
    const std::pair<std::int32_t, Harmonics> cases[] = {
        {0, {.rectifier = {2000, 2000, 2000}}},
        {1, {.rectifier = {6000, 0, 0}}},
        {2, {.rectifier = {0, 6000, 0}}},
        {3, {.rectifier = {0, 0, 6000}}},
    };
    for (const auto& [phases, expected] : cases) {
        SCOPED_TRACE(phases);
        COfficeLoad load;
        load.NumPCs(20);  // 20 x 300 W
        load.Phases(phases);
        ExpectHarmonics(load, expected);
        EXPECT_EQ(load.SinglePhaseRectPower(0), 0.0);
    }
}

TEST(HarmonicTotals, SpreadWithoutLoss) {
    EXPECT_TRUE(rc::check("light", [](std::uint32_t watts, std::uint8_t phases, std::uint8_t kind) {
        CLightLoad load;
        load.RunningRealPower(watts % 2000001);
        load.Phases(phases % 4);
        load.Ballast(kind % 5);
        const double electronic = load.Ballast() == ballast::kElectronic ? load.RunningRealPower() : 0.0;
        const double magnetic = load.Ballast() == ballast::kHighEffMagnetic ? load.RunningRealPower() : 0.0;
        RC_ASSERT(Near(OverPhases(load, &Load::SinglePhaseElectBallastPower), electronic));
        RC_ASSERT(Near(OverPhases(load, &Load::SinglePhaseMagBallastPower), magnetic));
    }));
    EXPECT_TRUE(rc::check("office", [](std::uint16_t pcs, std::uint16_t copiers, std::uint8_t phases) {
        COfficeLoad load;
        load.NumPCs(pcs);
        load.NumCopiers(copiers);
        load.Phases(phases % 4);
        RC_ASSERT(Near(OverPhases(load, &Load::SinglePhaseRectPower), load.RunningRealPower()));
    }));
}

TEST(HarmonicTotals, CountADriveOnceWithoutAndOnceWithItsFilter) {
    EXPECT_TRUE(rc::check("drive", [](std::uint16_t rating, std::uint8_t input, std::uint8_t phases) {
        CVFDLoad load(kMotors);
        load.MtrRating(0.01 + rating / 65.6);
        load.InputType(input % 6);
        load.Phases(phases % 4);
        const bool threePhase = load.Phases() == 0 && (load.InputType() == input_type::kSixPulse ||
                                                       load.InputType() == input_type::kTwelvePulse);
        const bool singlePhase = load.Phases() != 0 && load.InputType() == input_type::kSinglePhase;
        const double power = load.RunningRealPower();
        for (const bool filter : {false, true}) {
            load.InputFilterInstalled(filter);
            RC_ASSERT(load.ThreePhaseSixPulseRectPower() + load.ThreePhaseTwelvePulseRectPower() ==
                      (threePhase ? power : 0.0));
            RC_ASSERT(load.ThreePhaseSixPulseRectFilteredPower() +
                          load.ThreePhaseTwelvePulseRectFilteredPower() ==
                      (threePhase && filter ? power : 0.0));
            RC_ASSERT(OverPhases(load, &Load::SinglePhaseRectPower) == (singlePhase ? power : 0.0));
        }
    }));
}

TEST(HarmonicTotals, LeaveTheQuantityOut) {
    EXPECT_TRUE(rc::check("quantity", [](std::uint8_t quantity, std::uint8_t phases) {
        CBatChrgLoad load;
        load.ChargerInput(charger_input::kSCR);
        load.BatteryVoltage(48);
        load.ChargeCurrent(100);
        load.Phases(phases % 4);
        const double six = load.ThreePhaseSixPulseRectPower();
        const double rectifier = load.SinglePhaseRectPower(1);
        const double running = load.RunningRealPower();
        load.Quantity(1 + quantity);
        RC_ASSERT(load.ThreePhaseSixPulseRectPower() == six);
        RC_ASSERT(load.SinglePhaseRectPower(1) == rectifier);
        RC_ASSERT(load.RunningRealPower() == running);
    }));
}

}  // namespace
}  // namespace genvara
