#include "PythonStudy.h"

#include <fmt/format.h>

#include <utility>

#include "LimitArguments.h"
#include "Paths.h"
#include "PropertyText.h"
#include "Values.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

StudyProject Taken(const PythonProject& project, const PythonCatalogue& tables, PythonCatalogue& catalogue,
                   const DesignLimits& limits) {
    const bool isSame = &tables == &catalogue;
    return {.project = project.Project(),
            .powerSystem = project.PowerSystem(),
            .loadProfile = isSame ? project.LoadProfile()
                                  : ProfileWith(catalogue.Data().Motors(), project.LoadProfile(),
                                                project.PowerSystem().Voltage()),
            .limits = limits,
            .format = project.Format()};
}

}  // namespace

PythonStudy::PythonStudy(const PythonProject& project, std::shared_ptr<PythonCatalogue> catalogue,
                         const DesignLimits& limits)
    : m_tablesOfProject(project.Tables()),
      m_catalogue(std::move(catalogue)),
      m_tables{m_catalogue->Rules(), m_catalogue->Candidates()},
      m_project(Taken(project, *m_tablesOfProject, *m_catalogue, limits)) {
    m_catalogue->Data().FollowConnection(m_project.powerSystem);
}

std::shared_ptr<PythonProject> PythonStudy::Made(const StudyProject& project) const {
    auto made = std::make_shared<PythonProject>(m_catalogue);
    made->Project() = project.project;
    made->PowerSystem() = project.powerSystem;
    made->LoadProfile() = project.loadProfile;
    made->Format(project.format);
    return made;
}

StudyPtr BeginStudy(std::string_view function, const PythonProject& project, const CataloguePtr& catalogue,
                    const py::kwargs& limits) {
    return std::make_shared<const PythonStudy>(project, catalogue, LimitsOf(function, limits));
}

std::vector<std::vector<std::string>> PathsOf(const LoadOrder& order) {
    std::vector<std::vector<std::string>> steps;
    for (const auto& places : order) {
        std::vector<std::string>& loads = steps.emplace_back();
        for (const LoadPlace& place : places) {
            loads.push_back(PlaceText(place));
        }
    }
    return steps;
}

LoadOrder OrderOf(const std::vector<std::vector<std::string>>& steps, const CLoadProfile& profile) {
    LoadOrder order;
    for (const std::vector<std::string>& paths : steps) {
        std::vector<LoadPlace>& places = order.emplace_back();
        for (const std::string& path : paths) {
            places.push_back(ParsePlace(path, profile));
        }
    }
    return order;
}

void RequireJobs(std::int32_t jobs) {
    constexpr std::int32_t kMostThreads = 1024;
    if (jobs < 1 || jobs > kMostThreads) {
        throw py::value_error(fmt::format("jobs must lie between 1 and {}", kMostThreads));
    }
}

PropertyValue EnterableFromPython(const PropertyFacts& facts, py::handle value) {
    const PropertyValue converted = FromPython(facts, value);
    if (facts.type != PropertyType::Text && facts.type != PropertyType::Moment) {
        (void)ParseValue(facts, ValueText(facts, converted));
    }
    return converted;
}

PropertyFacts FactsAt(StudyProject& probe, const std::string& path) {
    return FactsOf(FollowPath(path, RootsOf(probe)));
}

void TryChange(StudyProject& probe, const MemberValue& change, const EntryRules& rules) {
    try {
        Change(probe, change, rules);
    } catch (const RaisedError&) {
        // Whoever sizes the change tells of it.
    }
}

}  // namespace genvara::python
