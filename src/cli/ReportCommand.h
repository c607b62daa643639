#pragma once

#include <optional>
#include <string>

#include "CommandLine.h"
#include "DateTime.h"

namespace genvara {

/// Arguments of the commands that write about one set of one project.
struct ReportArguments {
    std::optional<std::int32_t> set;         ///< position in the recommended list
    std::optional<std::int32_t> undersized;  ///< position in the undersized list
    bool noMatch = false;
    std::int32_t type = 0;  ///< code of `report_type`
    bool metric = false;
    std::optional<DateTime> now;  ///< fixes the time that the report states
    std::string output;           ///< file, or "-" for standard output
};

/// Both take the one project, the database and the limits from `project`; each returns the exit status.
[[nodiscard]] int RunReport(const ProjectArguments& project, const ReportArguments& arguments);
[[nodiscard]] int RunExportSpec(const ProjectArguments& project, const ReportArguments& arguments);

}  // namespace genvara
