#include "CatalogueChecker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "RaisedErrorMatcher.h"
#include "TestCatalogue.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A copy of the program's own catalogue, with some of its sets, for each damage.
class CatalogueChecker : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        s_catalogue = std::make_unique<TestCatalogue>();
        s_catalogue->Execute("Delete from [Gensets] where rowid > 60");
    }
    static void TearDownTestSuite() { s_catalogue.reset(); }

    /// What is found after a statement.
    std::vector<std::string> FindingsAfter(const std::string& damage) const {
        const std::filesystem::path copy = m_folder / "copy.db";
        std::filesystem::copy_file(s_catalogue->Database(), copy,
                                   std::filesystem::copy_options::overwrite_existing);
        SQLite::Database(copy.string(), SQLite::OPEN_READWRITE).exec(damage);
        std::vector<std::string> findings;
        CheckCatalogue(copy, [&](const std::string& finding) { findings.push_back(finding); });
        return findings;
    }

  private:
    static std::unique_ptr<TestCatalogue> s_catalogue;
    TemporaryFolder m_folder;
};

std::unique_ptr<TestCatalogue> CatalogueChecker::s_catalogue;

/// A fault and the one finding that tells it: table, row, column and sentence.
struct Fault {
    const char* damage;
    const char* finding;
};

