#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMiscLoad.h"
#include "CUPSLoad.h"
#include "EngineFixture.h"

namespace genvara {

/// A site, a profile and a catalogue made up at random: ordinary ones, and ones in which something cannot be
/// worked out. Many ratings are equal, so that the order of the catalogue matters.
class RandomDesign {
  public:
    explicit RandomDesign(std::uint32_t seed) : m_random(seed) {
        m_faulty = Chance(0.3);
        MakeSite();
        MakeTables();
        for (int i = Whole(0, 60); i > 0; --i) {
            fixture.gensets.rows.push_back(Row());
        }
        for (int steps = Whole(1, 5); steps > 0; --steps) {
            CLoadStep& step = fixture.AddStep(Pick({35, 35, 30, 20, 10}));
            for (int loads = Whole(1, 3); loads > 0; --loads) {
                step.AddLoad(AnyLoad());
            }
        }
        DesignLimits limits;
        limits.MinLoading(Pick({0, 10, 30, 60, 120}));
        limits.MaxLoading(Pick({100, 80, 50}));
        limits.MaxSetsRecommended(Pick({16, 3, 1, 0, -1}));
        limits.MaxSetsUndersized(Pick({5, 2, 0}));
        fixture.designer.TakeLimits(limits);
    }

    /// Changes one thing of the site, of the loads or of the limits.
    void Vary() {
        switch (Whole(0, 5)) {
            case 0:
                fixture.site.Altitude(Pick({0.0, 1000.0, 1200.0, 3000.0}));
                break;
            case 1:
                fixture.site.GensetsInParallel(Pick({1, 2, 4}));
                break;
            case 2:
                fixture.designer.MaxLoading(Pick({100, 90, 70}));
                break;
            case 3:
                fixture.site.MaxVoltageDip(Pick({35, 25, 15}));
                break;
            case 4:
                fixture.designer.MaxSetsRecommended(Pick({16, 2, 1, 0}));
                break;
            default:
                fixture.profile.LoadStep(1).AddLoad(AnyLoad());
        }
    }

    EngineFixture fixture;

  private:
    [[nodiscard]] bool Chance(double probability) {
        return std::bernoulli_distribution(probability)(m_random);
    }
    [[nodiscard]] int Whole(int least, int most) {
        return std::uniform_int_distribution(least, most)(m_random);
    }
    [[nodiscard]] double Real(double least, double most) {
        return std::uniform_real_distribution(least, most)(m_random);
    }
    template <typename Value>
    [[nodiscard]] Value Pick(std::initializer_list<Value> values) {
        return values.begin()[Whole(0, static_cast<int>(values.size()) - 1)];
    }
    /// Now and then, in a design that is to have faults.
    [[nodiscard]] bool Fault() { return m_faulty && Chance(0.004); }

    void MakeSite() {
        CPwrSys& site = fixture.site;
        site.MaxVoltageDip(Pick({35, 30, 20, 10}));
        site.MaxFreqDipEnabled(Chance(0.5));
        site.MaxFreqDip(Pick({5, 10, 20}));
        site.MaxHarmonicsEnabled(Chance(0.6));
        site.MaxHarmonics(Pick({5, 10, 20}));
        site.GensetsInParallel(Pick({1, 1, 2, 3}));
        site.ConnectCode(Pick({1, 1, 2, 3}));
        site.Phases(Pick({3, 3, 1}));
        site.Altitude(Pick({0.0, 1000.0, 1500.0, 4000.0}));
        site.AmbTemp(Pick({25.0, 40.0, 50.0}));
        site.Fuel(Pick({0, 1, 2}));
        site.RiseDutyCode(Pick({0, 3, 4, 4, 3, 5}));
        site.Voltage(Fault() ? 0 : Pick({480, 208}));
    }

