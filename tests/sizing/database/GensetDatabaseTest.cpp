#include "GensetDatabase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <thread>

#include "CachedGensets.h"
#include "RaisedErrorMatcher.h"
#include "TestCatalogue.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::Property;
using testing::Throws;

auto RaisesNumber(std::int32_t number) {
    return Throws<RaisedError>(Property("Number", &RaisedError::Number, number));
}

std::size_t Count(GensetSource& source, const SiteFilter& filter) {
    const auto cursor = source.SelectGensets(filter);
    std::size_t count = 0;
    while (cursor->Next() != nullptr) {
        ++count;
    }
    return count;
}

TEST(GensetDatabase, RefusesWhatIsNoDatabase) {
    const TemporaryFolder folder;
    EXPECT_THAT([&] { GensetDatabase(folder / "none.db"); }, RaisesNumber(53));
    EXPECT_THAT([&] { GensetDatabase(folder.Path()); }, RaisesNumber(EISDIR));
    WriteBytes(folder / "text.db", std::string(5000, 'x'));
    EXPECT_THAT([&] { GensetDatabase(folder / "text.db"); }, RaisesNumber(0));
    WriteBytes(folder / "empty.db", "");
    GensetDatabase empty(folder / "empty.db");
    EXPECT_THAT([&] { empty.RequireSchema(); },
                Throws<RaisedError>(Property("Description", &RaisedError::Description,
                                             HasSubstr("lacks the table [Gensets]"))));
}

TEST(GensetDatabase, NamesTheColumnThatIsMissing) {
    const TestCatalogue catalogue;
    GensetDatabase(catalogue.Database()).RequireSchema();
    catalogue.Execute("Alter table Connections rename column \"Connection Type\" to Caption");
    GensetDatabase database(catalogue.Database());
    EXPECT_THAT([&] { database.RequireSchema(); },
                Throws<RaisedError>(Property("Description", &RaisedError::Description,
                                             HasSubstr("lacks the column \"Connection Type\""))));
}

TEST(GensetDatabase, FiltersBySiteAndByFuelUnlessAnyWillDo) {
    const TestCatalogue catalogue;
    catalogue.Execute("Delete from [Gensets]");
    catalogue.Execute(
        "Insert into [Gensets] (Frequency, WindingConnection, VoltageLL, Fuel) values "
        "(60, 1, 480, 1), (60, 1, 480, 2), (50, 1, 480, 1), (60, 2, 480, 1), (60, 1, 208, 1)");
    GensetDatabase database(catalogue.Database());
    EXPECT_EQ(Count(database, {.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 0}), 2U);
    EXPECT_EQ(Count(database, {.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 2}), 1U);
    EXPECT_EQ(Count(database, {.frequency = 60, .connectCode = 1, .voltage = 240, .fuel = 0}), 0U);
}

TEST(GensetDatabase, KnowsTheRowOfACandidate) {
    const TestCatalogue catalogue;
    catalogue.Execute("Delete from [Gensets]");
    catalogue.Execute(
        "Insert into [Gensets] (rowid, Frequency, WindingConnection, VoltageLL, Fuel) values "
        "(3, 60, 1, 480, 1), (5, 60, 1, 480, 2), (6, 50, 1, 480, 1), (9, 60, 1, 480, 1)");
    GensetDatabase database(catalogue.Database());
    CachedGensets cache(database);
    const SiteFilter any{.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 0};
    const SiteFilter diesel{.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 1};
    for (GensetSource* source : {static_cast<GensetSource*>(&database), static_cast<GensetSource*>(&cache)}) {
        EXPECT_EQ(source->RowNumber(any, 0), 3);
        EXPECT_EQ(source->RowNumber(any, 1), 5);
        EXPECT_EQ(source->RowNumber(any, 2), 9);
        EXPECT_EQ(source->RowNumber(diesel, 1), 9);
        EXPECT_EQ(source->RowNumber(any, 3), std::nullopt);
    }
}

TEST(GensetDatabase, HasNoNumbersForTheRowsOfAView) {
    const TestCatalogue catalogue;
    catalogue.Execute("Alter table [Gensets] rename to Sets");
    catalogue.Execute("Create view [Gensets] as Select * from Sets");
    GensetDatabase database(catalogue.Database());
    const SiteFilter site{.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 1};
    EXPECT_GT(Count(database, site), 0U);
    EXPECT_EQ(database.RowNumber(site, 0), std::nullopt);
}

