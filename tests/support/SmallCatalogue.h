#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

#include <SQLiteCpp/Database.h>

#include "CatalogueBuilder.h"
#include "TemporaryFolder.h"

namespace genvara {

/// Builds the smallest catalogue that an application starts with, `Genvara.db` in the folder: no sets, one
/// three-phase connection with the code 1.
/// @param tables content of tables that are to differ, by their names.
inline void BuildSmallCatalogue(const TemporaryFolder& folder,
                                std::map<std::string, std::string> tables = {}) {
    tables.merge(std::map<std::string, std::string>{
        {"Gensets",
         "Frequency,WindingConnection,VoltageLL,Fuel,DerateCode,AltModel,GensetModel,EngineModel,Rating80C,"
         "Rating105C,Rating125C,Rating130C,Rating150C,LRkVA,StartingPower,BaseFreqDipKW,BaseFreqDip,ExpC\n"},
        {"Derate Codes", "ID,AltDerateBase,AltDerateSlope,TempDerateBase,TempDerateSlope\n"},
        {"Alternators", "ID,ModelNum,BasekW,BaseVolts,SubtransReact\n"},
        {"Properties", "ID,Version,Date,Initials\n1,1.0,today,AB\n"},
        {"Connections", "ID,Connection Type,Phases\n1,Wye,3\n"},
        {"Motor Code Letters", "CodeLetter,LRkVAPerHP\nF,5.3\n"},
        {"Motor Starting Multiplier", "Multiplier\n1\n"},
        {"Motor Power Conversions", "HP,RunningKW,RunningKVA,SPF\n1,0.9,1.3,0.7\n10,8.5,10,0.5\n"}});
    const std::filesystem::path csv = folder / "tables";
    std::filesystem::create_directory(csv);
    for (const auto& [table, content] : tables) {
        WriteBytes(csv / (table + ".csv"), content);
    }
    EXPECT_TRUE(
        BuildCatalogue(csv, folder / "Genvara.db", [](std::string_view, std::int64_t) {}).faults.empty());
}

/// Takes a table out of a small catalogue.
inline void DropTable(const TemporaryFolder& folder, const std::string& table) {
    SQLite::Database((folder / "Genvara.db").string(), SQLite::OPEN_READWRITE)
        .exec("DROP TABLE [" + table + "]");
}

}  // namespace genvara
