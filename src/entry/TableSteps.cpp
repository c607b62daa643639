#include "TableSteps.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <set>
#include <string_view>
#include <utility>

#include "EntryNumbers.h"
#include "NearestNames.h"
#include "NumberBounds.h"
#include "RowReader.h"
#include "TableFields.h"
#include "TypographicQuotes.h"

namespace genvara {
namespace {

/// The number in "Step 3", "Load Step #3"; nothing for any other text.
std::optional<std::int32_t> NumberInName(std::string_view name) {
    constexpr std::size_t kMostDigits = 4;
    std::string plain = PlainLetters(name);
    for (const std::string_view word : {"load", "step"}) {
        if (plain.starts_with(word)) {
            plain.erase(0, word.size());
        }
    }
    const bool isNumber = !plain.empty() && plain.size() <= kMostDigits &&
                          std::ranges::all_of(plain, [](unsigned char c) { return std::isdigit(c) != 0; });
    return isNumber ? std::optional(std::stoi(plain)) : std::nullopt;
}

}  // namespace

TableSteps::TableSteps(const CLoadProfile& profile, const CPwrSys& site, std::int32_t atHand)
    : m_profile(&profile), m_maxVoltageDip(site.MaxVoltageDip()), m_atHand(atHand) {
    for (const CLoadStep& step : profile) {
        m_room.push_back(step.Room());
    }
    if (m_atHand <= 0 || m_atHand > profile.NumLoadSteps()) {
        m_atHand = std::max(profile.NumLoadSteps(), 1);
    }
}

std::string TableSteps::Take(const std::string& cell, const TableNumbers& numbers) {
    Row row;
    std::string fault;
    if (cell.empty()) {
        row.followsRowBefore = !m_rows.empty();
        row.step = m_rows.empty() ? m_atHand : 0;
    } else {
        const TableFigure figure = numbers.Read(cell);
        fault = figure.fault == NumberFault::None && figure.unit.empty() ? TakeNumber(row, figure.number)
                                                                         : TakeName(row, cell);
    }
    m_rows.push_back(std::move(row));
    return fault;
}

std::string TableSteps::TakeNumber(Row& row, double number) {
    const NumberBounds bounds{.name = "Step", .least = 1, .most = kMostLoadSteps, .whole = true};
    const EntryNumbers shown{NumberSigns{}};
    std::string fault = Complaint(bounds, shown.Plain(number), shown);
    row.step = fault.empty() ? static_cast<std::int32_t>(number) : 0;
    return fault;
}

std::string TableSteps::TakeName(Row& row, const std::string& name) {
    std::int32_t position = 0;
    for (const CLoadStep& step : *m_profile) {
        ++position;
        if (!SameLetters(Trimmed(step.Description()), name)) {
            continue;
        }
        if (row.step > 0) {
            row.step = 0;
            return fmt::format("Step: {} is the name of several steps. Enter a number.", QuotedCell(name));
        }
        row.step = position;
    }
    if (row.step > 0) {
        return {};
    }
    if (const std::optional<std::int32_t> number = NumberInName(name)) {
        return TakeNumber(row, *number);
    }
    row.name = TypographicQuotes(name);
    return {};
}

void TableSteps::AddStep(std::string description) {
    m_added.push_back({.description = std::move(description), .maxVoltageDip = m_maxVoltageDip});
    m_room.push_back(CLoadStep().Room());
}

void TableSteps::AddNumbered() {
    std::set<std::int32_t> numbers;
    for (const Row& row : m_rows) {
        numbers.insert(row.step);
    }
    const std::int32_t there = m_profile->NumLoadSteps();
    std::int32_t next = there + 1;
    for (; numbers.contains(next); ++next) {
        AddStep(fmt::format("Load Step #{}", next));
    }
    for (Row& row : m_rows) {
        if (row.step >= next) {
            row.fault =
                fmt::format("Step: {} would leave a gap. The project has {} step{}, and no row has step {}.",
                            row.step, there, there == 1 ? "" : "s", next);
            row.step = 0;
        }
    }
}

void TableSteps::AddNamed() {
    const auto there = static_cast<std::size_t>(m_profile->NumLoadSteps());
    const std::size_t numbered = m_added.size();
    for (Row& row : m_rows) {
        if (row.name.empty()) {
            continue;
        }
        const auto first = m_added.begin() + static_cast<std::ptrdiff_t>(numbered);
        auto found = std::find_if(first, m_added.end(), [&](const NewStep& step) {
            return SameLetters(step.description, row.name);
        });
        if (found == m_added.end()) {
            if (there + m_added.size() >= static_cast<std::size_t>(kMostLoadSteps)) {
                row.fault = fmt::format("Step: a project has {} steps at most.", kMostLoadSteps);
                continue;
            }
            AddStep(row.name);
            found = m_added.end() - 1;
        }
        row.step = static_cast<std::int32_t>(there) + static_cast<std::int32_t>(found - m_added.begin()) + 1;
    }
}

void TableSteps::Settle() {
    AddNumbered();
    AddNamed();
    for (std::size_t row = 1; row < m_rows.size(); ++row) {
        if (m_rows[row].followsRowBefore) {
            m_rows[row].step = m_rows[row - 1].step;
        }
    }
}

bool TableSteps::TakeLoad(std::int32_t step) {
    std::int32_t& room = m_room.at(static_cast<std::size_t>(step) - 1);
    return room-- > 0;
}

std::string TableSteps::Description(std::int32_t step) const {
    const std::int32_t there = m_profile->NumLoadSteps();
    return step <= there ? m_profile->LoadStep(step).Description()
                         : m_added.at(static_cast<std::size_t>(step - there) - 1).description;
}

}  // namespace genvara
