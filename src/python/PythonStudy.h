#pragma once

#include <pybind11/pybind11.h>

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Order.h"
#include "PythonProject.h"
#include "Stopping.h"
#include "Variation.h"

namespace genvara::python {

/// A project with the catalogue that it is studied against. It stays as it is, whatever becomes of the
/// project.
class PythonStudy {
  public:
    /// @throws RaisedError of a motor table, or of `ProfileWith`.
    PythonStudy(const PythonProject& project, std::shared_ptr<PythonCatalogue> catalogue,
                const DesignLimits& limits);

    [[nodiscard]] const StudyProject& Project() const noexcept { return m_project; }
    [[nodiscard]] const StudyTables& Tables() const noexcept { return m_tables; }
    [[nodiscard]] const std::shared_ptr<PythonCatalogue>& Catalogue() const noexcept { return m_catalogue; }

    /// A project that a study came to, for Python.
    [[nodiscard]] std::shared_ptr<PythonProject> Made(const StudyProject& project) const;

  private:
    std::shared_ptr<PythonCatalogue> m_tablesOfProject;  ///< whose motor tables the loads refer to
    std::shared_ptr<PythonCatalogue> m_catalogue;
    StudyTables m_tables;
    StudyProject m_project;
};

using ProjectPtr = std::shared_ptr<PythonProject>;
using CataloguePtr = std::shared_ptr<PythonCatalogue>;
using StudyPtr = std::shared_ptr<const PythonStudy>;

/// A study that a function of Python begins, with the limits that its keywords give.
/// @throws RaisedError as the constructor; TypeError and RaisedError of the keywords.
[[nodiscard]] StudyPtr BeginStudy(std::string_view function, const PythonProject& project,
                                  const CataloguePtr& catalogue, const pybind11::kwargs& limits);

/// The loads of each step by their paths.
[[nodiscard]] std::vector<std::vector<std::string>> PathsOf(const LoadOrder& order);
/// The same back.
/// @throws RaisedError 0 for a load that the profile lacks.
[[nodiscard]] LoadOrder OrderOf(const std::vector<std::vector<std::string>>& steps,
                                const CLoadProfile& profile);

/// Makes sure that a number of threads is one.
/// @throws ValueError below 1 or above 1,024.
void RequireJobs(std::int32_t jobs);

/// A value that Python gives, as the member of a path takes it.
/// @throws TypeError as `FromPython`; RaisedError 0 with a sentence for a value that nobody may enter.
[[nodiscard]] PropertyValue EnterableFromPython(const PropertyFacts& facts, pybind11::handle value);

/// What is told of the member of a path, once the changes before it were made.
[[nodiscard]] PropertyFacts FactsAt(StudyProject& probe, const std::string& path);

/// Makes a change that later paths may need; one that is refused is left to whoever sizes it.
void TryChange(StudyProject& probe, const MemberValue& change, const EntryRules& rules);

/// Does long work beside the interpreter, which goes on meanwhile, and ends it when the user interrupts.
/// @param work takes the flag that tells it to stop.
template <typename Work>
auto DoInterruptibly(Work work) {
    namespace py = pybind11;
    constexpr std::chrono::milliseconds kLook{50};
    StopFlag stop{false};
    auto answer = std::async(std::launch::async, [&] { return work(stop); });
    const py::gil_scoped_release others;
    while (answer.wait_for(kLook) != std::future_status::ready) {
        const py::gil_scoped_acquire interpreter;
        if (PyErr_CheckSignals() != 0) {
            stop = true;
            answer.wait();
            throw py::error_already_set();
        }
    }
    return answer.get();
}

}  // namespace genvara::python
