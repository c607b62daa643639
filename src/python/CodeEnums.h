#pragma once

#include <pybind11/pybind11.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Property.h"

/// Codes as constants of Python, one enum a table of codes.
namespace genvara::python {

/// A table of codes with the name of its enum: the member's own name, with the kind of record before it where
/// tables differ from kind to kind ("LightingPhases") and none is that of most.
struct CodeTable {
    std::string name;
    std::span<const CodeName> codes;
};

/// Every table of codes that a member refers to.
[[nodiscard]] const std::vector<CodeTable>& CodeTables();

/// The table of a member's codes.
[[nodiscard]] const CodeTable& TableOf(const PropertyFacts& facts);

/// Adds an `enum.IntEnum` a table to the module.
void AddCodeEnums(pybind11::module_& module);

/// The constant of a code; the plain number where it has none.
[[nodiscard]] pybind11::object ConstantOf(const PropertyFacts& facts, std::int32_t code);

}  // namespace genvara::python
