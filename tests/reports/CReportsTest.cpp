#include "CReports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "AllDocuments.h"
#include "AnyText.h"
#include "CBatChrgLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "RaisedErrorMatcher.h"
#include "RichTextDocument.h"
#include "RichTextReader.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Reports of one set of 125 kW against 100 kW and 200 kVA.
class Reports : public testing::Test {
  protected:
    Reports() {
        ReportData& data = m_reports.Data();
        data.ParallelSets = 1;
        data.LLVoltage = 480;
        data.RatedKW = 130;
        data.DeratedKW = 125;
        data.TotalRunKW = 100;
        data.AvailKVA35 = 400;
        data.PeakStartingKVA = 200;
        m_reports.AltRise(3);
        m_reports.Fuel(1);
    }

    std::string Shown(std::int32_t type = report_type::kSizing, bool undersized = false) {
        return ShownText(m_reports.CreateReport(type, undersized));
    }

    CLoadStep& AddStep() {
        m_profile.AddLoadStep("Pumps", 20, 0);
        for (auto* figures :
             {&m_reports.Data().StepVoltDips, &m_reports.Data().StepFreqDips, &m_reports.Data().StepVTHDs_A,
              &m_reports.Data().StepVTHDs_B, &m_reports.Data().StepVTHDs_C}) {
            figures->push_back(20.0);
        }
        return m_profile.LoadStep(m_profile.NumLoadSteps());
    }

    CLoadProfile m_profile;
    ErrorLog m_log{"."};
    CReports m_reports{0, m_profile, [] { return DateTime{2026, 1, 2, 3, 4, 5}; }, m_log};
};

TEST_F(Reports, StartWithTheirDefaults) {
    const std::string report = Shown();
    EXPECT_THAT(report, HasSubstr("Program Version\t0.0.0\n"));
    EXPECT_THAT(report, HasSubstr("Database Version\t0.00\n"));
    EXPECT_THAT(report, HasSubstr("Project Created\tFebruary 14, 1998; 12:00:00 AM\n"));
    EXPECT_THAT(report, HasSubstr("Report Created\tJanuary 2, 2026; 03:04:05 AM\n"));
    EXPECT_THAT(report, HasSubstr("Project\t\t\nCustomer\t\n"));
}

TEST_F(Reports, TranslateFuelRiseAndDipData) {
    const std::pair<std::int32_t, const char*> fuels[] = {{1, "Diesel"},   {2, "Nat. Gas"}, {3, "L.P."},
                                                          {4, "Gasoline"}, {0, "Unknown"},  {5, "Unknown"}};
    for (const auto& [code, text] : fuels) {
        m_reports.Fuel(code);
        EXPECT_EQ(m_reports.FuelType(), text);
    }
    m_reports.AltRise(4);
    EXPECT_THAT(Shown(), HasSubstr("Genset Rating @ 150C Rise\t130.00 kW"));
    m_reports.AltRise(5);
    EXPECT_THAT(Shown(), HasSubstr("Genset Rating @ 0C Rise\t"));
    AddStep();
    m_reports.FreqDipAvailable(-3.5);
    EXPECT_THAT(Shown(report_type::kLoadProfile), Not(HasSubstr("frequency dip information")));
    m_reports.FreqDipAvailable(0);
    EXPECT_THAT(Shown(report_type::kLoadProfile),
                HasSubstr("\n\n*Contact the factory for frequency dip information.\n"));
}

TEST_F(Reports, AnswerAnUnknownTypeWithAPlainText) {
    const std::size_t before = LiveRichTextDocuments();
    EXPECT_EQ(m_reports.CreateReport(2, false), "DEBUG: Unknown report type. (CReports::CreateReport)");
    EXPECT_EQ(m_reports.CreateReport(-1, true), "DEBUG: Unknown report type. (CReports::CreateReport)");
    EXPECT_EQ(LiveRichTextDocuments(), before);
}

