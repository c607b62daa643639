#pragma once

#include <QString>
#include <optional>

#include "PlatformServices.h"

namespace genvara {

/// Starts other programs.
class CShellTool {
  public:
    explicit CShellTool(PlatformServices& platform) : m_platform(&platform) {}

    /// Runs a command line to its end; its exit code, or nothing if it cannot be started. The program waits
    /// for no other and does not call it.
    [[nodiscard]] std::optional<int> ExecCmd(const QString& commandLine) const {
        return m_platform->RunToEnd(commandLine);
    }
    /// Starts a command line; false if that failed.
    [[nodiscard]] bool ExecCmdModeless(const QString& commandLine) const {
        return m_platform->Start(commandLine);
    }

  private:
    PlatformServices* m_platform;
};

}  // namespace genvara
