#include <fmt/format.h>
#include <pybind11/stl.h>

#include <algorithm>

#include "Bindings.h"
#include "CatalogueBuilder.h"
#include "CatalogueChecker.h"
#include "CatalogueTable.h"
#include "GensetSchema.h"
#include "PythonCatalogue.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

std::vector<std::string> TableNames() {
    std::vector<std::string> names;
    names.reserve(kGensetSchema.size());
    for (const TableSchema& table : kGensetSchema) {
        names.emplace_back(table.name);
    }
    return names;
}

py::object ValueOf(const StoredField& field) {
    if (const auto* whole = std::get_if<std::int64_t>(&field)) {
        return py::int_(*whole);
    }
    if (const auto* real = std::get_if<double>(&field)) {
        return py::float_(*real);
    }
    if (const auto* text = std::get_if<std::string>(&field)) {
        return py::str(*text);
    }
    if (const auto* stored = std::get_if<StoredBytes>(&field)) {
        return py::bytes(stored->bytes);
    }
    return py::none();
}

/// The rows of a table, each as a dictionary by the names of its columns.
py::list RowsOf(const PythonCatalogue& catalogue, const std::string& name) {
    const std::vector<std::string> names = TableNames();
    if (std::ranges::find(names, name) == names.end()) {
        throw py::key_error(
            fmt::format("There is no table \"{}\"; the tables are {}.", name, fmt::join(names, ", ")));
    }
    const CatalogueTable table = ReadCatalogueTable(catalogue.File(), name);
    py::list rows;
    for (const std::vector<StoredField>& fields : table.rows) {
        py::dict row;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            row[py::str(table.columns[i])] = ValueOf(fields[i]);
        }
        rows.append(row);
    }
    return rows;
}

/// A hash of the file: a copy of the catalogue elsewhere has to be of the same one.
py::object DigestOf(const std::string& file) {
    const py::object bytes = py::module_::import("pathlib").attr("Path")(file).attr("read_bytes")();
    return py::module_::import("hashlib").attr("sha256")(bytes).attr("hexdigest")();
}

std::shared_ptr<PythonCatalogue> Reopened(const std::string& file, const py::object& digest) {
    auto catalogue = std::make_shared<PythonCatalogue>(file);
    if (!DigestOf(file).equal(digest)) {
        throw RaisedError(0, "", fmt::format("The genset database {} is not the one that it was.", file));
    }
    return catalogue;
}

std::int64_t Build(const py::handle& folder, const py::handle& database) {
    const std::string from = PathText(folder);
    const std::string to = PathText(database);
    const CatalogueBuild build = [&] {
        const py::gil_scoped_release others;
        return BuildCatalogue(from, to, [](std::string_view /*table*/, std::int64_t /*rows*/) {});
    }();
    if (!build.faults.empty()) {
        throw RaisedError(0, "", fmt::format("{} was not built: {}", to, fmt::join(build.faults, "; ")));
    }
    return build.rows;
}

std::vector<std::string> Check(const py::handle& database) {
    const std::string file = PathText(database);
    std::vector<std::string> findings;
    const py::gil_scoped_release others;
    CheckCatalogue(file, [&findings](const std::string& finding) { findings.push_back(finding); });
    return findings;
}

}  // namespace

void BindCatalogue(py::module_& module) {
    py::class_<PythonCatalogue, std::shared_ptr<PythonCatalogue>> bound(
        module, "Catalogue",
        "A genset catalogue that is fit to size with: the one beside the program, or a file. Threads may "
        "share it.");
    bound.def_property_readonly("file", &PythonCatalogue::File, "The database's file.")
        .def_property_readonly(
            "version", [](PythonCatalogue& catalogue) { return catalogue.Gensets().Properties().Version; },
            "Version that the database states.")
        .def_property_readonly(
            "tables", [](const PythonCatalogue&) { return TableNames(); }, "Names of the tables.")
        .def("table", RowsOf, py::arg("name"),
             "The rows of a table as dictionaries, with the names and values of the database. KeyError for "
             "another.")
        .def_static("build", Build, py::arg("folder"), py::arg("database"),
                    "Builds a database from a folder of CSV tables; the number of rows. RaisedError 0 with "
                    "every fault.")
        .def_static("check", Check, py::arg("database"),
                    "What of a database would end or falsify a run, a sentence each; empty for a sound one.")
        .def("__repr__",
             [](const PythonCatalogue& catalogue) { return "genvara.Catalogue('" + catalogue.File() + "')"; })
        .def("__copy__", [](const std::shared_ptr<PythonCatalogue>& catalogue) { return catalogue; })
        .def("__deepcopy__", [](const std::shared_ptr<PythonCatalogue>& catalogue,
                                const py::dict& /*known*/) { return catalogue; })
        .def("__reduce__", [](const PythonCatalogue& catalogue) {
            const std::string file = std::filesystem::absolute(catalogue.File()).string();
            return py::make_tuple(py::module_::import("genvara._copies").attr("catalogue"),
                                  py::make_tuple(file, DigestOf(file)));
        });
    MakeNewBy(
        bound,
        [](const py::object& /*type*/, const py::object& file) {
            return file.is_none() ? CatalogueBesideProgram()
                                  : std::make_shared<PythonCatalogue>(PathText(file));
        },
        py::arg("file") = py::none());
    module.def("_catalogue", Reopened);
}

}  // namespace genvara::python
