// What a click in the load profile costs the window's thread with 256 steps of 50 loads: columns, what is
// kept for taking back and what is kept against crashes are all on, and what is seen is painted.

#include <benchmark/benchmark.h>

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "CApplication.h"
#include "Globals.h"
#include "LargeProfile.h"
#include "ProfileTree.h"
#include "QtPlatformServices.h"
#include "frmMain.h"
#include "panLoadProfile.h"

namespace genvara {
namespace {

constexpr int kPanel = 2;

/// The main window on its load profile, in a folder of its own.
class OpenWindow {
  public:
    OpenWindow()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("genvara-bench-" + std::to_string(QCoreApplication::applicationPid()))),
          m_application(Conditions()) {
        g_App = &m_application;
        const bool started = m_application.Run([this](CApplication& application) {
            m_window = std::make_unique<frmMain>(application, m_platform);
            m_window->Load();
        });
        if (!started) {
            throw std::runtime_error("the program does not start");
        }
        m_window->resize(1280, 800);
        m_window->show();
        m_window->ChangeProject("Fill", [this] { FillProfile(m_application.LoadProfile()); });
        m_window->SideBarClicked(kPanel);
        Settle();
    }
    ~OpenWindow() {
        m_window.reset();
        g_App = nullptr;
        std::filesystem::remove_all(m_folder);
    }
    OpenWindow(const OpenWindow&) = delete;
    OpenWindow& operator=(const OpenWindow&) = delete;
    OpenWindow(OpenWindow&&) = delete;
    OpenWindow& operator=(OpenWindow&&) = delete;

    static void Settle() { QCoreApplication::processEvents(); }
    void Select(int step, int load) {
        QTreeWidgetItem* node = Tree().topLevelItem(step);
        Tree().setCurrentItem(load < 0 ? node : node->child(load));
    }
    void Click(const char* button) {
        m_window->findChild<QPushButton*>(button)->click();
        Settle();
    }
    void Run(const char* command) {
        m_window->findChild<QAction*>(command)->trigger();
        Settle();
    }
    void ChangeALoad(int number) {
        m_window->ChangeProject("Edit", [&] {
            m_application.LoadProfile().LoadStep(1 + number % kSteps).begin()->Quantity(1 + number % 256);
        });
        Settle();
    }

  private:
    StartConditions Conditions() {
        std::filesystem::create_directories(m_folder / "program");
        std::filesystem::create_symlink(CATALOGUE_DATABASE, m_folder / "program/Genvara.db");
        return {.programFolder = m_folder / "program",
                .settingsFile = m_folder / "settings.json",
                .stateFolder = m_folder / "state"};
    }
    ProfileTree& Tree() { return *m_window->findChild<ProfileTree*>("tlsProfileDisplay"); }

    std::filesystem::path m_folder;
    QtPlatformServices m_platform{"Bench"};
    CApplication m_application;
    std::unique_ptr<frmMain> m_window;
};

OpenWindow& Window() {
    static OpenWindow window;
    return window;
}

/// What the changes are measured against: reading every total of every step once.
void TotalsOfAllSteps(benchmark::State& state) {
    CLoadProfile profile;
    FillProfile(profile);
    for (auto _ : state) {
        for (const CLoadStep& step : profile) {
            benchmark::DoNotOptimize(step.TotalRunningApparentPower(0));
            benchmark::DoNotOptimize(step.TotalStartingApparentPower(0));
        }
    }
}
BENCHMARK(TotalsOfAllSteps)->Unit(benchmark::kMillisecond);

void ChangeALoad(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) {
        Window().ChangeALoad(++number);
    }
}
BENCHMARK(ChangeALoad)->Unit(benchmark::kMillisecond);

void SelectALoad(benchmark::State& state) {
    int number = 0;
    for (auto _ : state) {
        ++number;
        Window().Select(number % kSteps, number % kLoads);
        OpenWindow::Settle();
    }
}
BENCHMARK(SelectALoad)->Unit(benchmark::kMillisecond);

void MoveALoad(benchmark::State& state) {
    Window().Select(100, 10);
    bool down = false;
    for (auto _ : state) {
        down = !down;
        Window().Click(down ? "cmdMoveDown" : "cmdMoveUp");
    }
}
BENCHMARK(MoveALoad)->Unit(benchmark::kMillisecond)->Iterations(40);

void MoveAStep(benchmark::State& state) {
    Window().Select(100, -1);
    bool down = false;
    for (auto _ : state) {
        down = !down;
        Window().Click(down ? "cmdMoveDown" : "cmdMoveUp");
    }
}
BENCHMARK(MoveAStep)->Unit(benchmark::kMillisecond)->Iterations(40);

void DeleteALoad(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Window().Select(50, 5);
        state.ResumeTiming();
        Window().Click("cmdDeleteLoad");
        state.PauseTiming();
        Window().Run("mnuEditUndo");
        state.ResumeTiming();
    }
}
BENCHMARK(DeleteALoad)->Unit(benchmark::kMillisecond)->Iterations(20);

void TakeAStepBack(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Window().Select(50, -1);
        Window().Click("cmdDeleteStep");
        state.ResumeTiming();
        Window().Run("mnuEditUndo");
    }
}
BENCHMARK(TakeAStepBack)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
