#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

#include "CProject.h"
#include "CPwrSys.h"
#include "CReports.h"
#include "CodePage.h"

namespace genvara {

/// The content of a spec export, merged into what a file held before: the essentials of the set of the last
/// report, and of the site as it is now.
/// @param before bytes of the file, empty for a fresh one.
/// @return Windows-1252, and how many characters of the values it could not hold.
[[nodiscard]] EncodedText SpecText(std::string before, const CReports& reports, const CProject& project,
                                   const CPwrSys& site);

/// Writes a spec export, replacing its own keys in an existing file and keeping all else.
/// @return characters that the file's code page could not hold: each stands there as a question mark.
/// @throws RaisedError with the system's number from "AtomicFile" if the file cannot be written, from
///         "ExportSpec" if it is there and cannot be read; it is then unchanged.
std::size_t ExportSpec(const std::filesystem::path& file, const CReports& reports, const CProject& project,
                       const CPwrSys& site);

}  // namespace genvara
