// Sizes a sample again and again, each time at another altitude: what `bench/python_report.py` holds scripts
// against.
//
//     changed_sizings COUNT        prints the CPU seconds that it took

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <string>

#include "CDesigner.h"
#include "CachedGensets.h"
#include "GensetDatabase.h"
#include "ProjectFile.h"

namespace genvara {
namespace {

double Seconds(int count) {
    const CDefaults defaults;
    GensetDatabase database(CATALOGUE_DATABASE);
    const MotorConversions motors = database.ReadMotorConversions();
    CProject project(defaults, LocalTime);
    CPwrSys site(defaults);
    CLoadProfile profile;
    ProjectReadObserver ignored;
    (void)ReadProjectFile(std::filesystem::path(SAMPLES_FOLDER) / "hospital.prj",
                          {.project = project, .powerSystem = site, .loadProfile = profile, .motors = motors},
                          ignored);
    site.Phases(3);
    CachedGensets cached(database);
    CDesigner designer(cached, site, profile);
    const auto size = [&](int altitude) {
        site.Altitude(altitude);
        designer.SelectGensets();
        (void)designer.ChooseSets();
    };
    size(0);  // reads the candidates
    const std::clock_t begun = std::clock();
    for (int i = 0; i < count; ++i) {
        size(i % 3000);
    }
    return static_cast<double>(std::clock() - begun) / CLOCKS_PER_SEC;
}

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    std::cout << genvara::Seconds(argc > 1 ? std::atoi(argv[1]) : 10000) << '\n';
}
