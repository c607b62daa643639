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
        "a,b\r\n\"1,5\",\"say \"\"x\"\"\"\n\n,\"two\nlines\"\n\"in the\n\nfirst\",1\nlast,");
    EXPECT_EQ(breach, "");
    EXPECT_THAT(rows,
                ElementsAre(Row{1, {"a", "b"}}, Row{2, {"1,5", "say \"x\""}}, Row{4, {"", "two\nlines"}},
                            Row{6, {"in the\n\nfirst", "1"}}, Row{9, {"last", ""}}));
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

TEST(CatalogueBuilder, RefusesTextOfAnotherEncoding) {
    const TestCatalogue catalogue;
    WriteBytes(catalogue.Tables() / "Properties.csv",
               "ID,Version,Date,Initials,Note\n1,1,\xC3\xA4,\xE4,\xE4\n");
    EXPECT_THAT(catalogue.Build().faults,
                ElementsAre("Properties.csv: line 2, column \"Initials\": the text is no UTF-8"));
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

}  // namespace
}  // namespace genvara
