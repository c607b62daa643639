// What a variation of a sample project costs against a bare run of the engine over the same candidates,
// derate codes and alternators in memory.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "CDesigner.h"
#include "CachedGensets.h"
#include "DesignSearch.h"
#include "GensetDatabase.h"
#include "JudgeInOrder.h"
#include "PreparedSite.h"
#include "ProjectFile.h"

namespace genvara {
namespace {

/// The hospital of the samples with the program's own catalogue.
class Sample {
  public:
    Sample() {
        ProjectReadObserver ignored;
        const ProjectModel model{
            .project = m_project, .powerSystem = site, .loadProfile = profile, .motors = m_motors};
        (void)ReadProjectFile(std::filesystem::path(SAMPLES_FOLDER) / "hospital.prj", model, ignored);
        site.Phases(3);
    }

    GensetDatabase database{CATALOGUE_DATABASE};

  private:
    CDefaults m_defaults;
    MotorConversions m_motors = database.ReadMotorConversions();
    CProject m_project{m_defaults, LocalTime};

  public:
    CPwrSys site{m_defaults};
    CLoadProfile profile;
};

void BareRun(benchmark::State& state) {
    Sample sample;
    CachedGensets cached(sample.database);
    CDesigner designer(cached, sample.site, sample.profile);
    for (auto _ : state) {
        designer.SelectGensets();
        benchmark::DoNotOptimize(designer.ChooseSets());
    }
}
BENCHMARK(BareRun)->Unit(benchmark::kMicrosecond);

/// The same with nothing around it: figures of the candidates at hand, no lists, each through every step.
void EveryCandidate(benchmark::State& state) {
    Sample sample;
    CandidateStore store(sample.database);
    PreparedSite prepared;
    prepared.Prepare(store.Of(FilterOf(sample.site)), RequirementsOf(sample.site, DesignLimits()));
    StepJudge judge;
    for (auto _ : state) {
        const ProfileFigures figures = FiguresOf(sample.profile, sample.site);
        judge.Begin(prepared.Site(), figures);
        JudgeInOrder(prepared, figures, judge, [](std::size_t /*i*/, Fate fate, std::int32_t /*reason*/) {
            benchmark::DoNotOptimize(fate);
        });
    }
}
BENCHMARK(EveryCandidate)->Unit(benchmark::kMicrosecond);

/// A change, the profile's figures, all candidates, the set found.
template <typename Change>
void Vary(benchmark::State& state, Change change) {
    Sample sample;
    CandidateStore store(sample.database);
    DesignSearch search;
    const DesignLimits limits;
    bool other = false;
    for (auto _ : state) {
        other = !other;
        change(sample, other);
        const ProfileFigures figures = FiguresOf(sample.profile, sample.site);
        benchmark::DoNotOptimize(search.Find(store.Of(FilterOf(sample.site)), sample.site, figures, limits,
                                             DesignSearch::Goal::Count));
    }
}

void VaryAltitude(benchmark::State& state) {
    Vary(state, [](Sample& sample, bool other) { sample.site.Altitude(other ? 1500.0 : 300.0); });
}
BENCHMARK(VaryAltitude)->Unit(benchmark::kMicrosecond);

void VaryLoad(benchmark::State& state) {
    Vary(state,
         [](Sample& sample, bool other) { (*sample.profile.LoadStep(4).begin())->Quantity(other ? 2 : 1); });
}
BENCHMARK(VaryLoad)->Unit(benchmark::kMicrosecond);

void VaryLimit(benchmark::State& state) {
    Vary(state, [](Sample& sample, bool other) {
        sample.profile.LoadStep(6).MaxVoltageDipOverride(other ? 15 : 10);
    });
}
BENCHMARK(VaryLimit)->Unit(benchmark::kMicrosecond);

/// What of a variation the loads alone take.
void FiguresAlone(benchmark::State& state) {
    const Sample sample;
    for (auto _ : state) {
        benchmark::DoNotOptimize(FiguresOf(sample.profile, sample.site));
    }
}
BENCHMARK(FiguresAlone)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace genvara
