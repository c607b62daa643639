#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace genvara {

/// Told of each finding: table, row and column, and what is wrong.
using FindingHandler = std::function<void(const std::string& finding)>;

/// Looks through a genset database for everything that would end or falsify a run: missing tables and
/// columns, Nulls and texts where numbers belong, keys that lead nowhere, motor tables that do not ascend
/// strictly, ratings that fall where the allowed rise grows, connections that no site can have.
/// @throws RaisedError as `GensetDatabase` if the file cannot be read as a database.
void CheckCatalogue(const std::filesystem::path& database, const FindingHandler& handler);

}  // namespace genvara