TEST_F(Reports, ShowTheSecondBrandsProduct) {
    CReports other(
        1, m_profile, [] { return DateTime{}; }, m_log);
    EXPECT_THAT(ShownText(other.CreateNoMatchReport()),
                testing::StartsWith("Ohmvane\nSearch Failure Report\n"));
}

TEST_F(Reports, ShareTotalsAmongParallelSets) {
    EXPECT_THAT(Shown(), HasSubstr("Generator Set\n\nModel No."));
    EXPECT_THAT(Shown(),
                HasSubstr("Total Running Power\t100.00 kW\nPercent of Available kW Used\t80.00 %\n\n"));
    EXPECT_THAT(Shown(),
                HasSubstr("Peak Starting kVA\t200.00 kVA\nPercent of Available kVA Used\t50.00 %\n\n"));
    m_reports.Data().ParallelSets = 2;
    m_reports.Data().TotalRunKW = 200;
    EXPECT_THAT(Shown(), HasSubstr("Generator Sets\n"));
    EXPECT_THAT(Shown(),
                HasSubstr("Total Running Power\t100.00 kW per set\nPercent of Available kW Used\t80.00 %"));
    EXPECT_THAT(Shown(), HasSubstr("Peak Starting kVA\t100.00 kVA per set\n"));
}

TEST_F(Reports, MarkACapacityOfNothing) {
    m_reports.Data().DeratedKW = 0;
    m_reports.Data().AvailKVA35 = 0;
    EXPECT_THAT(Shown(), HasSubstr("Percent of Available kW Used\t---- %\n\n"));
    EXPECT_THAT(Shown(), HasSubstr("Percent of Available kVA Used\t----\t%\n\n"));
}

TEST_F(Reports, ShowVoltagesUnitsAndAllowances) {
    m_reports.Data().Altitude = 499.6;
    EXPECT_THAT(Shown(), HasSubstr("LN / LL Voltage\t277/480\tvolts\tAltitude\t\t500\tfeet\n"));
    m_reports.Data().ConnCode = 2;
    m_reports.Data().LLVoltage = 240;
    m_reports.Data().MetricUnits = true;
    EXPECT_THAT(Shown(), HasSubstr("LN / LL Voltage\t120/240\tvolts\tAltitude\t\t500\tmeters\n"));
    EXPECT_THAT(Shown(), HasSubstr("Ambient Temp.\t0\tC\n"));
    EXPECT_THAT(Shown(), HasSubstr("Maximum Frequency Dip\t0.00 %\t( no restriction )\n"));
    m_reports.Data().FreqDipEnabled = true;
    m_reports.Data().AllowedFreqDip = 5;
    m_reports.Data().MaxVTHD = -0.001;  // a value that rounds to zero shows no sign
    EXPECT_THAT(Shown(), HasSubstr("Maximum Frequency Dip\t0.00 %\t( 5% allowed )\nVoltage THD\t0.00 %\t"));
    m_reports.Data().CalcVTHD = false;
    m_reports.Data().VTHDEnabled = true;
    EXPECT_THAT(Shown(), HasSubstr("Voltage THD\tN/A\n_"));
}

TEST_F(Reports, SizingLogsAFailureAndComesBackEmpty) {
    const std::size_t before = LiveRichTextDocuments();
    m_reports.Data().ParallelSets = 0;
    EXPECT_EQ(m_reports.CreateReport(report_type::kSizing, false), "");
    EXPECT_EQ(m_log.Text(), "CReports::BuildSizingReport\r\n11 : Division by zero\r\n");
    m_log.Clear();
    EXPECT_EQ(m_reports.CreateReport(report_type::kSizing, true), "");
    EXPECT_EQ(m_log.Text(), "CReports::BuildUndersizedSizingReport\r\n11 : Division by zero\r\n");
    EXPECT_EQ(LiveRichTextDocuments(), before);
}

