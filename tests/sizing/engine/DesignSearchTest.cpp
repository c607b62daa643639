#include "DesignSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <optional>
#include <tuple>

#include "RaisedErrorMatcher.h"
#include "RandomDesign.h"

namespace genvara {
namespace {

using testing::DoubleNear;

/// Number, source and description of the failure of some work.
using Failure = std::optional<std::tuple<std::int32_t, std::string, std::string>>;

template <typename Work>
Failure FailureOf(Work work) {
    try {
        work();
        return std::nullopt;
    } catch (const RaisedError& failure) {
        return std::tuple(failure.Number(), failure.Source(), failure.Description());
    }
}

bool SameBits(double one, double other) {
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}

bool SameBits(const std::vector<double>& one, const std::vector<double>& other) {
    return std::ranges::equal(one, other, [](double a, double b) { return SameBits(a, b); });
}

bool SameRecord(const ChosenSet& one, const ChosenSet& other) {
    return one.ModelNum == other.ModelNum && one.AltNum == other.AltNum && one.EngineNum == other.EngineNum &&
           one.FuelType == other.FuelType && SameBits(one.NominalRating, other.NominalRating) &&
           SameBits(one.DeratedRating, other.DeratedRating) &&
           SameBits(one.StartingPower, other.StartingPower) && SameBits(one.StartKVA35, other.StartKVA35) &&
           SameBits(one.VoltageDips, other.VoltageDips) && SameBits(one.FreqDips, other.FreqDips) &&
           SameBits(one.StepVTHD_A, other.StepVTHD_A) && SameBits(one.StepVTHD_B, other.StepVTHD_B) &&
           SameBits(one.StepVTHD_C, other.StepVTHD_C) && SameBits(one.MaxStepVoltDip, other.MaxStepVoltDip) &&
           SameBits(one.MaxStepFreqDip, other.MaxStepFreqDip) &&
           SameBits(one.MaxStepVTHD, other.MaxStepVTHD) && one.FreqDipAvail == other.FreqDipAvail;
}

bool SameRejection(const RejectedSet& one, const RejectedSet& other) {
    return one.RejectionReason == other.RejectionReason && SameRecord(one, other);
}

std::optional<Tightest> TightestOf(const std::vector<StepVerdicts>& steps) {
    std::optional<Tightest> tightest;
    for (std::size_t s = 0; s < steps.size(); ++s) {
        KeepTighter(tightest, static_cast<std::int32_t>(s) + 1, steps[s]);
    }
    return tightest;
}

/// A search like a run of the fixture's designer.
class Searcher {
  public:
    explicit Searcher(EngineFixture& fixture) : m_fixture(&fixture), m_store(fixture.gensets) {}

    SearchAnswer Find(DesignSearch::Goal goal = DesignSearch::Goal::Count) {
        const auto candidates = m_store.Of(FilterOf(m_fixture->site));
        // A designer asks the loads only if there is a candidate.
        const bool any = !candidates->Rows().empty();
        const ProfileFigures profile =
            any ? FiguresOf(m_fixture->profile, m_fixture->site) : ProfileFigures{};
        return search.Find(candidates, m_fixture->site, profile, m_fixture->designer, goal);
    }

    DesignSearch search;

