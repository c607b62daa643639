#pragma once

#include <QString>

#include "ReportLayout.h"

namespace genvara {

/// The selection in a report, as positions in its text: from where it began to where it has been moved.
class ReportSelection {
  public:
    /// Where a selection's moving end goes.
    enum class Move {
        kLeft,
        kRight,
        kWordLeft,
        kWordRight,
        kUp,
        kDown,
        kRowStart,
        kRowEnd,
        kTextStart,
        kTextEnd
    };
    /// What a selection by mouse consists of.
    enum class Unit { kCharacter, kWord, kRow };

    [[nodiscard]] int From() const noexcept;
    [[nodiscard]] int To() const noexcept;
    [[nodiscard]] int Cursor() const noexcept { return m_cursor; }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_anchor == m_cursor; }

    /// Selects nothing, at a position.
    void Set(int position);
    void Set(int anchor, int cursor);
    /// Begins a selection with the unit at a position.
    void Begin(const ReportLayout& layout, int position, Unit unit);
    /// Extends the selection to a position, by whole units.
    void Extend(const ReportLayout& layout, int position);
    /// Moves the selection's end.
    void Extend(const ReportLayout& layout, Move move);

  private:
    int m_anchor = 0;
    int m_cursor = 0;
    Unit m_unit = Unit::kCharacter;
    int m_unitFrom = 0;  // the unit with which the selection began
    int m_unitTo = 0;
    double m_column = -1.0;  // twips from the page's edge that moves up and down keep to; below 0 for none
};

}  // namespace genvara
