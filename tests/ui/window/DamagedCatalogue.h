#pragma once

#include <SQLiteCpp/Database.h>

#include <filesystem>
#include <string>

namespace genvara {

/// Puts a damaged copy of the shipped catalogue beside a program; a window that stands has to be restarted.
inline void DamageCatalogue(const std::filesystem::path& programFolder, const std::string& damage) {
    const std::filesystem::path file = programFolder / "Genvara.db";
    std::filesystem::remove(file);
    std::filesystem::copy_file(GENVARA_TEST_DATABASE, file);
    SQLite::Database(file.string(), SQLite::OPEN_READWRITE).exec(damage);
}

}  // namespace genvara
