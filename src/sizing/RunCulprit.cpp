#include "RunCulprit.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string_view>

#include "CMtrLoad.h"
#include "ErrorNumbers.h"
#include "GensetSource.h"
#include "OddMembers.h"
#include "ProfileFigures.h"

namespace genvara {
namespace {

using LoadFigure = double (*)(const Load&);
using StepFigure = double (*)(const CLoadStep&, std::int32_t);

/// The torque that a motor keeps, which the load profile report asks for.
double TorqueOf(const Load& load) {
    const auto* motor = dynamic_cast<const CMtrLoad*>(&load);
    return motor != nullptr ? motor->StartingTorque(0.0) : 0.0;
}

/// Everything of a load that can fail to be worked out.
constexpr std::array<LoadFigure, 13> kLoadFigures{{
    [](const Load& load) { return load.RunningRealPower(); },
    [](const Load& load) { return load.RunningImgPower(); },
    [](const Load& load) { return load.ThreePhaseSixPulseRectPower(); },
    [](const Load& load) { return load.ThreePhaseTwelvePulseRectPower(); },
    [](const Load& load) { return load.ThreePhaseSixPulseRectFilteredPower(); },
    [](const Load& load) { return load.ThreePhaseTwelvePulseRectFilteredPower(); },
    [](const Load& load) { return load.ThreePhaseSixPulsePPCRectPower(); },
    [](const Load& load) { return load.SinglePhaseRectPower(std::max(load.Phases(), 1)); },
    [](const Load& load) { return load.StartingRealPower(); },
    [](const Load& load) { return load.StartingImgPower(); },
    [](const Load& load) { return load.RunningAppPower(); },
    [](const Load& load) { return load.StartingAppPower(); },
    TorqueOf,
}};

/// Everything of a step that can fail although each of its loads can be worked out: sums beyond all numbers,
/// and roots of their squares.
constexpr std::array<StepFigure, 11> kStepFigures{{
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalRunningRealPower(phase); },
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalRunningImgPower(phase); },
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalRunningApparentPower(phase); },
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalStartingRealPower(phase); },
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalStartingImgPower(phase); },
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalStartingApparentPower(phase); },
    [](const CLoadStep& step, std::int32_t /*phase*/) { return step.TotalSixPulseRectPower(); },
    [](const CLoadStep& step, std::int32_t /*phase*/) { return step.TotalTwelvePulseRectPower(); },
    [](const CLoadStep& step, std::int32_t /*phase*/) { return step.TotalSixPulseRectFilteredPower(); },
    [](const CLoadStep& step, std::int32_t /*phase*/) { return step.TotalTwelvePulseRectFilteredPower(); },
    [](const CLoadStep& step, std::int32_t phase) { return step.TotalSinglePhaseRectPower(phase); },
}};

constexpr std::array<std::int32_t, 4> kTotalAndPhases{0, 1, 2, 3};

/// A power that the distortion model refuses below 0, by the source of the refusal.
struct RefusedPower {
    std::string_view source;
    LoadFigure figure;
};

constexpr std::array<RefusedPower, 3> kRefusedPowers{{
    {"CVTHD::RectifierPwr6P", [](const Load& load) { return load.ThreePhaseSixPulseRectPower(); }},
    {"CVTHD::RectifierPwr12P", [](const Load& load) { return load.ThreePhaseTwelvePulseRectPower(); }},
    {"CVTHD::SinglePhaseRectPwr",
     [](const Load& load) { return load.SinglePhaseRectPower(std::max(load.Phases(), 1)); }},
}};

bool Same(const RaisedError& one, const RaisedError& other) {
    return one.Number() == other.Number() && one.Source() == other.Source();
}

/// Whether a question raises the error.
template <typename Question>
bool Raises(const RaisedError& error, Question question) {
    try {
        (void)question();
    } catch (const RaisedError& raised) {
        return Same(raised, error);
    }
    return false;
}

template <typename Position>
RunCulprit LoadOf(const CLoadStep& step, std::int32_t number, Position load) {
    return {.step = number,
            .load = static_cast<std::int32_t>(std::distance(step.begin(), load)) + 1,
            .loadName = load->name(),
            .members = OddMembers(*load),
            .set = {}};
}

/// A lone load is to blame for what its step cannot sum up; several are together.
RunCulprit StepOf(const CLoadStep& step, std::int32_t number) {
    return step.NumLoads() == 1 ? LoadOf(step, number, step.begin())
                                : RunCulprit{.step = number, .load = 0, .loadName = {}, .set = {}};
}

/// The first load of the profile that satisfies a question.
template <typename Question>
std::optional<RunCulprit> FirstLoad(const CLoadProfile& profile, Question question) {
    std::int32_t number = 1;
    for (const CLoadStep& step : profile) {
        const auto found =
            std::find_if(step.begin(), step.end(), [&](const Load& load) { return question(load); });
        if (found != step.end()) {
            return LoadOf(step, number, found);
        }
        ++number;
    }
    return std::nullopt;
}

