// Saves one project after the other over the same file until it is killed, and tells of each save.
//
//   saver FILE NUMBER [--in-place]   saves generations NUMBER, NUMBER + 1, ... and prints each number once
//   saved saver FILE NUMBER --once         saves one generation and ends
//
// Even generations are large projects, odd ones small, so that a mixture of two shows. --in-place writes over
// the file as a careless program would: the test of the tests.

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "CMiscLoad.h"
#include "ProjectFile.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr ProgramVersion kVersion{8, 0, 0};
constexpr DateTime kSaved{2026, 3, 4, 15, 6, 7};
constexpr int kLargeSteps = 40;
constexpr int kSmallSteps = 1;
constexpr int kLoadsOfStep = 10;

DateTime Now() {
    return kSaved;
}

struct Project {
    CDefaults defaults;
    CProject project{defaults, Now};
    CPwrSys site{defaults};
    CLoadProfile profile;
    MotorConversions motors;

    explicit Project(int steps) {
        for (int step = 1; step <= steps; ++step) {
            profile.AddLoadStep("Step", 20, 0);
            for (int i = 0; i < kLoadsOfStep; ++i) {
                auto load = std::make_unique<CMiscLoad>();
                load->name("Heater");
                load->Description(fmt::format("load {} of step {} of {}", i, step, steps));
                profile.LoadStep(step).AddLoad(std::move(load));
            }
        }
    }
    /// Every generation has the same length among those of its size.
    void Generation(int number) { project.ProjName(fmt::format("Generation {:08}", number)); }
    [[nodiscard]] ProjectModel All() { return {project, site, profile, motors}; }
};

void SaveInPlace(const std::string& file, Project& project) {
    std::ofstream(file, std::ios::binary) << RenderProject(project.All(), kVersion, Now()).bytes;
}

/// Whoever reads the numbers has to have them before the next save begins.
void Tell(int number) {
    const std::string line = fmt::format("{}\n", number);
    if (write(STDOUT_FILENO, line.data(), line.size()) < 0) {
        std::exit(EXIT_FAILURE);  // nobody listens any more
    }
}

int Save(const std::string& file, int first, std::string_view mode) {
    Project large(kLargeSteps);
    Project small(kSmallSteps);
    for (int number = first; number == first || mode != "--once"; ++number) {
        Project& project = number % 2 == 0 ? large : small;
        project.Generation(number);
        if (mode == "--in-place") {
            SaveInPlace(file, project);
        } else {
            WriteProjectFile(file, project.All(), kVersion, Now);
        }
        Tell(number);
    }
    return EXIT_SUCCESS;
}

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    if (argc < 3) {
        fmt::print(stderr, "saver FILE NUMBER [--in-place|--once]\n");
        return 2;
    }
    try {
        return genvara::Save(argv[1], std::atoi(argv[2]), argc > 3 ? argv[3] : "");
    } catch (const genvara::RaisedError& failure) {
        fmt::print(stderr, "{}: error {} from {}: {}\n", argv[1], failure.Number(), failure.Source(),
                   failure.Description());
        return 3;
    } catch (const std::bad_alloc&) {
        std::fputs("saver: error: There is not enough memory.\n", stderr);
        return 3;
    }
}
