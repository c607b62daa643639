// Reads arbitrary bytes as a project, and what came of them once more: nothing may crash, hang or leak, and
// what was saved must be compatible.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "ProjectFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace genvara;
    const MotorConversions motors{.MotorHP = {1, 10, 1000},
                                  .MotorRunningKW = {0.9, 8.5, 798},
                                  .MotorRunningKVA = {1.3, 10.4, 887},
                                  .MotorStartPF = {0.7, 0.5, 0.2}};
    const CDefaults defaults;
    CProject project(defaults, [] { return DateTime{}; });
    CPwrSys site(defaults);
    CLoadProfile profile;
    const ProjectModel model{project, site, profile, motors};
    ProjectReadObserver observer;
    MemorySource source({reinterpret_cast<const char*>(data), size});
    if (ReadProject(source, model, observer) == ReadResult::Done) {
        const ProjectText text = RenderProject(model, {8, 0, 0}, DateTime{});
        MemorySource again(text.bytes);
        if (ReadProject(again, model, observer) != ReadResult::Done) {
            std::abort();
        }
    }
    return 0;
}