  private:
    EngineFixture* m_fixture;
    CandidateStore m_store;
};

/// How often random designs came to what.
struct Met {
    int failures = 0;
    int found = 0;
    int nothing = 0;
};

/// Designs of one test, each made up from its number.
constexpr std::uint32_t kDesigns = 600;

void CompareWithDesigner(EngineFixture& fixture, Searcher& searcher, Met& met) {
    SearchAnswer answer;
    const Failure failure = FailureOf([&] { answer = searcher.Find(); });
    ASSERT_EQ(FailureOf([&] { fixture.Run(); }), failure);
    if (failure) {
        ++met.failures;
        return;
    }
    const CDesigner& designer = fixture.designer;
    ASSERT_EQ(answer.numChosenSets, designer.NumChosenSets());
    ASSERT_EQ(answer.first.has_value(), !designer.ChosenSets().empty());
    if (!answer.first) {
        ++met.nothing;
        return;
    }
    ++met.found;
    const ChosenSet& expected = designer.ChosenSets().front();
    ASSERT_TRUE(SameRecord(searcher.search.RecordAt(*answer.first), expected));
    ASSERT_TRUE(SameBits(answer.nominalRating, expected.NominalRating));
    const std::optional<Tightest> tightest = TightestOf(designer.Verdicts(0));
    ASSERT_EQ(answer.tightest.has_value(), tightest.has_value());
    ASSERT_TRUE(!tightest || (answer.tightest->test == tightest->test &&
                              answer.tightest->stepNumber == tightest->stepNumber &&
                              SameBits(answer.tightest->margin, tightest->margin)));
    const SearchAnswer first = searcher.Find(DesignSearch::Goal::First);
    ASSERT_EQ(first.first, answer.first);
    ASSERT_EQ(first.numChosenSets, 1);
}

TEST(DesignSearch, AnswersAsARunDoesWhateverChangedSinceTheSearchBefore) {
    Met met;
    for (std::uint32_t number = 0; number < kDesigns; ++number) {
        RandomDesign design(number);
        EngineFixture& fixture = design.fixture;
        Searcher searcher(fixture);
        CompareWithDesigner(fixture, searcher, met);
        for (int variation = 0; variation < 8; ++variation) {
            design.Vary();
            CompareWithDesigner(fixture, searcher, met);
        }
        ASSERT_FALSE(HasFatalFailure()) << "design " << number;
    }
    EXPECT_GT(met.failures, 200);
    EXPECT_GT(met.found, 1000);
    EXPECT_GT(met.nothing, 500);
}

TEST(DesignRun, LeavesOutNothingThatItsListsWouldShow) {
    // Lists without a limit have room for everything, so that every candidate is taken through every step.
    const auto cut = [](auto list, std::int32_t limit) {
        list.resize(std::min(list.size(), static_cast<std::size_t>(std::max(limit, 0))));
        return list;
    };
    Met met;
    for (std::uint32_t number = 0; number < kDesigns; ++number) {
        RandomDesign design(number);
        CDesigner& designer = design.fixture.designer;
        const DesignLimits limits = designer;
        const Failure failure = FailureOf([&] { design.fixture.Run(); });
        const std::vector<ChosenSet> chosen = designer.ChosenSets();
        const std::vector<RejectedSet> rejected = designer.RejectedSets();
        const RunCounts counts = designer.Counts();
        designer.MaxSetsRecommended(1000);
        designer.MaxSetsUndersized(1000);
        ASSERT_EQ(FailureOf([&] { design.fixture.Run(); }), failure) << "design " << number;
        if (failure) {
            ++met.failures;
            continue;
        }
        const auto allChosen = cut(designer.ChosenSets(), limits.MaxSetsRecommended());
        const auto allRejected = cut(designer.RejectedSets(), limits.MaxSetsUndersized());
        ASSERT_TRUE(std::ranges::equal(chosen, allChosen, SameRecord)) << "design " << number;
        ASSERT_TRUE(std::ranges::equal(rejected, allRejected, SameRejection)) << "design " << number;
        ASSERT_EQ(counts.recommended, designer.NumChosenSets());
        ASSERT_EQ(counts.undersized, designer.NumRejectedSets());
        ASSERT_EQ(counts.underloaded, designer.Counts().underloaded);
        ASSERT_EQ(counts.Candidates(), static_cast<std::int64_t>(design.fixture.gensets.rows.size()));
        met.found += static_cast<int>(chosen.size());
        met.nothing += static_cast<int>(rejected.size());
    }
    EXPECT_GT(met.failures, 20);
    EXPECT_GT(met.found, 300);
    EXPECT_GT(met.nothing, 400);
}

/// 50 kW, 100 kW and 300 kW against 60 kW: the second is the first recommended set.
class ThreeSets : public EngineFixture {
  public:
    ThreeSets() {
        AddKilowatts(60);
        gensets.rows = {MakeRow({.model = "large", .rating = 300}), MakeRow({.model = "small", .rating = 50}),
                        MakeRow({.model = "right", .rating = 100})};
    }
};

TEST(DesignSearch, FindsTheSmallestSetWithItsTightestTest) {
    // Of 100 kW 60 are used: 40 percent are left by rating, loading (100 percent allowed) and phases; the
    // first of the equal ones counts. The start takes 60 of 1000 kW and 60 of 1000 kVA.
    ThreeSets fixture;
    Searcher searcher(fixture);
    const SearchAnswer answer = searcher.Find();
    EXPECT_EQ(answer.first, 2U);
    EXPECT_EQ(answer.numChosenSets, 2);
    EXPECT_EQ(answer.nominalRating, 100.0);
    ASSERT_TRUE(answer.tightest);
    EXPECT_EQ(kStepTests[answer.tightest->test].name, "Rating");
    EXPECT_EQ(answer.tightest->stepNumber, 1);
    EXPECT_THAT(answer.tightest->margin, DoubleNear(40.0, 1e-12));
    EXPECT_EQ(searcher.search.RecordAt(2).ModelNum, "right");
}

TEST(DesignSearch, FailsAtACandidateThatItWouldNotNeed) {
    // The large set is behind the one that is found, and ends the run all the same.
    struct Case {
        const char* what;
        std::function<void(GensetRow&)> damage;
        std::int32_t number;
        const char* source;
    };
    const Case cases[] = {
        {"a field", [](GensetRow& row) { row.LRkVA = DbNumber(); }, 13, "CDesigner::ChooseSets"},
        {"a name", [](GensetRow& row) { row.GensetModel.AssignNull(); }, 13, "CDesigner::ChooseSets"},
        {"a key", [](GensetRow& row) { row.AltModel = DbNumber(99); }, 3021, "GensetDatabase"},
        {"a key that is none", [](GensetRow& row) { row.DerateCode = DbNumber::Unreadable(); }, 13,
         "CDesigner::ChooseSets"},
        {"a key too large", [](GensetRow& row) { row.DerateCode = DbNumber(1e12); }, 6,
         "CDesigner::ChooseSets"},
        {"a curve", [](GensetRow& row) { row.BaseFreqDipKW = DbNumber(1e-300); }, 6, "CDesigner::ChooseSets"},
    };
    for (const Case& row : cases) {
        ThreeSets fixture;
        row.damage(fixture.gensets.rows[0]);
        fixture.gensets.rows[0].ExpC = DbNumber(2.0);
        Searcher searcher(fixture);
        const Failure failure = FailureOf([&] { (void)searcher.Find(); });
        ASSERT_TRUE(failure) << row.what;
        EXPECT_EQ(std::get<0>(*failure), row.number) << row.what;
        EXPECT_EQ(std::get<1>(*failure), row.source) << row.what;
        EXPECT_EQ(FailureOf([&] { fixture.Run(); }), failure) << row.what;
    }
}

TEST(DesignSearch, ASetThatIsDroppedNeedsNoName) {
    ThreeSets fixture;
    fixture.designer.MinLoading(30);  // 60 kW are a fifth of 300
    fixture.gensets.rows[0].GensetModel.AssignNull();
    Searcher searcher(fixture);
    EXPECT_EQ(searcher.Find().first, 2U);
    EXPECT_EQ(searcher.Find().numChosenSets, 1);
    EXPECT_EQ(fixture.Run(), 1);
}

/// A source that breaks off behind the second row.
class BrokenGensets final : public GensetSource {
  public:
    explicit BrokenGensets(MemoryGensets& whole) : m_whole(&whole) {}
    [[nodiscard]] PropertiesRecord Properties() override { return m_whole->Properties(); }
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& filter) override {
        return std::make_unique<Cursor>(m_whole->SelectGensets(filter));
    }
    [[nodiscard]] DerateRow DerateCode(std::int32_t id) override { return m_whole->DerateCode(id); }
    [[nodiscard]] AlternatorRow Alternator(std::int32_t id) override { return m_whole->Alternator(id); }

