#pragma once

#include <cstdint>

#include "CDesigner.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "CReports.h"

namespace genvara {

/// Where a report's values come from.
struct ReportSources {
    const CProject& project;
    const CPwrSys& site;
    const CDesigner& designer;
    bool metricUnits = false;  ///< whether altitude and temperature are shown in m and °C, or ft and °F
};

/// Copies what every report prints.
void FillReportCommon(CReports& reports, const ReportSources& sources);

/// Copies the values of a recommended set, and the common ones.
/// @throws RaisedError 9 for a position beyond the list.
void FillChosenSet(CReports& reports, const ReportSources& sources, std::int32_t index);

/// Copies the values of an undersized set, and the common ones. Whether harmonic figures are valid is not
/// among them: what the last recommended set left stands.
/// @throws RaisedError 9 for a position beyond the list.
void FillRejectedSet(CReports& reports, const ReportSources& sources, std::int32_t index);

/// The same as the window has it just after a run, when its panel has shown the first recommended set, if
/// there is one, and nothing else.
/// @throws RaisedError 9 for a position beyond the list.
void FillRejectedSetAfterRun(CReports& reports, const ReportSources& sources, std::int32_t index);

}  // namespace genvara
