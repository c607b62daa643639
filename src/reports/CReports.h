#pragma once

#include <cstdint>
#include <string>

#include "CLoadProfile.h"
#include "DateTime.h"
#include "ErrorLog.h"
#include "ReportData.h"
#include "ReportWriter.h"

namespace genvara {

/// Codes of the reports.
namespace report_type {
inline constexpr std::int32_t kSizing = 0;
inline constexpr std::int32_t kLoadProfile = 1;
}  // namespace report_type

/// Turns copied values, and for the load profile the profile itself, into reports of rich text.
///
/// The builders differ in what they do with a failure: the sizing reports log it and come back empty, the
/// others pass it on, and the recommended load profile report ignores failures from its last harmonic figures
/// on. Each pair of forms has a source of its own (SizingReport.cpp, LoadProfileReport.cpp); what they share
/// is in SharedSections.cpp.
class CReports {
  public:
    /// Profile and log outlive the reports.
    CReports(std::int32_t brandLabel, const CLoadProfile& profile, Clock clock, ErrorLog& log);

    /// The values that reports print; those below are translated as they are written.
    [[nodiscard]] ReportData& Data() noexcept { return m_data; }

    /// Fuel by its code of a set: "Diesel", "Nat. Gas", "L.P.", "Gasoline", or "Unknown".
    void Fuel(std::int32_t code);
    [[nodiscard]] const std::string& FuelType() const noexcept { return m_fuel; }
    [[nodiscard]] const std::string& ModelNum() const noexcept { return m_data.ModelNum; }
    [[nodiscard]] const std::string& AlternatorNum() const noexcept { return m_data.AlternatorNum; }

    /// Temperature rise [°C] by the code of rise and duty; 0 for an unknown code.
    void AltRise(std::int32_t code);

    /// Whether the set has frequency dip data: any value but 0.
    void FreqDipAvailable(double value) noexcept { m_freqDipAvailable = value != 0.0; }

    /// The rich text of a report; empty where a sizing report failed; a plain text for an unknown type.
    /// @throws RaisedError of the load profile reports.
    [[nodiscard]] std::string CreateReport(std::int32_t reportType, bool undersized);

    /// The rich text of the report that stands where no set was found.
    [[nodiscard]] std::string CreateNoMatchReport() const;

  private:
    [[nodiscard]] std::string BuildSizingReport() const;
    [[nodiscard]] std::string BuildUndersizedSizingReport() const;
    [[nodiscard]] std::string BuildLoadProfileReport() const;
    [[nodiscard]] std::string BuildUndersizedLoadProfileReport() const;
    void WriteProjectHeader(const ReportWriter& report) const;
    void WriteGeneratorSet(const ReportWriter& report) const;
    void WriteRejectionReasons(const ReportWriter& report) const;
    void WriteInformational(const ReportWriter& report) const;
    static void WriteSectionRule(const ReportWriter& report);
    static void WriteTotalsRule(const ReportWriter& report);
    [[nodiscard]] static std::string FormatPowerFactor(double real, double apparent);

    [[nodiscard]] std::string_view Product() const noexcept;

    /// What the recommended and the undersized form of a report do not share.
    struct Form {
        std::string_view member;  ///< builder, the source of its errors
        std::string_view title;
        bool undersized;
    };
    static const Form kSizing;
    static const Form kUndersizedSizing;
    static const Form kLoadProfile;
    static const Form kUndersizedLoadProfile;

    /// Both sizing reports: logged and empty on a failure.
    [[nodiscard]] std::string SizingReport(const Form& form) const;
    void WriteSite(const ReportWriter& report) const;
    void WriteRatings(const ReportWriter& report, std::string_view member) const;
    [[nodiscard]] std::string RunningPowerText() const;
    [[nodiscard]] std::string PercentOfKWText(std::string_view member) const;
    [[nodiscard]] std::string PeakStartingText(std::string_view member) const;
    [[nodiscard]] std::string PercentOfKVAText(std::string_view member) const;
    [[nodiscard]] std::string DistortionText() const;

    struct Cumulative {
        double kW = 0.0;
        double kVA = 0.0;
    };
    void WriteProfileHead(const ReportWriter& report) const;
    /// Head and steps.
    [[nodiscard]] Cumulative WriteProfile(const ReportWriter& report, const Form& form) const;
    void WriteLoad(const ReportWriter& report, const Load& load, std::size_t step, const Form& form) const;
    void WriteStepTotals(const ReportWriter& report, const CLoadStep& step, std::size_t index,
                         const Form& form, Cumulative& cumulative) const;
    void WriteGrandTotals(const ReportWriter& report, const Cumulative& cumulative) const;
    /// Harmonic figures of a step by its index.
    [[nodiscard]] std::string StepDistortionText(std::size_t step, std::string_view member) const;
    /// Harmonic figures of the last step.
    /// @throws RaisedError 9 without a step.
    [[nodiscard]] std::string LastDistortionText(std::string_view member) const;

    std::int32_t m_brandLabel;
    const CLoadProfile* m_profile;
    Clock m_clock;
    ErrorLog* m_log;
    ReportData m_data;
    std::string m_fuel;
    std::int32_t m_altRise = 0;
    bool m_freqDipAvailable = true;
};

}  // namespace genvara
