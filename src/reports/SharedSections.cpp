#include <fmt/format.h>

#include <array>

#include "CReports.h"
#include "NumberText.h"
#include "RejectionReasons.h"
#include "RichTextDocument.h"
#include "StringTable.h"

namespace genvara {

using namespace rich_text;

namespace {

constexpr std::string_view kBodyFace = "Times New Roman";
constexpr std::int32_t kBodySize = 12;  // points

constexpr std::array<TabStop, 2> kSetStops{{{1267, kLeftTab}, {4406, kLeftTab}}};
constexpr std::array<TabStop, 1> kListStops{{{2520, kLeftTab}}};

constexpr std::size_t kSectionRuleLength = 59;
constexpr std::size_t kTotalsRuleLength = 68;

/// String of the sentence that no set was found; the suggestions follow it.
constexpr std::int32_t kNoMatchString = 850;
constexpr std::int32_t kSuggestions = 5;

std::string DateText(const DateTime& moment) {
    return fmt::format("{}; {}", RenderLongDate(moment), RenderClockTime(moment));
}

}  // namespace

void CReports::WriteProjectHeader(const ReportWriter& report) const {
    RcgParaFlags(report.Document(), kLeftAligned);
    report.Body(kBodyFace, kBodySize);
    report.Row("Project\t\t", m_data.ProjectName + "\r\n");
    report.Row("Customer\t", m_data.Customer + "\r\n");
}

void CReports::WriteGeneratorSet(const ReportWriter& report) const {
    WriteSectionRule(report);
    report.Heading(m_data.ParallelSets == 1 ? "Generator Set" : "Generator Sets");
    report.TabStops(kSetStops);
    report.Body(kBodyFace, kBodySize);
    report.Row("Model No.\t", m_data.ModelNum + "\t");
    report.Row("Gensets\t", RenderFixed(m_data.ParallelSets, 0) + "\r\n");
    report.Row("Engine\t", fmt::format("{} ({})\r\n", m_data.EngineNum, m_fuel));
    report.Row("Alternator\t", m_data.AlternatorNum + "\r\n");
}

// Goes on whatever fails, and needs no region for it: none of its statements can fail.
void CReports::WriteRejectionReasons(const ReportWriter& report) const {
    if (m_data.RejectionReason == 0) {
        return;
    }
    WriteSectionRule(report);
    report.Heading("Reasons for Rejection");
    RcgTextFont(report.Document(), kBodyFace, kBodySize, kBold, kOff);
    RcgTextFont(report.Document(), "", 0, kItalic, kOff);
    report.TabStops(kListStops);
    for (const RejectionText& reason : kRejectionTexts) {
        if ((m_data.RejectionReason & reason.bit) != 0) {
            report.Text(fmt::format("{}\r\n", reason.text));
        }
    }
}

void CReports::WriteInformational(const ReportWriter& report) const {
    WriteSectionRule(report);
    report.Heading("Informational");
    report.Body(kBodyFace, kBodySize);
    report.TabStops(kListStops);
    report.Row("Program Version\t", m_data.ProgVersion + "\r\n");
    report.Row("Database Version\t", m_data.DBVersion + "\r\n\r\n");
    report.Row("Project Created\t", DateText(m_data.CreatedDate) + "\r\n");
    report.Row("Project Last Saved\t", DateText(m_data.ModifiedDate) + "\r\n");
    report.Row("Report Created\t", DateText(m_clock()) + "\r\n\r\n");
    report.Row("Project Created By\t", m_data.UserName + "\r\n");
}

void CReports::WriteSectionRule(const ReportWriter& report) {
    RcgTextFont(report.Document(), "Arial", 14, kBold, kOn);
    report.Text(std::string(kSectionRuleLength, '_') + "\r\n");
    report.Plain();
}

void CReports::WriteTotalsRule(const ReportWriter& report) {
    RcgTextFont(report.Document(), "Arial", 12, kBold, kOff);
    report.Text(std::string(kTotalsRuleLength, '_') + "\r\n");
}

std::string CReports::CreateNoMatchReport() const {
    const ReportWriter report(Product(), "Search Failure Report");
    if (!report.IsOpen()) {
        return {};
    }
    WriteProjectHeader(report);
    WriteSectionRule(report);
    report.Heading("Suggestions");
    report.Body(kBodyFace, kBodySize);
    report.Text(fmt::format("{}\r\n", StringTable::Text(kNoMatchString)));
    report.Plain();
    for (std::int32_t i = 1; i <= kSuggestions; ++i) {
        report.Text(fmt::format("({}) {}\r\n", i, StringTable::Text(kNoMatchString + i)));
    }
    WriteInformational(report);
    return report.Finish();
}

}  // namespace genvara
