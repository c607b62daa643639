#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "Document.h"
#include "Explain.h"
#include "PythonProject.h"

namespace genvara::python {

/// The lists of a report's sets.
enum class ReportedList : std::uint8_t { Recommended, Undersized };

/// A project as it was sized, with what came of it. Nothing changes it once it is sized, and what is done to
/// the project afterwards does not reach it.
class SizingResult {
  public:
    /// Takes a copy of the project; nothing is sized yet.
    /// @throws RaisedError 0 for a connection that is not in the catalogue, and where there is nothing to
    /// size.
    SizingResult(const PythonProject& project, std::shared_ptr<PythonCatalogue> catalogue,
                 const DesignLimits& limits);

    /// Runs the design.
    /// @throws RaisedError of the run.
    void Size();
    /// @throws RaisedError as `Explain`; 0 for a model that no candidate is of.
    [[nodiscard]] Explanation Explained(const ExplainChoice& choice) const;

    /// The bytes of a report on a set of a list, in rich text.
    /// @param type code of `report_type`.
    /// @throws RaisedError of the report; 0 for one that comes back empty; std::out_of_range for a set that
    /// the
    ///         list does not have.
    [[nodiscard]] std::string Report(std::int32_t type, ReportedList list, std::int32_t index,
                                     bool metric) const;
    /// The report that stands where no set was found.
    [[nodiscard]] std::string NoMatchReport(bool metric) const;
    /// The bytes of a spec export.
    /// @throws std::out_of_range as `Report`.
    [[nodiscard]] std::string Spec(ReportedList list, std::int32_t index, bool metric) const;

    [[nodiscard]] const CDesigner& Designer() const noexcept { return m_document.Designer(); }
    [[nodiscard]] const CProject& ProjectRecord() const noexcept { return m_document.Project(); }
    [[nodiscard]] const CLoadProfile& LoadProfile() const noexcept { return m_document.LoadProfile(); }
    [[nodiscard]] const std::shared_ptr<PythonCatalogue>& Catalogue() const noexcept { return m_catalogue; }
    /// A copy of the project as it was sized.
    [[nodiscard]] std::shared_ptr<PythonProject> Project() const;

  private:
    template <typename Make>
    [[nodiscard]] std::string Made(Make make) const;
    void Fill(CReports& reports, ReportedList list, std::int32_t index, bool metric) const;

    ProjectFormat m_format;
    std::shared_ptr<PythonCatalogue> m_tables;  ///< whose motor tables the loads refer to
    std::shared_ptr<PythonCatalogue> m_catalogue;
    Document m_document;
};

}  // namespace genvara::python
