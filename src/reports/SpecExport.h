#pragma once

#include <filesystem>
#include <string>

#include "CProject.h"
#include "CPwrSys.h"
#include "CReports.h"

namespace genvara {

/// The content of a spec export, merged into what a file held before: the essentials of the set of the last
/// report, and of the site as it is now.
/// @param before bytes of the file, empty for a fresh one.
[[nodiscard]] std::string SpecText(std::string before, const CReports& reports, const CProject& project,
                                   const CPwrSys& site);

/// Writes a spec export, replacing its own keys in an existing file and keeping all else.
/// @throws RaisedError with the system's number if the file cannot be written; it is then unchanged.
void ExportSpec(const std::filesystem::path& file, const CReports& reports, const CProject& project,
                const CPwrSys& site);

}  // namespace genvara
