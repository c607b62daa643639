#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "RaisedError.h"

namespace genvara {

/// Writes to standard output at once.
/// @throws RaisedError with the system's number if it cannot be written, for instance on a full disk.
void Print(std::string_view text);

/// Writes one line to standard error; what cannot be written there is lost.
void Complain(std::string_view line) noexcept;

/// Writes the lines that are not empty to standard error.
void ComplainOf(const std::vector<std::string>& lines) noexcept;

/// "number, source: description", with what a failure lacks left out.
[[nodiscard]] std::string FailureLine(std::string_view file, const RaisedError& failure);

}  // namespace genvara
