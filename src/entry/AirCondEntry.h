#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "CAirCondLoad.h"
#include "NumberBounds.h"
#include "RaisedError.h"

namespace genvara {

/// One of the ways in which an air conditioner's size is entered.
struct SizeMethod {
    std::int32_t code;     ///< of `aircond_entry`
    const char* button;    ///< name of its option button
    std::int32_t caption;  ///< string of the button, and of the label before the size
    char key;              ///< of the label, which no other caption of the form has
    std::string_view member;
};

/// In the order of the codes.
inline constexpr std::array<SizeMethod, 3> kSizeMethods{
    {{aircond_entry::kBTU, "optBTU", 650, 'U', "BTU"},
     {aircond_entry::kTonnage, "optTonnage", 651, 'g', "Tonnage"},
     {aircond_entry::kHorsepower, "optCompHP", 652, 'm', "HP"}}};

/// The method of a code; null for a code of none.
[[nodiscard]] const SizeMethod* FindSizeMethod(std::int32_t code) noexcept;

/// The bounds of a method's size.
[[nodiscard]] NumberBounds SizeBounds(const SizeMethod& method);

/// A stored size in the unit of a method; not given (-10) if it was entered otherwise.
[[nodiscard]] double StoredSize(const CAirCondLoad& load, const SizeMethod& method) noexcept;

/// Text of the message for a load that could not be stored; empty for no message: a size that is in range
/// while the powers that follow from it are not is kept back in silence.
/// @param ofQuantity whether the quantity is the field at hand.
[[nodiscard]] std::string AirCondFailureText(bool ofQuantity, const RaisedError& failure);

}  // namespace genvara
