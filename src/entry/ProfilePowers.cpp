#include "ProfilePowers.h"

#include <fmt/format.h>

#include <cmath>
#include <string_view>

#include "Kilo.h"
#include "LanguageErrors.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr const char* kSource = "ProfilePowers";
constexpr std::int32_t kNotGiven = 5;
/// Connections by their code.
constexpr std::array<const char*, 4> kPhases{"3", "A", "B", "C"};

using LoadMember = double (Load::*)() const;
using StepMember = double (CLoadStep::*)(std::int32_t) const;

/// Where the power of a kind is asked for, and what it is made of.
struct PowerSources {
    LoadMember ofLoad;
    StepMember ofStep;
    LoadMember realOfLoad;
    LoadMember imaginaryOfLoad;
    StepMember realOfStep;
    StepMember imaginaryOfStep;
    bool apparent;
};

constexpr std::array<PowerSources, kPowerKinds.size()> kSources{
    {{&Load::RunningRealPower, &CLoadStep::TotalRunningRealPower, &Load::RunningRealPower,
      &Load::RunningImgPower, &CLoadStep::TotalRunningRealPower, &CLoadStep::TotalRunningImgPower, false},
     {&Load::RunningAppPower, &CLoadStep::TotalRunningApparentPower, &Load::RunningRealPower,
      &Load::RunningImgPower, &CLoadStep::TotalRunningRealPower, &CLoadStep::TotalRunningImgPower, true},
     {&Load::StartingRealPower, &CLoadStep::TotalStartingRealPower, &Load::StartingRealPower,
      &Load::StartingImgPower, &CLoadStep::TotalStartingRealPower, &CLoadStep::TotalStartingImgPower, false},
     {&Load::StartingAppPower, &CLoadStep::TotalStartingApparentPower, &Load::StartingRealPower,
      &Load::StartingImgPower, &CLoadStep::TotalStartingRealPower, &CLoadStep::TotalStartingImgPower, true}}};

const PowerSources& SourcesOf(PowerKind kind) {
    return kSources.at(static_cast<std::size_t>(kind));
}

/// @throws RaisedError of the load; 6 beyond a double's range; 5 for a power that was never given, which new
///         loads hold as a negative one.
double OfAllUnits(const Load& load, LoadMember member) {
    const double power = (load.*member)();
    if (power < 0.0) {
        throw RaisedError(kNotGiven, kSource, "A power was not given.");
    }
    return Finite(load.Quantity() * power, kSource);
}

/// Why a step has no total: the first load of which a part of it cannot be worked out.
std::optional<std::string> WhyNot(const CLoadStep& step, const PowerSources& sources) {
    for (const Load& load : step) {
        try {
            (void)OfAllUnits(load, sources.realOfLoad);
            (void)(sources.apparent ? (load.*sources.imaginaryOfLoad)() : 0.0);
        } catch (const RaisedError& cause) {
            return fmt::format("Load \"{}\": {}", load.name(), cause.Description());
        }
    }
    return std::nullopt;
}

/// Makes sure that no load of a step lacks a power, whose total would be of something else.
void RequireGiven(const CLoadStep& step, LoadMember member) {
    for (const Load& load : step) {
        (void)OfAllUnits(load, member);
    }
}

std::optional<std::string> WhyNot(const CLoadProfile& profile, PowerKind kind) {
    std::int32_t position = 0;
    for (const CLoadStep& step : profile) {
        ++position;
        if (const PowerFigure figure = FigureOf(step, kind); !figure.power) {
            return fmt::format("Step {}, \"{}\": {}", position, step.Description(), figure.why);
        }
    }
    return std::nullopt;
}

double SumOf(const CLoadProfile& profile, StepMember member) {
    double sum = 0.0;
    for (const CLoadStep& step : profile) {
        sum += (step.*member)(0);
    }
    return Finite(sum, kSource);
}

double SumOf(const CLoadProfile& profile, const PowerSources& sources) {
    for (const CLoadStep& step : profile) {
        RequireGiven(step, sources.realOfLoad);
    }
    const double real = SumOf(profile, sources.realOfStep);
    if (!sources.apparent) {
        return real;
    }
    const double imaginary = SumOf(profile, sources.imaginaryOfStep);
    return SquareRoot(imaginary * imaginary + real * real, kSource);
}

/// Current [A] of an apparent power [VA] at the site's voltage between lines.
double AmperesOf(double voltAmperes, std::int32_t phases, const CPwrSys& site) {
    const double factor = phases == 0 ? std::sqrt(3.0) : 1.0;
    return site.Voltage() > 0 ? voltAmperes / (site.Voltage() * factor) : 0.0;
}

}  // namespace

PowerFigure FigureOf(const Load& load, PowerKind kind) {
    try {
        return {.power = OfAllUnits(load, SourcesOf(kind).ofLoad)};
    } catch (const RaisedError& failure) {
        return {.power = std::nullopt, .why = failure.Description()};
    }
}

PowerFigure FigureOf(const CLoadStep& step, PowerKind kind) {
    const PowerSources& sources = SourcesOf(kind);
    try {
        RequireGiven(step, sources.realOfLoad);
        return {.power = (step.*sources.ofStep)(0)};
    } catch (const RaisedError& failure) {
        return {.power = std::nullopt, .why = WhyNot(step, sources).value_or(failure.Description())};
    }
}

PowerFigure FigureOf(const CLoadProfile& profile, PowerKind kind) {
    try {
        return {.power = SumOf(profile, SourcesOf(kind))};
    } catch (const RaisedError& failure) {
        return {.power = std::nullopt, .why = WhyNot(profile, kind).value_or(failure.Description())};
    }
}

std::string PowerText(const PowerFigure& figure, int decimals, const EntryNumbers& numbers) {
    return figure.power ? numbers.Fixed(*figure.power / kPerKilo, decimals) : "?";
}

std::string PhasesText(const Load& load) {
    return kPhases.at(static_cast<std::size_t>(load.Phases()));
}

std::optional<LargestStart> LargestStartOf(const CLoadProfile& profile, const CPwrSys& site) {
    const Load* largest = nullptr;
    double most = 0.0;
    for (const CLoadStep& step : profile) {
        for (const Load& load : step) {
            const double start = FigureOf(load, PowerKind::StartingApparent).power.value_or(0.0);
            if (start > most) {
                largest = &load;
                most = start;
            }
        }
    }
    if (largest == nullptr) {
        return std::nullopt;
    }
    return LargestStart{
        .name = largest->name(), .voltAmperes = most, .amperes = AmperesOf(most, largest->Phases(), site)};
}

}  // namespace genvara
