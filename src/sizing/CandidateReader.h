#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "Candidate.h"
#include "Derating.h"
#include "GensetRecords.h"
#include "GensetSource.h"
#include "SiteRequirements.h"

/// From rows of the genset database to the figures of a candidate: every run reads its candidates here, in
/// one order, so that a row that cannot be read ends each of them at the same place with the same error.
namespace genvara {

/// An alternator as its row gives it.
struct AlternatorData {
    std::string ModelNum;        ///< up to its first dash
    double BasekW = 0.0;         ///< power base of the subtransient reactance [kW]
    double BaseVolts = 0.0;      ///< voltage base of it [V]
    double SubtransReact = 0.0;  ///< per unit
};

/// @throws RaisedError 13 or 6 from "CDesigner::ReadAlternator" for the first field that cannot be read.
[[nodiscard]] AlternatorData AlternatorDataOf(const AlternatorRow& row);

/// An alternator as a source of distortion at a site.
struct AlternatorOnSite {
    std::size_t position = 0;         ///< among the alternators of the run
    bool hasDistortion = false;       ///< whether its data allow distortion to be worked out
    double generatorPower = 0.0;      ///< kW base of the impedance, of all sets
    double generatorImpedance = 0.0;  ///< per unit, at the site's voltage
};

/// @throws RaisedError 11 or 6 from "CDesigner::ScaleReactance" for a site of no volts.
[[nodiscard]] AlternatorOnSite AlternatorAt(const AlternatorData& alternator, const SiteRequirements& site,
                                            std::size_t position);

/// What the rows of candidates refer to by key, as a site has it.
class SiteTables {
  public:
    SiteTables() = default;
    virtual ~SiteTables() = default;
    SiteTables(const SiteTables&) = delete;
    SiteTables& operator=(const SiteTables&) = delete;
    SiteTables(SiteTables&&) = delete;
    SiteTables& operator=(SiteTables&&) = delete;

    /// @throws RaisedError if no row has the key or its fields cannot be read.
    [[nodiscard]] virtual const DerateFactors& Derate(std::int32_t key) = 0;
    /// @throws RaisedError likewise.
    [[nodiscard]] virtual const AlternatorOnSite& Alternator(std::int32_t key) = 0;
};

/// The tables of a genset source, asked for each key once.
class SourceTables final : public SiteTables {
  public:
    /// Both outlive the tables.
    SourceTables(GensetSource& gensets, const SiteRequirements& site) : m_gensets(&gensets), m_site(&site) {}

    [[nodiscard]] const DerateFactors& Derate(std::int32_t key) override;
    [[nodiscard]] const AlternatorOnSite& Alternator(std::int32_t key) override;

    /// Model number of an alternator that was asked for, by its position.
    [[nodiscard]] const std::string& ModelNum(std::size_t alternator) const { return m_models[alternator]; }

  private:
    GensetSource* m_gensets;
    const SiteRequirements* m_site;
    std::unordered_map<std::int32_t, DerateFactors> m_derateFactors;
    std::unordered_map<std::int32_t, AlternatorOnSite> m_alternators;
    std::vector<std::string> m_models;
};

/// The figures of a row at a site.
/// @throws RaisedError of the tables, of a field that cannot be read, or of the arithmetic.
[[nodiscard]] Candidate CandidateAt(const GensetNumbers& row, const SiteRequirements& site,
                                    SiteTables& tables);

/// What of a row the lists of a run show beside figures.
struct SetNames {
    const std::string& model;
    const std::string& engine;
    std::int32_t fuelType;
};

/// Read when a candidate is filed, whether its list has room for it or not.
/// @throws RaisedError 13 or 6 from "CDesigner::ChooseSets".
[[nodiscard]] SetNames NamesOf(const GensetNumbers& row, const GensetTexts& texts);

/// Whether `NamesOf` succeeds.
[[nodiscard]] bool HasNames(const GensetNumbers& row, const GensetTexts& texts) noexcept;

}  // namespace genvara
