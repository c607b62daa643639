// Where the loads of a table go, and what any text at all comes to.

#include "ImportTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "CMiscLoad.h"
#include "ImportFixture.h"
#include "TableText.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::int32_t> StepsOf(const ImportedTable& table) {
    std::vector<std::int32_t> steps;
    for (const ImportedRow& row : table.rows) {
        steps.push_back(row.step);
    }
    return steps;
}

std::vector<std::string> NewStepsOf(const ImportedTable& table) {
    std::vector<std::string> names;
    for (const NewStep& step : table.newSteps) {
        names.push_back(step.description);
    }
    return names;
}

ImportedTable WithSteps(const ImportFixture& fixture, const std::vector<std::string>& steps) {
    std::string text = "Step;Type;kW\n";
    for (const std::string& step : steps) {
        text += step + ";Misc;1\n";
    }
    return fixture.Read(text);
}

TEST(ImportTable, StepsAreNamedByNumberOrDescription) {
    const ImportFixture fixture;
    const ImportedTable table = WithSteps(fixture, {"2", "lights", " Pumps ", "Step 2", "Load Step #1"});
    EXPECT_THAT(LinesOf(table), IsEmpty());
    EXPECT_THAT(StepsOf(table), ElementsAre(2, 1, 2, 2, 1));
    EXPECT_EQ(table.rows[1].stepDescription, "Lights");
    EXPECT_THAT(table.newSteps, IsEmpty());
}

TEST(ImportTable, MissingStepsAreAddedInOrder) {
    ImportFixture fixture;
    fixture.site.MaxVoltageDip(17);
    const ImportedTable table = WithSteps(fixture, {"4", "Tower", "3", "tower", "Crane", "Tower"});
    EXPECT_THAT(LinesOf(table), IsEmpty());
    EXPECT_THAT(StepsOf(table), ElementsAre(4, 5, 3, 5, 6, 5));
    EXPECT_THAT(NewStepsOf(table), ElementsAre("Load Step #3", "Load Step #4", "Tower", "Crane"));
    AddTable(table, fixture.profile);
    ASSERT_EQ(fixture.profile.NumLoadSteps(), 6);
    EXPECT_EQ(fixture.profile.LoadStep(5).Description(), "Tower");
    EXPECT_EQ(fixture.profile.LoadStep(5).MaxVoltageDipOverride(), 17);  // what the site allows
    EXPECT_EQ(fixture.profile.LoadStep(5).NumLoads(), 3);
    EXPECT_EQ(fixture.profile.LoadStep(2).NumLoads(), 0);
}

TEST(ImportTable, AGapBetweenStepsIsAFault) {
    const ImportFixture fixture;
    EXPECT_THAT(LinesOf(WithSteps(fixture, {"3", "5"})),
                ElementsAre("Row 3, column 1: Step: 5 would leave a gap. The project has 2 steps, and no row "
                            "has step 4."));
    EXPECT_THAT(LinesOf(WithSteps(fixture, {"0"})),
                ElementsAre("Row 2, column 1: Step: 0 is out of range. Enter 1 to 256."));
    EXPECT_THAT(LinesOf(WithSteps(fixture, {"1.5"})),
                ElementsAre("Row 2, column 1: Step: 1.5 is no whole number. Enter 1 to 256."));
}

TEST(ImportTable, ANameOfSeveralStepsIsAFault) {
    ImportFixture fixture;
    fixture.profile.AddLoadStep("PUMPS", 20, 0);
    EXPECT_THAT(LinesOf(WithSteps(fixture, {"Pumps"})),
                ElementsAre("Row 2, column 1: Step: Pumps is the name of several steps. Enter a number."));
}