TEST(GensetDatabase, ConvertsFieldsWhenTheyAreAskedFor) {
    const TestCatalogue catalogue;
    catalogue.Execute("Delete from [Gensets]");
    catalogue.Execute(
        "Insert into [Gensets] (Frequency, WindingConnection, VoltageLL, Fuel, Rating80C, LRkVA, "
        "GensetModel, EngineModel, DerateCode) values "
        "(60, 1, 480, 2.5, 'text', ' 12.5 ', 'M-1', 7.25, 9999999999)");
    GensetDatabase database(catalogue.Database());
    const auto cursor =
        database.SelectGensets({.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 0});
    const GensetRow* row = cursor->Next();
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->Fuel.Integer("m"), 2);  // halves go to the even neighbour
    EXPECT_EQ(row->LRkVA.Real("m"), 12.5);
    EXPECT_THAT([&] { (void)row->Ratings[0].Real("m"); }, Raises(13, "m", "Type mismatch"));
    EXPECT_THAT([&] { (void)row->Ratings[1].Real("m"); }, Raises(13, "m", "Type mismatch"));
    EXPECT_TRUE(row->ExpC.IsNull());
    EXPECT_THAT([&] { (void)row->DerateCode.Integer("m"); }, Raises(6, "m", "Overflow"));
    EXPECT_EQ(row->GensetModel.Text("m"), "M-1");
    EXPECT_EQ(row->EngineModel.Text("m"), "7.25");
}

TEST(GensetDatabase, AnswersTheSmallQueries) {
    const TestCatalogue catalogue;
    catalogue.Execute("Delete from [Properties]");
    EXPECT_THAT([&] { (void)GensetDatabase(catalogue.Database()).Properties(); }, RaisesNumber(3021));
    catalogue.Execute("Insert into [Properties] values (1, '1.0', 'a', 'b'), (2, '2.0', 'c', 'd')");
    catalogue.Execute("Delete from Connections");
    catalogue.Execute("Insert into Connections values (5, 'Five', 1), (1, 'One', 3)");
    catalogue.Execute("Delete from [Motor Power Conversions]");
    catalogue.Execute("Insert into [Motor Power Conversions] values (10, 8, 9, 0.4), (1, 0.8, 0.9, 0.7)");
    GensetDatabase database(catalogue.Database());
    EXPECT_EQ(database.Properties().Version, "2.0");
    EXPECT_EQ(database.Connections().at(1).caption, "One");
    EXPECT_THAT(database.ReadMotorConversions().MotorHP, testing::ElementsAre(1.0, 10.0));
    EXPECT_THAT(database.ReadMotorConversions().MotorStartPF, testing::ElementsAre(0.7, 0.4));
    EXPECT_EQ(database.MotorStartingMultipliers().size(), 6U);
    EXPECT_FALSE(database.MotorCodeLetters().empty());
    EXPECT_FALSE(database.VoltagesLL().empty());
    EXPECT_THAT([&] { (void)database.DerateCode(-1); }, RaisesNumber(3021));
    EXPECT_THAT([&] { (void)database.Alternator(-1); }, RaisesNumber(3021));
}

TEST(GensetDatabase, TakesTheFirstRowOfAKeyThatEqualsItAsANumber) {
    const TestCatalogue catalogue;
    // A column without a type keeps each value as it was given: a text is then no number, 7.0 is 7.
    catalogue.Execute("Drop table [Alternators]");
    catalogue.Execute("Create table [Alternators] (ID, ModelNum, BasekW, BaseVolts, SubtransReact)");
    catalogue.Execute(
        "Insert into [Alternators] values ('7', 'text', 1, 480, 0.1), (7.0, 'first', 2, 480, 0.1), "
        "(7, 'second', 3, 480, 0.1), (7.5, 'between', 4, 480, 0.1), (null, 'none', 5, 480, 0.1), "
        "(8, 'eight', 6, 480, 0.1)");
    GensetDatabase database(catalogue.Database());
    EXPECT_EQ(database.Alternator(7).ModelNum.Text("m"), "first");
    EXPECT_EQ(database.Alternator(8).ModelNum.Text("m"), "eight");
    EXPECT_THAT([&] { (void)database.Alternator(0); }, RaisesNumber(3021));
}

