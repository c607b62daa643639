#include "SystemInfo.h"

#include <fmt/format.h>

#include <QStandardPaths>
#include <array>
#include <filesystem>
#include <variant>

#include "FailureRegion.h"

namespace genvara {
namespace {

constexpr const char* kInfoKey = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
constexpr const char* kToolsKey = "SOFTWARE\\Microsoft\\Shared Tools Location";

/// What the usual desktops bring along, with their arguments.
struct Candidate {
    const char* program;
    const char* arguments;
};
constexpr std::array<Candidate, 4> kCandidates{{{"kinfocenter", ""},
                                                {"gnome-control-center", " info-overview"},
                                                {"hardinfo", ""},
                                                {"mate-system-monitor", " -s"}}};

bool IsFile(const std::string& path) {
    std::error_code failure;
    return std::filesystem::is_regular_file(path, failure);
}

/// The name of a file as the first word of a command line; a command line as it stands.
std::string AsCommand(const std::string& path) {
    return IsFile(path) ? '"' + path + '"' : path;
}

}  // namespace

bool GetKeyValue(clsTRX_Registry& registry, const std::string& key, const std::string& name,
                 std::string& value) {
    registry.RootKey(HKEY_LOCAL_MACHINE);
    registry.SubKey(key);
    registry.AutoCreate(false);
    FailureRegion region;
    if (!region.Run([&] { registry.OpenKey(); })) {
        return false;
    }
    const bool text =
        region.Run([&] { value = std::get<std::string>(registry.Value(name, registry_type::REG_SZ)); });
    const bool found = text || region.Run([&] {
        const auto number = std::get<std::int32_t>(registry.Value(name, registry_type::REG_DWORD));
        value = fmt::format("&h{:X}", static_cast<std::uint32_t>(number));
    });
    registry.CloseKey();
    return found;
}

std::string FindSystemInfo(clsTRX_Registry& registry) {
    std::string path;
    if (GetKeyValue(registry, kInfoKey, "PATH", path)) {
        return AsCommand(path);
    }
    if (GetKeyValue(registry, kToolsKey, "MSINFO", path) && IsFile(path + "/MSINFO32.EXE")) {
        return AsCommand(path + "/MSINFO32.EXE");
    }
    for (const Candidate& candidate : kCandidates) {
        const QString program = QStandardPaths::findExecutable(candidate.program);
        if (!program.isEmpty()) {
            return program.toStdString() + candidate.arguments;
        }
    }
    return {};
}

}  // namespace genvara
