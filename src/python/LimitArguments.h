#pragma once

#include <pybind11/pybind11.h>

#include <string_view>

#include "DesignLimits.h"

namespace genvara::python {

/// The limits of a run that keywords of a function give: `max_loading` and its like.
/// @throws TypeError for another keyword or a value of another type; RaisedError of a limit's setter.
[[nodiscard]] DesignLimits LimitsOf(std::string_view function, const pybind11::kwargs& arguments);

}  // namespace genvara::python
