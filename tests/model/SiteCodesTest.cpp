#include "SiteCodes.h"

#include <gtest/gtest.h>

#include <cmath>

#include "StringTable.h"

namespace genvara {
namespace {

TEST(SiteCodes, TellWhatAConnectionMeans) {
    struct Case {
        std::int32_t code;
        DistortionModel distortion;
        bool offersLimit;
        bool divisorIsRootOfThree;
        std::string_view exportedPhases;
    };
    for (const Case& row :
         {Case{1, DistortionModel::ScaledToSite, true, true, "3"},
          Case{2, DistortionModel::FixedScaling, true, false, "3"},
          Case{3, DistortionModel::None, false, false, "1"}, Case{4, DistortionModel::None, true, false, "1"},
          Case{5, DistortionModel::None, true, false, "1"}, Case{6, DistortionModel::None, false, false, "1"},
          Case{0, DistortionModel::None, true, false, "1"},
          Case{-3, DistortionModel::None, true, false, "1"}}) {
        SCOPED_TRACE(row.code);
        const ConnectionTreatment& treatment = TreatmentOf(row.code);
        EXPECT_EQ(treatment.distortion, row.distortion);
        EXPECT_EQ(HasDistortionModel(row.code), row.distortion != DistortionModel::None);
        EXPECT_EQ(treatment.offersHarmonicLimit, row.offersLimit);
        EXPECT_EQ(treatment.neutralDivisor, row.divisorIsRootOfThree ? std::sqrt(3.0) : 2.0);
        EXPECT_EQ(treatment.exportedPhases, row.exportedPhases);
    }
}

TEST(SiteCodes, HaveCaptions) {
    const std::array<std::string_view, 5> fuels{"Any Fuel", "Diesel", "Nat. Gas", "L.P.", "Gasoline"};
    const std::array<std::string_view, 5> rises{"80C Continuous", "105C Prime", "125C Prime", "130C Standby",
                                                "150C Standby"};
    for (std::int32_t code = 0; code < 5; ++code) {
        const auto index = static_cast<std::size_t>(code);
        ASSERT_NE(FindRow(kFuels, code), nullptr);
        EXPECT_EQ(StringTable::Text(FindRow(kFuels, code)->caption), fuels[index]);
        ASSERT_NE(FindRow(kRiseDuties, code), nullptr);
        EXPECT_EQ(StringTable::Text(FindRow(kRiseDuties, code)->caption), rises[index]);
        // The caption begins with the degrees.
        EXPECT_TRUE(rises[index].starts_with(std::to_string(FindRow(kRiseDuties, code)->degrees) + "C"));
    }
    for (const std::int32_t code : {-1, 5}) {
        EXPECT_EQ(FindRow(kFuels, code), nullptr);
        EXPECT_EQ(FindRow(kRiseDuties, code), nullptr);
    }
}

TEST(SiteCodes, OfferSixtyHertzBeforeFifty) {
    EXPECT_EQ(kFrequencies.size(), 2U);
    EXPECT_EQ(kFrequencies.front().code, 60);
    EXPECT_EQ(kFrequencies.back().code, 50);
    EXPECT_EQ(FindRow(kFrequencies, 55), nullptr);
}

}  // namespace
}  // namespace genvara
