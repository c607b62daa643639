#include <fmt/format.h>

#include <array>
#include <cstddef>

#include "CMtrLoad.h"
#include "CReports.h"
#include "FailureRegion.h"
#include "LanguageErrors.h"
#include "NumberText.h"
#include "RaisedError.h"
#include "RichTextDocument.h"

namespace genvara {

using namespace rich_text;

namespace {

constexpr std::string_view kMember = "CReports::BuildLoadProfileReport";
constexpr std::string_view kTextFace = "Times New Roman";
constexpr std::int32_t kTextSize = 10;  // points
constexpr double kPerKilo = 1000.0;

/// The ten columns; the first begins at the margin.
constexpr std::array<TabStop, 9> kColumns{{{907, kLeftTab},
                                           {1627, kLeftTab},
                                           {2520, kLeftTab},
                                           {3427, kLeftTab},
                                           {4320, kLeftTab},
                                           {5227, kLeftTab},
                                           {6120, kLeftTab},
                                           {7027, kLeftTab},
                                           {7920, kLeftTab}}};

constexpr std::string_view kFrequencyNote = "\r\n*Contact the factory for frequency dip information.\r\n";
constexpr std::string_view kDistortionNote = "*Contact the factory for single phase Vthd information.\r\n";

std::string Two(double value) {
    return RenderFixed(value, 2);
}

std::string Kilo(double power, std::int32_t quantity) {
    return Two(power * quantity / kPerKilo);
}

/// The figure of a step; a step that the run did not know is beyond the array.
double FigureOf(const std::vector<double>& figures, std::size_t step) {
    if (step >= figures.size()) {
        RaiseSubscriptOutOfRange(kMember);
    }
    return figures[step];
}

}  // namespace

std::string CReports::BuildLoadProfileReport() const {
    ReportWriter report(Product(), "Generator Load Profile");
    WriteProfileHead(report);
    Cumulative cumulative;
    WriteSteps(report, m_data.CalcVTHD, cumulative);
    WriteGrandTotals(report, cumulative);
    if (m_data.CalcVTHD) {
        // From here on failures are passed over: the report completes without the figures.
        FailureRegion region;
        region.Run([&] { report.Text("\t\t\t\t\t"); });
        region.Run([&] {
            report.Text(StepDistortionText(static_cast<std::size_t>(m_profile->NumLoadSteps()) - 1));
        });
    }
    report.Text("\r\n\r\n");
    if (!m_freqDipAvailable) {
        report.Text(kFrequencyNote);
    }
    if (!m_data.CalcVTHD) {
        report.Text(m_freqDipAvailable ? kLineEnd : "");
        report.Text(kDistortionNote);
    }
    WriteInformational(report);
    return report.Finish();
}

std::string CReports::BuildUndersizedLoadProfileReport() const {
    ReportWriter report(Product(), "Undersized Generator Load Profile");
    WriteProfileHead(report);
    Cumulative cumulative;
    WriteSteps(report, true, cumulative);
    WriteGrandTotals(report, cumulative);
    report.Text("\t\t\t\t\t");
    report.Text(StepDistortionText(static_cast<std::size_t>(m_profile->NumLoadSteps()) - 1));
    report.Text("\r\n\r\n");
    if (!m_freqDipAvailable) {
        report.Text(kFrequencyNote);
    }
    WriteInformational(report);
    return report.Finish();
}

void CReports::WriteProfileHead(const ReportWriter& report) const {
    WriteProjectHeader(report);
    WriteGeneratorSet(report);
    WriteSectionRule(report);
    report.Heading("Load Profile");
    report.TabStops(kColumns);
    report.Body("Arial", kTextSize);
    report.Text("\t\tRun\tRun\tRun\tStart\tStart\tVolt\tFreq\tVolt (L-N)\r\n");
    report.Text("\tQty\tkW\tkVA\tpF\tkW\tkVA\tDip\tDip\tTHD\r\n\r\n");
    RcgTextFont(report.Document(), kTextFace, 0, 0, kOff);
}

void CReports::WriteSteps(const ReportWriter& report, bool withDistortion, Cumulative& cumulative) const {
    for (std::int32_t number = 1; number <= m_profile->NumLoadSteps(); ++number) {
        const CLoadStep& step = m_profile->LoadStep(number);
        const auto index = static_cast<std::size_t>(number - 1);
        RcgTextFont(report.Document(), "", kTextSize, kBold, kOn);
        report.Text(fmt::format("Step #{}\t{}\r\n", number, step.Description()));
        report.Plain();
        for (const auto& load : step) {
            WriteLoad(report, *load, index);
        }
        WriteStepTotals(report, step, index, withDistortion, cumulative);
    }
}

void CReports::WriteLoad(const ReportWriter& report, const Load& load, std::size_t step) const {
    std::string text = fmt::format("   {}  ({})\r\n", load.name(), load.Summary());
    if (const auto* motor = dynamic_cast<const CMtrLoad*>(&load); motor != nullptr && motor->StartsLoaded()) {
        const double torque = 100.0 * motor->StartingTorque(FigureOf(m_data.StepVoltDips, step));
        text +=
            fmt::format("   Rated motor torque from full voltage starting = {}%\r\n", RenderFixed(torque, 1));
    }
    const std::int32_t quantity = load.Quantity();
    const double runKW = load.RunningRealPower();
    const double runKVA = load.RunningAppPower();
    text += fmt::format("\t{}\t{}\t{}\t{}\t{}\t{}\r\n", quantity, Kilo(runKW, quantity),
                        Kilo(runKVA, quantity), FormatPowerFactor(runKW, runKVA),
                        Kilo(load.StartingRealPower(), quantity), Kilo(load.StartingAppPower(), quantity));
    report.Text(text);
}

void CReports::WriteStepTotals(const ReportWriter& report, const CLoadStep& step, std::size_t index,
                               bool withDistortion, Cumulative& cumulative) const {
    const double kW = step.TotalRunningRealPower(0) / kPerKilo;
    const double kVA = step.TotalRunningApparentPower(0) / kPerKilo;
    const double startKW = step.TotalStartingRealPower(0) / kPerKilo;
    const double startKVA = step.TotalStartingApparentPower(0) / kPerKilo;
    cumulative.kW += kW;
    cumulative.kVA += kVA;
    WriteTotalsRule(report);
    RcgTextFont(report.Document(), kTextFace, kTextSize, 0, kOff);
    report.Text(fmt::format("Step Totals\t{}\t{}\t{}\t{}\t{}\t{}\t{}", Two(kW), Two(kVA),
                            FormatPowerFactor(kW, kVA), Two(startKW), Two(startKVA),
                            Two(FigureOf(m_data.StepVoltDips, index)),
                            Two(FigureOf(m_data.StepFreqDips, index))));
    if (withDistortion) {
        report.Text(kTab);
        report.Text(StepDistortionText(index));
    }
    report.Text(kLineEnd);
    report.Text(fmt::format("Cum. Totals\t{}\t{}\t{}\r\n\r\n", Two(cumulative.kW), Two(cumulative.kVA),
                            FormatPowerFactor(cumulative.kW, cumulative.kVA)));
}

void CReports::WriteGrandTotals(const ReportWriter& report, const Cumulative& cumulative) const {
    WriteTotalsRule(report);
    RcgTextFont(report.Document(), kTextFace, kTextSize, 0, kOff);
    report.Text(fmt::format("Grand Totals\t{}\t{}\t{}", Two(cumulative.kW), Two(cumulative.kVA),
                            FormatPowerFactor(cumulative.kW, cumulative.kVA)));
}

std::string CReports::StepDistortionText(std::size_t step) const {
    return fmt::format("{}%/{}%/{}%", RenderFixed(FigureOf(m_data.StepVTHDs_A, step), 1),
                       RenderFixed(FigureOf(m_data.StepVTHDs_B, step), 1),
                       RenderFixed(FigureOf(m_data.StepVTHDs_C, step), 1));
}

std::string CReports::FormatPowerFactor(double real, double apparent) {
    try {
        return Two(Quotient(real, apparent, "CReports::FormatPowerFactor"));
    } catch (const RaisedError&) {
        return "?.??";
    }
}

}  // namespace genvara
