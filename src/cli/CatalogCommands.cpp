#include <fmt/format.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <vector>

#include "CatalogueBuilder.h"
#include "CatalogueChecker.h"
#include "CommandLine.h"
#include "GensetSchema.h"
#include "Output.h"
#include "OutputFile.h"
#include "SizedProject.h"

namespace genvara {
namespace {

constexpr auto kDatabaseEndings = std::to_array<std::string_view>({".db", ".sqlite", ".sqlite3"});
constexpr OutputKind kDatabaseFile{.meaning = "a genset database", .endings = kDatabaseEndings};

/// The files that a database is built from.
std::vector<InputFile> TablesOf(const std::filesystem::path& folder) {
    std::vector<InputFile> tables;
    for (const TableSchema& table : kGensetSchema) {
        tables.push_back(
            {folder / fmt::format("{}.csv", table.name), "a table that the database is built from"});
    }
    return tables;
}

/// Shows on a terminal how far a long build is, on one line that is written over.
void ShowProgress(std::string_view table, std::int64_t rows) {
    if (isatty(STDERR_FILENO) != 0) {
        fmt::print(stderr, "\r{:<28}{:>10} rows", table, rows);
    }
}

void EndProgress() {
    if (isatty(STDERR_FILENO) != 0) {
        fmt::print(stderr, "\r{:<44}\r", "");
    }
}

}  // namespace

int RunCatalogBuild(const std::filesystem::path& folder, const std::filesystem::path& database) {
    if (const std::optional<std::string> refusal =
            RefusalOf(database.string(), kDatabaseFile, TablesOf(folder))) {
        Complain(fmt::format("genvara-cli: error: {}", *refusal));
        return static_cast<int>(Status::BadArguments);
    }
    try {
        const CatalogueBuild build = BuildCatalogue(folder, database, ShowProgress);
        EndProgress();
        for (const std::string& fault : build.faults) {
            Complain((folder / fault).string());
        }
        if (!build.faults.empty()) {
            Complain(fmt::format("{} was not built.", database.string()));
            return static_cast<int>(Status::Unreadable);
        }
        Print(fmt::format("{}: {} rows in 8 tables\n", database.string(), build.rows));
        return static_cast<int>(Status::Done);
    } catch (const RaisedError& failure) {
        EndProgress();
        Complain(FailureLine("genvara-cli", failure));
        return static_cast<int>(Status::Unreadable);
    }
}

int RunCatalogCheck(const std::filesystem::path& database) {
    try {
        std::int64_t findings = 0;
        CheckCatalogue(database, [&findings](const std::string& finding) {
            ++findings;
            Print(finding + "\n");
        });
        if (findings > 0) {
            return static_cast<int>(Status::Found);
        }
        Print(fmt::format("{}: nothing found\n", database.string()));
        return static_cast<int>(Status::Done);
    } catch (const RaisedError& failure) {
        Complain(FailureLine("genvara-cli", failure));
        return static_cast<int>(Status::Unreadable);
    }
}

}  // namespace genvara