TEST_F(Reports, SizingFailsWithoutSetsEvenWhereNoCapacityIsKnown) {
    // Both percent rows are marked, and the peak's share is what fails.
    m_reports.Data().ParallelSets = 0;
    m_reports.Data().DeratedKW = 0;
    m_reports.Data().AvailKVA35 = 0;
    EXPECT_EQ(m_reports.CreateReport(report_type::kSizing, false), "");
    EXPECT_EQ(m_log.Text(), "CReports::BuildSizingReport\r\n11 : Division by zero\r\n");
}

TEST_F(Reports, SizingLogsFiguresBeyondANumber) {
    const auto refused = [this](double ReportData::*figure, std::int32_t sets, double value) {
        m_log.Clear();
        const ReportData before = m_reports.Data();
        m_reports.Data().ParallelSets = sets;
        m_reports.Data().*figure = value;
        const std::string report = m_reports.CreateReport(report_type::kSizing, false);
        m_reports.Data() = before;
        return report.empty() && m_log.Text() == "CReports::BuildSizingReport\r\n6 : Overflow\r\n";
    };
    EXPECT_TRUE(refused(&ReportData::TotalRunKW, 1, 1e307));  // times 100
    EXPECT_TRUE(refused(&ReportData::PeakStartingKVA, 1, 1e307));
    EXPECT_TRUE(refused(&ReportData::DeratedKW, 2, 1e308));  // times the sets
    EXPECT_TRUE(refused(&ReportData::AvailKVA35, 2, 1e308));
    EXPECT_FALSE(refused(&ReportData::DeratedKW, 1, 1e308));
}

TEST_F(Reports, ANegativeNumberOfSetsHasNoRunningPower) {
    // The next label follows on the same line: nothing is written, not even the line's end.
    m_reports.Data().ParallelSets = -1;
    EXPECT_THAT(Shown(), HasSubstr("Total Running Power\tPercent of Available kW Used\t-80.00 %\n\n"));
    EXPECT_THAT(Shown(), HasSubstr("Peak Starting kVA\t-200.00 kVA per set\n"));
}

TEST_F(Reports, ComeBackEmptyWhereNoDocumentCanBeMade) {
    m_reports.Data().ParallelSets = 0;  // a sizing report that went on would fail
    m_reports.Data().StepVoltDips.clear();
    m_profile.AddLoadStep("Pumps", 20, 0);  // a load profile would miss its figures
    const AllDocuments taken;
    for (const std::int32_t type : {report_type::kSizing, report_type::kLoadProfile}) {
        EXPECT_EQ(m_reports.CreateReport(type, false), "");
        EXPECT_EQ(m_reports.CreateReport(type, true), "");
    }
    EXPECT_EQ(m_reports.CreateNoMatchReport(), "");
    EXPECT_EQ(m_log.Text(), "");
}

TEST_F(Reports, ListReasonsInTheirOrder) {
    EXPECT_THAT(Shown(report_type::kSizing, true), Not(HasSubstr("Reasons for Rejection")));
    m_reports.Data().RejectionReason = 64;
    EXPECT_THAT(Shown(report_type::kSizing, true), HasSubstr("Reasons for Rejection\n\n____"));
    m_reports.Data().RejectionReason = 1 + 2 + 4 + 8 + 16 + 32 + 128 + 256 + 512;
    EXPECT_THAT(Shown(report_type::kSizing, true),
                HasSubstr("Reasons for Rejection\n\n"
                          "The engine does not have enough starting power.\n"
                          "The alternator does not have enough kVA to start at least one load step.\n"
                          "The genset rating has been exceeded.\n"
                          "At least one phase of the alternator is overloaded.\n"
                          "The user specified max. loading was exceeded.\n"
                          "The allowed VTHD on at least one phase was exceeded.\n"
                          "The allowed voltage dip was exceeded on at least one load step.\n"
                          "The allowed frequency dip was exceeded on at least one load step.\n"
                          "At least one load step exceeded the genset's one step load capability.\n____"));
    EXPECT_THAT(Shown(), Not(HasSubstr("Reasons for Rejection")));
}

