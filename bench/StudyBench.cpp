// What studies cost against a bare run of the engine over the same candidates, derate codes and alternators
// in memory. `bench/report.py` turns the figures into the ratios of docs/performance.md.

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "Advise.h"
#include "CDesigner.h"
#include "CachedGensets.h"
#include "Catalogue.h"
#include "JudgeInOrder.h"
#include "Order.h"
#include "PreparedSite.h"
#include "ProjectFile.h"
#include "Sweep.h"

namespace genvara {
namespace {

/// The program's own catalogue, and what studies are made with.
struct Tables {
    Tables() { catalogue.ReadMotorConversions(); }

    Catalogue catalogue{CATALOGUE_DATABASE};
    CachedGensets gensets{catalogue.Gensets()};
    CandidateStore candidates{gensets};
    EntryRules rules{
        .motors = {catalogue.Motors(), catalogue.MotorCodeLetters(), catalogue.MotorStartingMultipliers()},
        .phasesOf = [this](std::int32_t code) { return catalogue.PhasesOf(code); }};
    StudyTables study{rules, candidates};
    StopFlag stop{false};
    CDefaults defaults;

    [[nodiscard]] StudyProject Fresh() const {
        return {.project = CProject(defaults, LocalTime),
                .powerSystem = CPwrSys(defaults),
                .loadProfile = {},
                .limits = {},
                .format = ProjectFormat::Records};
    }
};

/// A project, by default the hospital of the samples.
struct Sample : Tables {
    explicit Sample(const std::filesystem::path& file = std::filesystem::path(SAMPLES_FOLDER) /
                                                        "hospital.prj") {
        ProjectReadObserver ignored;
        (void)ReadProjectFile(
            file, {project.project, project.powerSystem, project.loadProfile, catalogue.Motors()}, ignored);
        catalogue.FollowConnection(project.powerSystem);
    }

    StudyProject project = Fresh();
};

/// A run with its lists, as a user asks for it.
void BareRun(benchmark::State& state) {
    Sample sample;
    CDesigner designer(sample.gensets, sample.project.powerSystem, sample.project.loadProfile);
    for (auto _ : state) {
        designer.SelectGensets();
        benchmark::DoNotOptimize(designer.ChooseSets());
    }
}
BENCHMARK(BareRun)->Unit(benchmark::kMicrosecond);

/// The same with nothing around it: figures of the candidates at hand, no lists, each through every step.
void EveryCandidate(benchmark::State& state) {
    Sample sample;
    const CPwrSys& site = sample.project.powerSystem;
    PreparedSite prepared;
    prepared.Prepare(sample.candidates.Of(FilterOf(site)), RequirementsOf(site, DesignLimits()));
    StepJudge judge;
    for (auto _ : state) {
        const ProfileFigures figures = FiguresOf(sample.project.loadProfile, site);
        judge.Begin(prepared.Site(), figures);
        JudgeInOrder(prepared, figures, judge, [](std::size_t /*i*/, Fate fate, std::int32_t /*reason*/) {
            benchmark::DoNotOptimize(fate);
        });
    }
}
BENCHMARK(EveryCandidate)->Unit(benchmark::kMicrosecond);

/// What of a variation the engine's search alone takes.
void SearchAlone(benchmark::State& state) {
    Sample sample;
    ProjectSizer sizer(sample.study);
    for (auto _ : state) {
        benchmark::DoNotOptimize(sizer.Size(sample.project));
    }
}
BENCHMARK(SearchAlone)->Unit(benchmark::kMicrosecond);

/// A sweep of so many points, as `genvara-cli sweep` makes it, on so many threads.
void SweepPoints(benchmark::State& state, const std::string& axis) {
    Sample sample;
    const std::vector<SweepAxis> axes =
        ParseAxes({fmt::format(fmt::runtime(axis), state.range(0))}, sample.project, sample.rules);
    const auto points = static_cast<std::int64_t>(PointCount(axes));
    for (auto _ : state) {
        Sweep(sample.project, axes, sample.study, static_cast<std::int32_t>(state.range(1)), sample.stop,
              [](std::int64_t /*index*/, const SweepPoint& point) { benchmark::DoNotOptimize(point); });
    }
    state.counters["variations"] = static_cast<double>(points);
}
BENCHMARK_CAPTURE(SweepPoints, Power, "Step[2].Load[1].RunningRealPower=1:{}:1")
    ->Args({1000, 1})
    ->Args({4000, 1})
    ->Args({16000, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SweepPoints, Altitude, "PowerSystem.Altitude=1:{}:1")
    ->Args({1000, 1})
    ->Args({4000, 1})
    ->Args({4000, 2})
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SweepPoints, Motor, "Step[7].Load[1].HP=1:{}:0.25")
    ->Args({800, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(SweepPoints, Limit, "Step[6].MaxVoltageDipOverride=5:{}:1")
    ->Args({35, 1})
    ->Unit(benchmark::kMillisecond);

/// `genvara-cli advise`, but its order, which is no variation.
void AdviseHospital(benchmark::State& state) {
    Sample sample;
    AdviceChoice choice;
    choice.kinds[static_cast<std::size_t>(AdviceKind::Order)] = false;
    std::int64_t variations = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            Advise(sample.project, choice, sample.study, 1, sample.stop,
                   [&](std::int64_t /*done*/, std::int64_t total) { variations = total; }));
    }
    state.counters["variations"] = static_cast<double>(variations);
}
BENCHMARK(AdviseHospital)->Unit(benchmark::kMillisecond);

/// `genvara-cli order`: orders judged by a search that ends by itself.
void OrderTwentyLoads(benchmark::State& state) {
    Sample sample(std::filesystem::path(BENCH_FOLDER) / "twenty-loads.json");
    const StudyProject& project = sample.project;
    std::int64_t judged = 0;
    const SearchEffort effort{.seconds = 600.0, .count = [&](std::int64_t orders) { judged = orders; }};
    const OrderRules rules{.maxSteps = project.loadProfile.NumLoadSteps(), .before = {}, .together = {}};
    for (auto _ : state) {
        benchmark::DoNotOptimize(FindOrder(project, rules, sample.study, effort, sample.stop));
    }
    state.counters["orders"] = static_cast<double>(judged);
}
BENCHMARK(OrderTwentyLoads)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace genvara