std::optional<RunCulprit> LoadThatRaises(const RaisedError& error, const CLoadProfile& profile) {
    return FirstLoad(profile, [&](const Load& load) {
        return std::ranges::any_of(
            kLoadFigures, [&](LoadFigure figure) { return Raises(error, [&] { return figure(load); }); });
    });
}

bool RaisesByItself(const RaisedError& error, const CLoadStep& step, const CPwrSys& site) {
    const bool totals = std::ranges::any_of(kStepFigures, [&](StepFigure figure) {
        return std::ranges::any_of(kTotalAndPhases, [&](std::int32_t phase) {
            return Raises(error, [&] { return figure(step, phase); });
        });
    });
    return totals || Raises(error, [&] { return FiguresOfStep(step, StepFigures{}, site).startKVA; });
}

/// Of the loads that stand after a step the one that draws most.
std::optional<RunCulprit> LargestLoad(const CLoadProfile& profile, std::int32_t lastStep) {
    std::optional<RunCulprit> largest;
    double most = -1.0;
    for (std::int32_t number = 1; number <= lastStep; ++number) {
        const CLoadStep& step = profile.LoadStep(number);
        for (auto load = step.begin(); load != step.end(); ++load) {
            const double power =
                load->Quantity() * std::hypot(load->RunningRealPower(), load->RunningImgPower());
            if (power > most) {
                most = power;
                largest = LoadOf(step, number, load);
            }
        }
    }
    return largest;
}

/// The first step that raises the error by itself, or the largest load that stands where a step raises it on
/// top of the others.
std::optional<RunCulprit> StepThatRaises(const RaisedError& error, const CLoadProfile& profile,
                                         const CPwrSys& site) {
    StepFigures before;
    std::int32_t number = 1;
    for (const CLoadStep& step : profile) {
        if (RaisesByItself(error, step, site)) {
            return StepOf(step, number);
        }
        if (Raises(error, [&] { return (before = FiguresOfStep(step, before, site)).startKVA; })) {
            return LargestLoad(profile, number);
        }
        ++number;
    }
    return std::nullopt;
}

/// The load whose negative power shows only when a set is tried: the distortion model refuses it, or the
/// curve of the frequency dip has no value for it.
std::optional<RunCulprit> NegativeLoad(const RaisedError& error, const CLoadProfile& profile) {
    for (const RefusedPower& refused : kRefusedPowers) {
        if (refused.source == error.Source()) {
            return FirstLoad(profile, [&](const Load& load) { return refused.figure(load) < 0.0; });
        }
    }
    if (error.Number() == errors::kInvalidArgument && error.Source() == "CDesigner::ChooseSets") {
        return FirstLoad(profile, [](const Load& load) { return load.StartingRealPower() < 0.0; });
    }
    return std::nullopt;
}

/// Whether a row was asked for that the catalogue does not have, or another failure of what stands in a row;
/// a table that cannot be read fails at the first row that needs it, whichever it is.
bool IsOfOneRow(const RaisedError& error) {
    return error.Source() != kDatabaseSource || error.Number() == kNoRowError;
}

}  // namespace

std::optional<RunCulprit> FindCulprit(const RaisedError& error, const CLoadProfile& profile,
                                      const CPwrSys& site, const std::optional<SetAtFault>& set) {
    if (set && !IsOfOneRow(error)) {
        return std::nullopt;
    }
    if (set) {
        // The profile has been worked out by then; only what a set makes of it can have failed.
        const std::optional<RunCulprit> negative = NegativeLoad(error, profile);
        return negative ? negative : RunCulprit{.step = 0, .load = 0, .loadName = {}, .set = set};
    }
    const std::optional<RunCulprit> load = LoadThatRaises(error, profile);
    return load ? load : StepThatRaises(error, profile, site);
}

std::string CulpritText(const RunCulprit& culprit) {
    if (culprit.set) {
        const SetAtFault& set = *culprit.set;
        return fmt::format("the set {}{}{}", set.model.empty() ? "without a model" : set.model,
                           set.alternator.empty() ? "" : " with the alternator " + set.alternator,
                           set.row ? fmt::format(", row {} of [Gensets]", *set.row) : "");
    }
    if (culprit.load == 0) {
        return fmt::format("the loads of step {} together", culprit.step);
    }
    return fmt::format("{}load {} of step {}{}",
                       culprit.members.empty() ? "" : fmt::format("the {} of ", culprit.members),
                       culprit.load, culprit.step,
                       culprit.loadName.empty() ? "" : fmt::format(", \"{}\"", culprit.loadName));
}

}  // namespace genvara