TEST_F(Reports, ListLoadsWithQuantitiesAndTorque) {
    CLoadStep& step = AddStep();
    auto load = std::make_unique<CMiscLoad>();
    load->RunningRealPower(2000);
    load->Quantity(3);
    load->name("Heater");
    step.AddLoad(std::move(load));
    auto motor = std::make_unique<CMtrLoad>();
    motor->StartingMethod(2);
    motor->RunningRealPower(8000);
    motor->RunningAppPower(10000);
    CMtrLoad& pump = *motor;
    step.AddLoad(std::move(motor));
    std::string report = Shown(report_type::kLoadProfile);
    EXPECT_THAT(report, HasSubstr("Step #1\tPumps\n   Heater  (2.00 kW misc. load)\n"
                                  "\t3\t6.00\t6.00\t1.00\t6.00\t6.00\n"));
    // 20 % dip on the 80 % tap: (0.8 x 0.8) squared.
    EXPECT_THAT(
        report,
        HasSubstr("   Rated motor torque from full voltage starting = 41.0%\n\t1\t8.00\t10.00\t0.80\t"));
    EXPECT_THAT(report, HasSubstr("\t20.00\t20.00\t20.0%/20.0%/20.0%\nCum. Totals\t14.00\t"));
    pump.StartsLoaded(false);
    EXPECT_THAT(Shown(report_type::kLoadProfile), Not(HasSubstr("Rated motor torque")));
}

TEST_F(Reports, CumulativeTotalsRunOnOverTheSteps) {
    // 6 kW at 0.6 and 8 kW at 0.8 are 10 kVA each; 14 kW over 20 kVA is 0.70.
    for (const auto& [watts, factor] : {std::pair{6000.0, 0.6}, {8000.0, 0.8}}) {
        auto load = std::make_unique<CMiscLoad>();
        load->RunningRealPower(watts);
        load->RunningPowerFactor(factor);
        AddStep().AddLoad(std::move(load));
    }
    const std::string report = Shown(report_type::kLoadProfile);
    EXPECT_THAT(report, HasSubstr("Cum. Totals\t6.00\t10.00\t0.60\n"));
    EXPECT_THAT(report, HasSubstr("Cum. Totals\t14.00\t20.00\t0.70\n"));
    EXPECT_THAT(report, HasSubstr("Grand Totals\t14.00\t20.00\t0.70\t"));
}

TEST_F(Reports, ShowEachFigureOfAStepInItsColumn) {
    auto load = std::make_unique<CMiscLoad>();
    load->RunningRealPower(6000);
    load->RunningPowerFactor(0.6);  // 10 kVA
    AddStep().AddLoad(std::move(load));
    ReportData& data = m_reports.Data();
    data.StepVoltDips = {12.0};
    data.StepFreqDips = {3.0};
    data.StepVTHDs_A = {1.5};
    data.StepVTHDs_B = {2.5};
    data.StepVTHDs_C = {4.0};
    for (const bool undersized : {false, true}) {
        const std::string report = Shown(report_type::kLoadProfile, undersized);
        EXPECT_THAT(
            report,
            HasSubstr(
                "Step Totals\t6.00\t10.00\t0.60\t6.00\t10.00\t12.00\t3.00\t1.5%/2.5%/4.0%\nCum. Totals"))
            << undersized;
        EXPECT_THAT(report, HasSubstr("\t\t\t\t\t1.5%/2.5%/4.0%\n\n")) << undersized;
    }
}

