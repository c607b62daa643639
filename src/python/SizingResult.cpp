#include "SizingResult.h"

#include <fmt/format.h>

#include <atomic>
#include <stdexcept>
#include <utility>

#include "Brand.h"
#include "CReports.h"
#include "ErrorLog.h"
#include "ReportFiller.h"
#include "SiteCandidates.h"
#include "SpecExport.h"
#include "WorkOutLoads.h"

namespace genvara::python {
namespace {

bool AreSame(const MotorConversions& left, const MotorConversions& right) {
    return left.MotorHP == right.MotorHP && left.MotorRunningKW == right.MotorRunningKW &&
           left.MotorRunningKVA == right.MotorRunningKVA && left.MotorStartPF == right.MotorStartPF;
}

void RequireIndex(std::int32_t index, std::int32_t count, std::string_view list) {
    if (index < 0 || index >= count) {
        throw std::out_of_range(
            fmt::format("There is no {} set {}: the list has {}, counted from 0.", list, index, count));
    }
}

}  // namespace

SizingResult::SizingResult(const PythonProject& project, std::shared_ptr<PythonCatalogue> catalogue,
                           const DesignLimits& limits)
    : m_format(project.Format()),
      m_tables(project.Tables()),
      m_catalogue(std::move(catalogue)),
      m_document(FactoryDefaults(), m_catalogue->Data(), m_catalogue->Gensets()) {
    m_document.Project() = project.Project();
    m_document.PowerSystem() = project.PowerSystem();
    const MotorConversions& motors = m_catalogue->Data().Motors();
    if (AreSame(motors, m_tables->Data().Motors())) {
        m_document.LoadProfile() = project.LoadProfile();
    } else {
        m_tables = m_catalogue;
        m_document.LoadProfile() =
            ProfileWith(motors, project.LoadProfile(), project.PowerSystem().Voltage());
    }
    m_document.FollowConnection();
    m_document.RequireConnection(" of the project");
    RequireLoads(m_document.LoadProfile());
    m_document.Designer().TakeLimits(limits);
}

void SizingResult::Size() {
    m_document.Size();
}

Explanation SizingResult::Explained(const ExplainChoice& choice) const {
    WorkOutLoads(m_document.LoadProfile());
    const StopFlag goOn{false};
    Explanation explanation =
        Explain(m_catalogue->Candidates().Of(FilterOf(m_document.PowerSystem())), m_document.PowerSystem(),
                m_document.LoadProfile(), m_document.Designer(), choice, goOn);
    if (!explanation.unknownModels.empty()) {
        throw RaisedError(0, "",
                          fmt::format("No candidate for the site is of the model \"{}\".",
                                      explanation.unknownModels.front()));
    }
    return explanation;
}

void SizingResult::Fill(CReports& reports, ReportedList list, std::int32_t index, bool metric) const {
    const ReportSources sources = m_document.Sources(metric);
    if (list == ReportedList::Undersized) {
        RequireIndex(index, Designer().NumRejectedSets(), "undersized");
        FillRejectedSetAfterRun(reports, sources, index);
        return;
    }
    RequireIndex(index, Designer().NumChosenSets(), "recommended");
    FillChosenSet(reports, sources, index);
}

template <typename Make>
std::string SizingResult::Made(Make make) const {
    ErrorLog log(".");
    CReports reports(BuiltBrand(), m_document.LoadProfile(), LocalTime, log);
    std::string made = make(reports);
    if (made.empty()) {
        throw RaisedError(0, "", "The report came back empty: " + log.Text());
    }
    return made;
}

std::string SizingResult::Report(std::int32_t type, ReportedList list, std::int32_t index,
                                 bool metric) const {
    return Made([&](CReports& reports) {
        Fill(reports, list, index, metric);
        return reports.CreateReport(type, list == ReportedList::Undersized);
    });
}

std::string SizingResult::NoMatchReport(bool metric) const {
    return Made([&](CReports& reports) {
        FillReportCommon(reports, m_document.Sources(metric));
        return reports.CreateNoMatchReport();
    });
}

std::string SizingResult::Spec(ReportedList list, std::int32_t index, bool metric) const {
    return Made([&](CReports& reports) {
        Fill(reports, list, index, metric);
        return SpecText("", reports, m_document.Project(), m_document.PowerSystem()).bytes;
    });
}

std::shared_ptr<PythonProject> SizingResult::Project() const {
    // The loads may refer to the motor tables of the catalogue that the project was read with.
    auto copy = std::make_shared<PythonProject>(m_tables);
    copy->Project() = m_document.Project();
    copy->PowerSystem() = m_document.PowerSystem();
    copy->LoadProfile() = m_document.LoadProfile();
    copy->Format(m_format);
    return copy;
}

}  // namespace genvara::python
