#include "Paths.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "LoadFactory.h"
#include "NearestNames.h"
#include "NumberText.h"
#include "PropertyText.h"
#include "RaisedError.h"

namespace genvara {
namespace {

[[noreturn]] void Refuse(std::string description) {
    throw RaisedError(0, "", std::move(description));
}

[[noreturn]] void RefusePath(std::string_view text) {
    Refuse(fmt::format(
        "\"{}\" is no path: one looks like PowerSystem.Altitude, Step[2].MaxVoltageDipOverride or "
        "Step[2].Load[1].Quantity.",
        text));
}

/// What of a path is still to be read.
class PathText {
  public:
    explicit PathText(std::string_view text) : m_whole(text), m_left(text) {}

    /// A name up to the next mark.
    std::string_view Name() {
        const std::size_t end = std::min(m_left.find_first_of(".[]"), m_left.size());
        if (end == 0) {
            RefusePath(m_whole);
        }
        return Take(end);
    }
    /// A position in brackets.
    std::int32_t Position() {
        Require('[');
        std::int32_t position = 0;
        const auto [end, failure] = std::from_chars(m_left.data(), m_left.data() + m_left.size(), position);
        if (failure != std::errc{} || position < 1) {
            RefusePath(m_whole);
        }
        (void)Take(static_cast<std::size_t>(end - m_left.data()));
        Require(']');
        return position;
    }
    [[nodiscard]] bool Has(char mark) const { return m_left.starts_with(mark); }
    [[nodiscard]] bool AtEnd() const { return m_left.empty(); }
    void Require(char mark) {
        if (!Has(mark)) {
            RefusePath(m_whole);
        }
        (void)Take(1);
    }
    [[noreturn]] void RefuseWhole() const { RefusePath(m_whole); }

  private:
    std::string_view Take(std::size_t count) {
        const std::string_view taken = m_left.substr(0, count);
        m_left.remove_prefix(count);
        return taken;
    }

