#include "PythonCatalogue.h"

#include <pybind11/pybind11.h>

#include <utility>

#include "FailureRegion.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

std::filesystem::path FileBesideModule() {
    const py::object file = py::module_::import("genvara._core").attr("__file__");
    return std::filesystem::path(file.cast<std::string>()).parent_path() / "Genvara.db";
}

}  // namespace

PythonCatalogue::PythonCatalogue(const std::filesystem::path& file)
    : m_catalogue(file), m_gensets(m_catalogue.Gensets()), m_candidates(m_gensets) {
    m_catalogue.RequireFit();
    // Read before threads size with the same database; what cannot be read is told to whoever changes a
    // motor.
    FailureRegion().Run([this] { (void)Rules(); });
}

EntryRules PythonCatalogue::Rules() {
    return m_catalogue.Rules();
}

std::shared_ptr<PythonCatalogue> CatalogueBesideProgram() {
    static std::weak_ptr<PythonCatalogue> opened;
    if (std::shared_ptr<PythonCatalogue> open = opened.lock()) {
        return open;
    }
    auto open = std::make_shared<PythonCatalogue>(FileBesideModule());
    opened = open;
    return open;
}

std::shared_ptr<PythonCatalogue> CatalogueOr(std::shared_ptr<PythonCatalogue> given) {
    return given ? std::move(given) : CatalogueBesideProgram();
}

}  // namespace genvara::python
