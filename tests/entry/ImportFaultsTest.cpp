// What a table of loads is refused for, and where it is told.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

#include "ImportFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A table of one row, and what is said of it; an empty sentence for nothing.
struct FaultRow {
    const char* headings;
    const char* cells;
    const char* sentence;
};

/// What a failure tells of its parameter.
void PrintTo(const FaultRow& row, std::ostream* out) {
    *out << row.headings << ": " << row.cells;
}

class ImportFaults : public testing::TestWithParam<FaultRow> {};

TEST_P(ImportFaults, AreToldBesideTheirCell) {
    const ImportFixture fixture;
    const ImportedTable table =
        fixture.Read(std::string(GetParam().headings) + "\n" + GetParam().cells + "\n");
    const std::string told = table.faults.empty() ? "" : LinesOf(table).front();
    EXPECT_EQ(told, GetParam().sentence);
    EXPECT_EQ(table.CanBeAdded(), told.empty());
    EXPECT_LE(table.faults.size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, ImportFaults,
    testing::Values(
        FaultRow{"Type,kW", "Misc,0", ""}, FaultRow{"Type,kW", "Misc,2000", ""},
        FaultRow{"Type,kW", "Misc,2000.5",
                 "Row 2, column 2: kW: 2000.5 is out of range. Enter 0 to 2000 kW."},
        FaultRow{"Type,kW", "Misc,-1", "Row 2, column 2: kW: -1 is out of range. Enter 0 to 2000 kW."},
        FaultRow{"Type,kW", "Misc,", "Row 2, column 2: kW is blank. Enter 0 to 2000 kW."},
        FaultRow{"Type,Name", "Misc,x", "Row 2: kW is blank. Enter 0 to 2000 kW."},
        FaultRow{"Type,kW", "Misc,much", "Row 2, column 2: kW: much is no number. Enter 0 to 2000 kW."},
        FaultRow{"Type,kW,pF", "Misc,1,0.6", ""},
        FaultRow{"Type,kW,pF", "Misc,1,0.59",
                 "Row 2, column 3: pF: 0.59 is out of range. Enter 0.60 to 1.00."},
        FaultRow{"Type,kW,pF", "Misc,1,1.01",
                 "Row 2, column 3: pF: 1.01 is out of range. Enter 0.60 to 1.00."},
        FaultRow{"Type,kW,Qty", "Misc,1,256", ""}, FaultRow{"Type,kW,Qty", "Misc,1,1", ""},
        FaultRow{"Type,kW,Qty", "Misc,1,0", "Row 2, column 3: Quantity: 0 is out of range. Enter 1 to 256."},
        FaultRow{"Type,kW,Qty", "Misc,1,257",
                 "Row 2, column 3: Quantity: 257 is out of range. Enter 1 to 256."},
        FaultRow{"Type,kW,Qty", "Misc,1,1.5",
                 "Row 2, column 3: Quantity: 1.5 is no whole number. Enter 1 to 256."},
        FaultRow{"Type,kW,Qty", "Misc,1,3 kW",
                 "Row 2, column 3: Quantity: 3 kW is no number. Enter 1 to 256."},
        FaultRow{"Type,HP", "VFD,1000", ""},
        // 1000 hp are 800 kW here.
        FaultRow{"Type,HP", "Motor,1000",
                 "Row 2, column 2: The load cannot be worked out: Running real power out of range."},
        FaultRow{"Type,HP", "Motor,0.5", ""},
        FaultRow{"Type,HP", "Motor,0",
                 "Row 2, column 2: Horsepower: 0 is out of range. Enter a number above 0, up to 1000 HP."},
        FaultRow{
            "Type,HP", "Motor,1000.1",
            "Row 2, column 2: Horsepower: 1000.1 is out of range. Enter a number above 0, up to 1000 HP."},
        FaultRow{"Type,Rating", "UPS,2500", ""}, FaultRow{"Type,Rating", "UPS,1", ""},
        FaultRow{"Type,Rating", "UPS,0.5",
                 "Row 2, column 2: Rating: 0.5 is out of range. Enter 1 to 2500 kVA."},
        FaultRow{"Type,Rating", "UPS,10.5",
                 "Row 2, column 2: Rating: 10.5 is no whole number. Enter 1 to 2500 kVA."},
        FaultRow{"Type,OutputRating", "UPS,2501000",
                 "Row 2, column 2: Rating: 2501 is out of range. Enter 1 to 2500 kVA."},
        FaultRow{"Type,Rating,Family,Loading", "UPS,9,On Line,50", ""},
        FaultRow{"Type,Rating,Family,Loading", "UPS,9,On Line,49",
                 "Row 2, column 4: Loading: 49 is out of range. Enter 50 to 100 %."},
        FaultRow{"Type,Rating,Family,Charging", "UPS,9,On Line,25", ""},
        FaultRow{"Type,Rating,Family,Charging", "UPS,9,On Line,26",
                 "Row 2, column 4: Battery Charger: 26 is out of range. Enter 0 to 25 %."},
        FaultRow{"Type,HP,Efficiency", "VFD,9,99", ""}, FaultRow{"Type,HP,Efficiency", "VFD,9,70", ""},
        FaultRow{"Type,HP,Efficiency", "VFD,9,100",
                 "Row 2, column 3: Efficiency: 100 is out of range. Enter 70 to 99 %."},
        FaultRow{"Type,HP,Efficiency", "VFD,9,69",
                 "Row 2, column 3: Efficiency: 69 is out of range. Enter 70 to 99 %."},
        FaultRow{"Type,HP,KVALimit", "VFD,9,150", ""},
        FaultRow{"Type,HP,KVALimit", "VFD,9,151",
                 "Row 2, column 3: Start kVA Limit: 151 is out of range. Enter 100 to 150 %."},
        FaultRow{"Type,BTU", "AC,5000000", ""},
        FaultRow{"Type,BTU", "AC,6250000",
                 "Row 2, column 2: The load cannot be worked out: Running real power out of range."},
        FaultRow{"Type,BTU", "AC,6250001",
                 "Row 2, column 2: BTU / hr: 6250001 is out of range. Enter a number above 0, up to 6250000 "
                 "BTU/hr."},
        FaultRow{"Type,Tons", "AC,500",
                 "Row 2, column 2: The load cannot be worked out: Running real power out of range."},
        FaultRow{"Type,Tons", "AC,500.1",
                 "Row 2, column 2: Tonnage: 500.1 is out of range. Enter a number above 0, up to 500 tons."},
        FaultRow{"Type,kVA,Peak kVA", "Medical,500,5000", ""},
        FaultRow{
            "Type,kVA,Peak kVA", "Medical,500.1,1",
            "Row 2, column 2: Continuous kVA: 500.1 is out of range. Enter a number above 0, up to 500 kVA."},
        FaultRow{"Type,kVA,Peak kVA", "Medical,1,5000.1",
                 "Row 2, column 3: Max. Peak kVA: 5000.1 is out of range. Enter a number above 0, up to 5000 "
                 "kVA."},
        FaultRow{"Type,kVA,Peak kVA,Peak pF", "Medical,1,1,1.1",
                 "Row 2, column 4: Peak pF: 1.1 is out of range. Enter a number above 0, up to 1."},
        FaultRow{"Type,kVA,Peak kVA,Dip", "Medical,1,1,99", ""},
        FaultRow{"Type,kVA,Peak kVA,Dip", "Medical,1,1,100",
                 "Row 2, column 4: Max. Voltage Dip: 100 is out of range. Enter 1 to 99 %."},
        FaultRow{"Type,Battery voltage,Charge current", "Charger,0,0", ""},
        FaultRow{"Type,Battery voltage,Charge current", "Charger,-1,0",
                 "Row 2, column 2: Battery Voltage: -1 is out of range. Enter 0 V or more."},
        FaultRow{"Type,PCs", "Office,2147483647", ""},
        FaultRow{
            "Type,PCs", "Office,2147483648",
            "Row 2, column 2: Num. Desktop Computers: 2147483648 is out of range. Enter 0 to 2147483647."},
        FaultRow{"Type,HP,Starting pF", "Motor,9,1", ""},
        FaultRow{"Type,HP,Starting pF", "Motor,9,1.01",
                 "Row 2, column 3: Starting pF: 1.01 is out of range. Enter 0 to 1."},
        FaultRow{"Type,HP,Starting kVA", "Motor,9,25000", ""},
        FaultRow{
            "Type,HP,Starting kVA", "Motor,9,25001",
            "Row 2, column 3: Starting kVA: 25001 is out of range. Enter a number above 0, up to 25000 kVA."},
        FaultRow{"Type,HP,Start,Current limit", "Motor,9,Solid State,600", ""},
        FaultRow{"Type,HP,Start,Current limit", "Motor,9,Solid State,601",
                 "Row 2, column 4: Current Limit: 601 is out of range. Enter 100 to 600 %."}));

INSTANTIATE_TEST_SUITE_P(
    Rules, ImportFaults,
    testing::Values(
        FaultRow{
            "Type,kW", "Pump,1",
            "Row 2, column 1: Type: Pump is not known. Enter Air Conditioning, Battery Charger, Lighting, "
            "Medical Equipment, Misc. Linear Load, Motor, Office Equipment, UPS or VFD."},
        FaultRow{"Type,kW,HP", "Misc,1,5",
                 "Row 2, column 3: 5: a load of type Misc. Linear Load has no \"HP\"."},
        FaultRow{"Type,kW,HP", "Misc,1,-", ""},
        FaultRow{"Type,kW,HP", "Motor,1,5",
                 "Row 2, column 2: Running kW: 1 is a second size. A load is entered by one."},
        FaultRow{"Type,HP,Horsepower", "Motor,1,5",
                 "Row 2, column 3: Horsepower is given by \"HP\" as well."},
        FaultRow{"Type,Name", "Motor,x",
                 "Row 2: The size is missing. Enter Horsepower, Running kW, or Starting and Running Amps."},
        FaultRow{"Type,Running Amps", "Motor,5", "Row 2: Starting Amps is blank. Enter a number above 0 A."},
        FaultRow{"Type,Name", "Office,x", "Row 2: At least one type of load must be specified."},
        FaultRow{"Type,kW,Phases", "Misc,1,1",
                 "Row 2, column 3: Phases: 1 does not tell which phase. Enter A, B or C."},
        FaultRow{"Type,kW,Phases", "Misc,1,2",
                 "Row 2, column 3: Phases: 2 is not known. Enter 3, A, B or C."},
        FaultRow{"Type,kW,Lamp,Ballast", "Lighting,1,Incandescent,Electronic",
                 "Row 2, column 4: Ballast: Electronic cannot be chosen with the rest of the row."},
        FaultRow{"Type,kW,Lamp,pF", "Lighting,1,Incandescent,0.9",
                 "Row 2, column 4: Running pF: 0.9 cannot be chosen with the rest of the row."},
        FaultRow{"Type,kW,Lamp,pF", "Lighting,1,Incandescent,1", ""},
        FaultRow{
            "Type,kW,Lamp", "Lighting,1,Candle",
            "Row 2, column 3: Lamp: Candle is not known. Enter Incandescent, Fluorescent or High Intensity "
            "Discharge."},
        FaultRow{"Type,Rating,Family,Phases", "UPS,5,Harbor Relay,A",
                 "Row 2, column 4: Phases: A cannot be chosen with the rest of the row."},
        FaultRow{"Type,Rating,Phases", "UPS,5,A",
                 "Row 2: Family is blank. A UPS on one phase is Off Line or On Line."},
        FaultRow{"Type,Rating,Family,Loading", "UPS,5,Off Line,80",
                 "Row 2, column 4: Loading: 80 cannot be chosen with the rest of the row."},
        FaultRow{"Type,Rating,Family,Loading", "UPS,5,Off Line,100", ""},
        FaultRow{
            "Type,Rating,Family,Input filter", "UPS,5,Harbor Relay,yes",
            "Row 2, column 4: Input Filtering Installed: yes cannot be chosen with the rest of the row."},
        FaultRow{"Type,Rating,Family,Input filter", "UPS,5,Off Line,yes", ""},
        FaultRow{"Type,HP,Input type,Phases", "VFD,5,6 pulse,A",
                 "Row 2, column 3: VFD Type: 6 pulse cannot be chosen with the rest of the row."},
        FaultRow{"Type,HP,Input type,Phases", "VFD,5,Single phase,A", ""},
        FaultRow{"Type,HP,Input type,Phases", "VFD,5,Single phase,3",
                 "Row 2, column 3: VFD Type: Single phase cannot be chosen with the rest of the row."},
        FaultRow{"Type,Battery voltage,Charge current,Application", "Charger,12,5,Residential",
                 "Row 2: Phases is blank. Enter A, B or C for the rest of the row."},
        FaultRow{"Type,Battery voltage,Charge current,Application,Phases", "Charger,12,5,Residential,3",
                 "Row 2, column 5: Phases: 3 cannot be chosen with the rest of the row."},
        FaultRow{"Type,Battery voltage,Charge current,Application,Charger input", "Charger,12,5,Telecom,SCR",
                 "Row 2, column 5: Charger Input: SCR cannot be chosen with the rest of the row."},
        FaultRow{"Type,HP,Code letter", "Motor,5,Z",
                 "Row 2, column 3: Code Letter: Z is none of A, F, G, H, J, K, L, M."},
        FaultRow{"Type,HP,Current limit", "Motor,5,200",
                 "Row 2, column 3: Current Limit: 200 counts for a motor with a Solid State starter alone."},
        FaultRow{"Type,HP,Current limit", "Motor,5,300", ""},
        FaultRow{"Type,HP,Fire pump", "Motor,5,perhaps",
                 "Row 2, column 3: Fire Pump: perhaps is not known. Enter yes or no."},
        FaultRow{"Type,BTU,Tons", "AC,60000,5",
                 "Row 2, column 3: Tonnage: 5 is a second size. A load is entered by one."},
        FaultRow{"Type,Power", "Misc,5",
                 "Row 2, column 2: kW: 5 has no unit. Head the column \"Power [kW]\"."},
        FaultRow{"Type,kW", "Misc,5 hp", "Row 2, column 2: kW: hp is no unit of it. Enter 0 to 2000 kW."},
        FaultRow{"Type,kW", "Misc,5 PS", "Row 2, column 2: kW: 5 PS is no number with a unit that is known."},
        FaultRow{
            "Type;kW", "Misc;1.234",
            "Row 2, column 2: kW: 1.234 can mean 1234 or 1.234. Write it without a sign between thousands."},
        FaultRow{"Type,kW", "Misc,1.234", ""}));

TEST(ImportFaultsOfTables, OnASiteWithOnePhaseThereIsPhaseAAlone) {
    const ImportFixture fixture(1);
    EXPECT_THAT(LinesOf(fixture.Read("Type,kW,Phases\nMisc,1,A\nMisc,1,1\nMisc,1,\n")), IsEmpty());
    EXPECT_THAT(LinesOf(fixture.Read("Type,kW,Phases\nMisc,1,3\nMisc,1,B\n")),
                ElementsAre("Row 2, column 3: Phases: 3 is not there at a site with one phase. Enter A.",
                            "Row 3, column 3: Phases: B is not there at a site with one phase. Enter A."));
    EXPECT_THAT(LinesOf(fixture.Read("Type,Rating,Family\nUPS,1,Harbor Relay\n")),
                ElementsAre("Row 2, column 3: Family: Harbor Relay is not there at a site with one phase."));
    EXPECT_THAT(LinesOf(fixture.Read("Type,Rating\nUPS,1\n")), IsEmpty());
    EXPECT_THAT(
        LinesOf(fixture.Read("Type,Battery voltage,Charge current,Application\nCharger,1,1,Residential\n")),
        IsEmpty());
}

TEST(ImportFaultsOfTables, ATableAsAWholeIsRefusedInOneSentence) {
    const ImportFixture fixture;
    EXPECT_THAT(LinesOf(fixture.Read("")), ElementsAre("The table is empty."));
    EXPECT_THAT(LinesOf(fixture.Read("Type,kW\n")), ElementsAre("The table has no row behind its headings."));
    EXPECT_THAT(LinesOf(fixture.Read("Motor,5\nMotor,6\n")).front(), HasSubstr("no heading that is known"));
    EXPECT_THAT(LinesOf(fixture.Read("Name,HP\nPump,5\n")).front(), HasSubstr("No column tells the type"));
}

TEST(ImportFaultsOfTables, AllFaultsAreToldInTheOrderOfRowsAndColumns) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read("kW,Type,Qty,Step\n-1,Misc,0,999\n1,Misc,1,1\n1,Misc,x,\n");
    EXPECT_THAT(LinesOf(table), ElementsAre("Row 2, column 1: kW: -1 is out of range. Enter 0 to 2000 kW.",
                                            "Row 2, column 3: Quantity: 0 is out of range. Enter 1 to 256.",
                                            "Row 2, column 4: Step: 999 is out of range. Enter 1 to 256.",
                                            "Row 4, column 3: Quantity: x is no number. Enter 1 to 256."));
    EXPECT_EQ(ImportSummary(table), "4 faults in 2 rows of 3: nothing is imported until all is right.");
    EXPECT_NE(table.rows.at(1).load, nullptr);
    EXPECT_EQ(table.rows.at(0).load, nullptr);
}

TEST(ImportFaultsOfTables, WhatIsPassedOverIsTold) {
    const ImportFixture fixture;
    const ImportedTable table = fixture.Read("Type,kW,Room,,Lampe\nMisc,1,12,note,\n");
    EXPECT_TRUE(table.CanBeAdded());
    EXPECT_THAT(table.notes,
                ElementsAre("The column \"Room\" means nothing here and is passed over.",
                            "The column \"Lampe\" means nothing here and is passed over. Is it \"Lamp\"?",
                            "Column 4 has no heading and is passed over."));
}

TEST(ImportFaultsOfTables, AMotorThatTheTablesCannotWorkOutIsAFaultOfItsSize) {
    ImportFixture fixture;
    const std::vector<double> none;
    const ImportedTable table =
        ReadLoadTable("Type,HP\nMotor,5\n", fixture.profile, fixture.site,
                      EntryRules{.motors = {kMotors, kLetters, none}, .phasesOf = {}}, {});
    ASSERT_EQ(table.faults.size(), 1U);
    EXPECT_THAT(FaultLine(table.faults.front()),
                HasSubstr("Row 2, column 2: The load cannot be worked out: Subscript out of range"));
}

}  // namespace
}  // namespace genvara
