// Finds arbitrary bytes as the file of the settings: a value that is stored over them comes back, and what
// could not be read lies beside it, whole.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "RaisedError.h"
#include "SettingsFile.h"
#include "TemporaryFolder.h"

namespace {

using namespace genvara;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Whether some file of a folder but one holds these bytes.
bool LiesBeside(const std::filesystem::path& file, const std::string& bytes) {
    return std::ranges::any_of(
        std::filesystem::directory_iterator(file.parent_path()),
        [&](const auto& entry) { return entry.path() != file && ReadBytes(entry.path()) == bytes; });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    for (const auto& left : std::filesystem::directory_iterator(folder.Path())) {
        std::filesystem::remove(left.path());
    }
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::filesystem::path file = folder / "settings.json";
    WriteBytes(file, bytes);

    SettingsFile settings(file);
    const SettingsKey key{.root = 1, .path = "Software\\Mine"};
    const SettingsKey other{.root = 1, .path = "Software\\Other"};
    try {
        const bool wasKnown = settings.HasKey(other);
        settings.CreateKey(key);
        settings.Write(key, "Name", std::int32_t{7});
        Require(settings.Read(key, "Name") == SettingsValue{7});
        Require(settings.HasKey(other) == wasKnown || LiesBeside(file, bytes));
    } catch (const RaisedError&) {
        Require(ReadBytes(file) == bytes || LiesBeside(file, bytes));
    }
    return 0;
}
