#include <fmt/format.h>

#include <array>

#include "CReports.h"
#include "LanguageErrors.h"
#include "NumberText.h"
#include "RaisedError.h"
#include "RichTextDocument.h"
#include "SiteCodes.h"

namespace genvara {

using namespace rich_text;

namespace {

constexpr std::array<TabStop, 5> kSiteStops{
    {{2966, kRightTab}, {3067, kLeftTab}, {4320, kLeftTab}, {6307, kDecimalTab}, {6480, kLeftTab}}};
constexpr std::array<TabStop, 1> kRatingStops{{{3787, kDecimalTab}}};

std::string Two(double value) {
    return RenderFixed(value, 2);
}

/// What the site allows, behind the worst figure of a set.
std::string Allowance(bool limited, double percent) {
    return limited ? fmt::format("( {}% allowed )", RenderFixed(percent, 0)) : "( no restriction )";
}

}  // namespace

const CReports::Form CReports::kSizing{
    .member = "CReports::BuildSizingReport", .title = "Generator Set Sizing", .undersized = false};
const CReports::Form CReports::kUndersizedSizing{.member = "CReports::BuildUndersizedSizingReport",
                                                 .title = "Undersized Generator Set",
                                                 .undersized = true};

std::string CReports::BuildSizingReport() const {
    return SizingReport(kSizing);
}

std::string CReports::BuildUndersizedSizingReport() const {
    return SizingReport(kUndersizedSizing);
}

std::string CReports::SizingReport(const Form& form) const {
    try {
        const ReportWriter report(Product(), form.title);
        if (!report.IsOpen()) {
            return {};
        }
        WriteProjectHeader(report);
        WriteGeneratorSet(report);
        WriteSectionRule(report);
        report.Heading("Performance Summary");
        WriteSite(report);
        WriteRatings(report, form.member);
        if (form.undersized) {
            WriteRejectionReasons(report);
        }
        WriteInformational(report);
        return report.Finish();
    } catch (const RaisedError& failure) {
        m_log->LogError(
            fmt::format("{}\r\n{} : {}", failure.Source(), failure.Number(), failure.Description()));
        return {};
    }
}

void CReports::WriteSite(const ReportWriter& report) const {
    report.TabStops(kSiteStops);
    report.Body("Times New Roman", 12);
    const double neutral = m_data.LLVoltage / TreatmentOf(m_data.ConnCode).neutralDivisor;
    report.Row("LN / LL Voltage\t",
               fmt::format("{}/{}\tvolts\t", RenderFixed(neutral, 0), RenderFixed(m_data.LLVoltage, 0)));
    report.Row("Altitude\t\t", fmt::format("{}\t{}\r\n", RenderFixed(m_data.Altitude, 0),
                                           m_data.MetricUnits ? "meters" : "feet"));
    report.Row("Frequency\t", fmt::format("{}\thertz\t", m_data.Frequency));
    report.Row("Ambient Temp.\t",
               fmt::format("{}\t{}\r\n", RenderFixed(m_data.AmbTemp, 0), m_data.MetricUnits ? "C" : "F"));
    report.Row("Phase(s)\t", fmt::format("{}\tphase\r\n\r\n", m_data.Phases));
}

void CReports::WriteRatings(const ReportWriter& report, std::string_view member) const {
    report.TabStops(kRatingStops);
    report.Row(fmt::format("Genset Rating @ {}C Rise\t", m_altRise), Two(m_data.RatedKW) + " kW\r\n");
    report.Row("Genset Derated Rating\t", Two(m_data.DeratedKW) + " kW\r\n");
    report.Row("Total Running Power\t", RunningPowerText());
    report.Row("Percent of Available kW Used\t", PercentOfKWText(member));
    report.Row("Alternator Starting kVA\t", Two(m_data.AvailKVA35) + " kVA @ 35% dip\r\n");
    report.Row("Peak Starting kVA\t", PeakStartingText(member));
    report.Row("Percent of Available kVA Used\t", PercentOfKVAText(member));
    report.Row("Maximum Voltage Dip\t", Two(m_data.MaxVoltDip) + " %\r\n");
    report.Row("Maximum Frequency Dip\t",
               fmt::format("{} %\t{}\r\n", Two(m_data.MaxFreqDip),
                           Allowance(m_data.FreqDipEnabled, m_data.AllowedFreqDip)));
    report.Row("Voltage THD\t", DistortionText());
}

std::string CReports::RunningPowerText() const {
    if (m_data.ParallelSets == 1) {
        return Two(m_data.TotalRunKW) + " kW\r\n";
    }
    if (m_data.ParallelSets > 1) {
        return Two(m_data.TotalRunKW / m_data.ParallelSets) + " kW per set\r\n";
    }
    return {};
}

std::string CReports::PercentOfKWText(std::string_view member) const {
    if (m_data.DeratedKW == 0.0) {
        return "---- %\r\n\r\n";
    }
    const double capacity = Finite(m_data.ParallelSets * m_data.DeratedKW, member);
    return Two(Quotient(m_data.TotalRunKW * 100.0, capacity, member)) + " %\r\n\r\n";
}

std::string CReports::PeakStartingText(std::string_view member) const {
    if (m_data.ParallelSets == 1) {
        return Two(m_data.PeakStartingKVA) + " kVA\r\n";
    }
    return Two(Quotient(m_data.PeakStartingKVA, m_data.ParallelSets, member)) + " kVA per set\r\n";
}

std::string CReports::PercentOfKVAText(std::string_view member) const {
    if (m_data.AvailKVA35 == 0.0) {
        // A tab where the kW row has a blank.
        return "----\t%\r\n\r\n";
    }
    const double capacity = Finite(m_data.ParallelSets * m_data.AvailKVA35, member);
    return Two(Quotient(m_data.PeakStartingKVA * 100.0, capacity, member)) + " %\r\n\r\n";
}

std::string CReports::DistortionText() const {
    if (!m_data.CalcVTHD) {
        return "N/A\r\n";
    }
    return fmt::format("{} %\t{}\r\n", Two(m_data.MaxVTHD),
                       Allowance(m_data.VTHDEnabled, m_data.AllowedVTHD));
}

}  // namespace genvara