    std::string_view m_whole;
    std::string_view m_left;
};

/// Where a member is looked for, as a path names it: "Step[2].Load[1]".
std::string PlaceOf(const PropertyPath& path) {
    if (path.step == 0) {
        return path.record;
    }
    return path.load == 0 ? fmt::format("Step[{}]", path.step)
                          : fmt::format("Step[{}].Load[{}]", path.step, path.load);
}

/// The members that a load has for the sake of its entry method.
template <typename Record, typename Question>
std::vector<std::string_view> UsedByMethod(std::span<const Property<Record>> table, Question exists) {
    std::vector<std::string_view> names;
    for (const Property<Record>& row : table) {
        if (row.facts.method && exists(row)) {
            names.push_back(row.facts.name);
        }
    }
    return names;
}

/// The row of a member. A name in other capitals, or in plain words, is among the nearest.
template <typename Record, typename Question>
const Property<Record>& RowOf(const PropertyPath& path, std::span<const Property<Record>> table,
                              Question exists) {
    const Property<Record>* row = FindProperty(table, path.member);
    if (row != nullptr && exists(*row)) {
        return *row;
    }
    if (row != nullptr) {
        Refuse(fmt::format("{}.{} does not exist for the entry method of this load, which uses {}.",
                           PlaceOf(path), path.member, Enumeration(UsedByMethod(table, exists))));
    }
    std::vector<std::string_view> names;
    for (const Property<Record>& other : table) {
        if (SameLetters(other.facts.words, path.member)) {
            names = {other.facts.name};
            break;
        }
        if (exists(other)) {
            names.push_back(other.facts.name);
        }
    }
    Refuse(fmt::format("{}.{} does not exist; {}.", PlaceOf(path), path.member,
                       SuggestionText(path.member, names)));
}

template <typename Record>
PathTarget Bind(const PropertyPath& path, std::span<const Property<Record>> table, Record& record) {
    const auto always = [](const Property<Record>& /*row*/) { return true; };
    return BoundProperty<Record>{&RowOf(path, table, always), &record};
}

/// "has 3 steps", "has 1 load", "has none".
std::string CountText(std::int32_t count, std::string_view what) {
    return count == 0 ? "has none" : fmt::format("has {} {}{}", count, what, count == 1 ? "" : "s");
}

CLoadStep& StepOf(const PropertyPath& path, const PathRoots& roots) {
    if (path.step > roots.loadProfile.NumLoadSteps()) {
        Refuse(fmt::format("Step[{}] does not exist: the project {}.", path.step,
                           CountText(roots.loadProfile.NumLoadSteps(), "step")));
    }
    return roots.loadProfile.LoadStep(path.step);
}

Load& LoadOf(const PropertyPath& path, CLoadStep& step) {
    if (path.load > step.NumLoads()) {
        Refuse(fmt::format("Step[{}].Load[{}] does not exist: the step {}.", path.step, path.load,
                           CountText(step.NumLoads(), "load")));
    }
    return *std::next(step.begin(), path.load - 1);
}

template <typename Value>
[[noreturn]] void RefuseValue(const PropertyFacts& facts, std::string_view text, const Value& expected) {
    Refuse(fmt::format("\"{}\" is no value of {}: expected {}.", text, facts.name, expected));
}

std::string Expected(const PropertyFacts& facts) {
    PropertyFacts entered = facts;
    entered.range = facts.Enterable();
    return ExpectedText(entered);
}

double RequireNumber(const PropertyFacts& facts, std::string_view text) {
    const std::optional<double> number = ParseNumber(text);
    const bool accepted = number && facts.Enterable().Hold(*number);
    if (!accepted) {
        RefuseValue(facts, text, Expected(facts));
    }
    return *number;
}

std::int32_t RequireWhole(const PropertyFacts& facts, std::string_view text) {
    const double number = RequireNumber(facts, text);
    const std::optional<std::int32_t> whole = RoundToInteger(number);
    const bool listed =
        facts.only.empty() || (whole && std::ranges::find(facts.only, *whole) != facts.only.end());
    if (!whole || *whole != number || !listed) {
        RefuseValue(facts, text, Expected(facts));
    }
    return *whole;
}

/// Whether a byte may be of a letter, of ASCII or of UTF-8 beyond it.
bool IsLetter(unsigned char byte) noexcept {
    return (byte | 0x20U) >= 'a' && ((byte | 0x20U) <= 'z' || byte >= 0x80U);
}

/// "0 "Any Fuel", 1 "Diesel" or 2 "Nat. Gas"".
std::string CodesText(const PropertyFacts& facts) {
    std::string text;
    for (const CodeName& code : facts.codes) {
        const bool isLast = &code == &facts.codes.back();
        text += text.empty() ? "" : isLast ? " or " : ", ";
        text += fmt::format("{} \"{}\"", code.Code(), code.Name());
    }
    return text;
}

std::int32_t RequireCode(const PropertyFacts& facts, std::string_view text) {
    const std::optional<double> number = ParseNumber(text);
    std::vector<std::string_view> names;
    for (const CodeName& code : facts.codes) {
        // A name may begin with a digit, but none is a number.
        if (number ? *number == code.Code() : SameLetters(code.Name(), text)) {
            return code.Code();
        }
        names.push_back(code.Name());
    }
    if (std::ranges::none_of(text, IsLetter)) {
        RefuseValue(facts, text, CodesText(facts));  // no slip of a name
    }
    Refuse(fmt::format("\"{}\" is no value of {}; {}.", text, facts.name, SuggestionText(text, names)));
}

}  // namespace

PropertyPath ParsePath(std::string_view text) {
    PathText left(text);
    PropertyPath path;
    path.record = left.Name();
    if (path.record == record_kind::kStep) {
        path.step = left.Position();
    }
    left.Require('.');
    path.member = left.Name();
    if (path.step > 0 && path.member == "Load" && left.Has('[')) {
        path.load = left.Position();
        left.Require('.');
        path.member = left.Name();
    }
    if (!left.AtEnd()) {
        left.RefuseWhole();
    }
    return path;
}

PathTarget FollowPath(const PropertyPath& path, const PathRoots& roots) {
    if (path.load > 0) {
        Load& load = LoadOf(path, StepOf(path, roots));
        const auto exists = [&load](const Property<Load>& row) { return Exists(row, load); };
        return BoundProperty<Load>{&RowOf(path, LoadProperties(load.LoadType()), exists), &load};
    }
    if (path.step > 0) {
        return Bind(path, StepProperties(), StepOf(path, roots));
    }
    if (path.record == record_kind::kPowerSystem) {
        return Bind(path, PowerSystemProperties(), roots.powerSystem);
    }
    if (path.record == record_kind::kDesigner) {
        return Bind(path, DesignerProperties(), roots.designer);
    }
    if (path.record == record_kind::kProject) {
        return Bind(path, ProjectProperties(), roots.project);
    }
    const std::array<std::string_view, 4> records{record_kind::kPowerSystem, record_kind::kDesigner,
                                                  record_kind::kProject, "Step[1]"};
    Refuse(fmt::format("{} does not exist; {}.", path.record, SuggestionText(path.record, records)));
}

PathTarget FollowPath(std::string_view path, const PathRoots& roots) {
    return FollowPath(ParsePath(path), roots);
}

const PropertyFacts& FactsOf(const PathTarget& target) {
    return std::visit([](const auto& bound) -> const PropertyFacts& { return bound.property->facts; },
                      target);
}

PropertyValue ValueOf(const PathTarget& target) {
    return std::visit([](const auto& bound) { return bound.property->get(*bound.record); }, target);
}

void SetValue(const PathTarget& target, const PropertyValue& value) {
    std::visit([&value](const auto& bound) { bound.property->set(*bound.record, value); }, target);
}

PropertyValue ParseValue(const PropertyFacts& facts, std::string_view text) {
    switch (facts.type) {
        case PropertyType::Real:
            return RequireNumber(facts, text);
        case PropertyType::Whole:
            return RequireWhole(facts, text);
        case PropertyType::Code:
            return RequireCode(facts, text);
        case PropertyType::Truth:
            if (text != "true" && text != "false") {
                RefuseValue(facts, text, Expected(facts));
            }
            return text == "true";
        case PropertyType::Text:
            if (!IsGiven(facts, PropertyValue(std::string(text)))) {
                RefuseValue(facts, text, Expected(facts));
            }
            return std::string(text);
        case PropertyType::Moment:
            break;
    }
    const std::optional<DateTime> moment = ParseIso(text);
    if (!moment) {
        RefuseValue(facts, text, Expected(facts));
    }
    return *moment;
}

}  // namespace genvara
