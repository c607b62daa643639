#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

namespace genvara {

/// A value of the settings: text or a 32-bit integer, never one for the other.
using SettingsValue = std::variant<std::string, std::int32_t>;

/// Where values lie: the number of a root and a path below it. Paths and names do not look at case, and
/// backslashes at the end of a path do not count.
struct SettingsKey {
    std::int32_t root = 0;
    std::string path;
};

/// Settings in one file of the user's configuration folder.
///
/// Every change reads the file afresh, changes one value and replaces the file whole, under a lock: programs
/// that write at once lose nothing of each other's. A file that holds no settings, or is larger than 1 MiB,
/// is set aside under a new name, with a line on standard error, and the store starts empty.
class SettingsFile {
  public:
    explicit SettingsFile(std::filesystem::path file);

    /// `genvara/settings.json` in the user's configuration folder ($XDG_CONFIG_HOME, or ~/.config).
    [[nodiscard]] static std::filesystem::path DefaultPath();

    // All of these raise the system's number from "SettingsFile" if the file cannot be read or written, or
    // would become larger than 1 MiB. Only a file that is not there counts as empty.
    [[nodiscard]] bool HasKey(const SettingsKey& key) const;
    /// Creates a key where it is missing; true if this call did.
    bool CreateKey(const SettingsKey& key);
    [[nodiscard]] std::optional<SettingsValue> Read(const SettingsKey& key, const std::string& name) const;
    void Write(const SettingsKey& key, const std::string& name, const SettingsValue& value);

  private:
    std::filesystem::path m_file;
};

}  // namespace genvara