TEST_F(Reports, AStepWithoutLoadsHasNoPowerFactor) {
    AddStep();
    const std::string report = Shown(report_type::kLoadProfile);
    EXPECT_THAT(report,
                HasSubstr("Step #1\tPumps\n" + std::string(68, '_') +
                          "\nStep Totals\t0.00\t0.00\t?.??\t0.00\t0.00\t20.00\t20.00\t20.0%/20.0%/20.0%\n"
                          "Cum. Totals\t0.00\t0.00\t?.??\n\n"));
    EXPECT_THAT(report, HasSubstr("Grand Totals\t0.00\t0.00\t?.??\t\t\t\t\t20.0%/20.0%/20.0%\n\n____"));
}

TEST_F(Reports, FootnotesFollowWhatIsMissing) {
    AddStep();
    m_reports.Data().CalcVTHD = false;
    std::string report = Shown(report_type::kLoadProfile);
    EXPECT_THAT(report, HasSubstr("Grand Totals\t0.00\t0.00\t?.??\n\n\n"
                                  "*Contact the factory for single phase Vthd information.\n"));
    EXPECT_THAT(report, Not(HasSubstr("20.0%/")));
    m_reports.FreqDipAvailable(0);
    report = Shown(report_type::kLoadProfile);
    EXPECT_THAT(report, HasSubstr("\n\n\n*Contact the factory for frequency dip information.\n"
                                  "*Contact the factory for single phase Vthd information.\n"));
    report = Shown(report_type::kLoadProfile, true);
    EXPECT_THAT(report, HasSubstr("Undersized Generator Load Profile\n"));
    EXPECT_THAT(report, HasSubstr("20.0%/20.0%/20.0%"));
    EXPECT_THAT(report, Not(HasSubstr("Vthd information")));
}

TEST_F(Reports, TheLoadProfilePassesFailuresOn) {
    const std::size_t before = LiveRichTextDocuments();
    CLoadStep& step = AddStep();
    m_reports.Data().StepFreqDips.clear();
    EXPECT_THAT([&] { (void)m_reports.CreateReport(report_type::kLoadProfile, false); },
                Raises(9, "CReports::BuildLoadProfileReport", "Subscript out of range"));
    EXPECT_THAT([&] { (void)m_reports.CreateReport(report_type::kLoadProfile, true); },
                Raises(9, "CReports::BuildUndersizedLoadProfileReport", "Subscript out of range"));
    EXPECT_EQ(m_log.Text(), "");
    auto charger = std::make_unique<CBatChrgLoad>();
    charger->BatteryVoltage(1e300);
    charger->ChargeCurrent(1e300);
    step.AddLoad(std::move(charger));
    EXPECT_THAT([&] { (void)m_reports.CreateReport(report_type::kLoadProfile, false); },
                Raises(6, "CBatChrgLoad::RunningAppPower", "Overflow"));
    EXPECT_EQ(LiveRichTextDocuments(), before);
}

TEST_F(Reports, AnEmptyProfileEndsWithoutHarmonicFiguresOrWithAFailure) {
    // No step: the recommended report passes over the figures that it lacks, the undersized one does not.
    EXPECT_THAT(Shown(report_type::kLoadProfile), HasSubstr("Grand Totals\t0.00\t0.00\t?.??\t\t\t\t\t\n\n"));
    EXPECT_THAT([&] { (void)m_reports.CreateReport(report_type::kLoadProfile, true); },
                Raises(9, "CReports::BuildUndersizedLoadProfileReport", "Subscript out of range"));
}

/// Reports whose clock fails, in the last section of every report.
class ReportsWithoutTime : public testing::Test {
  protected:
    ReportsWithoutTime() { m_reports.Data().ParallelSets = 1; }

    CLoadProfile m_profile;
    ErrorLog m_log{"."};
    CReports m_reports{0, m_profile, []() -> DateTime { throw RaisedError(5, "Clock", "No time"); }, m_log};
};

