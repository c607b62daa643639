#pragma once

#include <tuple>

#include "Load.h"

namespace genvara {

/// How a motor's size was entered.
namespace motor_entry {
inline constexpr std::int32_t kHorsepower = 0;
inline constexpr std::int32_t kRunningKW = 1;
inline constexpr std::int32_t kAmps = 2;
}  // namespace motor_entry

/// How a motor is started.
namespace starting_method {
inline constexpr std::int32_t kAcrossTheLine = 1;
inline constexpr std::int32_t kAutotransformer80 = 2;
inline constexpr std::int32_t kAutotransformer65 = 3;
inline constexpr std::int32_t kPartWinding = 4;
inline constexpr std::int32_t kWyeDelta = 5;
inline constexpr std::int32_t kSolidState = 6;
}  // namespace starting_method

/// What the setters of a motor take; running powers up to those of the largest size.
inline constexpr double kMostMotorHP = 1000.0;
namespace motor_limits {
inline constexpr PositiveRange kHP{kMostMotorHP};
inline constexpr PositiveRange kRunningRealPower{798000.0};    // W
inline constexpr PositiveRange kRunningAppPower{887000.0};     // VA
inline constexpr PositiveRange kStartingAppPower{25000000.0};  // VA
/// Current limit of a solid-state starter, percent of running current; kept by its dialog alone.
inline constexpr Range<std::int32_t> kEnteredCurrentLimit{100, 600};
}  // namespace motor_limits

/// Value of a motor input that was not given.
inline constexpr double kNotGiven = -10.0;

/// Induction motors. The class stores what the entry form or the project reader worked out; what it derives
/// itself are imaginary powers, the starting real power and the starting torque.
class CMtrLoad final : public Load {
  public:
    CMtrLoad() : Load({"CMtrLoad::Quantity", "CMtrLoad::Phases"}) {}

    [[nodiscard]] std::unique_ptr<Load> Clone() const override { return std::make_unique<CMtrLoad>(*this); }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kMotor; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override;
    [[nodiscard]] std::string Summary() const override;

    /// Whether the motor starts under load; default true.
    void StartsLoaded(bool loaded) noexcept { m_startsLoaded = loaded; }
    [[nodiscard]] bool StartsLoaded() const noexcept { return m_startsLoaded; }

    /// Code of `starting_method`; any value, default 1, across the line.
    void StartingMethod(std::int32_t code) noexcept { m_startingMethod = code; }
    [[nodiscard]] std::int32_t StartingMethod() const noexcept { return m_startingMethod; }

    /// Code letter of the locked-rotor kVA; one character after trimming, kept in upper case; default "NA".
    /// @throws RaisedError 19 "Code letter is invalid." from "CMtrLoad::CodeLetter".
    void CodeLetter(const std::string& letter);
    [[nodiscard]] const std::string& CodeLetter() const noexcept { return m_codeLetter; }

    /// Whether the motor drives a fire pump; default false.
    void FirePump(bool firePump) noexcept { m_firePump = firePump; }
    [[nodiscard]] bool FirePump() const noexcept { return m_firePump; }

    /// Code of `motor_entry`; any value, default 0. Setting it clears the inputs of the other methods.
    void DataEntryMethod(std::int32_t code) noexcept;
    [[nodiscard]] std::int32_t DataEntryMethod() const noexcept { return m_dataEntryMethod; }

    /// Horsepower [hp]; above 0 up to 1000, default not given.
    /// @throws RaisedError 15 "Horsepower out of range." from "CMtrLoad::HP".
    void HP(double horsepower);
    [[nodiscard]] double HP() const noexcept { return m_hp; }

    /// Running real power [W]; above 0 up to 798,000, default not given.
    /// @throws RaisedError 17 "Running real power out of range." from "CMtrLoad::RunningRealPower".
    void RunningRealPower(double watts);
    [[nodiscard]] double RunningRealPower() const override { return m_runningRealPower; }

    /// Running apparent power [VA]; above 0 up to 887,000, default 0.
    /// @throws RaisedError 18 "Running apparent power (VA) out of range." from "CMtrLoad::RunningAppPower".
    void RunningAppPower(double voltAmperes);
    [[nodiscard]] double RunningAppPower() const override { return m_runningAppPower; }

    /// Running current [A]; any value, default not given.
    void RunningAmps(double amperes) noexcept { m_runningAmps = amperes; }
    [[nodiscard]] double RunningAmps() const noexcept { return m_runningAmps; }

    /// Starting current [A]; any value, default not given.
    void StartingAmps(double amperes) noexcept { m_startingAmps = amperes; }
    [[nodiscard]] double StartingAmps() const noexcept { return m_startingAmps; }

    /// Starting apparent power [VA]; above 0 up to 25,000,000, default 0.
    /// @throws RaisedError 18 "Starting apparent power (VA) out of range." from "CMtrLoad::StartingAppPower".
    void StartingAppPower(double voltAmperes);
    [[nodiscard]] double StartingAppPower() const override { return m_startingAppPower; }

    /// Starting power factor, per unit; any value, default 0.
    void StartingPF(double perUnit) noexcept { m_startingPF = perUnit; }
    [[nodiscard]] double StartingPF() const noexcept { return m_startingPF; }

    [[nodiscard]] double RunningImgPower() const override;
    [[nodiscard]] double StartingImgPower() const override;

    /// Current limit of a solid-state starter [percent of running current]; any value, default 300.
    void SolidStateCurrentLimit(std::int32_t percent) noexcept { m_solidStateCurrentLimit = percent; }
    [[nodiscard]] std::int32_t SolidStateCurrentLimit() const noexcept { return m_solidStateCurrentLimit; }

    /// Starting power factor times starting apparent power [W]; not given if either of them is.
    [[nodiscard]] double StartingRealPower() const override;

    /// Share of full-voltage starting torque that remains under the starter and a genset's voltage dip.
    /// @param dip voltage dip [percent].
    [[nodiscard]] double StartingTorque(double dip) const;

    [[nodiscard]] std::vector<std::string> GetProps() const override;

  private:
    friend class Load;
    [[nodiscard]] auto Inputs() const noexcept {
        return std::tie(m_startsLoaded, m_startingMethod, m_codeLetter, m_firePump, m_dataEntryMethod, m_hp,
                        m_runningRealPower, m_runningAppPower, m_runningAmps, m_startingAmps,
                        m_startingAppPower, m_startingPF, m_solidStateCurrentLimit);
    }

    void AddEntryRows(std::vector<std::string>& rows) const;

    bool m_startsLoaded = true;
    std::int32_t m_startingMethod = starting_method::kAcrossTheLine;
    std::string m_codeLetter = "NA";
    bool m_firePump = false;
    std::int32_t m_dataEntryMethod = motor_entry::kHorsepower;
    double m_hp = kNotGiven;
    double m_runningRealPower = kNotGiven;
    double m_runningAppPower = 0.0;
    double m_runningAmps = kNotGiven;
    double m_startingAmps = kNotGiven;
    double m_startingAppPower = 0.0;
    double m_startingPF = 0.0;
    std::int32_t m_solidStateCurrentLimit = 300;
};

}  // namespace genvara
