#include "Catalogue.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "RaisedErrorMatcher.h"
#include "SmallCatalogue.h"

namespace genvara {
namespace {

using testing::ElementsAre;

class CatalogueTest : public testing::Test {
  protected:
    CatalogueTest() {
        BuildSmallCatalogue(
            folder,
            {{"Connections", "ID,Connection Type,Phases\n7,Delta,3\n5,Series,1\n"},
             {"Gensets",
              "Frequency,WindingConnection,VoltageLL,Fuel,DerateCode,AltModel,GensetModel,EngineModel,"
              "Rating80C,"
              "Rating105C,Rating125C,Rating130C,Rating150C,LRkVA,StartingPower,BaseFreqDipKW,BaseFreqDip,"
              "ExpC\n"
              "60,7,416,1,1,1,A,E,1,2,3,4,5,6,7,8,9,1\n60,7,208,1,1,1,A,E,1,2,3,4,5,6,7,8,9,1\n"
              "50,7,416,1,1,1,A,E,1,2,3,4,5,6,7,8,9,1\n"},
             {"Motor Code Letters", "CodeLetter,LRkVAPerHP\nG,6.1\nF,5.3\n"},
             {"Motor Starting Multiplier", "Multiplier\n1\n0.64\n"},
             {"Derate Codes", "ID,AltDerateBase,AltDerateSlope,TempDerateBase,TempDerateSlope\n1,1,1,1,1\n"},
             {"Alternators", "ID,ModelNum,BasekW,BaseVolts,SubtransReact\n1,AA,1,1,1\n"}});
    }

    TemporaryFolder folder;
};

TEST_F(CatalogueTest, AnswersWhatSiteAndFormsAsk) {
    Catalogue catalogue(folder / "Genvara.db");
    EXPECT_EQ(catalogue.File(), folder / "Genvara.db");
    ASSERT_EQ(catalogue.Connections().size(), 2U);
    EXPECT_EQ(catalogue.Connections()[1].ID, 5);
    EXPECT_THAT(catalogue.VoltagesLL(), testing::UnorderedElementsAre(416, 208));
    ASSERT_EQ(catalogue.MotorCodeLetters().size(), 2U);
    EXPECT_EQ(catalogue.MotorCodeLetters()[0].CodeLetter, "G");
    EXPECT_THAT(catalogue.MotorStartingMultipliers(), ElementsAre(1.0, 0.64));
    EXPECT_EQ(catalogue.PhasesOf(7), 3);
    EXPECT_EQ(catalogue.PhasesOf(5), 1);
    EXPECT_EQ(catalogue.PhasesOf(6), std::nullopt);
}

TEST_F(CatalogueTest, ReadsTheMotorTablesIntoOneObjectWhenAsked) {
    Catalogue catalogue(folder / "Genvara.db");
    const MotorConversions& motors = catalogue.Motors();
    EXPECT_TRUE(motors.MotorHP.empty());
    catalogue.ReadMotorConversions();
    EXPECT_THAT(motors.MotorHP, ElementsAre(1.0, 10.0));
    EXPECT_THAT(motors.MotorRunningKW, ElementsAre(0.9, 8.5));
    EXPECT_THAT(motors.MotorRunningKVA, ElementsAre(1.3, 10.0));
    EXPECT_THAT(motors.MotorStartPF, ElementsAre(0.7, 0.5));
}

TEST_F(CatalogueTest, KeepsWhatItHasRead) {
    Catalogue catalogue(folder / "Genvara.db");
    catalogue.RequireFit();
    const std::vector<ConnectionRecord>* connections = &catalogue.Connections();
    EXPECT_EQ(&catalogue.Connections(), connections);
    EXPECT_EQ(catalogue.Motors().MotorHP.size(), 2U);
}

TEST_F(CatalogueTest, IsUnfitWithoutANumberAndWithItsName) {
    for (const char* damage :
         {"Delete from [Properties]", "Update Connections set Phases = 'three'",
          "Update [Motor Power Conversions] set SPF = null", "Drop table [Alternators]"}) {
        const std::filesystem::path copy = folder / "copy.db";
        std::filesystem::copy_file(folder / "Genvara.db", copy,
                                   std::filesystem::copy_options::overwrite_existing);
        SQLite::Database(copy.string(), SQLite::OPEN_READWRITE).exec(damage);
        Catalogue catalogue(copy);
        EXPECT_THAT([&] { catalogue.RequireFit(); },
                    testing::Throws<RaisedError>(testing::AllOf(
                        testing::Property(&RaisedError::Number, 0),
                        testing::Property(&RaisedError::Description, testing::HasSubstr(copy.string())))))
            << damage;
    }
}

TEST(CatalogueFile, ThatIsMissingOrNoDatabaseIsRefused) {
    const TemporaryFolder folder;
    EXPECT_THROW(Catalogue(folder / "none.db"), RaisedError);
    WriteBytes(folder / "text.db",
               "no database, but long enough to be looked at as one, and then refused as unfit");
    EXPECT_THROW(Catalogue(folder / "text.db").RequireFit(), RaisedError);
}

TEST_F(CatalogueTest, SaysInWordsWhyTheProgramCannotStartWithIt) {
    const std::string file = (folder / "Genvara.db").string();
    EXPECT_EQ(Catalogue::WhyUnfit(file), "");
    EXPECT_EQ(Catalogue::WhyUnfit(folder / "none.db"),
              "The genset database " + (folder / "none.db").string() + " is not there.");
    EXPECT_EQ(Catalogue::WhyUnfit(folder.Path()),
              "The genset database " + folder.Path().string() + " is a folder.");
    WriteBytes(folder / "letter.db", "Dear Sir, this is no database at all, and it never was one.");
    EXPECT_EQ(Catalogue::WhyUnfit(folder / "letter.db"), "The genset database " +
                                                             (folder / "letter.db").string() +
                                                             " cannot be read: file is not a database.");
    DropTable(folder, "Connections");
    EXPECT_EQ(Catalogue::WhyUnfit(file),
              "The genset database " + file + " cannot be used: no such table: Connections.");
    DropTable(folder, "Properties");
    EXPECT_EQ(Catalogue::WhyUnfit(file),
              "The genset database " + file + " cannot be used: no such table: Properties.");
}

TEST_F(CatalogueTest, SaysWhatItCanStartWithoutToo) {
    for (const char* table :
         {"Motor Power Conversions", "Motor Code Letters", "Alternators", "Derate Codes"}) {
        DropTable(folder, table);
        Catalogue catalogue(folder / "Genvara.db");
        EXPECT_EQ(Catalogue::WhyUnfit(catalogue.File()), "") << table;
        EXPECT_THAT(catalogue.WhatIsMissing(), testing::HasSubstr("lacks the table [")) << table;
    }
}

}  // namespace
}  // namespace genvara
