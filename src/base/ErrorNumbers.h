#pragma once

#include <cstdint>

/// Numbers of raised errors that more than one class uses. A number that belongs to one member stands
/// in that member's class.
namespace genvara::errors {

/// Base of the numbers that module-level operations raise.
inline constexpr auto kBase = static_cast<std::int32_t>(0x80040000);

/// A number of that range from its offset.
[[nodiscard]] constexpr std::int32_t FromBase(std::int32_t offset) noexcept {
    return kBase + offset;
}

// The language's own numbers.
inline constexpr std::int32_t kInvalidArgument = 5;
inline constexpr std::int32_t kOverflow = 6;
inline constexpr std::int32_t kSubscriptOutOfRange = 9;
inline constexpr std::int32_t kDivisionByZero = 11;
inline constexpr std::int32_t kTypeMismatch = 13;

// The platform's numbers that have a meaning in the program.
inline constexpr std::int32_t kFileNotFound = 53;
inline constexpr std::int32_t kDialogCancelled = 32755;

}  // namespace genvara::errors
