#pragma once

#include <pybind11/pybind11.h>

#include <span>
#include <string>
#include <utility>

#include "Names.h"
#include "Property.h"
#include "Values.h"

namespace genvara::python {

/// Gives a class of Python an attribute for each row of a table of properties.
/// @param get answers `(const Owner&, const Property<Record>&)` with an object.
/// @param set takes `(Owner&, const Property<Record>&, PropertyValue)`.
template <typename Owner, typename Record, typename Class, typename Get, typename Set>
void AddMembers(Class& bound, std::span<const Property<Record>> table, Get get, Set set) {
    namespace py = pybind11;
    for (const Property<Record>& row : table) {
        const std::string name = SnakeCase(row.facts.name);
        const std::string doc = DocOf(row.facts);
        bound.def_property(
            name.c_str(), [&row, get](const Owner& owner) { return get(owner, row); },
            [&row, set](Owner& owner, py::handle value) { set(owner, row, FromPython(row.facts, value)); },
            doc.c_str());
    }
}

}  // namespace genvara::python
