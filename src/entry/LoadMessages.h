#pragma once

#include <string>
#include <string_view>

#include "LoadKinds.h"
#include "RaisedError.h"

/// Texts of the message boxes with which the entry forms report a failure.
namespace genvara {

/// A load object that could not be made; the user is asked whether to go on.
[[nodiscard]] std::string CreateFailureText(const RaisedError& failure);

/// A field that could not be stored: the kind's own sentence where a text is no number, else number and
/// description. Empty for a number too large to work with, which the sentence beside the field tells.
/// @param fieldText what the field at hand holds.
[[nodiscard]] std::string StoreFailureText(const LoadKind& kind, const RaisedError& failure,
                                           std::string_view fieldText);

/// A load that its step did not take. The number is shown without the base of application errors.
[[nodiscard]] std::string AddFailureText(const RaisedError& failure);

/// A load that is in its step and could not be shown there.
[[nodiscard]] std::string DisplayFailureText(const RaisedError& failure);

}  // namespace genvara
