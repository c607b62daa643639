#pragma once

#include <cstdint>
#include <exception>
#include <string>

namespace genvara {

/// The one failure of the program: it travels up the call chain until a handler takes it.
///
/// Numbers and texts are shown to the user as they stand; `Source` names the class and member that
/// raised, as in "CPwrSys::Altitude".
class RaisedError : public std::exception {
  public:
    RaisedError(std::int32_t number, std::string source, std::string description, std::string helpFile = {},
                std::int32_t helpContext = 0);

    [[nodiscard]] std::int32_t Number() const noexcept { return m_number; }
    [[nodiscard]] const std::string& Source() const noexcept { return m_source; }
    [[nodiscard]] const std::string& Description() const noexcept { return m_description; }
    [[nodiscard]] const std::string& HelpFile() const noexcept { return m_helpFile; }
    /// 0 throughout: the help file has no topic of an error, and nobody asks for it.
    [[nodiscard]] std::int32_t HelpContext() const noexcept { return m_helpContext; }

    /// The same failure under another source, for a handler that releases what it holds and passes it on.
    [[nodiscard]] RaisedError WithSource(std::string source) const;

    [[nodiscard]] const char* what() const noexcept override { return m_description.c_str(); }

  private:
    std::int32_t m_number;
    std::string m_source;
    std::string m_description;
    std::string m_helpFile;
    std::int32_t m_helpContext;
};

}  // namespace genvara