    void MakeTables() {
        for (std::int32_t id = 1; id <= 4; ++id) {
            DerateRow& row = fixture.gensets.derateCodes[10 * id];
            row = {.AltDerateBase = DbNumber(Pick({0.0, 1000.0})),
                   .AltDerateSlope = DbNumber(Pick({0.0, 1.0, 9.0})),
                   .TempDerateBase = DbNumber(40.0),
                   .TempDerateSlope = DbNumber(Real(0.0, 4.0))};
            row.TempDerateSlope = Fault() ? DbNumber() : row.TempDerateSlope;
        }
        for (std::int32_t id = 1; id <= 6; ++id) {
            const double reactance = Fault() ? Pick({0.0, -0.1}) : Real(0.05, 0.3);
            fixture.gensets.alternators[id] =
                MakeAlternator(id, Chance(0.1) ? 0.0 : Real(50, 900), Pick({480.0, 208.0}), reactance);
        }
    }

    [[nodiscard]] GensetRow Row() {
        const double rating = Pick({60.0, 100.0, 125.0, 150.0, 200.0, 250.0, 300.0, 400.0, 600.0, 900.0});
        const std::string model = "M" + std::to_string(fixture.gensets.rows.size());
        GensetRow row = MakeRow({.model = model.c_str(),
                                 .rating = rating,
                                 .startKVA35 = Chance(0.03) ? 0.0 : rating * Real(1.5, 9.0),
                                 .startingPower = rating * Real(0.7, 2.0),
                                 .baseFreqDipKW = Chance(0.2) ? 0.0 : rating * Pick({0.5, 0.7, 1.0}),
                                 .baseFreqDip = Pick({8.0, 12.0, 20.0}),
                                 .expC = Pick({1.0, 0.7, 1.6}),
                                 .fuel = Pick({1, 2}),
                                 .derateCode = 10 * Whole(1, 4),
                                 .alternator = Whole(1, 6)});
        for (DbNumber* field : {&row.Fuel, &row.DerateCode, &row.AltModel, &row.Ratings[3], &row.LRkVA,
                                &row.StartingPower, &row.BaseFreqDipKW, &row.BaseFreqDip, &row.ExpC}) {
            if (Fault()) {
                *field = Pick({DbNumber(), DbNumber::Unreadable(), DbNumber(-3.5), DbNumber(1e300)});
            }
        }
        if (Fault()) {
            row.GensetModel.AssignNull();
        }
        return row;
    }

    [[nodiscard]] std::unique_ptr<Load> AnyLoad() {
        std::unique_ptr<Load> load = Kind();
        load->Phases(Chance(0.2) ? Whole(1, 3) : 0);
        load->Quantity(Pick({1, 1, 2, 3}));
        return load;
    }

    [[nodiscard]] std::unique_ptr<Load> Kind() {
        const double watts = Real(1000.0, 60000.0);
        switch (Whole(0, 3)) {
            case 0: {
                auto load = std::make_unique<CUPSLoad>();
                load->OutputRating(watts);
                load->Family(Pick({ups_family::kOnLine, ups_family::kOnLine, ups_family::kOffLine}));
                load->InputType(Pick({input_type::kSixPulse, input_type::kTwelvePulse}));
                load->InputFilterInstalled(Chance(0.4));
                return load;
            }
            case 1: {
                auto load = std::make_unique<CLightLoad>();
                load->LightType(light_type::kFluorescent);
                load->Ballast(Pick({ballast::kElectronic, ballast::kHighEffMagnetic}));
                load->RunningRealPower(watts);
                return load;
            }
            case 2: {
                auto load = std::make_unique<CBatChrgLoad>();
                load->BatteryVoltage(Fault() ? -48.0 : 48.0);
                load->ChargeCurrent(watts / 48.0);
                return load;
            }
            default: {
                auto load = std::make_unique<CMiscLoad>();
                load->RunningRealPower(watts);
                load->RunningPowerFactor(Pick({1.0, 0.8}));
                return load;
            }
        }
    }

    std::mt19937 m_random;
    bool m_faulty = false;
};

}  // namespace genvara
