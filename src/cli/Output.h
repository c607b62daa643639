#pragma once

#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "RaisedError.h"
#include "RunCulprit.h"

namespace genvara {

/// Standard output takes no more. It is no failure of a project: nothing but the end of the program takes it.
class LostOutput : public std::exception {
  public:
    /// @param systemError an errno value.
    explicit LostOutput(int systemError);

    [[nodiscard]] const char* what() const noexcept override { return m_text.c_str(); }

    /// Whether its reader has seen enough and went away, of which nobody needs to be told.
    [[nodiscard]] bool ReaderIsGone() const noexcept;

  private:
    int m_systemError;
    std::string m_text;
};

/// Writes to standard output at once.
/// @throws LostOutput if it cannot be written, for instance on a full disk.
void Print(std::string_view text);

/// Writes one line to standard error; what cannot be written there is lost.
void Complain(std::string_view line) noexcept;

/// The same, unless there is nothing to say.
void ComplainIfAny(std::string_view line) noexcept;

/// File, number, source and description, with what a failure lacks left out.
/// @param culprit stands behind in brackets.
[[nodiscard]] std::string FailureLine(std::string_view file, const RaisedError& failure,
                                      const std::optional<RunCulprit>& culprit = {});

}  // namespace genvara
