#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "CatalogueChecker.h"
#include "CsvTable.h"
#include "GensetSchema.h"
#include "RaisedErrorMatcher.h"
#include "TestCatalogue.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Row {
    std::int64_t line;
    std::vector<std::string> fields;
    bool operator==(const Row&) const = default;
};

std::pair<std::vector<Row>, std::string> Parse(const std::string& text) {
    MemorySource source(text);
    std::vector<Row> rows;
    const std::string breach =
        ReadCsv(source, [&](std::int64_t line, const std::vector<std::string>& fields) {
            rows.push_back({line, fields});
        });
    return {rows, breach};
}

TEST(CsvTable, ReadsRowsWithTheirLines) {
    const auto [rows, breach] = Parse(
        "\xEF\xBB\xBF"
        "a,b\r\n\"1,5\",\"say \"\"x\"\"\"\n\n,\"two\nlines\"\nlast,");
    EXPECT_EQ(breach, "");
    EXPECT_THAT(rows, ElementsAre(Row{1, {"a", "b"}}, Row{2, {"1,5", "say \"x\""}},
                                  Row{4, {"", "two\nlines"}}, Row{6, {"last", ""}}));
}

TEST(CsvTable, TellsABreachOfTheQuotes) {
    EXPECT_NE(Parse("a,\"b\"c\n").second, "");
    EXPECT_NE(Parse("a,\"b\n").second, "");
    EXPECT_EQ(Parse("").second, "");
}

TEST(CatalogueBuilder, BuildsTheProgramsOwnCatalogueWithoutAFinding) {
    const TestCatalogue catalogue;
    EXPECT_THAT(catalogue.Built().faults, IsEmpty());
    EXPECT_GE(catalogue.Built().rows, 3000);
    std::vector<std::string> findings;
    CheckCatalogue(catalogue.Database(), [&](const std::string& finding) { findings.push_back(finding); });
    EXPECT_THAT(findings, IsEmpty());
}

TEST(CatalogueBuilder, ListsAllFaultsAtOnceAndLeavesTheOldDatabase) {
    const TestCatalogue catalogue;
    const std::string before = ReadBytes(catalogue.Database());
    WriteBytes(catalogue.Tables() / "Alternators.csv",
               "ID,ModelNum,BasekW,BaseVolts,SubtransReact\n1,A,x,480,0.1\n2,B\n1.5,C,100,480,y\n");
    WriteBytes(catalogue.Tables() / "Connections.csv", "ID,Phases,Phases\n1,3,3\n");
    std::filesystem::remove(catalogue.Tables() / "Properties.csv");
    WriteBytes(catalogue.Tables() / "Motor Code Letters.csv", "");
    EXPECT_THAT(catalogue.Build().faults,
                ElementsAre("Alternators.csv: line 2, column \"BasekW\": \"x\" is no number",
                            "Alternators.csv: line 3: 2 fields where the header has 5",
                            "Alternators.csv: line 4, column \"ID\": \"1.5\" is no whole number",
                            "Alternators.csv: line 4, column \"SubtransReact\": \"y\" is no number",
                            "Properties.csv: the file is missing",
                            "Connections.csv: line 1: the column \"Connection Type\" is missing",
                            "Connections.csv: line 1: the column \"Phases\" stands there twice",
                            "Motor Code Letters.csv: the file is empty"));
    EXPECT_EQ(ReadBytes(catalogue.Database()), before);
    std::filesystem::remove(catalogue.Database());
    (void)catalogue.Build();
    EXPECT_FALSE(std::filesystem::exists(catalogue.Database()));
}

TEST(CatalogueBuilder, KeepsFurtherColumnsAndEmptyFieldsAsNull) {
    const TestCatalogue catalogue;
    WriteBytes(catalogue.Tables() / "Connections.csv",
               "Phases,Note,Connection Type,ID\n3,\"a \"\"b\"\"\",,1\n");
    EXPECT_THAT(catalogue.Build().faults, IsEmpty());
    SQLite::Database database(catalogue.Database().string(), SQLite::OPEN_READONLY);
    SQLite::Statement row(database, "Select ID, Note, \"Connection Type\" from Connections");
    ASSERT_TRUE(row.executeStep());
    EXPECT_EQ(row.getColumn(0).getInt(), 1);
    EXPECT_EQ(row.getColumn(1).getString(), "a \"b\"");
    EXPECT_TRUE(row.getColumn(2).isNull());
}

TEST(CatalogueBuilder, RefusesATargetThatIsNoOrdinaryFile) {
    const TestCatalogue catalogue;
    std::filesystem::remove(catalogue.Database());
    ASSERT_EQ(mkfifo(catalogue.Database().c_str(), 0600), 0);
    EXPECT_THAT([&] { catalogue.Build(); },
                Raises(EINVAL, "BuildCatalogue", catalogue.Database().string() + " is no ordinary file."));
    EXPECT_TRUE(std::filesystem::is_fifo(catalogue.Database()));
}

