// How long a load profile report takes against copying its bytes, and how it grows.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

#include "CMiscLoad.h"
#include "CReports.h"

namespace genvara {
namespace {

constexpr std::int32_t kLoadsOfAStep = 257;

/// Reports of a project of as many steps as asked for, each as full as a step can be.
class BenchReports {
  public:
    explicit BenchReports(std::int64_t steps) {
        for (std::int64_t s = 0; s < steps; ++s) {
            m_profile.AddLoadStep("A step of the profile", 20, 0);
            CLoadStep& step = m_profile.LoadStep(m_profile.NumLoadSteps());
            for (std::int32_t i = 0; i < kLoadsOfAStep; ++i) {
                auto load = std::make_unique<CMiscLoad>();
                load->name("Heating of a hall");
                load->RunningRealPower(12500);
                step.AddLoad(std::move(load));
            }
        }
        ReportData& data = m_reports.Data();
        const std::vector<double> figures(static_cast<std::size_t>(steps), 12.3);
        data.StepVoltDips = data.StepFreqDips = data.StepVTHDs_A = data.StepVTHDs_B = data.StepVTHDs_C =
            figures;
        data.ParallelSets = 1;
    }

    [[nodiscard]] std::string Build() { return m_reports.CreateReport(report_type::kLoadProfile, false); }

  private:
    CLoadProfile m_profile;
    ErrorLog m_log{"."};
    CReports m_reports{0, m_profile, [] { return DateTime{}; }, m_log};
};

void BuildReport(benchmark::State& state) {
    BenchReports reports(state.range(0));
    for (auto _ : state) {
        benchmark::DoNotOptimize(reports.Build());
    }
}
BENCHMARK(BuildReport)->RangeMultiplier(4)->Range(4, 256)->Unit(benchmark::kMillisecond);

void CopyReportAHundredTimes(benchmark::State& state) {
    BenchReports reports(state.range(0));
    const std::string report = reports.Build();
    std::string copy(report.size(), ' ');
    for (auto _ : state) {
        for (int i = 0; i < 100; ++i) {
            std::memcpy(copy.data(), report.data(), report.size());
            benchmark::ClobberMemory();
        }
    }
}
BENCHMARK(CopyReportAHundredTimes)->Arg(256)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace genvara
