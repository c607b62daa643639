#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace genvara {

/// Commands of the desktop's help viewer.
namespace help_command {
inline constexpr std::int32_t kQuit = 2;
inline constexpr std::int32_t kFinder = 11;  ///< the contents
}  // namespace help_command

/// The help file, shown by the desktop's viewer.
class clsTRX_HelpFile {
  public:
    /// Carries a command out for a window; false if that is not possible.
    using Viewer = std::function<bool(std::int32_t window, const std::string& file, std::int32_t command)>;

    /// The viewer that commands go to; without one each of them fails.
    void HelpViewer(Viewer viewer) { m_viewer = std::move(viewer); }

    /// The help file; empty until it is set.
    /// @throws RaisedError 0x8004044F "Help file not found." from
    ///         "clsTRX_HelpFileFilename <property let> --- " for a missing file; the former name stays.
    void Filename(const std::string& file);
    [[nodiscard]] const std::string& Filename() const noexcept { return m_filename; }

    /// Handle of the window that asks; default 0. No viewer of ours reads it.
    void RequestingWindow(std::int32_t window) noexcept { m_requestingWindow = window; }
    [[nodiscard]] std::int32_t RequestingWindow() const noexcept { return m_requestingWindow; }

    /// Asks the viewer to quit.
    /// @throws RaisedError 0x8004044D "Unable to close help file window." from "CloseFile <sub> --- ".
    void CloseFile() const;
    /// Opens the contents.
    /// @throws RaisedError 0x8004044E "Unable to display requested help window." from ".ShowHelp".
    void ShowHelp() const;

  private:
    [[nodiscard]] bool Command(std::int32_t command) const;

    Viewer m_viewer;
    std::string m_filename;
    std::int32_t m_requestingWindow = 0;
};

}  // namespace genvara