TEST(ImportTable, ARowWithoutAStepHasThatOfTheRowBefore) {
    ImportFixture fixture;
    EXPECT_THAT(StepsOf(WithSteps(fixture, {"", "1", "", "Fan", ""})), ElementsAre(2, 1, 1, 3, 3));
    fixture.options.stepAtHand = 1;
    EXPECT_THAT(StepsOf(WithSteps(fixture, {"", "2", ""})), ElementsAre(1, 2, 2));
    EXPECT_THAT(StepsOf(fixture.Read("Type,kW\nMisc,1\nMisc,2\n")), ElementsAre(1, 1));
}

TEST(ImportTable, AProjectWithoutStepsGetsAFirstOne) {
    ImportFixture fixture;
    fixture.profile.DeleteAllLoadSteps();
    const ImportedTable table = fixture.Read("Type,kW\nMisc,1\n");
    EXPECT_THAT(NewStepsOf(table), ElementsAre("Load Step #1"));
    EXPECT_EQ(ImportSummary(table), "1 load in order, with 1 new step.");
    AddTable(table, fixture.profile);
    EXPECT_EQ(fixture.profile.LoadStep(1).NumLoads(), 1);
}

TEST(ImportTable, StepsAndLoadsKeepTheirLimits) {
    ImportFixture fixture;
    std::vector<std::string> numbers;
    for (int step = 1; step <= 256; ++step) {
        numbers.push_back(std::to_string(step));
    }
    EXPECT_THAT(LinesOf(WithSteps(fixture, numbers)), IsEmpty());
    numbers.emplace_back("Roof");
    EXPECT_THAT(LinesOf(WithSteps(fixture, numbers)),
                ElementsAre("Row 258, column 1: Step: a project has 256 steps at most."));
    for (int load = 0; load < 255; ++load) {
        fixture.profile.LoadStep(1).AddLoad(std::make_unique<CMiscLoad>());
    }
    fixture.profile.LoadStep(1).DeleteLoad(3);  // gives no room back
    EXPECT_THAT(LinesOf(WithSteps(fixture, {"1", "1"})), IsEmpty());
    EXPECT_THAT(LinesOf(WithSteps(fixture, {"1", "1", "1"})),
                ElementsAre("Row 4, column 1: Step: Maximum number of loads per step exceeded."));
    EXPECT_THAT(LinesOf(WithSteps(fixture, std::vector<std::string>(257, "3"))), IsEmpty());
    EXPECT_THAT(LinesOf(WithSteps(fixture, std::vector<std::string>(258, "3"))),
                ElementsAre(HasSubstr("Row 259")));
}

TEST(ImportTable, LoadsComeBehindThoseOfTheStepInTheOrderOfTheTable) {
    ImportFixture fixture;
    fixture.profile.LoadStep(1).AddLoad(std::make_unique<CMiscLoad>());
    const ImportedTable table =
        fixture.Read("Step,Type,Name,kW\n1,Misc,first,1\n2,Misc,other,2\n1,Misc,second,3\n");
    EXPECT_EQ(ImportName(table), "Import 3 Loads");
    EXPECT_EQ(ImportName(fixture.Read("Type,kW\nMisc,1\n")), "Import 1 Load");
    AddTable(table, fixture.profile);
    std::vector<std::string> names;
    for (const Load& load : fixture.profile.LoadStep(1)) {
        names.push_back(load.name());
    }
    EXPECT_THAT(names, ElementsAre("", "first", "second"));
    EXPECT_EQ(fixture.profile.LoadStep(1).LoadItem(2)->name(), "second");
}

