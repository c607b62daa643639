// What keeping every change costs a project of 256 steps with 50 loads each: the time that a change takes
// with what is kept of it, against working out the totals of all steps once, and the memory of 200 changes.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdint>
#include <string>

#include "LargeProfile.h"
#include "ProjectMoment.h"
#include "UndoHistory.h"

namespace genvara {
namespace {

constexpr int kChanges = 200;
constexpr double kMegabyte = 1e6;

/// A large project and what is kept of its changes.
class Project {
  public:
    Project() {
        FillProfile(profile);
        history.Begin(MomentOf(View()));
    }
    /// One load of one step, and what is kept of the change.
    void Change(int number) {
        profile.LoadStep(1 + number % kSteps).begin()->Quantity(1 + number % 256);
        history.Amend(MomentOf(View(), history.Now()));
        history.Add("Edit", MomentOf(View(), history.Now()), {});
    }
    [[nodiscard]] ProjectView View() const noexcept { return {m_project, m_site, profile}; }

    CLoadProfile profile;
    UndoHistory history;

  private:
    CDefaults m_defaults;
    CProject m_project{m_defaults, LocalTime};
    CPwrSys m_site{m_defaults};
};

void TotalsOfAllSteps(benchmark::State& state) {
    const Project project;
    for (auto _ : state) {
        for (const CLoadStep& step : project.profile) {
            benchmark::DoNotOptimize(step.TotalRunningRealPower(0));
        }
    }
}
BENCHMARK(TotalsOfAllSteps)->Unit(benchmark::kMillisecond);

void KeepAChange(benchmark::State& state) {
    Project project;
    int number = 0;
    for (auto _ : state) {
        project.Change(++number);
    }
}
BENCHMARK(KeepAChange)->Unit(benchmark::kMillisecond);

void MemoryOf200Changes(benchmark::State& state) {
    for (auto _ : state) {
        Project project;
        const std::size_t before = mallinfo2().uordblks;
        for (int number = 1; number <= kChanges; ++number) {
            project.Change(number);
        }
        state.counters["MB"] = static_cast<double>(mallinfo2().uordblks - before) / kMegabyte;
    }
}
BENCHMARK(MemoryOf200Changes)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace genvara
