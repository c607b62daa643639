#include <pybind11/stl.h>

#include <algorithm>
#include <string>

#include "Bindings.h"
#include "CodeEnums.h"
#include "Names.h"
#include "NearestNames.h"
#include "Properties.h"
#include "PropertyText.h"
#include "RaisedError.h"
#include "Values.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

py::dict RowOf(const RecordKind& kind, const PropertyFacts& facts) {
    py::dict row;
    row["kind"] = kind.name;
    row["name"] = facts.name;
    row["attribute"] = SnakeCase(facts.name);
    row["type"] = TypeName(facts.type);
    row["unit"] = facts.unit;
    row["least"] = facts.Enterable().least;
    row["greatest"] = facts.Enterable().greatest;
    row["above_least"] = facts.Enterable().aboveLeast;
    py::dict codes;
    for (const CodeName& code : facts.codes) {
        codes[py::str(std::string(code.Name()))] = code.Code();
    }
    row["codes"] = codes;
    row["enum"] = facts.codes.empty() ? py::object(py::none()) : py::str(TableOf(facts).name);
    row["meaning"] = facts.meaning;
    row["doc"] = DocOf(facts);
    return row;
}

py::list Described(const std::optional<std::string>& asked) {
    py::list rows;
    std::vector<std::string_view> names;
    for (const RecordKind& kind : RecordKinds()) {
        names.push_back(kind.name);
        if (asked && !SameLetters(kind.name, *asked)) {
            continue;
        }
        for (const PropertyFacts* facts : kind.members) {
            rows.append(RowOf(kind, *facts));
        }
    }
    if (rows.empty()) {
        throw RaisedError(
            0, "", "There is no kind of record \"" + *asked + "\"; " + SuggestionText(*asked, names) + ".");
    }
    return rows;
}

}  // namespace

void BindDescribe(py::module_& module) {
    module.def("describe", Described, py::arg("kind") = py::none(),
               "Every member of a project, or of one kind of record: kind, name, attribute, type, unit, "
               "least, greatest, "
               "codes, meaning.");
}

}  // namespace genvara::python
