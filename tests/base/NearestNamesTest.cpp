#include "NearestNames.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace genvara {
namespace {

using testing::ElementsAre;

constexpr std::array<std::string_view, 6> kNames{"size",  "report",  "export-spec",
                                                 "check", "catalog", "sweep"};

TEST(NearestNames, AreThoseThatASlipLeadsTo) {
    EXPECT_THAT(NearestNames("reprot", kNames), ElementsAre("report"));
    EXPECT_THAT(NearestNames("SIZE", kNames), ElementsAre("size"));
    EXPECT_THAT(NearestNames("sice", kNames), ElementsAre("size"));
    EXPECT_THAT(NearestNames("export", kNames), ElementsAre("export-spec"));  // its beginning
    EXPECT_THAT(NearestNames("c", kNames), ElementsAre("size"));              // too short for a beginning
    constexpr std::array<std::string_view, 4> kLikes{"aaaa", "aaab", "aaac", "aaad"};
    EXPECT_THAT(NearestNames("aaax", kLikes), ElementsAre("aaaa", "aaab", "aaac"));
}

TEST(NearestNames, AreNeverNone) {
    EXPECT_EQ(NearestNames("", kNames).size(), 1U);
    EXPECT_EQ(NearestNames(std::string(100000, 'x'), kNames).size(), 1U);
    EXPECT_TRUE(NearestNames("x", {}).empty());
}

TEST(NearestNames, TellASlipFromAnotherWord) {
    EXPECT_EQ(SlipOf("siez", kNames), "size");      // neighbours swapped
    EXPECT_EQ(SlipOf("sixes", kNames), "");         // two letters of five
    EXPECT_EQ(SlipOf("raprot", kNames), "report");  // two letters of six
    EXPECT_EQ(SlipOf("dance", kNames), "");
    EXPECT_EQ(SlipOf("", kNames), "");
    EXPECT_EQ(SlipOf("size", {}), "");
}

TEST(NearestNames, MakeASentence) {
    EXPECT_EQ(SuggestionText("siz", kNames), "the nearest is size");
    constexpr std::array<std::string_view, 3> kThree{"one", "ones", "once"};
    EXPECT_EQ(SuggestionText("onc", std::span(kThree).first(2)), "the nearest are one and ones");
    EXPECT_EQ(SuggestionText("onces", kThree), "the nearest are ones, once and one");
}

TEST(NearestNames, AreTheSameWhateverTheCapitals) {
    EXPECT_TRUE(SameLetters("Motor", "mOTOR"));
    EXPECT_FALSE(SameLetters("Motor", "Motors"));
    EXPECT_FALSE(SameLetters("Motor", "Moto "));
}

}  // namespace
}  // namespace genvara
