#pragma once

#include <QString>

#include "EntryNumbers.h"
#include "ProfileColumns.h"
#include "ProfilePowers.h"
#include "ProjectMoment.h"

namespace genvara {

/// What stands in the rows of a load profile beside their names. Cells are asked of the records at each look:
/// there is nothing that could be out of date, and nothing to bring up to date but what is seen.
class ProfileCells {
  public:
    /// @param profile outlives the cells.
    explicit ProfileCells(const CLoadProfile& profile) : m_profile(&profile) {}

    /// Text of a cell of a step or a load; empty where the row has none, "?" for a figure that cannot be
    /// worked out.
    [[nodiscard]] QString Text(ProfilePlace row, int column) const;
    /// Why a cell says "?"; empty for any other.
    [[nodiscard]] QString Why(ProfilePlace row, int column) const;
    /// All cells of a row in words, for somebody who hears it.
    [[nodiscard]] QString Words(ProfilePlace row) const;

  private:
    [[nodiscard]] PowerFigure Figure(ProfilePlace row, int column) const;
    [[nodiscard]] const CLoadStep* StepOf(ProfilePlace row) const;
    [[nodiscard]] const Load* LoadOf(ProfilePlace row) const;

    const CLoadProfile* m_profile;
    EntryNumbers m_numbers;
};

/// A power in kW or kVA with the two decimals of all columns, or "?".
[[nodiscard]] QString PowerText(const PowerFigure& figure, const EntryNumbers& numbers);

/// Four figures in words: "running 12.00 kW, 13.33 kVA, starting 40.00 kW, 60.00 kVA".
[[nodiscard]] QString PowerWords(const std::array<QString, kPowerKinds.size()>& texts);

}  // namespace genvara
