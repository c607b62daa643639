#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "RangeCheck.h"

namespace genvara {

/// Codes of the nine kinds of load: in project files, on the forms, and where a step asks for a kind.
namespace load_type {
inline constexpr std::int32_t kAirConditioning = 0;
inline constexpr std::int32_t kBatteryCharger = 1;
inline constexpr std::int32_t kLighting = 2;
inline constexpr std::int32_t kMedicalImaging = 3;
inline constexpr std::int32_t kMiscellaneous = 4;
inline constexpr std::int32_t kMotor = 5;
inline constexpr std::int32_t kOffice = 6;
inline constexpr std::int32_t kUPS = 7;
inline constexpr std::int32_t kVFD = 8;

/// Number of kinds; the codes run from 0 without a gap.
inline constexpr std::int32_t kCount = 9;
}  // namespace load_type

/// What every kind takes as a number of units, and as a connection code.
inline constexpr Range<std::int32_t> kLoadQuantity{1, 256};
inline constexpr Range<std::int32_t> kLoadPhases{0, 3};

/// One line of a load step: a number of identical consumers that start together.
///
/// Every power is that of ONE unit, in W, VA or var: nothing here multiplies by the quantity. The eight
/// harmonic members tell how much of the running power reaches the supply through which kind of
/// rectifier or ballast; a kind without any keeps the zeros of this class.
///
/// A figure that cannot be worked out raises the language's own error (5, 6 or 11) with the member that
/// computes it as source, as in "CMtrLoad::RunningImgPower".
class Load {
  public:
    virtual ~Load() = default;
    Load& operator=(const Load&) = delete;
    Load& operator=(Load&&) = delete;

    /// A load of the same kind that holds the same, ID included. Motor tables are shared with it.
    [[nodiscard]] virtual std::unique_ptr<Load> Clone() const = 0;

    [[nodiscard]] virtual std::int32_t LoadType() const noexcept = 0;

    /// Whether another load is of the same kind and holds the same, whatever the two IDs are.
    [[nodiscard]] virtual bool HoldsSame(const Load& other) const = 0;

    /// One line for the load profile's list.
    [[nodiscard]] virtual std::string Summary() const = 0;

    /// Number within the step; 0 until a step takes the load.
    [[nodiscard]] std::int32_t ID() const noexcept { return m_id; }
    void ID(std::int32_t id) noexcept { m_id = id; }

    [[nodiscard]] const std::string& name() const noexcept { return m_name; }
    void name(std::string text);

    [[nodiscard]] const std::string& Description() const noexcept { return m_description; }
    void Description(std::string text);

    /// Number of identical units; 1 to 256, default 1.
    /// @throws RaisedError 2 "Load quantity out of range" from the kind's own source.
    void Quantity(std::int32_t units);
    [[nodiscard]] std::int32_t Quantity() const noexcept { return m_quantity; }

    /// Connection code: 0 three-phase or evenly distributed, 1 to 3 single-phase on A to C; default 0.
    /// @throws RaisedError 7 "Invalid number of phases" from the kind's own source.
    void Phases(std::int32_t code);
    [[nodiscard]] std::int32_t Phases() const noexcept { return m_phases; }

    [[nodiscard]] virtual double RunningRealPower() const = 0;   ///< [W] while running.
    [[nodiscard]] virtual double RunningAppPower() const = 0;    ///< [VA] while running.
    [[nodiscard]] virtual double RunningImgPower() const = 0;    ///< [var] while running.
    [[nodiscard]] virtual double StartingRealPower() const = 0;  ///< [W] while starting.
    [[nodiscard]] virtual double StartingAppPower() const = 0;   ///< [VA] while starting.
    [[nodiscard]] virtual double StartingImgPower() const = 0;   ///< [var] while starting.

    [[nodiscard]] virtual double ThreePhaseSixPulseRectPower() const { return 0.0; }             ///< [W]
    [[nodiscard]] virtual double ThreePhaseTwelvePulseRectPower() const { return 0.0; }          ///< [W]
    [[nodiscard]] virtual double ThreePhaseSixPulseRectFilteredPower() const { return 0.0; }     ///< [W]
    [[nodiscard]] virtual double ThreePhaseTwelvePulseRectFilteredPower() const { return 0.0; }  ///< [W]
    [[nodiscard]] virtual double ThreePhaseSixPulsePPCRectPower() const { return 0.0; }          ///< [W]
    // Per phase, 1 to 3 for A to C [W].
    [[nodiscard]] virtual double SinglePhaseRectPower(std::int32_t /*phase*/) const { return 0.0; }
    [[nodiscard]] virtual double SinglePhaseElectBallastPower(std::int32_t /*phase*/) const { return 0.0; }
    [[nodiscard]] virtual double SinglePhaseMagBallastPower(std::int32_t /*phase*/) const { return 0.0; }

    /// The load's properties, one a row: label, tab, value. The first four rows are the same for all kinds.
    [[nodiscard]] virtual std::vector<std::string> GetProps() const = 0;

  protected:
    /// Sources of the two range errors that all kinds share. They do not always name the kind itself.
    struct CommonSources {
        std::string_view quantity;
        std::string_view phases;
    };

    explicit Load(CommonSources sources) : m_sources(sources) {}
    // For `Clone`: a copy of a load of unknown kind would keep nothing of the kind.
    Load(const Load&) = default;
    Load(Load&&) = default;

    /// `HoldsSame` of a kind, whose `Inputs` tie what it holds itself.
    template <typename Kind>
    [[nodiscard]] static bool SameKind(const Kind& load, const Load& other) {
        return other.LoadType() == load.LoadType() && SharesInputs(load, other) &&
               load.Inputs() == static_cast<const Kind&>(other).Inputs();
    }

    /// The rows "ID", "Name", "Qty" and "Phases"; `balancedText` is what phases code 0 reads as.
    [[nodiscard]] std::vector<std::string> CommonProps(std::string_view balancedText = "3") const;

  private:
    /// Whether two loads hold the same of what all kinds have.
    [[nodiscard]] static bool SharesInputs(const Load& left, const Load& right) noexcept;

    CommonSources m_sources;
    std::int32_t m_id = 0;
    std::string m_name;
    std::string m_description;
    std::int32_t m_quantity = 1;
    std::int32_t m_phases = 0;
};

/// One row of properties: label, tab, value.
[[nodiscard]] std::string PropertyRow(std::string_view label, std::string_view value);

}  // namespace genvara
