#include "CAirCondLoad.h"

#include <fmt/format.h>

#include <cmath>

#include "LinearPower.h"
#include "RangeCheck.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

/// How a size input is refused.
struct SizeRefusal {
    std::int32_t number;
    std::string_view quantity;
    std::string_view source;
    int decimals;
};

void RequireSize(double value, double limit, const SizeRefusal& refusal) {
    if (!(value > 0.0)) {
        throw RaisedError(refusal.number, std::string(refusal.source),
                          fmt::format("{} must be greater than 0.", refusal.quantity));
    }
    if (value > limit) {
        throw RaisedError(
            refusal.number, std::string(refusal.source),
            fmt::format("{} must be less than {}.", refusal.quantity, RenderFixed(limit, refusal.decimals)));
    }
}

}  // namespace

std::string CAirCondLoad::Summary() const {
    return fmt::format("{}air conditioner{}", Phases() == 0 ? "3 phase " : "1 phase ",
                       PluralEnding(Quantity()));
}

void CAirCondLoad::HP(double horsepower) {
    RequireSize(horsepower, kMostMotorHP, {15, "Horsepower", "CAirCondLoad::HP", 1});
    m_hp = horsepower;
}

void CAirCondLoad::BTU(double btuPerHour) {
    RequireSize(btuPerHour, HPToBTU(kMostMotorHP), {20, "BTU/hr", "CAirCondLoad::BTU", 0});
    m_btu = btuPerHour;
}

void CAirCondLoad::Tonnage(double tons) {
    RequireSize(tons, HPToTons(kMostMotorHP), {21, "A/C tonnage", "CAirConLoad::Tonnage", 2});
    m_tonnage = tons;
}

void CAirCondLoad::DataEntryMethod(std::int32_t code) noexcept {
    m_dataEntryMethod = code;
    if (code == aircond_entry::kBTU || code == aircond_entry::kTonnage) {
        m_hp = kNotGiven;
    }
    if (code == aircond_entry::kBTU || code == aircond_entry::kHorsepower) {
        m_tonnage = kNotGiven;
    }
    if (code == aircond_entry::kTonnage || code == aircond_entry::kHorsepower) {
        m_btu = kNotGiven;
    }
}

void CAirCondLoad::RunningRealPower(double watts) {
    RequireRange(watts, motor_limits::kRunningRealPower,
                 {17, "Running real power out of range.", "CAirCondLoad::RunningRealPower"});
    m_runningRealPower = watts;
}

void CAirCondLoad::RunningAppPower(double voltAmperes) {
    RequireRange(voltAmperes, motor_limits::kRunningAppPower,
                 {18, "Running apparent power (VA) out of range.", "CAirCondLoad::RunningAppPower"});
    m_runningAppPower = voltAmperes;
}

void CAirCondLoad::StartingAppPower(double voltAmperes) {
    RequireRange(voltAmperes, aircond_limits::kStartingAppPower,
                 {18, "Starting apparent power (VA) out of range.", "CAirCondLoad::StartingAppPower"});
    m_startingAppPower = voltAmperes;
}

double CAirCondLoad::StartingRealPower() const {
    if (m_startingPF == kNotGiven || m_startingAppPower == kNotGiven) {
        return kNotGiven;
    }
    return Finite(m_startingPF * m_startingAppPower, "CAirCondLoad::StartingRealPower");
}

double CAirCondLoad::RunningImgPower() const {
    return ImaginaryRest(m_runningAppPower, m_runningRealPower, "CAirCondLoad::RunningImgPower");
}

double CAirCondLoad::StartingImgPower() const {
    constexpr std::string_view kMember = "CAirCondLoad::StartingImgPower";
    return Quotient(m_startingAppPower * m_startingPF * std::sin(ArcCos(m_startingPF, kMember)), m_startingPF,
                    kMember);
}

std::vector<std::string> CAirCondLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps();
    const auto add = [&rows](std::string_view label, std::string_view value) {
        rows.push_back(PropertyRow(label, value));
    };
    switch (m_dataEntryMethod) {
        case aircond_entry::kBTU:
            add("Data Entry Method", "BTU/hr");
            add("BTU/hr", RenderPlain(m_btu));
            break;
        case aircond_entry::kTonnage:
            add("Data Entry Method", "Tons");
            add("Tons", RenderPlain(m_tonnage));
            break;
        case aircond_entry::kHorsepower:
            add("Data Entry Method", "HP");
            add("HP", RenderPlain(m_hp));
            break;
        default:
            add("Data Entry Method", "ERROR");
            add("---", "---");
            break;
    }
    add("Starting PF", RenderPlain(m_startingPF));
    add("Starting kVA", KiloText(m_startingAppPower));
    return rows;
}

bool CAirCondLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
