#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "GensetDatabase.h"
#include "MemberChange.h"
#include "MotorConversions.h"

namespace genvara {

class CPwrSys;

/// The genset catalogue at hand: where it lies, and what of it the site, the forms and the reader of projects
/// ask for, each read at its first call and then shared.
///
/// The candidates of a run are not among it: they are asked of `Gensets`. Once `RequireFit` has passed, any
/// number of threads may ask for what it reads.
class Catalogue {
  public:
    /// Opens the database, and reads nothing of it yet.
    /// @throws RaisedError 53 for a missing file, the system's number for one that may not be read, 0 for one
    /// that
    ///         is no database.
    explicit Catalogue(std::filesystem::path file) : m_database(std::move(file)) {}

    [[nodiscard]] const std::filesystem::path& File() const noexcept { return m_database.File(); }
    [[nodiscard]] GensetDatabase& Gensets() noexcept { return m_database; }

    /// Why the program cannot even start with a database, as a sentence; empty if it can.
    [[nodiscard]] static std::string WhyUnfit(const std::filesystem::path& file);

    /// What is missing of that which projects are sized with, as a sentence; empty for a whole catalogue. The
    /// program can do without, as far as it goes.
    [[nodiscard]] std::string WhatIsMissing();

    /// Makes sure that projects can be sized with it, and reads what they share: connections and motor
    /// tables.
    /// @throws RaisedError 0 with a sentence that names the database and what is missing or cannot be read.
    void RequireFit();

    // Each raises the database's own number as long as it cannot be read.
    /// The winding connections offered to the user, in table order.
    [[nodiscard]] const std::vector<ConnectionRecord>& Connections();
    /// The line-to-line voltages [V] for which there are sets, as the database gives them.
    [[nodiscard]] const std::vector<std::int32_t>& VoltagesLL();
    /// Locked-rotor kVA per horsepower by code letter, in table order.
    [[nodiscard]] const std::vector<CodeLetterRecord>& MotorCodeLetters();
    /// Starting kVA as a multiple of the locked-rotor kVA, by the order of the starting methods.
    [[nodiscard]] const std::vector<double>& MotorStartingMultipliers();

    /// Phases of a connection; none if no row has the code.
    /// @throws RaisedError of `Connections`.
    [[nodiscard]] std::optional<std::int32_t> PhasesOf(std::int32_t connectCode);

    /// Gives a site the phases of its connection; one that the database does not know leaves them.
    /// @throws RaisedError of `Connections`.
    void FollowConnection(CPwrSys& site);

    /// Reads the motor tables into the object that loads and readers hold on to.
    /// @throws RaisedError with the database's own number; the tables are then as before.
    void ReadMotorConversions() { m_motors = m_database.ReadMotorConversions(); }
    /// The motor tables; empty until they are read.
    [[nodiscard]] const MotorConversions& Motors() const noexcept { return m_motors; }

    /// What changes of members are worked out by. They ask this catalogue, which outlives them.
    /// @throws RaisedError of the tables.
    [[nodiscard]] EntryRules Rules() {
        return {.motors = {Motors(), MotorCodeLetters(), MotorStartingMultipliers()},
                .phasesOf = [this](std::int32_t code) { return PhasesOf(code); }};
    }

  private:
    GensetDatabase m_database;
    MotorConversions m_motors;
    std::optional<std::vector<ConnectionRecord>> m_connections;
    std::optional<std::vector<std::int32_t>> m_volts;
    std::optional<std::vector<CodeLetterRecord>> m_codeLetters;
    std::optional<std::vector<double>> m_multipliers;
};

}  // namespace genvara
