#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <new>

#include "CUPSLoad.h"
#include "DesignSearch.h"
#include "EngineFixture.h"
#include "SiteCandidates.h"

namespace {

std::size_t g_allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++g_allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

namespace genvara {
namespace {

/// A profile with distortion in each of its steps, and many candidates on many alternators.
class LargeSite : public EngineFixture {
  public:
    LargeSite() {
        site.MaxHarmonicsEnabled(true);
        site.MaxFreqDipEnabled(true);
        for (int step = 0; step < 4; ++step) {
            auto ups = std::make_unique<CUPSLoad>();
            ups->OutputRating(20000.0);
            AddKilowatts(10 + step).AddLoad(std::move(ups));
        }
        for (std::int32_t id = 1; id <= 20; ++id) {
            gensets.alternators[id] = MakeAlternator(id, 100 + id, 480, 0.1);
        }
        for (int i = 0; i < 1000; ++i) {
            gensets.rows.push_back(
                MakeRow({.rating = 50.0 + i, .baseFreqDipKW = 60.0 + i, .alternator = 1 + i % 20}));
        }
    }
};

TEST(DesignSearch, AllocatesNothingOnceItHasItsRoom) {
    LargeSite fixture;
    const auto candidates = CandidateStore(fixture.gensets).Of(FilterOf(fixture.site));
    DesignSearch search;
    const auto find = [&](const ProfileFigures& figures) {
        return search.Find(candidates, fixture.site, figures, fixture.designer, DesignSearch::Goal::Count);
    };
    (void)find(FiguresOf(fixture.profile, fixture.site));
    fixture.profile.LoadStep(1).begin()->Quantity(2);
    fixture.site.Altitude(2000);
    const ProfileFigures figures = FiguresOf(fixture.profile, fixture.site);
    const std::size_t before = g_allocations;
    const SearchAnswer answer = find(figures);
    EXPECT_EQ(g_allocations - before, 0U);
    EXPECT_EQ(answer.numChosenSets, 16);
}

}  // namespace
}  // namespace genvara
