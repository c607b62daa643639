#pragma once

#include <CLI/CLI.hpp>
#include <span>
#include <string>

namespace genvara {

/// Takes a number as people write it: in decimal, whatever zeros stand before it.
[[nodiscard]] CLI::Validator Decimal();

/// Refuses what is no finite number of 0 or more.
[[nodiscard]] CLI::Validator NotNegative();

/// Refuses an empty text, as a script hands one on from a variable that nobody set.
[[nodiscard]] CLI::Validator NotEmpty();

/// "2026-01-31T12:00:00" as "2026-01-31 12:00:00".
[[nodiscard]] std::string WithBlank(std::string time);

/// What is wrong with the first word that stands where a command belongs, or nothing.
/// @param arguments those behind the program's name
[[nodiscard]] std::string UnknownCommand(const CLI::App& app, std::span<char*> arguments);

}  // namespace genvara
