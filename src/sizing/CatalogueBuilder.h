#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// What a build came to.
struct CatalogueBuild {
    std::vector<std::string>
        faults;             ///< each names file, line and column; a build with faults leaves no file
    std::int64_t rows = 0;  ///< rows of all tables
};

/// Told now and then how many rows of which table have been read.
using BuildProgress = std::function<void(std::string_view table, std::int64_t rows)>;

/// Builds a genset database from a folder of CSV files, one a table, named as the table, first row the names
/// of the columns, an empty field for Null. Columns beyond those that the program reads are kept.
///
/// Faults are gathered up to a hundred; the database takes its place only if there is none.
/// @throws RaisedError with the system's or the database's number if the folder cannot be read or the
///         database not be written; the old file is then whole.
[[nodiscard]] CatalogueBuild BuildCatalogue(const std::filesystem::path& folder,
                                            const std::filesystem::path& database,
                                            const BuildProgress& progress);

}  // namespace genvara
