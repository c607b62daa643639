#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "DesignLimits.h"

namespace genvara {

/// Arguments of the commands that look at projects.
struct ProjectArguments {
    std::vector<std::string> files;
    std::filesystem::path database;
    DesignLimits limits;
    bool json = false;
    std::int32_t jobs = 1;
};

/// The genset database that lies beside the program.
[[nodiscard]] std::filesystem::path DatabaseBesideProgram();

/// What `describe` is asked for.
struct DescribeArguments {
    std::string kind;  ///< of record; all of them if empty
    bool json = false;
    bool schema = false;  ///< of JSON projects
};

// The commands; each returns the exit status of the program.
[[nodiscard]] int RunSize(const ProjectArguments& arguments);
[[nodiscard]] int RunCheck(const ProjectArguments& arguments);
[[nodiscard]] int RunConvert(const ProjectArguments& arguments, const std::filesystem::path& output);
[[nodiscard]] int RunDescribe(const DescribeArguments& arguments);
[[nodiscard]] int RunCatalogBuild(const std::filesystem::path& folder, const std::filesystem::path& database);
[[nodiscard]] int RunCatalogCheck(const std::filesystem::path& database);

}  // namespace genvara