TEST_F(ReportsWithoutTime, EachFormHasAPolicyOfItsOwn) {
    const std::size_t before = LiveRichTextDocuments();
    // Logged, and empty.
    EXPECT_EQ(m_reports.CreateReport(report_type::kSizing, false), "");
    EXPECT_EQ(m_reports.CreateReport(report_type::kSizing, true), "");
    EXPECT_EQ(m_log.Text(), "Clock\r\n5 : No time\r\nClock\r\n5 : No time\r\n");
    m_log.Clear();
    // Passed over from the harmonic figures on: the section ends where it failed, the report completes.
    const std::string report = ShownText(m_reports.CreateReport(report_type::kLoadProfile, false));
    EXPECT_THAT(report, testing::EndsWith("Project Last Saved\tFebruary 14, 1998; 12:00:00 AM\n"));
    // Passed on: without harmonic figures, and by the reports that pass over nothing.
    m_reports.Data().CalcVTHD = false;
    EXPECT_THAT([&] { (void)m_reports.CreateReport(report_type::kLoadProfile, false); },
                Raises(5, "Clock", "No time"));
    EXPECT_THAT([&] { (void)m_reports.CreateNoMatchReport(); }, Raises(5, "Clock", "No time"));
    m_profile.AddLoadStep("Pumps", 20, 0);
    ReportData& data = m_reports.Data();
    data.StepVoltDips = data.StepFreqDips = data.StepVTHDs_A = data.StepVTHDs_B = data.StepVTHDs_C = {1.0};
    EXPECT_THAT([&] { (void)m_reports.CreateReport(report_type::kLoadProfile, true); },
                Raises(5, "Clock", "No time"));
    EXPECT_EQ(m_log.Text(), "");
    EXPECT_EQ(LiveRichTextDocuments(), before);
}

TEST_F(Reports, SuggestionsAreNumbered) {
    EXPECT_THAT(ShownText(m_reports.CreateNoMatchReport()),
                HasSubstr("Suggestions\n\nNo Generator Sets were found that meet your requirements.\n"
                          "(1) Check that the voltage/frequency/connection combination is available.\n"
                          "(2) Change the minimum/maximum allowed loading.\n"
                          "(3) Increase the allowed alternator temperature rise.\n"
                          "(4) Increase the maximum voltage or frequency dip.\n"
                          "(5) Increase the maximum Vthd.\n____"));
}

TEST_F(Reports, ShowNamesAsTheyAreEntered) {
    auto load = std::make_unique<CMiscLoad>();
    CMiscLoad& named = *load;
    AddStep().AddLoad(std::move(load));
    const auto showsNames = [&](const std::string& entered) {
        m_reports.Data().ProjectName = entered;
        m_reports.Data().Customer = entered;
        named.name(entered);
        const std::string shown = WithLineFeeds(entered);
        const std::string report = Shown(report_type::kLoadProfile);
        return report.starts_with("Genvara\nGenerator Load Profile\n\nProject\t\t" + shown + "\nCustomer\t" +
                                  shown + "\n____") &&
               report.find("\n   " + shown + "  (") != std::string::npos;
    };
    EXPECT_TRUE(showsNames("{Mühle} \\1\\ \"x\" 東京"));
    EXPECT_TRUE(showsNames("two\nlines"));
    for (const char* piece : {"x", "{", "\\", "é", "\U0001F600", "\x01"}) {
        std::string many;
        for (int i = 0; i < 10000; ++i) {
            many += piece;
        }
        EXPECT_TRUE(showsNames(many)) << piece;
    }
    // A name that ends in CR would take the LF of the line's end for its own half of a pair: the line end
    // itself begins with CR, and so it does not.
    EXPECT_TRUE(showsNames("ends in CR\r"));
    EXPECT_TRUE(rc::check(
        "any name", [&](const std::vector<std::uint32_t>& codes) { RC_ASSERT(showsNames(TextOf(codes))); }));
}

}  // namespace
}  // namespace genvara
