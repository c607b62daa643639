#pragma once

#include <cstdlib>
#include <string>

#include "TemporaryFolder.h"

namespace genvara {

/// A locale with a decimal comma, built for the test: the machine need not have one installed. Its name
/// stands for it as long as this lives.
class GermanLocale {
  public:
    static constexpr const char* kName = "de_DE.UTF-8";

    GermanLocale() {
        const std::string command = "localedef -i de_DE -f UTF-8 '" + (m_folder / kName).string() + "' >&2";
        m_isBuilt = std::system(command.c_str()) == 0;
        if (m_isBuilt) {
            setenv("LOCPATH", m_folder.Path().c_str(), 1);
            unsetenv("LC_ALL");
        }
    }
    ~GermanLocale() {
        unsetenv("LC_NUMERIC");
        unsetenv("LOCPATH");
    }
    GermanLocale(const GermanLocale&) = delete;
    GermanLocale& operator=(const GermanLocale&) = delete;
    GermanLocale(GermanLocale&&) = delete;
    GermanLocale& operator=(GermanLocale&&) = delete;

    /// False without localedef, or sources of locales, on this machine.
    [[nodiscard]] bool IsBuilt() const noexcept { return m_isBuilt; }
    /// Makes it the locale of the user's numbers, as far as the environment tells.
    static void UseForNumbers() { setenv("LC_NUMERIC", kName, 1); }

  private:
    TemporaryFolder m_folder;
    bool m_isBuilt = false;
};

}  // namespace genvara
