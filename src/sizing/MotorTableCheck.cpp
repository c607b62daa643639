#include "MotorTableCheck.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <utility>

#include "CMtrLoad.h"
#include "Kilo.h"
#include "NumberText.h"
#include "RaisedError.h"
#include "mdlUtility.h"

namespace genvara {
namespace {

struct Column {
    std::string_view name;
    const std::vector<double>* values;
};

/// The findings on tables that ascend.
class EndsCheck {
  public:
    EndsCheck(const MotorRows& motors, std::vector<MotorFinding>& findings)
        : m_motors(&motors), m_tables(&motors.tables), m_findings(&findings) {}

    void Check() {
        CheckSmallMotors();
        CheckLargestMotor();
        CheckReopenedMotors();
    }

  private:
    /// Below the table it is carried on down to nothing.
    void CheckSmallMotors() {
        if (const double kW = At(0.0, m_tables->MotorHP, m_tables->MotorRunningKW); kW < 0.0) {
            First("RunningKW", fmt::format("carried on to 0 hp comes to {} kW", RenderFixed(kW, 3)));
        }
        if (const double kVA = At(0.0, m_tables->MotorRunningKW, m_tables->MotorRunningKVA); kVA < 0.0) {
            First("RunningKVA", "carried on to small motors comes to less kVA than kW");
        }
        if (const double factor = At(0.0, m_tables->MotorHP, m_tables->MotorStartPF);
            !IsPowerFactor(factor)) {
            First("SPF",
                  fmt::format("carried on to 0 hp comes to a power factor of {}", RenderFixed(factor, 3)));
        }
    }

    void CheckLargestMotor() {
        const double kW = At(kMostMotorHP, m_tables->MotorHP, m_tables->MotorRunningKW);
        if (kW * kPerKilo > motor_limits::kRunningRealPower.greatest) {
            Last("RunningKW",
                 fmt::format("takes 1000 hp to {} kW, above the 798 of a motor", RenderFixed(kW, 3)));
        }
        const double kVA = At(kW, m_tables->MotorRunningKW, m_tables->MotorRunningKVA);
        if (kVA * kPerKilo > motor_limits::kRunningAppPower.greatest) {
            Last("RunningKVA",
                 fmt::format("takes 1000 hp to {} kVA, above the 887 of a motor", RenderFixed(kVA, 3)));
        }
        const double factor = At(kMostMotorHP, m_tables->MotorHP, m_tables->MotorStartPF);
        if (!IsPowerFactor(factor)) {
            Last("SPF", fmt::format("takes 1000 hp to a power factor of {}", RenderFixed(factor, 3)));
        }
    }

    /// A motor that was saved by its running kW is looked up by its watts, far beyond the table.
    void CheckReopenedMotors() {
        const double voltAmperes =
            At(motor_limits::kRunningRealPower.greatest, m_tables->MotorRunningKW, m_tables->MotorRunningKVA);
        if (voltAmperes < motor_limits::kRunningRealPower.greatest) {
            Last("RunningKVA",
                 "rises less than RunningKW: a motor that is saved by its kW would reopen with less kVA than "
                 "kW");
        } else if (voltAmperes > motor_limits::kRunningAppPower.greatest) {
            Last(
                "RunningKVA",
                fmt::format("rises so steeply that a motor saved with 798 kW would reopen with {} kVA, above "
                            "the 887 of a motor",
                            RenderFixed(voltAmperes / kPerKilo, 3)));
        }
    }

    static double At(double x, const std::vector<double>& from, const std::vector<double>& to) {
        return InterpolateXY(x, from, to);
    }
    static bool IsPowerFactor(double factor) { return factor > 0.0 && factor <= 1.0; }

    void First(std::string_view column, std::string fault) {
        m_findings->push_back({m_motors->numbers.front(), column, std::move(fault)});
    }
    void Last(std::string_view column, std::string fault) {
        m_findings->push_back({m_motors->numbers.back(), column, std::move(fault)});
    }

    const MotorRows* m_motors;
    const MotorConversions* m_tables;
    std::vector<MotorFinding>* m_findings;
};

}  // namespace

std::vector<MotorFinding> CheckMotorTables(const MotorRows& motors) {
    const MotorConversions& tables = motors.tables;
    const std::array<Column, 3> ascending{{{"HP", &tables.MotorHP},
                                           {"RunningKW", &tables.MotorRunningKW},
                                           {"RunningKVA", &tables.MotorRunningKVA}}};
    std::vector<MotorFinding> findings;
    for (const Column& column : ascending) {
        for (std::size_t i = 1; i < column.values->size(); ++i) {
            const double value = (*column.values)[i];
            if (value <= (*column.values)[i - 1]) {
                findings.push_back(
                    {motors.numbers[i], column.name, fmt::format("{} does not ascend", RenderPlain(value))});
            }
        }
    }
    if (findings.empty() && motors.numbers.size() > 1) {
        try {
            EndsCheck(motors, findings).Check();
        } catch (const RaisedError& failure) {
            findings.push_back({motors.numbers.back(), "HP",
                                fmt::format("cannot be interpolated: {}", failure.Description())});
        }
    }
    return findings;
}

}  // namespace genvara