TEST(GensetDatabase, FindsKeysOfAColumnOfTexts) {
    const TestCatalogue catalogue;
    catalogue.Execute("Drop table [Derate Codes]");
    catalogue.Execute(
        "Create table [Derate Codes] (ID TEXT, AltDerateBase REAL, AltDerateSlope REAL, TempDerateBase REAL, "
        "TempDerateSlope REAL)");
    catalogue.Execute("Insert into [Derate Codes] values (7, 100, 1, 40, 2), (8, 200, 1, 40, 2)");
    GensetDatabase database(catalogue.Database());
    EXPECT_EQ(database.DerateCode(8).AltDerateBase.Real("m"), 200.0);
}

TEST(GensetDatabase, FindsKeysBehindMoreRowsThanItKeeps) {
    const TestCatalogue catalogue;
    catalogue.Execute("Delete from [Derate Codes]");
    catalogue.Execute(
        "With recursive n(i) as (select 1 union all select i + 1 from n where i < 1500) "
        "Insert into [Derate Codes] select i, 10 * i, 1, 40, 2 from n");
    GensetDatabase database(catalogue.Database());
    for (const std::int32_t id : {1, 1000, 1001, 1500}) {
        EXPECT_EQ(database.DerateCode(id).AltDerateBase.Real("m"), 10.0 * id);
    }
    EXPECT_THAT([&] { (void)database.DerateCode(1501); }, RaisesNumber(3021));
}

TEST(GensetDatabase, ReadsKeysAfreshInEachRun) {
    const TestCatalogue catalogue;
    GensetDatabase database(catalogue.Database());
    const SiteFilter site{.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 1};
    std::int32_t code = 0;
    {
        const auto cursor = database.SelectGensets(site);
        code = cursor->Next()->DerateCode.Integer("m");
        EXPECT_NE(database.DerateCode(code).AltDerateBase.Real("m"), 4321.0);
    }
    catalogue.Execute("Update [Derate Codes] set AltDerateBase = 4321");
    const auto cursor = database.SelectGensets(site);
    EXPECT_EQ(database.DerateCode(code).AltDerateBase.Real("m"), 4321.0);
}

TEST(GensetDatabase, FindsColumnsInAnyCase) {
    const TestCatalogue catalogue;
    catalogue.Execute("Alter table [Gensets] rename column LRkVA to lrkva");
    {
        GensetDatabase database(catalogue.Database());
        database.RequireSchema();
        const auto cursor =
            database.SelectGensets({.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 1});
        EXPECT_GT(cursor->Next()->LRkVA.Real("m"), 0.0);
    }
    catalogue.Execute("Alter table [Gensets] rename column lrkva to Locked");
    EXPECT_THAT([&] { (void)GensetDatabase(catalogue.Database()).SelectGensets({}); },
                Throws<RaisedError>(Property("Description", &RaisedError::Description,
                                             HasSubstr("lacks the column \"LRkVA\""))));
}

TEST(GensetDatabase, KnowsItsModels) {
    const TestCatalogue catalogue;
    catalogue.Execute("Update [Gensets] set GensetModel = null where rowid = 1");
    catalogue.Execute("Update [Gensets] set GensetModel = 'M 1' where rowid = 2");
    GensetDatabase database(catalogue.Database());
    EXPECT_TRUE(database.HasModel("M 1"));
    EXPECT_FALSE(database.HasModel("m 1"));
    EXPECT_FALSE(database.HasModel("M"));
    EXPECT_FALSE(database.HasModel(""));
}

TEST(CachedGensets, GivesEveryThreadTheSameRows) {
    const TestCatalogue catalogue;
    GensetDatabase database(catalogue.Database());
    const SiteFilter site{.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 1};
    const std::size_t expected = Count(database, site);
    ASSERT_GT(expected, 10U);
    CachedGensets cache(database);
    std::vector<std::size_t> counts(8);
    {
        std::vector<std::jthread> threads;
        for (std::size_t& count : counts) {
            threads.emplace_back([&] { count = Count(cache, site); });
        }
    }
    EXPECT_THAT(counts, testing::Each(expected));
    EXPECT_EQ(cache.Properties().Version, database.Properties().Version);
}

}  // namespace
}  // namespace genvara