TEST_F(CatalogueChecker, FindsEachFaultAndNothingElse) {
    const Fault faults[] = {
        // --- what cannot be read
        {"Update [Gensets] set LRkVA = null where rowid = 7", "[Gensets], row 7, column \"LRkVA\": is Null"},
        {"Update [Gensets] set Rating130C = 'abc' where rowid = 3",
         "[Gensets], row 3, column \"Rating130C\": \"abc\" is no number"},
        {"Update [Gensets] set GensetModel = null where rowid = 2",
         "[Gensets], row 2, column \"GensetModel\": is Null"},
        {"Update [Properties] set Initials = null where rowid = 2",
         "[Properties], row 2, column \"Initials\": is Null"},
        {"Delete from [Properties]", "[Properties]: the table has no rows"},
        // --- sites
        {"Update [Gensets] set Frequency = 400 where rowid = 7",
         "[Gensets], row 7, column \"Frequency\": 400 is neither 50 nor 60 Hz"},
        {"Update [Gensets] set Frequency = 0 where rowid = 8",
         "[Gensets], row 8, column \"Frequency\": 0 is neither 50 nor 60 Hz"},
        {"Update [Gensets] set VoltageLL = 0 where rowid = 7",
         "[Gensets], row 7, column \"VoltageLL\": 0 is not above 0"},
        {"Update [Gensets] set VoltageLL = -480 where rowid = 7",
         "[Gensets], row 7, column \"VoltageLL\": -480 is not above 0"},
        {"Update [Gensets] set VoltageLL = 1000001 where rowid = 7",
         "[Gensets], row 7, column \"VoltageLL\": 1000001 is beyond any generator's voltage"},
        {"Update [Gensets] set WindingConnection = 99 where rowid = 4",
         "[Gensets], row 4, column \"WindingConnection\": 99 is no ID of Connections"},
        {"Update [Gensets] set Fuel = 5 where rowid = 4",
         "[Gensets], row 4, column \"Fuel\": 5 is no fuel code from 1 to 4"},
        {"Update [Gensets] set Fuel = 0 where rowid = 4",
         "[Gensets], row 4, column \"Fuel\": 0 is no fuel code from 1 to 4"},
        // --- keys and names
        {"Update [Gensets] set DerateCode = 999 where rowid = 4",
         "[Gensets], row 4, column \"DerateCode\": 999 is no ID of [Derate Codes]"},
        {"Update [Gensets] set AltModel = 999 where rowid = 4",
         "[Gensets], row 4, column \"AltModel\": 999 is no ID of [Alternators]"},
        {"Update [Gensets] set GensetModel = '' where rowid = 7",
         "[Gensets], row 7, column \"GensetModel\": \"\" is empty"},
        {"Update [Gensets] set EngineModel = cast(x'4BE4' as text) where rowid = 9",
         "[Gensets], row 9, column \"EngineModel\": is no UTF-8"},
        {"Update [Gensets] set EngineModel = '  ' where rowid = 9",
         "[Gensets], row 9, column \"EngineModel\": \"  \" is empty"},
        {"Insert into [Gensets] select * from [Gensets] where rowid = 5",
         "[Gensets], row 61, column \"GensetModel\": \"MV20D\" stands there twice for the same site and "
         "alternator"},
        {"Insert into [Derate Codes] select * from [Derate Codes] where rowid = 3",
         "[Derate Codes], row 10, column \"ID\": 3 stands there twice"},
        {"Insert into [Alternators] select * from [Alternators] where rowid = 1",
         "[Alternators], row 212, column \"ID\": 9 stands there twice"},
        {"Update [Alternators] set ModelNum = ' ' where rowid = 1",
         "[Alternators], row 1, column \"ModelNum\": \" \" is empty"},
        {"Update [Alternators] set ModelNum = '-12A' where rowid = 1",
         "[Alternators], row 1, column \"ModelNum\": \"-12A\" shows as nothing: of a model the text before "
         "the "
         "first dash is shown"},
        // --- ratings
        {"Update [Gensets] set Rating80C = 0 where rowid = 5",
         "[Gensets], row 5, column \"Rating80C\": 0.0 is not above 0"},
        {"Update [Gensets] set Rating105C = -5 where rowid = 5",
         "[Gensets], row 5, column \"Rating105C\": -5.0 is not above 0"},
        {"Update [Gensets] set Rating125C = 0 where rowid = 5",
         "[Gensets], row 5, column \"Rating125C\": 0.0 is not above 0"},
        {"Update [Gensets] set Rating130C = -1 where rowid = 5",
         "[Gensets], row 5, column \"Rating130C\": -1.0 is not above 0"},
        {"Update [Gensets] set Rating150C = 0 where rowid = 5",
         "[Gensets], row 5, column \"Rating150C\": 0.0 is not above 0"},
        {"Update [Gensets] set Rating80C = 0.0009 where rowid = 5",
         "[Gensets], row 5, column \"Rating80C\": 0.0009 is beyond any generator set"},
        {"Update [Gensets] set Rating150C = 1e10 where rowid = 5",
         "[Gensets], row 5, column \"Rating150C\": 10000000000.0 is beyond any generator set"},
        {"Update [Gensets] set Rating105C = 13.3 where rowid = 5",
         "[Gensets], row 5, column \"Rating105C\": 13.3 is below Rating80C, though the allowed rise is "
         "higher"},
        {"Update [Gensets] set Rating125C = 15 where rowid = 5",
         "[Gensets], row 5, column \"Rating125C\": 15.0 is below Rating105C, though the allowed rise is "
         "higher"},
        {"Update [Gensets] set Rating130C = 15 where rowid = 5",
         "[Gensets], row 5, column \"Rating130C\": 15.0 is below Rating125C, though the allowed rise is "
         "higher"},
        {"Update [Gensets] set Rating150C = 16.7 where rowid = 5",
         "[Gensets], row 5, column \"Rating150C\": 16.7 is below Rating130C, though the allowed rise is "
         "higher"},
        {"Update [Gensets] set LRkVA = 0 where rowid = 5",
         "[Gensets], row 5, column \"LRkVA\": 0.0 is not above 0"},
        {"Update [Gensets] set LRkVA = -47 where rowid = 5",
         "[Gensets], row 5, column \"LRkVA\": -47.0 is not above 0"},
        {"Update [Gensets] set LRkVA = 1e-300 where rowid = 5",
         "[Gensets], row 5, column \"LRkVA\": 1.0e-300 is beyond any generator set"},
        {"Update [Gensets] set StartingPower = 0 where rowid = 5",
         "[Gensets], row 5, column \"StartingPower\": 0.0 is not above 0"},
        // --- frequency dips
        {"Update [Gensets] set BaseFreqDipKW = 0 where rowid = 5",
         "[Gensets], row 5, column \"BaseFreqDipKW\": 0.0 is not above 0; where there is no data it is "
         "empty"},
        {"Update [Gensets] set BaseFreqDipKW = -16 where rowid = 5",
         "[Gensets], row 5, column \"BaseFreqDipKW\": -16.0 is not above 0; where there is no data it is "
         "empty"},
        {"Update [Gensets] set BaseFreqDip = -0.1 where rowid = 5",
         "[Gensets], row 5, column \"BaseFreqDip\": -0.1 is no percentage of the frequency, from 0 to 100"},
        {"Update [Gensets] set BaseFreqDip = 100.5 where rowid = 5",
         "[Gensets], row 5, column \"BaseFreqDip\": 100.5 is no percentage of the frequency, from 0 to 100"},
        {"Update [Gensets] set ExpC = -0.1 where rowid = 5",
         "[Gensets], row 5, column \"ExpC\": -0.1 is no exponent of a dip curve, from 0 to 10"},
        {"Update [Gensets] set ExpC = 10.1 where rowid = 5",
         "[Gensets], row 5, column \"ExpC\": 10.1 is no exponent of a dip curve, from 0 to 10"},
        {"Update [Gensets] set ExpC = null where rowid = 5",
         "[Gensets], row 5, column \"BaseFreqDipKW\": 16.0 is given and another of the three is Null, so "
         "that "
         "the set counts as one without data of its dip"},
        {"Update [Gensets] set BaseFreqDipKW = null where rowid = 5",
         "[Gensets], row 5, column \"BaseFreqDip\": 13.0 is given and another of the three is Null, so that "
         "the "
         "set counts as one without data of its dip"},
        {"Update [Gensets] set BaseFreqDipKW = null, BaseFreqDip = null where rowid = 5",
         "[Gensets], row 5, column \"ExpC\": 1.15 is given and another of the three is Null, so that the set "
         "counts as one without data of its dip"},
        // --- derating
        {"Update [Derate Codes] set AltDerateSlope = -1 where rowid = 2",
         "[Derate Codes], row 2, column \"AltDerateSlope\": -1.0 is below 0: a rating would rise with the "
         "altitude"},
        {"Update [Derate Codes] set TempDerateSlope = -0.5 where rowid = 2",
         "[Derate Codes], row 2, column \"TempDerateSlope\": -0.5 is below 0: a rating would rise with the "
         "temperature"},
        {"Update [Derate Codes] set AltDerateBase = 1e7 where rowid = 2",
         "[Derate Codes], row 2, column \"AltDerateBase\": 10000000.0 is beyond any altitude"},
        {"Update [Derate Codes] set TempDerateBase = -1e7 where rowid = 2",
         "[Derate Codes], row 2, column \"TempDerateBase\": -10000000.0 is beyond any temperature"},
        // (4572 - 300) x 3 / 100 = 128 percent and (66 - 25) x 30 / 10 = 123 percent
        {"Update [Derate Codes] set AltDerateSlope = 3, TempDerateSlope = 30 where rowid = 1",
         "[Derate Codes], row 1, column \"TempDerateSlope\": 30.0 takes more than the whole rating where the "
         "altitude does so too, which multiply to a rating again"},
        // --- alternators
        {"Update [Alternators] set BasekW = -1 where rowid = 1",
         "[Alternators], row 1, column \"BasekW\": -1.0 is below 0"},
        {"Update [Alternators] set BasekW = 0 where rowid = 2",
         "[Alternators], row 2, column \"BasekW\": 0.0 gives no distortion, and none is limited, for sets on "
         "connections that have one"},
        {"Update [Alternators] set BaseVolts = 0 where rowid = 2",
         "[Alternators], row 2, column \"BaseVolts\": 0.0 gives no distortion, and none is limited, for sets "
         "on "
         "connections that have one"},
        {"Update [Alternators] set BaseVolts = -480 where rowid = 1",
         "[Alternators], row 1, column \"BaseVolts\": -480.0 is below 0"},
        {"Update [Alternators] set BaseVolts = 1e300 where rowid = 1",
         "[Alternators], row 1, column \"BaseVolts\": 1.0e+300 is beyond any generator's voltage"},
        {"Update [Alternators] set BaseVolts = 0.5 where rowid = 1",
         "[Alternators], row 1, column \"BaseVolts\": 0.5 is beyond any generator's voltage"},
        {"Update [Alternators] set SubtransReact = 0 where rowid = 1",
         "[Alternators], row 1, column \"SubtransReact\": 0.0 is not above 0, though the alternator has a "
         "base"},
        {"Update [Alternators] set SubtransReact = -0.13 where rowid = 1",
         "[Alternators], row 1, column \"SubtransReact\": -0.13 is not above 0, though the alternator has a "
         "base"},
        {"Update [Alternators] set SubtransReact = 13.2 where rowid = 1",
         "[Alternators], row 1, column \"SubtransReact\": 13.2 is no reactance per unit, up to 1: 15 % is "
         "0.15"},
        // --- what the lists show
        {"Update [Properties] set Version = '' where rowid = 2",
         "[Properties], row 2, column \"Version\": \"\" is empty, and reports print it"},
        {"Update Connections set Phases = 2 where rowid = 4",
         "[Connections], row 4, column \"Phases\": 2 is neither 1 nor 3"},
        {"Update Connections set Phases = 1 where rowid = 2",
         "[Connections], row 2, column \"Phases\": 1 is not 3, which the connections 1 and 2 have: "
         "distortion is "
         "worked out for them"},
        {"Update Connections set \"Connection Type\" = '' where rowid = 3",
         "[Connections], row 3, column \"Connection Type\": \"\" is empty"},
        {"Update Connections set \"Connection Type\" = '1 Phase, 2 Wire ' where rowid = 3",
         "[Connections], row 6, column \"Connection Type\": \"1 Phase, 2 Wire\" stands there twice"},
        {"Insert into Connections values (6, 'Another', 1)",
         "[Connections], row 7, column \"ID\": 6 stands there twice"},
        // --- motors
        {"Update [Motor Code Letters] set CodeLetter = 'AB' where rowid = 1",
         "[Motor Code Letters], row 1, column \"CodeLetter\": \"AB\" is not one letter"},
        {"Update [Motor Code Letters] set CodeLetter = '' where rowid = 1",
         "[Motor Code Letters], row 1, column \"CodeLetter\": \"\" is not one letter"},
        {"Update [Motor Code Letters] set CodeLetter = ' a' where rowid = 2",
         "[Motor Code Letters], row 2, column \"CodeLetter\": \" a\" stands there twice"},
        {"Delete from [Motor Code Letters] where CodeLetter = 'F'",
         "[Motor Code Letters], column \"CodeLetter\": F is missing, which the program proposes for motors "
         "of a "
         "certain size"},
        {"Update [Motor Code Letters] set LRkVAPerHP = 0 where rowid = 6",
         "[Motor Code Letters], row 6, column \"LRkVAPerHP\": 0.0 is not above 0"},
        {"Update [Motor Code Letters] set LRkVAPerHP = 4.7 where rowid = 6",
         "[Motor Code Letters], row 6, column \"LRkVAPerHP\": 4.7 is below that of the letter before"},
        {"Update [Motor Code Letters] set LRkVAPerHP = 1e6 where rowid = 19",
         "[Motor Code Letters], row 19, column \"LRkVAPerHP\": 1000000.0 is beyond any motor"},
        {"Update [Motor Starting Multiplier] set Multiplier = 0 where rowid = 3",
         "[Motor Starting Multiplier], row 3, column \"Multiplier\": 0.0 is not above 0"},
        {"Update [Motor Starting Multiplier] set Multiplier = 64 where rowid = 2",
         "[Motor Starting Multiplier], row 2, column \"Multiplier\": 64.0 is above 1: a starter lets no more "
         "through than the line"},
        {"Delete from [Motor Starting Multiplier] where rowid > 4",
         "[Motor Starting Multiplier]: the table has 4 rows for 5 starters"},
        {"Delete from [Motor Power Conversions] where rowid > 1",
         "[Motor Power Conversions]: the table has only one row"},
        {"Update [Motor Power Conversions] set HP = 0 where rowid = 1",
         "[Motor Power Conversions], row 1, column \"HP\": 0.0 is not above 0"},
        {"Update [Motor Power Conversions] set RunningKW = -1 where rowid = 1",
         "[Motor Power Conversions], row 1, column \"RunningKW\": -1.0 is not above 0"},
        {"Update [Motor Power Conversions] set RunningKVA = 80.7 where rowid = 20",
         "[Motor Power Conversions], row 20, column \"RunningKVA\": 80.7 is below RunningKW"},
        {"Update [Motor Power Conversions] set SPF = 0 where rowid = 2",
         "[Motor Power Conversions], row 2, column \"SPF\": 0.0 is no power factor, above 0 and up to 1"},
        {"Update [Motor Power Conversions] set SPF = 33 where rowid = 19",
         "[Motor Power Conversions], row 19, column \"SPF\": 33.0 is no power factor, above 0 and up to 1"},
        {"Update [Motor Power Conversions] set RunningKW = 0.401 where rowid = 3",
         "[Motor Power Conversions], row 3, column \"RunningKW\": 0.401 does not ascend"},
        {"Update [Motor Power Conversions] set HP = 0.3333 where rowid = 3",
         "[Motor Power Conversions], row 3, column \"HP\": 0.3333 does not ascend"},
        {"Update [Motor Power Conversions] set RunningKVA = 0.6 where rowid = 3",
         "[Motor Power Conversions], row 3, column \"RunningKVA\": 0.6 does not ascend"},
        // 0.2 - (0.401 - 0.2) / 0.0833 x 0.25 = -0.40324...
        {"Update [Motor Power Conversions] set RunningKW = 0.2 where rowid = 1",
         "[Motor Power Conversions], row 1, column \"RunningKW\": carried on to 0 hp comes to "
         "-0.403 "
         "kW"},
        // 0.35 - (0.647 - 0.35) / 0.077 x 0.324 = -0.9
        {"Update [Motor Power Conversions] set RunningKVA = 0.35 where rowid = 1",
         "[Motor Power Conversions], row 1, column \"RunningKVA\": carried on to small motors comes to less "
         "kVA "
         "than kW"},
        // 1 + (1 - 0.81) / 0.0833 x 0.25 = 1.57022...
        {"Update [Motor Power Conversions] set SPF = 1 where rowid = 1",
         "[Motor Power Conversions], row 1, column \"SPF\": carried on to 0 hp comes to a power factor of "
         "1.570"},
        // (878 - 799) kVA for (798 - 718) kW
        {"Update [Motor Power Conversions] set RunningKVA = 878 where rowid = 34",
         "[Motor Power Conversions], row 34, column \"RunningKVA\": rises less than RunningKW: a motor that "
         "is "
         "saved by its kW would reopen with less kVA than kW"},
        // 887 + (887 - 798) / 80 x (798000 - 798) = 887774.225
        {"Update [Motor Power Conversions] set RunningKVA = 798 where rowid = 33",
         "[Motor Power Conversions], row 34, column \"RunningKVA\": rises so steeply that a motor saved with "
         "798 "
         "kW would reopen with 887.774 kVA, above the 887 of a motor"},
        // by kVA that rise 88 / 80.5 = 1.09 times as fast
        {"Update [Motor Power Conversions] set RunningKW = 798.5 where rowid = 34",
         "[Motor Power Conversions], row 34, column \"RunningKW\": takes 1000 hp to 798.500 kW, above the "
         "798 "
         "of a "
         "motor"},
    };
    static_assert(std::size(faults) >= 40);
    for (const Fault& fault : faults) {
        EXPECT_THAT(FindingsAfter(fault.damage), ElementsAre(fault.finding)) << fault.damage;
    }
}

