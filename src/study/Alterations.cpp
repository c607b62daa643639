#include "Alterations.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "CMtrLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "InputTypes.h"
#include "PropertyText.h"
#include "RaisedError.h"
#include "SiteLimits.h"
#include "UPSEntry.h"

namespace genvara {
namespace {

const Load& LoadAt(const CLoadProfile& profile, const LoadPlace& place) {
    return *std::next(profile.LoadStep(place.step).begin(), place.load - 1);
}

/// Gathers the changes that are asked for.
class Gatherer {
  public:
    Gatherer(const StudyProject& project, const AdviceChoice& choice, const EntryRules& rules)
        : m_project(&project), m_choice(&choice), m_rules(&rules) {}

    [[nodiscard]] std::vector<Alteration> All() {
        Splits();
        ForEachLoad([this](const LoadPlace& place, const Load& load) { Starters(place, load); });
        ForEachLoad([this](const LoadPlace& place, const Load& load) { Rectifiers(place, load); });
        Unlimited();
        Rises();
        Sets();
        Fuels();
        return std::move(m_found);
    }

  private:
    template <typename Visit>
    void ForEachLoad(Visit visit) {
        for (const auto& step : PresentOrder(m_project->loadProfile)) {
            for (const LoadPlace& place : step) {
                visit(place, LoadAt(m_project->loadProfile, place));
            }
        }
    }
    void Add(AdviceKind kind, std::string path, PropertyValue value) {
        if (m_choice->Has(kind)) {
            m_found.push_back({.kind = kind,
                               .member = MemberValue{std::move(path), std::move(value)},
                               .move = {},
                               .order = {}});
        }
    }
    void AddToLoad(AdviceKind kind, const LoadPlace& place, const char* member, PropertyValue value) {
        Add(kind, fmt::format("{}.{}", PlaceText(place), member), std::move(value));
    }

    void Splits() {
        if (!m_choice->Has(AdviceKind::Split)) {
            return;
        }
        for (const auto& step : PresentOrder(m_project->loadProfile)) {
            for (const LoadPlace& place : step) {
                for (const bool isBefore : {true, false}) {
                    if (step.size() > 1) {
                        m_found.push_back({.kind = AdviceKind::Split,
                                           .member = {},
                                           .move = LoadMove{place, isBefore},
                                           .order = {}});
                    }
                }
            }
        }
    }

    void Starters(const LoadPlace& place, const Load& load) {
        if (load.LoadType() != load_type::kMotor) {
            return;
        }
        const auto& motor = static_cast<const CMtrLoad&>(load);
        const auto known = static_cast<std::int32_t>(m_rules->motors.multipliers.size());
        for (std::int32_t method = starting_method::kAcrossTheLine; method <= starting_method::kSolidState;
             ++method) {
            // A soft starter has its current limit in place of a multiplier.
            const bool isKnown = method <= known || method == starting_method::kSolidState;
            if (isKnown && method != motor.StartingMethod()) {
                AddToLoad(AdviceKind::Starter, place, "StartingMethod", method);
            }
        }
        if (motor.StartsLoaded()) {
            AddToLoad(AdviceKind::Starter, place, "StartsLoaded", false);
        }
    }

    void Rectifiers(const LoadPlace& place, const Load& load) {
        if (load.Phases() != 0) {
            return;
        }
        if (load.LoadType() == load_type::kUPS) {
            const auto& ups = static_cast<const CUPSLoad&>(load);
            UPSEntry entry(m_project->powerSystem.Phases());
            entry.PhasesClicked(ups.Phases());
            entry.FamilyClicked(ups.Family());
            Rectifier(place, ups.InputType(), ups.Family() == ups_family::kOnLine,
                      entry.Shown().filterEnabled && !ups.InputFilterInstalled());
        } else if (load.LoadType() == load_type::kVFD) {
            const auto& drive = static_cast<const CVFDLoad&>(load);
            Rectifier(place, drive.InputType(), true,
                      HasInputTypes(drive.Phases()) && !drive.InputFilterInstalled());
        }
    }
    void Rectifier(const LoadPlace& place, std::int32_t inputType, bool hasTypes, bool mayHaveFilter) {
        if (hasTypes && inputType == input_type::kSixPulse) {
            AddToLoad(AdviceKind::Rectifier, place, "InputType", input_type::kTwelvePulse);
        }
        if (mayHaveFilter) {
            AddToLoad(AdviceKind::Rectifier, place, "InputFilterInstalled", true);
        }
    }

