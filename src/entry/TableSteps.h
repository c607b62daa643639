#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "TableNumbers.h"

namespace genvara {

/// A step that a table adds to a project, behind its last one.
struct NewStep {
    std::string description;
    std::int32_t maxVoltageDip = 0;  ///< percent
};

/// Finds the steps that the rows of a table name, and those that it adds.
///
/// A number is a position from 1, and a text a step's description; neither has to be there yet. Steps with a
/// number are added in order and without gaps, those with a name behind them, in the order in which the table
/// names them. A row that tells no step has that of the row before; the first one has the step at hand.
class TableSteps {
  public:
    /// @param atHand position of the step at hand; 0 for the last one.
    TableSteps(const CLoadProfile& profile, const CPwrSys& site, std::int32_t atHand);

    /// Takes the next row's step.
    /// @return a sentence on what is wrong with it; empty for nothing.
    [[nodiscard]] std::string Take(const std::string& cell, const TableNumbers& numbers);
    /// Once all rows are taken: finds their steps.
    void Settle();

    /// Position of a row's step from 1; 0 for a bad one.
    [[nodiscard]] std::int32_t StepOf(std::size_t row) const { return m_rows.at(row).step; }
    /// What was found wrong with it by `Settle`; empty for nothing.
    [[nodiscard]] const std::string& FaultOf(std::size_t row) const { return m_rows.at(row).fault; }
    /// Takes a load into a step.
    /// @return false if the step has no room for it.
    [[nodiscard]] bool TakeLoad(std::int32_t step);

    [[nodiscard]] const std::vector<NewStep>& Added() const noexcept { return m_added; }
    /// What a step is called.
    [[nodiscard]] std::string Description(std::int32_t step) const;

  private:
    struct Row {
        std::int32_t step = 0;
        std::string name{};  ///< of a step that is added by its name
        bool followsRowBefore = false;
        std::string fault{};
    };
    [[nodiscard]] std::string TakeNumber(Row& row, double number);
    [[nodiscard]] std::string TakeName(Row& row, const std::string& name);
    void AddNumbered();
    void AddNamed();
    void AddStep(std::string description);

    const CLoadProfile* m_profile;
    std::int32_t m_maxVoltageDip;
    std::int32_t m_atHand;
    std::vector<Row> m_rows;
    std::vector<NewStep> m_added;
    std::vector<std::int32_t> m_room;  ///< of each step, for how many loads
};

}  // namespace genvara
