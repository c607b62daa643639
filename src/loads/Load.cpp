#include "Load.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>
#include <utility>

namespace genvara {
namespace {

/// Texts of the single-phase connection codes 1 to 3.
constexpr std::array<std::string_view, 3> kPhaseTexts{"1 - A", "1 - B", "1 - C"};

}  // namespace

void Load::name(std::string text) {
    m_name = std::move(text);
}

void Load::Description(std::string text) {
    m_description = std::move(text);
}

void Load::Quantity(std::int32_t units) {
    RequireRange(units, kLoadQuantity, {2, "Load quantity out of range", m_sources.quantity});
    m_quantity = units;
}

void Load::Phases(std::int32_t code) {
    RequireRange(code, kLoadPhases, {7, "Invalid number of phases", m_sources.phases});
    m_phases = code;
}

bool Load::SharesInputs(const Load& left, const Load& right) noexcept {
    return left.m_quantity == right.m_quantity && left.m_phases == right.m_phases &&
           left.m_name == right.m_name && left.m_description == right.m_description;
}

std::vector<std::string> Load::CommonProps(std::string_view balancedText) const {
    const std::string_view phases =
        m_phases == 0 ? balancedText : kPhaseTexts.at(static_cast<std::size_t>(m_phases - 1));
    return {PropertyRow("ID", fmt::format("{}", m_id)), PropertyRow("Name", m_name),
            PropertyRow("Qty", fmt::format("{}", m_quantity)), PropertyRow("Phases", phases)};
}

std::string PropertyRow(std::string_view label, std::string_view value) {
    return fmt::format("{}\t{}", label, value);
}

}  // namespace genvara