TEST(CatalogueBuilder, FollowsALink) {
    const TestCatalogue catalogue;
    const std::string built = ReadBytes(catalogue.Database());
    const std::filesystem::path real = catalogue.Tables() / "real.db";
    WriteBytes(real, "old");
    std::filesystem::remove(catalogue.Database());
    std::filesystem::create_symlink(real, catalogue.Database());
    EXPECT_THAT(catalogue.Build().faults, IsEmpty());
    EXPECT_TRUE(std::filesystem::is_symlink(catalogue.Database()));
    EXPECT_EQ(ReadBytes(real), built);
}

TEST(CatalogueBuilder, GathersAHundredFaultsAndNoMore) {
    const TestCatalogue catalogue;
    std::string table = "Multiplier\n";
    for (int i = 0; i < 500; ++i) {
        table += "x\n";
    }
    WriteBytes(catalogue.Tables() / "Motor Starting Multiplier.csv", table);
    EXPECT_EQ(catalogue.Build().faults.size(), 101U);
}

struct DamageCase {
    const char* damage;
    const char* finding;
};

TEST(CatalogueChecker, FindsEachDamage) {
    const DamageCase cases[] = {
        {"Drop table [Motor Starting Multiplier]", "[Motor Starting Multiplier]: the table is missing"},
        {"Alter table [Gensets] drop column ExpC", "[Gensets]: the column \"ExpC\" is missing"},
        {"Update [Gensets] set LRkVA = null where rowid = 7", "[Gensets], row 7, column \"LRkVA\": is Null"},
        {"Update [Gensets] set Rating130C = 'abc' where rowid = 3",
         "[Gensets], row 3, column \"Rating130C\": \"abc\" is no number"},
        {"Update [Gensets] set GensetModel = null where rowid = 2",
         "[Gensets], row 2, column \"GensetModel\": is Null"},
        {"Update [Gensets] set DerateCode = 999 where rowid = 4",
         "[Gensets], row 4, column \"DerateCode\": 999 is no ID of [Derate Codes]"},
        {"Update [Gensets] set AltModel = 999 where rowid = 4",
         "[Gensets], row 4, column \"AltModel\": 999 is no ID of [Alternators]"},
        {"Update [Gensets] set WindingConnection = 99 where rowid = 4",
         "[Gensets], row 4, column \"WindingConnection\": 99 is no ID of Connections"},
        {"Update [Gensets] set Fuel = 5 where rowid = 4",
         "[Gensets], row 4, column \"Fuel\": 5 is no fuel code from 1 to 4"},
        {"Update [Gensets] set Rating150C = 1 where rowid = 5",
         "[Gensets], row 5, column \"Rating150C\": 1.0 is below Rating130C, though the allowed rise is "
         "higher"},
        {"Update [Gensets] set Rating80C = 9e999 where rowid = 5",
         "[Gensets], row 5, column \"Rating80C\": Inf is no finite number"},
        {"Update [Gensets] set DerateCode = 1.5 where rowid = 6",
         "[Gensets], row 6, column \"DerateCode\": 1.5 is no whole number of 32 bits"},
        {"Update [Alternators] set SubtransReact = 0 where rowid = 1",
         "[Alternators], row 1, column \"SubtransReact\": 0.0 is not above 0, though the alternator has a "
         "base"},
        {"Update [Alternators] set BaseVolts = 1e300 where rowid = 1",
         "[Alternators], row 1, column \"BaseVolts\": 1.0e+300 is beyond any generator's voltage"},
        {"Update [Gensets] set ExpC = -51 where rowid = 8",
         "[Gensets], row 8, column \"ExpC\": -51.0 is no exponent of a dip curve, from -50 to 50"},
        {"Update [Motor Power Conversions] set SPF = 0 where rowid = 2",
         "[Motor Power Conversions], row 2, column \"SPF\": 0.0 is no power factor, above 0 and up to 1"},
        {"Update [Motor Power Conversions] set SPF = 80 where rowid = 2",
         "[Motor Power Conversions], row 2, column \"SPF\": 80.0 is no power factor, above 0 and up to 1"},
        {"Insert into [Alternators] select * from [Alternators] where rowid = 1", "stands there twice"},
        {"Insert into [Derate Codes] select * from [Derate Codes] where rowid = 1", "stands there twice"},
        {"Update Connections set Phases = 2 where rowid = 1",
         "[Connections], row 1, column \"Phases\": 2 is neither 1 nor 3"},
        {"Update [Motor Power Conversions] set RunningKW = 0.01 where rowid = 3",
         "[Motor Power Conversions], row 3, column \"RunningKW\": 0.01 does not ascend"},
        {"Update [Motor Power Conversions] set HP = (Select HP from [Motor Power Conversions] where rowid = "
         "2) "
         "where rowid = 3",
         "column \"HP\""},
        {"Delete from [Properties]", "[Properties]: the table has no rows"},
        {"Delete from [Motor Power Conversions] where rowid > 1",
         "[Motor Power Conversions]: the table has only one row"},
    };
    for (const DamageCase& row : cases) {
        const TestCatalogue catalogue;
        catalogue.Execute(row.damage);
        std::vector<std::string> findings;
        CheckCatalogue(catalogue.Database(),
                       [&](const std::string& finding) { findings.push_back(finding); });
        EXPECT_THAT(findings, testing::Contains(HasSubstr(row.finding))) << row.damage;
    }
}

}  // namespace
}  // namespace genvara
