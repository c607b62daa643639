#include <fmt/format.h>

#include <array>
#include <cstddef>

#include "CMtrLoad.h"
#include "CReports.h"
#include "FailureRegion.h"
#include "Kilo.h"
#include "LanguageErrors.h"
#include "NumberText.h"
#include "RaisedError.h"
#include "RichTextDocument.h"

namespace genvara {

using namespace rich_text;

namespace {

constexpr std::string_view kTextFace = "Times New Roman";
constexpr std::int32_t kTextSize = 10;  // points

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

/// From the power factor of "Grand Totals" to the harmonic figures: one tab a column.
constexpr std::string_view kToDistortion = "\t\t\t\t\t";

constexpr std::string_view kFrequencyNote = "\r\n*Contact the factory for frequency dip information.\r\n";
constexpr std::string_view kDistortionNote = "*Contact the factory for single phase Vthd information.\r\n";

std::string Two(double value) {
    return RenderFixed(value, 2);
}

std::string Kilo(double power, std::int32_t quantity) {
    return Two(power * quantity / kPerKilo);
}

/// The figure of a step; a step that the run did not know is beyond the array.
double FigureOf(const std::vector<double>& figures, std::size_t step, std::string_view member) {
    if (step >= figures.size()) {
        RaiseSubscriptOutOfRange(member);
    }
    return figures[step];
}

}  // namespace

const CReports::Form CReports::kLoadProfile{
    .member = "CReports::BuildLoadProfileReport", .title = "Generator Load Profile", .undersized = false};
const CReports::Form CReports::kUndersizedLoadProfile{.member = "CReports::BuildUndersizedLoadProfileReport",
                                                      .title = "Undersized Generator Load Profile",
                                                      .undersized = true};

std::string CReports::BuildLoadProfileReport() const {
    const ReportWriter report(Product(), kLoadProfile.title);
    if (!report.IsOpen()) {
        return {};
    }
    WriteGrandTotals(report, WriteProfile(report, kLoadProfile));
    // With harmonic figures, failures are passed over from here to the end: what fails is left out, and the
    // report completes.
    FailureRegion region;
    if (m_data.CalcVTHD) {
        report.Text(kToDistortion);
        region.Run([&] { report.Text(LastDistortionText(kLoadProfile.member)); });
    }
    report.Text("\r\n\r\n");
    if (!m_freqDipAvailable) {
        report.Text(kFrequencyNote);
    }
    if (m_data.CalcVTHD) {
        region.Run([&] { WriteInformational(report); });
    } else {
        report.Text(m_freqDipAvailable ? kLineEnd : "");
        report.Text(kDistortionNote);
        WriteInformational(report);
    }
    return report.Finish();
}

std::string CReports::BuildUndersizedLoadProfileReport() const {
    const ReportWriter report(Product(), kUndersizedLoadProfile.title);
    if (!report.IsOpen()) {
        return {};
    }
    WriteGrandTotals(report, WriteProfile(report, kUndersizedLoadProfile));
    report.Text(kToDistortion);
    report.Text(LastDistortionText(kUndersizedLoadProfile.member));
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

CReports::Cumulative CReports::WriteProfile(const ReportWriter& report, const Form& form) const {
    WriteProfileHead(report);
    Cumulative cumulative;
    for (std::int32_t number = 1; number <= m_profile->NumLoadSteps(); ++number) {
        const CLoadStep& step = m_profile->LoadStep(number);
        const auto index = static_cast<std::size_t>(number - 1);
        RcgTextFont(report.Document(), "", kTextSize, kBold, kOn);
        report.Text(fmt::format("Step #{}\t{}\r\n", number, step.Description()));
        report.Plain();
        for (const Load& load : step) {
            WriteLoad(report, load, index, form);
        }
        WriteStepTotals(report, step, index, form, cumulative);
    }
    return cumulative;
}

void CReports::WriteLoad(const ReportWriter& report, const Load& load, std::size_t step,
                         const Form& form) const {
    std::string text = fmt::format("   {}  ({})\r\n", load.name(), load.Summary());
    if (const auto* motor = dynamic_cast<const CMtrLoad*>(&load); motor != nullptr && motor->StartsLoaded()) {
        const double torque = 100.0 * motor->StartingTorque(FigureOf(m_data.StepVoltDips, step, form.member));
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
                               const Form& form, Cumulative& cumulative) const {
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
                            Two(FigureOf(m_data.StepVoltDips, index, form.member)),
                            Two(FigureOf(m_data.StepFreqDips, index, form.member))));
    if (form.undersized || m_data.CalcVTHD) {
        report.Text(kTab);
        report.Text(StepDistortionText(index, form.member));
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

std::string CReports::StepDistortionText(std::size_t step, std::string_view member) const {
    return fmt::format("{}%/{}%/{}%", RenderFixed(FigureOf(m_data.StepVTHDs_A, step, member), 1),
                       RenderFixed(FigureOf(m_data.StepVTHDs_B, step, member), 1),
                       RenderFixed(FigureOf(m_data.StepVTHDs_C, step, member), 1));
}

std::string CReports::LastDistortionText(std::string_view member) const {
    const std::int32_t steps = m_profile->NumLoadSteps();
    if (steps < 1) {
        RaiseSubscriptOutOfRange(member);
    }
    return StepDistortionText(static_cast<std::size_t>(steps - 1), member);
}

std::string CReports::FormatPowerFactor(double real, double apparent) {
    try {
        return Two(Quotient(real, apparent, "CReports::FormatPowerFactor"));
    } catch (const RaisedError&) {
        return "?.??";
    }
}

}  // namespace genvara