TEST_F(CatalogueChecker, TellsAMissingTableAndAMissingColumn) {
    EXPECT_THAT(FindingsAfter("Drop table [Motor Starting Multiplier]"),
                ElementsAre("[Motor Starting Multiplier]: the table is missing"));
    EXPECT_THAT(FindingsAfter("Alter table [Gensets] drop column ExpC"),
                ElementsAre("[Gensets]: the column \"ExpC\" is missing"));
}

TEST_F(CatalogueChecker, TellsEverythingThatIsWrongWithOneField) {
    EXPECT_THAT(FindingsAfter("Update [Gensets] set Rating80C = 9e999 where rowid = 5"),
                testing::Contains("[Gensets], row 5, column \"Rating80C\": Inf is no finite number"));
    EXPECT_THAT(FindingsAfter("Update [Gensets] set DerateCode = 1.5 where rowid = 6"),
                ElementsAre("[Gensets], row 6, column \"DerateCode\": 1.5 is no whole number of 32 bits",
                            "[Gensets], row 6, column \"DerateCode\": 1.5 is no ID of [Derate Codes]"));
    // The kVA of 1000 hp are one matter, those of a motor that reopens another: 890 + 91 / 80 x 797202 =
    // 907707.
    EXPECT_THAT(
        FindingsAfter("Update [Motor Power Conversions] set RunningKVA = 890 where rowid = 34"),
        ElementsAre("[Motor Power Conversions], row 34, column \"RunningKVA\": takes 1000 hp to 890.000 kVA, "
                    "above the 887 of a motor",
                    HasSubstr("would reopen with 907.707 kVA")));
}