  private:
    class Cursor final : public GensetCursor {
      public:
        explicit Cursor(std::unique_ptr<GensetCursor> whole) : m_whole(std::move(whole)) {}
        [[nodiscard]] const GensetRow* Next() override {
            if (++m_count > 2) {
                throw RaisedError(11, "GensetDatabase", "database disk image is malformed");
            }
            return m_whole->Next();
        }

      private:
        std::unique_ptr<GensetCursor> m_whole;
        int m_count = 0;
    };

    MemoryGensets* m_whole;
};

TEST(SiteCandidates, KeepTheFailureBehindTheLastRowThatCouldBeRead) {
    ThreeSets fixture;
    BrokenGensets broken(fixture.gensets);
    const auto candidates = CandidateStore(broken).Of(FilterOf(fixture.site));
    EXPECT_EQ(candidates->Rows().size(), 2U);
    DesignSearch search;
    const ProfileFigures profile = FiguresOf(fixture.profile, fixture.site);
    const auto find = [&] {
        (void)search.Find(candidates, fixture.site, profile, fixture.designer, DesignSearch::Goal::First);
    };
    EXPECT_THAT(find, Raises(11, "GensetDatabase", "database disk image is malformed"));
    CDesigner designer(broken, fixture.site, fixture.profile);
    designer.SelectGensets();
    EXPECT_THAT([&] { designer.ChooseSets(); },
                Raises(11, "GensetDatabase", "database disk image is malformed"));
}

TEST(SiteCandidates, AskForEachKeyOnce) {
    ThreeSets fixture;
    CandidateStore store(fixture.gensets);
    const auto candidates = store.Of(FilterOf(fixture.site));
    EXPECT_EQ(fixture.gensets.derateQuestions, 1);
    EXPECT_EQ(fixture.gensets.alternatorQuestions, 1);
    EXPECT_EQ(store.Of(FilterOf(fixture.site)), candidates);
    fixture.site.Voltage(208);
    EXPECT_NE(store.Of(FilterOf(fixture.site)), candidates);
}

}  // namespace
}  // namespace genvara
