#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace genvara {

/// Told of each finding: table, row and column, and what is wrong.
using FindingHandler = std::function<void(const std::string& finding)>;

/// Looks through a genset database for everything that would end or falsify a run: a damaged file, missing
/// tables and columns, Nulls and texts where numbers belong, what breaks a rule of `CatalogueRules`, motor
/// tables that convert some motor to what no load takes.
/// @throws RaisedError as `GensetDatabase` if the file cannot be read as a database.
void CheckCatalogue(const std::filesystem::path& database, const FindingHandler& handler);

}  // namespace genvara
