#include "LimitArguments.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "Names.h"
#include "Properties.h"
#include "Values.h"

namespace genvara::python {

namespace py = pybind11;

DesignLimits LimitsOf(std::string_view function, const py::kwargs& arguments) {
    DesignLimits limits;
    for (const auto& [key, value] : arguments) {
        const auto name = key.cast<std::string>();
        const auto rows = DesignerProperties();
        const auto row = std::ranges::find_if(rows, [&name](const Property<DesignLimits>& limit) {
            return SnakeCase(limit.facts.name) == name;
        });
        if (row == rows.end()) {
            throw py::type_error(fmt::format("{}() got an unexpected keyword argument '{}'", function, name));
        }
        row->set(limits, FromPython(row->facts, value));
    }
    return limits;
}

}  // namespace genvara::python