TEST_F(CatalogueChecker, FindsNothingInWhatIsMerelyUnusual) {
    for (const char* unusual : {
             "Update [Gensets] set BaseFreqDip = 0 where rowid = 5",
             "Update [Gensets] set BaseFreqDip = 100 where rowid = 5",
             "Update [Gensets] set ExpC = 0 where rowid = 5",
             "Update [Gensets] set ExpC = 10 where rowid = 5",
             "Update [Gensets] set Rating105C = Rating80C where rowid = 5",
             "Update [Gensets] set BaseFreqDipKW = null, BaseFreqDip = null, ExpC = null where rowid = 5",
             "Update [Gensets] set VoltageLL = 1 where rowid = 5",
             "Update [Gensets] set GensetModel = 7 where rowid = 5",
             // A curve that does not derate at all, and one that takes the whole rating for one cause alone.
             "Update [Derate Codes] set AltDerateSlope = 0, TempDerateBase = 9999 where rowid = 1",
             "Update [Derate Codes] set AltDerateSlope = 3 where rowid = 1",
             // Alternators of sets whose connections have no distortion need no base.
             "Update [Alternators] set BasekW = 0, BaseVolts = 0, SubtransReact = 0 where ModelNum like "
             "'TS%'",
             "Update [Properties] set Version = '' where rowid = 1",
             "Update [Motor Code Letters] set CodeLetter = lower(CodeLetter)",
             "Delete from [Motor Code Letters] where CodeLetter in ('A', 'N', 'V')",
             "Delete from [Motor Starting Multiplier] where rowid = 6",
             "Update [Motor Power Conversions] set RunningKVA = RunningKW where rowid = 20",
             "Delete from [Motor Power Conversions] where HP < 1",
         }) {
        EXPECT_THAT(FindingsAfter(unusual), IsEmpty()) << unusual;
    }
}

TEST_F(CatalogueChecker, RefusesWhatIsNoDatabase) {
    const TemporaryFolder folder;
    WriteBytes(folder / "text.db", "no database");
    EXPECT_THAT([&] { CheckCatalogue(folder / "text.db", [](const std::string&) {}); },
                testing::Throws<RaisedError>());
}

}  // namespace
}  // namespace genvara