TEST(ImportTable, HeadingsAreUnderstoodHoweverTheyAreWritten) {
    const ImportFixture fixture;
    for (const char* heading :
         {"kW", "KW", "Power [kW]", "Power (kW)", "Power kW", "Power, kW", "Power/kW", "running_kW",
          "Size [kW]", "Running kW", "RUNNING POWER (kw)", "Rated power in kW", "Load [kW]"}) {
        const HeadingMeaning meaning = MeaningOf(heading);
        const bool known = std::string_view(heading) != "Rated power in kW";
        EXPECT_EQ(!meaning.fields.empty(), known) << heading;
        if (known) {
            EXPECT_THAT(LinesOf(fixture.Read("Type;" + std::string(heading) + "\nMisc;5\n")), IsEmpty())
                << heading;
        }
    }
    // A unit that is not the field's own is none of its headings.
    EXPECT_THAT(MeaningOf("Motor rating [kVA]").fields, IsEmpty());
    EXPECT_THAT(MeaningOf("Compressor [kW]").fields, IsEmpty());
    EXPECT_THAT(MeaningOf("Battery voltage [A]").fields, IsEmpty());
    EXPECT_THAT(MeaningOf("Voltage").fields, IsEmpty());
    EXPECT_THAT(MeaningOf("").fields, IsEmpty());
    EXPECT_THAT(MeaningOf("[]").fields, IsEmpty());
}

/// Every heading that a field has, by itself, means that field.
TEST(ImportTable, EveryFieldIsFoundByItsMemberAndItsCaption) {
    for (const TableField& field : TableFields()) {
        for (const std::string_view heading : {field.member, field.caption}) {
            const HeadingMeaning meaning = MeaningOf(heading);
            const bool found = std::ranges::any_of(meaning.fields, [&](const TableField* each) {
                return each->loadType == field.loadType && each->member == field.member;
            });
            EXPECT_TRUE(found) << field.loadType << " " << heading;
        }
    }
}

/// Pieces that tables are made of, and some that they are not.
std::string AnyTable() {
    static const std::vector<std::string> kPieces{"Type",
                                                  "Step",
                                                  "kW",
                                                  "HP",
                                                  "Motor",
                                                  "Misc",
                                                  "UPS",
                                                  "Rating",
                                                  "1",
                                                  "2000",
                                                  "-1",
                                                  "1,5",
                                                  "0.8",
                                                  "x",
                                                  "\"",
                                                  "\"\"",
                                                  ",",
                                                  ";",
                                                  "\t",
                                                  "\n",
                                                  "\r\n",
                                                  "\r",
                                                  "=cmd|' /C calc'!A0",
                                                  "Qty",
                                                  "Phases",
                                                  "A",
                                                  "3",
                                                  " ",
                                                  "\xFF",
                                                  "\xC3",
                                                  "\xEF\xBB\xBF",
                                                  "1e999",
                                                  "99999999999999999999",
                                                  "[kW]",
                                                  "%",
                                                  "Lighting",
                                                  "Lamp",
                                                  "BTU",
                                                  "sep=;\n"};
    std::string text = *rc::gen::arbitrary<bool>() ? "Step,Type,Name,kW,HP,Rating,Qty,Phases\n" : "";
    for (const std::size_t piece :
         *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, kPieces.size()))) {
        text += kPieces[piece];
    }
    return text;
}

RC_GTEST_PROP(ImportTable, AnyTextIsATableOrRefusedInSentences, ()) {
    ImportFixture fixture;
    const ImportedTable table = fixture.Read(AnyTable());
    RC_ASSERT(table.CanBeAdded() || !table.faults.empty());
    for (const TableFault& fault : table.faults) {
        RC_ASSERT(fault.text.ends_with('.') || fault.text.ends_with(')') || fault.text.ends_with("ation"));
    }
    if (table.CanBeAdded()) {
        const std::int32_t before = fixture.profile.NumLoadSteps();
        AddTable(table, fixture.profile);
        RC_ASSERT(fixture.profile.NumLoadSteps() ==
                  before + static_cast<std::int32_t>(table.newSteps.size()));
    }
}

RC_GTEST_PROP(ImportTable, AnyBytesAreRefusedWithoutHarm, ()) {
    const ImportFixture fixture;
    const auto bytes = *rc::gen::arbitrary<std::vector<std::uint8_t>>();
    const ImportedTable table = fixture.Read(std::string(bytes.begin(), bytes.end()));
    RC_ASSERT(!table.CanBeAdded());
}

}  // namespace
}  // namespace genvara
