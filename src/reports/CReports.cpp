#include "CReports.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <utility>

#include "RaisedError.h"
#include "StringTable.h"

namespace genvara {
namespace {

// Strings of the products, and of the fuels from code 1.
constexpr std::int32_t kFirstProduct = 11;
constexpr std::int32_t kSecondProduct = 21;
constexpr std::int32_t kFirstFuel = 145;
constexpr std::int32_t kFuels = 4;

/// Temperature rise [°C] by code.
constexpr std::array<std::int32_t, 5> kRises{80, 105, 125, 130, 150};

}  // namespace

CReports::CReports(std::int32_t brandLabel, const CLoadProfile& profile, Clock clock, ErrorLog& log)
    : m_brandLabel(brandLabel), m_profile(&profile), m_clock(std::move(clock)), m_log(&log) {}

void CReports::Fuel(std::int32_t code) {
    const bool known = code >= 1 && code <= kFuels;
    m_fuel = known ? StringTable::Text(kFirstFuel + code - 1) : "Unknown";
}

void CReports::AltRise(std::int32_t code) {
    const bool known = code >= 0 && code < static_cast<std::int32_t>(kRises.size());
    m_altRise = known ? kRises[static_cast<std::size_t>(code)] : 0;
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
