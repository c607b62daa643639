#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CDefaults.h"
#include "CDesigner.h"
#include "CLoadProfile.h"
#include "CMiscLoad.h"
#include "CPwrSys.h"
#include "GensetSource.h"
#include "RaisedError.h"

namespace genvara {

/// Candidates, derate codes and alternators that a test writes down.
class MemoryGensets final : public GensetSource {
  public:
    std::vector<GensetRow> rows;
    std::map<std::int32_t, DerateRow> derateCodes;
    std::map<std::int32_t, AlternatorRow> alternators;
    bool rowsAreNumbered = true;
    int derateQuestions = 0;
    int alternatorQuestions = 0;

    [[nodiscard]] PropertiesRecord Properties() override {
        return {.ID = 1, .Version = "4.20", .Date = "today", .Initials = "AB"};
    }
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& /*filter*/) override {
        return std::make_unique<Cursor>(rows);
    }
    /// Rows are numbered by tens, so that a position cannot be taken for one.
    [[nodiscard]] std::optional<std::int64_t> RowNumber(const SiteFilter& /*filter*/,
                                                        std::int64_t position) override {
        return rowsAreNumbered ? std::optional(10 * (position + 1)) : std::nullopt;
    }
    [[nodiscard]] DerateRow DerateCode(std::int32_t id) override {
        ++derateQuestions;
        return Find(derateCodes, id);
    }
    [[nodiscard]] AlternatorRow Alternator(std::int32_t id) override {
        ++alternatorQuestions;
        return Find(alternators, id);
    }

  private:
    class Cursor final : public GensetCursor {
      public:
        explicit Cursor(const std::vector<GensetRow>& rows) : m_rows(&rows) {}
        [[nodiscard]] const GensetRow* Next() override {
            return m_next < m_rows->size() ? &(*m_rows)[m_next++] : nullptr;
        }

      private:
        const std::vector<GensetRow>* m_rows;
        std::size_t m_next = 0;
    };

    template <typename Row>
    static Row Find(const std::map<std::int32_t, Row>& table, std::int32_t id) {
        const auto found = table.find(id);
        if (found == table.end()) {
            throw RaisedError(3021, "GensetDatabase", "no row");
        }
        return found->second;
    }
};

/// What a test says of a candidate; the rest is harmless.
struct SetFigures {
    const char* model = "SET";
    double rating = 100.0;          // kW at every rise
    double startKVA35 = 1000.0;     // kVA
    double startingPower = 1000.0;  // kW
    double baseFreqDipKW = 0.0;     // kW
    double baseFreqDip = 10.0;      // percent
    double expC = 1.0;
    std::int32_t fuel = 1;
    std::int32_t derateCode = 1;
    std::int32_t alternator = 1;
};

[[nodiscard]] inline GensetRow MakeRow(const SetFigures& set) {
    GensetRow row;
    row.Fuel = DbNumber(set.fuel);
    row.DerateCode = DbNumber(set.derateCode);
    row.AltModel = DbNumber(set.alternator);
    row.GensetModel.Assign(set.model);
    row.EngineModel.Assign("ENGINE");
    row.Ratings.fill(DbNumber(set.rating));
    row.LRkVA = DbNumber(set.startKVA35);
    row.StartingPower = DbNumber(set.startingPower);
    row.BaseFreqDipKW = DbNumber(set.baseFreqDipKW);
    row.BaseFreqDip = DbNumber(set.baseFreqDip);
    row.ExpC = DbNumber(set.expC);
    return row;
}

[[nodiscard]] inline AlternatorRow MakeAlternator(std::int32_t id, double basekW, double baseVolts,
                                                  double reactance) {
    AlternatorRow row{.ID = DbNumber(id),
                      .ModelNum = {},
                      .BasekW = DbNumber(basekW),
                      .BaseVolts = DbNumber(baseVolts),
                      .SubtransReact = DbNumber(reactance)};
    row.ModelNum.Assign("ALT-X");
    return row;
}

/// A site at sea level with a profile, and a designer over candidates in memory. Loading limits are out of
/// the way unless a test sets them.
class EngineFixture {
  public:
    EngineFixture() {
        gensets.derateCodes[1] = {.AltDerateBase = DbNumber(1000.0),
                                  .AltDerateSlope = DbNumber(1.0),
                                  .TempDerateBase = DbNumber(40.0),
                                  .TempDerateSlope = DbNumber(2.0)};
        gensets.alternators[1] = MakeAlternator(1, 0.0, 0.0, 0.0);
        site.MaxVoltageDip(35);
        designer.MinLoading(0);
        designer.MaxLoading(100);
    }

    CLoadStep& AddStep(std::int32_t maxDip = 35) {
        profile.AddLoadStep("step", maxDip, 0);
        return profile.LoadStep(profile.NumLoadSteps());
    }

    /// A step with one three-phase load of unity power factor [kW].
    CLoadStep& AddKilowatts(double kilowatts, std::int32_t phases = 0) {
        CLoadStep& step = AddStep();
        auto load = std::make_unique<CMiscLoad>();
        load->RunningRealPower(kilowatts * 1000.0);
        load->Phases(phases);
        step.AddLoad(std::move(load));
        return step;
    }

    std::int32_t Run() {
        designer.SelectGensets();
        return designer.ChooseSets();
    }

    CDefaults defaults;
    CPwrSys site{defaults};
    CLoadProfile profile;
    MemoryGensets gensets;
    CDesigner designer{gensets, site, profile};
};

}  // namespace genvara