    void Unlimited() {
        if (m_project->powerSystem.MaxFreqDipEnabled()) {
            Add(AdviceKind::Limit, "PowerSystem.MaxFreqDipEnabled", false);
        }
        if (m_project->powerSystem.MaxHarmonicsEnabled()) {
            Add(AdviceKind::Limit, "PowerSystem.MaxHarmonicsEnabled", false);
        }
    }

    void Rises() {
        const RiseDutyRow* now = FindRow(kRiseDuties, m_project->powerSystem.RiseDutyCode());
        for (const RiseDutyRow& row : kRiseDuties) {
            if (now != nullptr && row.degrees > now->degrees) {
                Add(AdviceKind::Rise, "PowerSystem.RiseDutyCode", row.code);
            }
        }
    }

    void Sets() {
        const std::int32_t now = m_project->powerSystem.GensetsInParallel();
        for (std::int32_t sets = now + 1; sets <= std::min(2 * now, site_limits::kMostGensets); ++sets) {
            Add(AdviceKind::Sets, "PowerSystem.GensetsInParallel", sets);
        }
    }

    void Fuels() {
        for (const FuelRow& row : kFuels) {
            if (row.code != fuel::kAny && row.code != m_project->powerSystem.Fuel()) {
                Add(AdviceKind::Fuel, "PowerSystem.Fuel", row.code);
            }
        }
    }

