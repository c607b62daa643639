#pragma once

#include <QGroupBox>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ChoiceBox.h"
#include "GensetRecords.h"
#include "NumberBounds.h"

class QButtonGroup;

/// Controls of a site's requirements, which the power system panel and the defaults dialog share.
namespace genvara {

/// Frequency by two option buttons, `optFreq60` and `optFreq50`.
class FrequencyGroup : public QGroupBox {
    Q_OBJECT

  public:
    explicit FrequencyGroup(QWidget* parent = nullptr);

    /// 60 Hz, 50 Hz, or neither for any other value.
    void Freq(std::int32_t hertz);
    /// Frequency of the button that is on [Hz], if one is.
    [[nodiscard]] std::optional<std::int32_t> Freq() const;
    [[nodiscard]] bool Is50() const { return Freq() == 50; }

  private:
    QButtonGroup* m_buttons;
};

/// Fuel by five option buttons, `optDiesel` to `optAnyFuel`.
class FuelGroup : public QGroupBox {
    Q_OBJECT

  public:
    explicit FuelGroup(QWidget* parent = nullptr);

    /// The button of a code; none for a code of no fuel.
    void Fuel(std::int32_t code);
    /// Code of the button that is on; 0 if none is.
    [[nodiscard]] std::int32_t Fuel() const;

  private:
    QButtonGroup* m_buttons;
};

/// String of a fuel's caption; that of any fuel for a code of none.
[[nodiscard]] std::int32_t CaptionOfFuel(std::int32_t code) noexcept;

/// Temperature rise and duty, hottest first, with their codes.
void FillRiseDuty(ChoiceBox& list);
/// Voltages in the database's order, each with itself as code.
void FillVoltages(ChoiceBox& list, const std::vector<std::int32_t>& volts);
/// Connections in the database's order, with their keys.
void FillConnections(ChoiceBox& list, const std::vector<ConnectionRecord>& connections);

/// Names of a number field, the arrows beside it and the label before it.
struct NumberNames {
    const char* field;
    const char* arrows;
    const char* label;
};

/// Bounds of a site's number, named by a field's caption.
[[nodiscard]] NumberBounds NamedSiteBounds(std::string_view member, const QString& caption);
/// Bounds of the sets in parallel.
[[nodiscard]] NumberBounds ParallelSetsBounds();
/// Step of the arrows beside a limit [percent].
inline constexpr std::int32_t kLimitStep = 5;

}  // namespace genvara
