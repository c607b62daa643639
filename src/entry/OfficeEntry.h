#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "COfficeLoad.h"

namespace genvara {

/// One of the counts of office machines.
struct OfficeCount {
    const char* label;
    const char* field;
    const char* caption;
    std::string_view member;
    std::int32_t (COfficeLoad::*stored)() const noexcept;
    void (COfficeLoad::*store)(std::int32_t);
};

/// In the order in which they are shown and stored.
inline constexpr std::array<OfficeCount, 4> kOfficeCounts{
    {{"lblPC", "txtPC", "Num. Desktop Computers", "NumPCs", &COfficeLoad::NumPCs, &COfficeLoad::NumPCs},
     {"lblPrinters", "txtPrinters", "Num. Printers", "NumPrinters", &COfficeLoad::NumPrinters,
      &COfficeLoad::NumPrinters},
     {"lblFaxes", "txtFaxes", "Num. Fax Machines", "NumFaxes", &COfficeLoad::NumFaxes,
      &COfficeLoad::NumFaxes},
     {"lblCopiers", "txtCopiers", "Num. Copiers", "NumCopiers", &COfficeLoad::NumCopiers,
      &COfficeLoad::NumCopiers}}};

/// Shown when no machine at all is counted.
inline constexpr std::string_view kNothingCounted = "At least one type of load must be specified.";

/// Whether a count is left out: the load then keeps the one that it has.
[[nodiscard]] bool IsLeftOut(std::string_view text);

/// Whether all counts are left out, and the load cannot be stored.
[[nodiscard]] bool AllLeftOut(std::span<const std::string> texts);

}  // namespace genvara
