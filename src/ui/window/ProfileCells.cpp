#include "ProfileCells.h"

#include <QCoreApplication>

#include "Texts.h"

namespace genvara {
namespace {

constexpr int kDecimals = 2;

QString Words(const char* text) {
    return QCoreApplication::translate("genvara::ProfileTree", text);
}

}  // namespace

QString PowerText(const PowerFigure& figure, const EntryNumbers& numbers) {
    return ToQt(PowerText(figure, kDecimals, numbers));
}

QString PowerWords(const std::array<QString, kPowerKinds.size()>& texts) {
    return Words("running %1 kW, %2 kVA, starting %3 kW, %4 kVA").arg(texts[0], texts[1], texts[2], texts[3]);
}

const CLoadStep* ProfileCells::StepOf(ProfilePlace row) const {
    return row ? m_profile->LoadStepByID(row.stepId) : nullptr;
}

const Load* ProfileCells::LoadOf(ProfilePlace row) const {
    const CLoadStep* step = row.loadId < 0 ? nullptr : StepOf(row);
    return step == nullptr ? nullptr : step->LoadItem(row.loadId);
}

PowerFigure ProfileCells::Figure(ProfilePlace row, int column) const {
    const PowerKind kind = profile_column::KindOf(column);
    if (row.loadId >= 0) {
        const Load* load = LoadOf(row);
        return load == nullptr ? PowerFigure{} : FigureOf(*load, kind);
    }
    const CLoadStep* step = StepOf(row);
    return step == nullptr ? PowerFigure{} : FigureOf(*step, kind);
}

QString ProfileCells::Text(ProfilePlace row, int column) const {
    if (profile_column::IsPower(column)) {
        return PowerText(Figure(row, column), m_numbers);
    }
    const Load* load = LoadOf(row);
    if (load == nullptr) {
        return {};
    }
    return column == profile_column::kQuantity ? QString::number(load->Quantity()) : ToQt(PhasesText(*load));
}

QString ProfileCells::Why(ProfilePlace row, int column) const {
    return profile_column::IsPower(column) ? ToQt(Figure(row, column).why) : QString();
}

QString ProfileCells::Words(ProfilePlace row) const {
    std::array<QString, kPowerKinds.size()> texts;
    for (const PowerKind kind : kPowerKinds) {
        texts.at(static_cast<std::size_t>(kind)) = Text(row, profile_column::ColumnOf(kind));
    }
    const QString powers = PowerWords(texts);
    if (row.loadId < 0) {
        return powers;
    }
    return genvara::Words("quantity %1, phases %2, %3")
        .arg(Text(row, profile_column::kQuantity), Text(row, profile_column::kPhases), powers);
}

}  // namespace genvara
