#include "SiteControls.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <functional>

#include "FormGrid.h"
#include "MemberBounds.h"
#include "SiteCodes.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr std::int32_t kHertzString = 504;

struct FuelButton {
    const char* name;
    std::int32_t code;
};
constexpr std::array<FuelButton, 5> kFuelButtons{{{"optDiesel", fuel::kDiesel},
                                                  {"optGas", fuel::kNaturalGas},
                                                  {"optLP", fuel::kLP},
                                                  {"optGasoline", fuel::kGasoline},
                                                  {"optAnyFuel", fuel::kAny}}};

/// Puts a group's buttons off or on as told, also all of them off.
void Check(QButtonGroup& group, const std::function<bool(int id)>& on) {
    group.setExclusive(false);
    for (QAbstractButton* button : group.buttons()) {
        button->setChecked(on(group.id(button)));
    }
    group.setExclusive(true);
}

}  // namespace

FrequencyGroup::FrequencyGroup(QWidget* parent)
    : QGroupBox(Caption(143), parent), m_buttons(new QButtonGroup(this)) {
    setObjectName("fraFreq");
    auto* line = new QHBoxLayout(this);
    line->setSpacing(metrics::kMargin);
    for (const FrequencyRow& row : kFrequencies) {
        auto* button = new QRadioButton(QString("%1 %2").arg(row.code).arg(Caption(kHertzString)));
        button->setObjectName(QString("optFreq%1").arg(row.code));
        m_buttons->addButton(button, row.code);
        line->addWidget(button);
    }
    line->addStretch(1);
}

void FrequencyGroup::Freq(std::int32_t hertz) {
    Check(*m_buttons, [hertz](int id) { return id == hertz; });
}

std::optional<std::int32_t> FrequencyGroup::Freq() const {
    return m_buttons->checkedButton() == nullptr ? std::nullopt : std::optional(m_buttons->checkedId());
}

FuelGroup::FuelGroup(QWidget* parent) : QGroupBox(Caption(144), parent), m_buttons(new QButtonGroup(this)) {
    setObjectName("fraFuel");
    constexpr int kColumns = 3;
    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(metrics::kMargin);
    int place = 0;
    for (const FuelButton& fuel : kFuelButtons) {
        auto* button = new QRadioButton(Caption(FindRow(kFuels, fuel.code)->caption));
        button->setObjectName(fuel.name);
        m_buttons->addButton(button, fuel.code);
        grid->addWidget(button, place / kColumns, place % kColumns);
        ++place;
    }
    grid->setColumnStretch(kColumns, 1);
}

void FuelGroup::Fuel(std::int32_t code) {
    Check(*m_buttons, [code](int id) { return id == code; });
}

std::int32_t FuelGroup::Fuel() const {
    return m_buttons->checkedButton() == nullptr ? fuel::kAny : m_buttons->checkedId();
}

std::int32_t CaptionOfFuel(std::int32_t code) noexcept {
    static_assert(kFuels.front().code == fuel::kAny);
    const FuelRow* const row = FindRow(kFuels, code);
    return row == nullptr ? kFuels.front().caption : row->caption;
}

void FillRiseDuty(ChoiceBox& list) {
    std::for_each(kRiseDuties.rbegin(), kRiseDuties.rend(),
                  [&list](const RiseDutyRow& row) { list.AddRow(Caption(row.caption), row.code); });
}

void FillVoltages(ChoiceBox& list, const std::vector<std::int32_t>& volts) {
    list.clear();
    for (const std::int32_t voltage : volts) {
        list.AddRow(QString::number(voltage), voltage);
    }
}

void FillConnections(ChoiceBox& list, const std::vector<ConnectionRecord>& connections) {
    list.clear();
    for (const ConnectionRecord& connection : connections) {
        list.AddRow(ToQt(connection.caption), connection.ID);
    }
}

NumberBounds NamedSiteBounds(std::string_view member, const QString& caption) {
    NumberBounds bounds = SiteBounds(member);
    bounds.name = FromQt(caption);
    return bounds;
}

NumberBounds ParallelSetsBounds() {
    return NamedSiteBounds("GensetsInParallel", Caption(151));
}

}  // namespace genvara
