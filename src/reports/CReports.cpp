#include "CReports.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <utility>

#include "RaisedError.h"
#include "SiteCodes.h"
#include "StringTable.h"

namespace genvara {
namespace {

// Strings of the products.
constexpr std::int32_t kFirstProduct = 11;
constexpr std::int32_t kSecondProduct = 21;

}  // namespace

CReports::CReports(std::int32_t brandLabel, const CLoadProfile& profile, Clock clock, ErrorLog& log)
    : m_brandLabel(brandLabel), m_profile(&profile), m_clock(std::move(clock)), m_log(&log) {}

void CReports::Fuel(std::int32_t code) {
    // No set burns any fuel.
    const FuelRow* row = code == fuel::kAny ? nullptr : FindRow(kFuels, code);
    m_fuel = row != nullptr ? StringTable::Text(row->caption) : "Unknown";
}

void CReports::AltRise(std::int32_t code) {
    const RiseDutyRow* row = FindRow(kRiseDuties, code);
    m_altRise = row != nullptr ? row->degrees : 0;
}

std::string CReports::CreateReport(std::int32_t reportType, bool undersized) {
    switch (reportType) {
        case report_type::kSizing:
            return undersized ? BuildUndersizedSizingReport() : BuildSizingReport();
        case report_type::kLoadProfile:
            return undersized ? BuildUndersizedLoadProfileReport() : BuildLoadProfileReport();
        default:
            return "DEBUG: Unknown report type. (CReports::CreateReport)";
    }
}

std::string_view CReports::Product() const noexcept {
    return StringTable::Text(m_brandLabel == 0 ? kFirstProduct : kSecondProduct);
}

}  // namespace genvara
