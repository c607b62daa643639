#pragma once

#include <array>

#include "ProfilePowers.h"

class QHeaderView;
class QString;

namespace genvara {

/// Columns of the load profile's tree.
namespace profile_column {
inline constexpr int kText = 0;    ///< description of a step, name of a load
inline constexpr int kNumber = 1;  ///< position of a step, from 1
inline constexpr int kQuantity = 2;
inline constexpr int kPhases = 3;
inline constexpr int kFirstPower = 4;  ///< powers stand in the order of `kPowerKinds`
inline constexpr int kCount = kFirstPower + static_cast<int>(kPowerKinds.size());

[[nodiscard]] constexpr bool IsPower(int column) noexcept {
    return column >= kFirstPower && column < kCount;
}
/// The kind of a column of powers.
[[nodiscard]] constexpr PowerKind KindOf(int column) noexcept {
    return static_cast<PowerKind>(column - kFirstPower);
}
[[nodiscard]] constexpr int ColumnOf(PowerKind kind) noexcept {
    return kFirstPower + static_cast<int>(kind);
}

/// Caption of a column on one line: "Running kW".
[[nodiscard]] QString Name(int column);
/// The same on two lines, where it has two words.
[[nodiscard]] QString HeaderText(int column);
}  // namespace profile_column

/// Makes the columns as wide as what they hold, and hides those for which there is no room, the least
/// important first. The texts keep room to be read.
/// @param room width of all columns together [pixels].
/// @param widest the longest figure, in the rows' own letters.
void ChooseColumns(QHeaderView& header, int room, const QString& widest);

}  // namespace genvara
