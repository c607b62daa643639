#pragma once

#include <cstdlib>
#include <string>

#include "TemporaryFolder.h"

// The leak checker's switches, where there is one.
extern "C" {
[[gnu::weak]] void __lsan_disable();  // NOLINT: the checker's names
[[gnu::weak]] void __lsan_enable();   // NOLINT
}

namespace genvara {

/// A locale with a decimal comma, built for the test: the machine need not have one installed. Its name
/// stands for it as long as this lives. The C library never gives back what it works out of the locale's
/// folder, so that leaks are not looked for meanwhile.
class GermanLocale {
  public:
    static constexpr const char* kName = "de_DE.UTF-8";

    GermanLocale() {
        if (__lsan_disable != nullptr) {
            __lsan_disable();
        }
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
        if (__lsan_enable != nullptr) {
            __lsan_enable();
        }
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
