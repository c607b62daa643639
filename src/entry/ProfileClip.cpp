#include "ProfileClip.h"

#include <algorithm>
#include <utility>

#include "CDefaults.h"
#include "CProject.h"
#include "JsonProject.h"
#include "LoadFactory.h"
#include "MotorPower.h"
#include "ProfilePowers.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr int kDecimals = 3;
constexpr std::int32_t kAnyDip = kStepVoltageDip.least;  // of a step that only carries loads
constexpr std::string_view kHeading =
    "Step\tKind\tName\tDescription\tQuantity\tPhases\tRunning kW\tRunning kVA\tStarting kW\tStarting kVA\n";

/// The records that a clip needs to be a project.
struct ClipRecords {
    explicit ClipRecords(const CPwrSys& from) : site(from) {}

    CDefaults defaults;
    CProject project{defaults, LocalTime};
    CPwrSys site;
};

/// A text without what would end its cell.
std::string Cell(std::string text) {
    std::ranges::replace_if(
        text, [](char byte) { return byte == '\t' || byte == '\n' || byte == '\r'; }, ' ');
    return text + "\t";
}

std::string Row(const CLoadStep& step, const Load& load, const EntryNumbers& numbers) {
    std::string row = Cell(step.Description());
    row += Cell(std::string(FindLoadKindRow(load.LoadType())->name));
    row += Cell(load.name());
    row += Cell(load.Description());
    row += Cell(std::to_string(load.Quantity()));
    row += PhasesText(load);
    for (const PowerKind kind : kPowerKinds) {
        row += "\t" + PowerText(FigureOf(load, kind), kDecimals, numbers);
    }
    return row + "\n";
}

}  // namespace

ProfileClip ClipOf(const CLoadStep& step) {
    ProfileClip clip{.wholeSteps = true, .steps = {}};
    AddCopy(clip.steps, step, 0);
    return clip;
}

ProfileClip ClipOf(const Load& load) {
    ProfileClip clip;
    clip.steps.AddLoadStep("", kAnyDip, 0);
    clip.steps.LoadStep(1).AddLoad(load.Clone());
    return clip;
}

std::string RenderClip(const ProfileClip& clip, const CPwrSys& site) {
    const ClipRecords records(site);
    return RenderJsonProject({records.project, records.site, clip.steps}, {});
}

ProfileClip ReadClip(std::string_view text, bool wholeSteps, const CPwrSys& site,
                     const MotorConversions& motors) {
    ProfileClip clip{.wholeSteps = wholeSteps, .steps = {}};
    ClipRecords records(site);
    MemorySource source(text);
    ProjectReadObserver observer;
    ReadJsonProject(source, "The clipboard", {records.project, records.site, clip.steps, motors}, observer);
    const bool empty = wholeSteps ? clip.steps.NumLoadSteps() == 0
                                  : clip.steps.NumLoadSteps() != 1 || clip.steps.LoadStep(1).NumLoads() == 0;
    if (empty) {
        throw RaisedError(0, "ReadClip", "The clipboard holds no loads.");
    }
    for (CLoadStep& step : clip.steps) {
        for (Load& load : step) {
            RebuildPowers(load, site.Voltage(), motors);
        }
    }
    return clip;
}

bool Survives(const ProfileClip& clip, const CPwrSys& site, const MotorConversions& motors) {
    try {
        const ProfileClip read = ReadClip(RenderClip(clip, site), clip.wholeSteps, site, motors);
        return std::equal(
            clip.steps.begin(), clip.steps.end(), read.steps.begin(), read.steps.end(),
            [](const CLoadStep& left, const CLoadStep& right) { return left.HoldsSame(right); });
    } catch (const RaisedError&) {
        return false;
    }
}

std::string ClipTable(const ProfileClip& clip, const EntryNumbers& numbers) {
    std::string table(kHeading);
    for (const CLoadStep& step : clip.steps) {
        for (const Load& load : step) {
            table += Row(step, load, numbers);
        }
    }
    return table;
}

std::int32_t AddCopy(CLoadProfile& profile, const CLoadStep& step, std::int32_t position) {
    const std::int32_t id = profile.AddLoadStep(step.Description(), step.MaxVoltageDipOverride(), position);
    CLoadStep& copy = *profile.LoadStepByID(id);
    for (const Load& load : step) {
        copy.AddLoad(load.Clone());
    }
    return id;
}

}  // namespace genvara