    const StudyProject* m_project;
    const AdviceChoice* m_choice;
    const EntryRules* m_rules;
    std::vector<Alteration> m_found;
};

/// "step 3" or, with a description, "step 3 (Chillers)".
std::string StepText(const CLoadProfile& profile, std::int32_t number) {
    const std::string& text = profile.LoadStep(number).Description();
    return text.empty() ? fmt::format("step {}", number) : fmt::format("step {} ({})", number, text);
}

std::string Quoted(const Load& load) {
    return fmt::format("\"{}\"", load.name());
}

std::string MoveText(const CLoadProfile& profile, const LoadMove& move) {
    return fmt::format("Start {} in a step of its own right {} step {}, instead of in {}",
                       Quoted(LoadAt(profile, move.load)), move.isBefore ? "before" : "behind",
                       move.load.step, StepText(profile, move.load.step));
}

std::string OrderText(const CLoadProfile& profile, const LoadOrder& order) {
    std::string steps;
    for (std::size_t step = 0; step < order.size(); ++step) {
        std::string loads;
        for (const LoadPlace& place : order[step]) {
            loads += (loads.empty() ? "" : ", ") + Quoted(LoadAt(profile, place));
        }
        steps += fmt::format("{}step {}: {}", step == 0 ? "" : "; ", step + 1, loads);
    }
    return fmt::format("Start the loads in {} step{} instead of the present {}: {}", order.size(),
                       order.size() == 1 ? "" : "s", profile.NumLoadSteps(), steps);
}

/// Words around the new and the old value of a member of the site or of a run.
struct MemberWords {
    std::string_view path;
    std::string_view words;
};

constexpr std::array kMemberWords{
    MemberWords{"PowerSystem.MaxVoltageDip", "Allow a voltage dip of {0} % at the site instead of {1} %"},
    MemberWords{"PowerSystem.MaxFreqDip", "Allow a frequency dip of {0} % instead of {1} %"},
    MemberWords{"PowerSystem.MaxHarmonics", "Allow a voltage distortion of {0} % instead of {1} %"},
    MemberWords{"Designer.MaxLoading", "Load the sets up to {0} % instead of {1} %"},
    MemberWords{"PowerSystem.RiseDutyCode", "Allow a temperature rise of {0} instead of {1}"},
    MemberWords{"PowerSystem.GensetsInParallel", "Run {0} sets in parallel instead of {1}"},
    MemberWords{"PowerSystem.Fuel", "Run the sets on {0} instead of {1}"},
};

std::string LoadText(const StudyProject& project, const PropertyPath& path, const std::string& to,
                     const std::string& from) {
    const LoadPlace place{path.step, path.load};
    const std::string load =
        fmt::format("{} (step {})", Quoted(LoadAt(project.loadProfile, place)), place.step);
    if (path.member == "StartingMethod") {
        return fmt::format("Start {} by {} instead of {}", load, to, from);
    }
    if (path.member == "StartsLoaded") {
        return fmt::format("Start {} unloaded instead of loaded", load);
    }
    if (path.member == "InputType") {
        return fmt::format("Give {} a {} input instead of {}", load, to, from);
    }
    return fmt::format("Give {} an input filter instead of none", load);
}

std::string MemberText(const StudyProject& project, const MemberValue& change) {
    StudyProject copy = project;
    const PathTarget target = FollowPath(change.path, RootsOf(copy));
    const std::string to = ValueText(FactsOf(target), change.value);
    const std::string from = ValueText(FactsOf(target), ValueOf(target));
    const PropertyPath path = ParsePath(change.path);
    if (path.load > 0) {
        return LoadText(project, path, to, from);
    }
    if (path.step > 0) {
        return fmt::format("Allow a voltage dip of {} % in {} instead of {} %", to,
                           StepText(project.loadProfile, path.step), from);
    }
    if (change.path == "PowerSystem.MaxFreqDipEnabled") {
        return fmt::format("Do not limit the frequency dip, which may be {} % now",
                           project.powerSystem.MaxFreqDip());
    }
    if (change.path == "PowerSystem.MaxHarmonicsEnabled") {
        return fmt::format("Do not limit the voltage distortion, which may be {} % now",
                           project.powerSystem.MaxHarmonics());
    }
    const auto* const words = std::ranges::find(kMemberWords, change.path, &MemberWords::path);
    return fmt::format(fmt::runtime(words->words), to, from);
}

}  // namespace

std::vector<Alteration> PlainAlterations(const StudyProject& project, const AdviceChoice& choice,
                                         const EntryRules& rules) {
    return Gatherer(project, choice, rules).All();
}

std::vector<LimitAxis> LimitAxes(const StudyProject& project, const AdviceChoice& choice) {
    using namespace site_limits;
    std::vector<LimitAxis> axes;
    if (!choice.Has(AdviceKind::Limit)) {
        return axes;
    }
    const CPwrSys& site = project.powerSystem;
    axes.push_back({"PowerSystem.MaxVoltageDip", site.MaxVoltageDip(), kHighestVoltageDip});
    for (std::int32_t step = 1; step <= project.loadProfile.NumLoadSteps(); ++step) {
        axes.push_back({fmt::format("Step[{}].MaxVoltageDipOverride", step),
                        project.loadProfile.LoadStep(step).MaxVoltageDipOverride(),
                        kStepVoltageDip.greatest});
    }
    axes.push_back({"Designer.MaxLoading", project.limits.MaxLoading(), 100});
    if (site.MaxFreqDipEnabled()) {
        axes.push_back({"PowerSystem.MaxFreqDip", site.MaxFreqDip(), kHighestFreqDip});
    }
    if (site.MaxHarmonicsEnabled()) {
        axes.push_back({"PowerSystem.MaxHarmonics", site.MaxHarmonics(), kHighestHarmonics});
    }
    return axes;
}

std::string SentenceOf(const StudyProject& project, const Alteration& alteration) {
    if (alteration.member) {
        return MemberText(project, *alteration.member);
    }
    return alteration.move ? MoveText(project.loadProfile, *alteration.move)
                           : OrderText(project.loadProfile, *alteration.order);
}

std::vector<MemberDifference> DifferencesOf(const StudyProject& project,
                                            std::span<const Alteration> alterations,
                                            const EntryRules& rules) {
    std::vector<MemberValue> changes;
    for (const Alteration& alteration : alterations) {
        if (alteration.member) {
            changes.push_back(*alteration.member);
        }
    }
    StudyProject before = project;
    StudyProject after = Changed(project, changes, rules);
    std::vector<MemberDifference> differences;
    const auto add = [&](const std::string& path, bool follows) {
        const PathTarget target = FollowPath(path, RootsOf(before));
        differences.push_back(
            {path, FactsOf(target), ValueOf(target), ValueOf(FollowPath(path, RootsOf(after))), follows});
    };
    for (const MemberValue& change : changes) {
        add(change.path, false);
    }
    std::vector<LoadPlace> looked;
    for (const MemberValue& change : changes) {
        const PropertyPath path = ParsePath(change.path);
        const LoadPlace place{path.step, path.load};
        if (path.load == 0 || std::ranges::find(looked, place) != looked.end()) {
            continue;
        }
        looked.push_back(place);
        const Load& old = LoadAt(before.loadProfile, place);
        const Load& now = LoadAt(after.loadProfile, place);
        for (const Property<Load>& row : LoadProperties(old.LoadType())) {
            const std::string member = fmt::format("{}.{}", PlaceText(place), row.facts.name);
            const bool isSet = std::ranges::find(changes, member, &MemberValue::path) != changes.end();
            if (!isSet && Exists(row, old) && Exists(row, now) && row.get(old) != row.get(now)) {
                add(member, true);
            }
        }
    }
    return differences;
}

}  // namespace genvara
