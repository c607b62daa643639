#include "CommonOptions.h"

#include <cstdint>
#include <functional>

#include "ArgumentText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

/// A limit of a run, set through the designer's own check.
void AddLimit(CLI::App& command, const char* name, const std::function<void(std::int32_t)>& set,
              const char* description) {
    command
        .add_option_function<std::int32_t>(
            name,
            [set, name](const std::int32_t& value) {
                try {
                    set(value);
                } catch (const RaisedError& refusal) {
                    throw CLI::ValidationError(name, refusal.Description());
                }
            },
            description)
        ->transform(Decimal())
        ->type_name("N");
}

}  // namespace

void AddDatabase(CLI::App& command, ProjectArguments& arguments) {
    command.add_option("--db", arguments.database, "Genset database; by default the one beside the program")
        ->type_name("FILE");
}

void AddProjects(CLI::App& command, ProjectArguments& arguments) {
    command.add_option("PROJECT.prj", arguments.files, "Project files, .prj or .json")
        ->required()
        ->type_name("");
}

void AddLimits(CLI::App& command, ProjectArguments& arguments) {
    DesignLimits& limits = arguments.limits;
    AddLimit(
        command, "--min-loading", [&limits](std::int32_t n) { limits.MinLoading(n); },
        "Least loading of a recommended set, percent [30]");
    AddLimit(
        command, "--max-loading", [&limits](std::int32_t n) { limits.MaxLoading(n); },
        "Most loading of a recommended set, percent [80]");
    AddLimit(
        command, "--max-sets", [&limits](std::int32_t n) { limits.MaxSetsRecommended(n); },
        "Recommended sets to list [16]");
    AddLimit(
        command, "--max-undersized", [&limits](std::int32_t n) { limits.MaxSetsUndersized(n); },
        "Undersized sets to list [5]");
}

}  // namespace genvara
