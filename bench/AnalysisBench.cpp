// What the analysis of a sample project takes, and how long the window's thread is kept from its events by
// it.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <memory>

#include "AdviceFigures.h"
#include "AnalysisHost.h"
#include "AnalysisWords.h"
#include "Document.h"
#include "QtPlatformServices.h"
#include "StepCharts.h"
#include "frmAnalysis.h"

namespace genvara {
namespace {

/// The hospital of the samples with the program's own catalogue, as the window hands it over.
class Sample final : public AnalysisHost {
  public:
    Sample() {
        catalogue.RequireFit();
        ProjectReadObserver ignored;
        (void)document.Read(std::filesystem::path(SAMPLES_FOLDER) / "hospital.prj", ignored);
    }
    std::optional<StudyProject> ProjectAsItStands() override {
        return StudyProject{.project = document.Project(),
                            .powerSystem = document.PowerSystem(),
                            .loadProfile = document.LoadProfile(),
                            .limits = document.Designer()};
    }
    void TakeVariation(const QString& /*name*/, const StudyProject& /*varied*/) override {}
    void ShowAnalysisHelp(QWidget& /*owner*/) override {}

    Catalogue catalogue{CATALOGUE_DATABASE};

  private:
    CDefaults m_defaults;

  public:
    Document document{m_defaults, catalogue};
};

/// Tests, steps and advice, with all that is shown of them; the candidates are in memory.
void AnalysisOfASample(benchmark::State& state) {
    Sample sample;
    const StudyDesk desk(sample.catalogue);
    const StopFlag goOn = false;
    const StudyProject project = *sample.ProjectAsItStands();
    for (auto _ : state) {
        const Explanation explanation =
            Explain(desk.Tables().candidates.Of(FilterOf(project.powerSystem)), project.powerSystem,
                    project.loadProfile, project.limits, {}, goOn);
        benchmark::DoNotOptimize(TestsGrid(explanation, project.loadProfile));
        benchmark::DoNotOptimize(StepChartsOf(explanation.sets.front(), project));
        const AdviceList list =
            Advise(project, {}, desk.Tables(), 1, goOn, [](std::int64_t, std::int64_t) {});
        benchmark::DoNotOptimize(AdviceGrid(list, nullptr));
    }
}
BENCHMARK(AnalysisOfASample)->Unit(benchmark::kMillisecond);

/// From a change of the project to the pages that show it; the counter tells the longest time in which the
/// window handled no event.
void FromChangeToPages(benchmark::State& state) {
    Sample sample;
    QtPlatformServices platform("Bench");
    const ExhibitDesk exhibits({.platform = platform,
                                .printSetup = [] { return PrintSetup(); },
                                .projectName = [] { return QString(); },
                                .obstacle = [](const std::filesystem::path&) { return std::nullopt; },
                                .clock = LocalTime});
    frmAnalysis window(sample, sample.catalogue, exhibits);
    window.show();
    QTimer beat;
    QElapsedTimer since;
    qint64 longest = 0;
    QObject::connect(&beat, &QTimer::timeout, [&] {
        longest = std::max(longest, since.nsecsElapsed());
        since.start();
    });
    for (auto _ : state) {
        window.ProjectChanged();
        since.start();
        beat.start(0);
        while (!window.IsFresh()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        beat.stop();
    }
    state.counters["longest_gap_ms"] = static_cast<double>(longest) / 1e6;
}
BENCHMARK(FromChangeToPages)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
