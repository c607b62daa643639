#include "CatalogueTable.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RaisedErrorMatcher.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::Property;
using testing::Throws;

TEST(CatalogueTable, HasEachFieldAsItIsStored) {
    const TemporaryFolder folder;
    const auto file = folder / "some.db";
    {
        SQLite::Database database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec("CREATE TABLE [Motor Code Letters] (Whole, Real, Words, Bytes, Absent)");
        database.exec("INSERT INTO [Motor Code Letters] VALUES (5000000000, 2.5, 'B', x'00FF', NULL)");
        database.exec("INSERT INTO [Motor Code Letters] VALUES ('7', 8, 9.0, 'x', 1)");
    }
    const CatalogueTable table = ReadCatalogueTable(file, "Motor Code Letters");
    EXPECT_THAT(table.columns, ElementsAre("Whole", "Real", "Words", "Bytes", "Absent"));
    ASSERT_EQ(table.rows.size(), 2U);
    const std::vector<StoredField>& row = table.rows.front();
    ASSERT_EQ(row.size(), 5U);
    EXPECT_EQ(std::get<std::int64_t>(row[0]), 5000000000);
    EXPECT_EQ(std::get<double>(row[1]), 2.5);
    EXPECT_EQ(std::get<std::string>(row[2]), "B");
    EXPECT_EQ(std::get<StoredBytes>(row[3]).bytes, std::string("\0\xFF", 2));
    EXPECT_TRUE(std::holds_alternative<std::monostate>(row[4]));
    // What a field is hangs on the field and not on its column.
    EXPECT_EQ(std::get<std::string>(table.rows.back()[0]), "7");
    EXPECT_EQ(std::get<std::int64_t>(table.rows.back()[1]), 8);
}

TEST(CatalogueTable, FailsWithTheDatabasesOwnNumber) {
    constexpr std::int32_t kError = 1;        // the statement names no table
    constexpr std::int32_t kCannotOpen = 14;  // there is no file
    const TemporaryFolder folder;
    const auto file = folder / "empty.db";
    SQLite::Database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec("VACUUM");
    EXPECT_THAT([&] { (void)ReadCatalogueTable(file, "Gensets"); },
                Raises(kError, "GensetDatabase", "no such table: Gensets"));
    EXPECT_THAT([&] { (void)ReadCatalogueTable(folder / "none.db", "Gensets"); },
                Throws<RaisedError>(Property("Number", &RaisedError::Number, kCannotOpen)));
}

}  // namespace
}  // namespace genvara
