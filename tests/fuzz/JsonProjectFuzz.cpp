// Reads arbitrary bytes as a JSON project: nothing may crash, hang or leak, what is refused must leave the
// model alone, and what is read must come back from what is written, byte for byte.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "JsonProject.h"
#include "RaisedError.h"

namespace {

using namespace genvara;

const MotorConversions kMotors{.MotorHP = {1, 10, 1000},
                               .MotorRunningKW = {0.9, 8.5, 798},
                               .MotorRunningKVA = {1.3, 10.4, 887},
                               .MotorStartPF = {0.7, 0.5, 0.2}};

struct Records {
    CDefaults defaults;
    CProject project{defaults, [] { return DateTime{}; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    ProjectModel model{project, site, profile, kMotors};
    ProjectReadObserver observer;

    [[nodiscard]] bool Read(std::string_view bytes) {
        MemorySource source(bytes);
        try {
            ReadJsonProject(source, "fuzz.json", model, observer);
            return true;
        } catch (const RaisedError&) {
            return false;
        }
    }
    [[nodiscard]] std::string Rendered() const { return RenderJsonProject(model, DateTime{}); }
};

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Records records;
    const std::string before = records.Rendered();
    if (!records.Read({reinterpret_cast<const char*>(data), size})) {
        Require(records.Rendered() == before);
        return 0;
    }
    const std::string written = records.Rendered();
    Records again;
    Require(again.Read(written));
    Require(again.Rendered() == written);
    return 0;
}
