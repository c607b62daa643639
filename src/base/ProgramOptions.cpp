#include "ProgramOptions.h"

#include <variant>

#include "FailureRegion.h"

namespace genvara {
namespace {

constexpr const char* kOptionsKey = "Options";
constexpr std::int32_t kKeyExisted = 2;
/// True as it is stored: all bits set. Any value but 0 reads as true.
constexpr std::int32_t kTrue = -1;

std::string TextValue(const clsTRX_Registry& registry, const char* name) {
    return std::get<std::string>(registry.Value(name, registry_type::REG_SZ));
}

std::int32_t IntegerValue(const clsTRX_Registry& registry, const char* name) {
    return std::get<std::int32_t>(registry.Value(name, registry_type::REG_DWORD));
}

}  // namespace

void ReadOptions(clsTRX_Registry& registry, const std::string& baseSubkey, const OptionTargets& targets) {
    FailureRegion region;
    registry.RootKey(HKEY_LOCAL_MACHINE);
    registry.SubKey(baseSubkey + kOptionsKey);
    registry.AutoCreate(false);
    std::int32_t opened = 0;
    region.Run([&] { opened = registry.OpenKey(); });
    if (opened == kKeyExisted && !region.Pending()) {
        region.Run([&] { targets.setProjectPath(TextValue(registry, "ProjPath")); });
        region.Run([&] { targets.setIsMetric(IntegerValue(registry, "IsMetric") != 0); });
        region.Run([&] { targets.setMaxSetsRecommended(IntegerValue(registry, "NumSets")); });
        region.Run([&] { targets.setMaxSetsUndersized(IntegerValue(registry, "NumUnder")); });
        region.Run([&] { targets.setMaxLoading(IntegerValue(registry, "MaxLoad")); });
        region.Run([&] { targets.setMinLoading(IntegerValue(registry, "MinLoad")); });
    }
    registry.CloseKey();
}

void WriteOptions(clsTRX_Registry& registry, const std::string& baseSubkey, const OptionValues& values) {
    FailureRegion region;
    const auto write = [&](const char* name, std::int32_t type, const clsTRX_Registry::Variant& value) {
        region.Run([&] { registry.Value(name, type, value); });
    };
    registry.RootKey(HKEY_LOCAL_MACHINE);
    registry.SubKey(baseSubkey + kOptionsKey);
    registry.AutoCreate(true);
    region.Run([&] { registry.OpenKey(); });
    write("ProjPath", registry_type::REG_SZ, values.projectPath);
    write("IsMetric", registry_type::REG_DWORD, values.isMetric ? kTrue : 0);
    write("NumSets", registry_type::REG_DWORD, values.maxSetsRecommended);
    write("NumUnder", registry_type::REG_DWORD, values.maxSetsUndersized);
    write("MaxLoad", registry_type::REG_DWORD, values.maxLoading);
    write("MinLoad", registry_type::REG_DWORD, values.minLoading);
    registry.CloseKey();
}

}  // namespace genvara
