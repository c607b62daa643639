#pragma once

#include <pybind11/pybind11.h>

#include <string>

#include "DateTime.h"
#include "Property.h"

/// Values of members between the model and Python.
namespace genvara::python {

[[nodiscard]] pybind11::object ToPython(const PropertyFacts& facts, const PropertyValue& value);

/// The value that a member of this type is set to. Whether it is in range, the setter says.
/// @throws TypeError for a value of another type; RaisedError 6 "Overflow" for a number that is not finite or
///         beyond 32 bits; RaisedError 0 with a sentence for a name that no code has.
[[nodiscard]] PropertyValue FromPython(const PropertyFacts& facts, pybind11::handle value);

/// A moment as a `datetime.datetime` without a time zone.
[[nodiscard]] pybind11::object ToPython(const DateTime& moment);

/// What a member is, with unit and what it takes, as the text of its attribute.
[[nodiscard]] std::string DocOf(const PropertyFacts& facts);

}  // namespace genvara::python
