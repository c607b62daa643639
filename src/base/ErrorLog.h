#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace genvara {

/// A log of errors and debug texts that stands ready for debugging: kept in memory, and on request appended
/// to a file.
class ErrorLog {
  public:
    /// @param programFolder folder in which the file "err.log" lies.
    explicit ErrorLog(const std::filesystem::path& programFolder);

    void LogError(std::string_view message) { Append(message); }
    void LogDebug(std::string_view message) { Append(message); }

    /// Whether entries also go to the file; default false.
    void LogToFile(bool enabled) noexcept { m_logToFile = enabled; }
    [[nodiscard]] bool LogToFile() const noexcept { return m_logToFile; }

    /// All entries since the last `Clear`, each ended by CR LF.
    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }
    void Clear() noexcept { m_text.clear(); }

  private:
    /// @throws RaisedError with the system's number from "ErrorLog" if the file cannot be written.
    void Append(std::string_view message);

    std::filesystem::path m_file;
    bool m_logToFile = false;
    std::string m_text;
};

}  // namespace genvara
