#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "CUPSLoad.h"
#include "EngineFixture.h"
#include "RaisedErrorMatcher.h"
#include "RejectionReasons.h"

namespace genvara {
namespace {

/// A record in which no two figures are the same.
void FillRecord(ChosenSet& set) {
    set.ModelNum = "Model";
    set.AltNum = "Alternator";
    set.EngineNum = "Engine";
    set.FuelType = 2;
    set.NominalRating = 101.5;
    set.DeratedRating = 92.5;
    set.StartKVA35 = 303.5;
    set.VoltageDips = {1.5, 2.5};
    set.FreqDips = {3.5, 4.5};
    set.StepVTHD_A = {5.5, 6.5};
    set.StepVTHD_B = {7.5, 8.5};
    set.StepVTHD_C = {9.5, 10.5};
    set.MaxStepVoltDip = 11.5;
    set.MaxStepFreqDip = 12.5;
    set.MaxStepVTHD = 13.5;
    set.FreqDipAvail = false;
}

struct Reader {
    std::string name;
    std::function<std::string(const CDesigner&, std::int32_t)> read;
    std::string expected;
};

std::string Shown(const std::vector<double>& figures) {
    return fmt::format("{}", fmt::join(figures, " "));
}
template <typename Value>
std::string Shown(const Value& value) {
    return fmt::format("{}", value);
}

#define READER(name, expected)                                                          \
    {                                                                                   \
#name, [](const CDesigner& designer,                                            \
                  std::int32_t index) { return Shown(designer.name(index)); }, expected \
    }

const std::vector<Reader>& Readers() {
    static const std::vector<Reader> readers{
        READER(SetModelNum, "Model"),         READER(SetEngineNum, "Engine"),
        READER(SetAltNum, "Alternator"),      READER(SetFuelType, "2"),
        READER(SetNominalRating, "101.5"),    READER(SetDeratedRating, "92.5"),
        READER(SetStartKVA35, "303.5"),       READER(MaxStepVoltDip, "11.5"),
        READER(MaxStepFreqDip, "12.5"),       READER(MaxStepVTHD, "13.5"),
        READER(VoltageDips, "1.5 2.5"),       READER(FreqDips, "3.5 4.5"),
        READER(FreqDipAvail, "false"),        READER(StepVTHD_A, "5.5 6.5"),
        READER(StepVTHD_B, "7.5 8.5"),        READER(StepVTHD_C, "9.5 10.5"),
        READER(SetModelNumRej, "Model"),      READER(SetEngineNumRej, "Engine"),
        READER(SetAltNumRej, "Alternator"),   READER(SetFuelTypeRej, "2"),
        READER(SetNominalRatingRej, "101.5"), READER(SetDeratedRatingRej, "92.5"),
        READER(SetStartKVA35Rej, "303.5"),    READER(MaxStepVoltDipRej, "11.5"),
        READER(MaxStepFreqDipRej, "12.5"),    READER(MaxStepVTHDRej, "13.5"),
        READER(VoltageDipsRej, "1.5 2.5"),    READER(FreqDipsRej, "3.5 4.5"),
        READER(FreqDipAvailRej, "false"),     READER(StepVTHD_A_Rej, "5.5 6.5"),
        READER(StepVTHD_B_Rej, "7.5 8.5"),    READER(StepVTHD_C_Rej, "9.5 10.5"),
        READER(RejectionReason, "37"),
    };
    return readers;
}

#undef READER

TEST(DesignerLists, EveryReaderGivesItsOwnFigureAndNamesItselfBeyondTheList) {
    EngineFixture fixture;
    for (const Reader& reader : Readers()) {
        const bool isOfRejected = reader.name.ends_with("Rej") || reader.name == "RejectionReason";
        CDesigner::Results results;
        // The other list is longer, and so a reader of the wrong one does not raise.
        results.chosen.resize(isOfRejected ? 2 : 1);
        results.rejected.resize(isOfRejected ? 1 : 2);
        if (isOfRejected) {
            FillRecord(results.rejected[0]);
            results.rejected[0].RejectionReason = 37;
        } else {
            FillRecord(results.chosen[0]);
        }
        fixture.designer.LastRun(std::move(results));
        EXPECT_EQ(reader.read(fixture.designer, 0), reader.expected) << reader.name;
        for (const std::int32_t index : {-1, 1}) {
            EXPECT_THAT([&] { (void)reader.read(fixture.designer, index); },
                        Raises(9, "CDesigner::" + reader.name, "Subscript out of range"));
        }
    }
}

TEST(DesignerLists, AFailedRunLeavesThemAsFarAsTheyGot) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.model = "OLD", .rating = 200})};
    fixture.Run();
    GensetRow unreadable = MakeRow({.model = "UNREADABLE", .rating = 70});
    unreadable.LRkVA = DbNumber();
    fixture.gensets.rows = {
        MakeRow({.model = "ONE", .rating = 90}), MakeRow({.model = "SMALL", .rating = 40}),
        MakeRow({.model = "TWO", .rating = 60}), unreadable, MakeRow({.model = "NEVER", .rating = 80})};
    EXPECT_THROW(fixture.Run(), RaisedError);
    ASSERT_EQ(fixture.designer.NumChosenSets(), 2);
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.SetModelNum(0), "ONE");  // not sorted yet
    EXPECT_EQ(fixture.designer.SetModelNum(1), "TWO");
    EXPECT_EQ(fixture.designer.SetModelNumRej(0), "SMALL");
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 50.0);
    EXPECT_EQ(fixture.designer.Counts().Candidates(), 3);
}

