#include "ProjectDifferences.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>
#include <type_traits>
#include <utility>
#include <variant>

#include "Properties.h"
#include "PropertyText.h"

namespace genvara {
namespace {

constexpr std::size_t kLongestText = 40;  // bytes of a text that is told
/// Figures of the site are shown with one decimal.
constexpr double kShownTenth = 0.05;

using Lines = std::vector<std::string>;

/// Pairs of two sequences that belong together, in both orders: the longest common subsequence. What belongs
/// to nothing is paired with -1.
template <typename Same>
std::vector<std::pair<int, int>> Match(int before, int now, Same same) {
    const auto width = static_cast<std::size_t>(now) + 1;
    std::vector<int> longest((static_cast<std::size_t>(before) + 1) * width);
    const auto at = [&](int one, int other) -> int& {
        return longest[static_cast<std::size_t>(one) * width + static_cast<std::size_t>(other)];
    };
    for (int one = before - 1; one >= 0; --one) {
        for (int other = now - 1; other >= 0; --other) {
            at(one, other) = same(one, other) ? at(one + 1, other + 1) + 1
                                              : std::max(at(one + 1, other), at(one, other + 1));
        }
    }
    std::vector<std::pair<int, int>> pairs;
    int one = 0;
    int other = 0;
    while (one < before || other < now) {
        if (one < before && other < now && same(one, other)) {
            pairs.emplace_back(one++, other++);
        } else if (other == now || (one < before && at(one + 1, other) >= at(one, other + 1))) {
            pairs.emplace_back(one++, -1);
        } else {
            pairs.emplace_back(-1, other++);
        }
    }
    return pairs;
}

bool LooksSame(const PropertyValue& before, const PropertyValue& now) {
    const auto* former = std::get_if<double>(&before);
    const auto* latter = std::get_if<double>(&now);
    if (former != nullptr && latter != nullptr) {
        return std::abs(*former - *latter) < kShownTenth * std::max(1.0, 1e-3 * std::abs(*former));
    }
    return before == now;
}

std::string Shown(const PropertyFacts& facts, const PropertyValue& value) {
    std::string text = ValueText(facts, value);
    for (char& letter : text) {
        letter = letter == '\r' || letter == '\n' ? ' ' : letter;
    }
    if (facts.type != PropertyType::Text) {
        return facts.unit.empty() ? text : fmt::format("{} {}", text, facts.unit);
    }
    if (text.size() > kLongestText) {
        std::size_t end = kLongestText;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            --end;  // no character is cut in two
        }
        text.resize(end);
        text += "...";
    }
    return fmt::format("\"{}\"", text);
}

/// The members that differ, as "quantity 1, now 2".
template <typename Record>
Lines MemberLines(std::span<const Property<Record>> table, const Record& before, const Record& now) {
    Lines lines;
    for (const Property<Record>& row : table) {
        const bool follows = row.facts.type == PropertyType::Moment ||
                             (std::is_same_v<Record, CPwrSys> && row.facts.name == "Phases");
        const PropertyValue former = row.get(before);
        const PropertyValue latter = row.get(now);
        if (!follows && !LooksSame(former, latter)) {
            lines.push_back(fmt::format("{} {}, now {}", row.facts.words, Shown(row.facts, former),
                                        Shown(row.facts, latter)));
        }
    }
    return lines;
}

std::string Joined(const Lines& parts) {
    return fmt::format("{}", fmt::join(parts, "; "));
}

std::string Counted(std::int32_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::vector<const Load*> LoadsOf(const CLoadStep& step) {
    std::vector<const Load*> loads;
    for (const Load& load : step) {
        loads.push_back(&load);
    }
    return loads;
}

void TellLoads(Lines& lines, const CLoadStep& before, const CLoadStep& now, int number) {
    const auto former = LoadsOf(before);
    const auto latter = LoadsOf(now);
    const auto same = [&](int one, int other) {
        const Load& left = *former[static_cast<std::size_t>(one)];
        const Load& right = *latter[static_cast<std::size_t>(other)];
        return left.name() == right.name() && left.LoadType() == right.LoadType();
    };
    for (const auto& [one, other] :
         Match(static_cast<int>(former.size()), static_cast<int>(latter.size()), same)) {
        const Load* left = one < 0 ? nullptr : former[static_cast<std::size_t>(one)];
        const Load* right = other < 0 ? nullptr : latter[static_cast<std::size_t>(other)];
        if (left == nullptr) {
            lines.push_back(fmt::format("Load \"{}\" of step {} added", right->name(), number));
        } else if (right == nullptr) {
            lines.push_back(fmt::format("Load \"{}\" of step {} deleted", left->name(), number));
        } else if (!left->HoldsSame(*right)) {
            const Lines members = MemberLines(LoadProperties(left->LoadType()), *left, *right);
            if (!members.empty()) {
                lines.push_back(
                    fmt::format("Load \"{}\" of step {}: {}", left->name(), number, Joined(members)));
            }
        }
    }
}

void TellSteps(Lines& lines, const CLoadProfile& before, const CLoadProfile& now) {
    const auto same = [&](int one, int other) {
        return before.LoadStep(one + 1).Description() == now.LoadStep(other + 1).Description();
    };
    for (const auto& [one, other] : Match(before.NumLoadSteps(), now.NumLoadSteps(), same)) {
        if (one < 0) {
            const CLoadStep& step = now.LoadStep(other + 1);
            lines.push_back(fmt::format("Step {}, \"{}\", added with {}", other + 1, step.Description(),
                                        Counted(step.NumLoads(), "load")));
        } else if (other < 0) {
            const CLoadStep& step = before.LoadStep(one + 1);
            lines.push_back(fmt::format("Step {}, \"{}\", deleted with {}", one + 1, step.Description(),
                                        Counted(step.NumLoads(), "load")));
        } else {
            const CLoadStep& left = before.LoadStep(one + 1);
            const CLoadStep& right = now.LoadStep(other + 1);
            const Lines members = MemberLines(StepProperties(), left, right);
            if (!members.empty()) {
                lines.push_back(fmt::format("Step {}: {}", other + 1, Joined(members)));
            }
            TellLoads(lines, left, right, other + 1);
        }
    }
}

/// A member's line as a sentence begins.
std::string Capital(std::string line) {
    if (!line.empty() && line.front() >= 'a' && line.front() <= 'z') {
        line.front() = static_cast<char>(line.front() - 'a' + 'A');
    }
    return line;
}

}  // namespace

std::vector<std::string> Differences(const ProjectView& before, const ProjectView& now, std::size_t most) {
    Lines lines;
    for (Lines members : {MemberLines(ProjectProperties(), before.project, now.project),
                          MemberLines(PowerSystemProperties(), before.powerSystem, now.powerSystem)}) {
        for (std::string& line : members) {
            lines.push_back(Capital(std::move(line)));
        }
    }
    TellSteps(lines, before.loadProfile, now.loadProfile);
    if (lines.size() > most) {
        const std::size_t beyond = lines.size() - (most - 1);
        lines.resize(most - 1);
        lines.push_back(fmt::format("and {} more", beyond));
    }
    return lines;
}

}  // namespace genvara