TEST(DesignerLists, AnEmptyRunEmptiesBoth) {
    EngineFixture fixture;
    fixture.AddKilowatts(50);
    fixture.gensets.rows = {MakeRow({.rating = 90}), MakeRow({.rating = 40})};
    fixture.Run();
    ASSERT_EQ(fixture.designer.NumChosenSets(), 1);
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    fixture.gensets.rows.clear();
    fixture.AddKilowatts(20);
    EXPECT_EQ(fixture.Run(), 0);
    EXPECT_EQ(fixture.designer.NumChosenSets(), 0);
    EXPECT_EQ(fixture.designer.NumRejectedSets(), 0);
    EXPECT_EQ(fixture.designer.TotalRunningKW(), 50.0);
}

TEST(DesignerLists, ASetThatStartsNothingStartsAStartOfNothing) {
    EngineFixture fixture;
    fixture.AddStep();  // no load at all: 0 kVA to start
    fixture.gensets.rows = {MakeRow({.rating = 100, .startKVA35 = 0})};
    fixture.Run();
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.RejectionReason(0), rejection::kVoltageDip);  // 100 % of dip all the same
    EXPECT_EQ(fixture.designer.MaxStepVoltDipRej(0), 0.0);
}

TEST(DesignerLists, DistortionAloneKeepsASetOutFromTheFirstPercentBelowIt) {
    EngineFixture fixture;
    auto ups = std::make_unique<CUPSLoad>();
    ups->Family(ups_family::kOnLine);
    ups->InputType(input_type::kSixPulse);
    ups->OutputRating(60000.0);
    ups->Loading(100);
    fixture.AddStep().AddLoad(std::move(ups));
    fixture.gensets.rows = {MakeRow({.rating = 200})};
    fixture.gensets.alternators[1] = MakeAlternator(1, 200.0, 480.0, 0.12);
    fixture.Run();
    const double distortion = fixture.designer.MaxStepVTHD(0);
    const auto below = static_cast<std::int32_t>(std::floor(distortion));
    ASSERT_GE(below, 5);
    ASSERT_LT(below, 20);
    fixture.site.MaxHarmonics(below);
    EXPECT_EQ(fixture.Run(), 1);  // the limit does not hold yet
    fixture.site.MaxHarmonicsEnabled(true);
    EXPECT_EQ(fixture.Run(), 0);
    ASSERT_EQ(fixture.designer.NumRejectedSets(), 1);
    EXPECT_EQ(fixture.designer.RejectionReason(0), 32);
    fixture.site.MaxHarmonics(below + 1);
    EXPECT_EQ(fixture.Run(), 1);
}

}  // namespace
}  // namespace genvara
