#include "VariedProject.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <variant>

#include "JsonProject.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"
#include "Properties.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::string_view kDip = "MaxVoltageDipOverride";

/// What a project's file would be.
std::string TextOf(const StudyProject& project) {
    const ProjectView view{project.project, project.powerSystem, project.loadProfile};
    const DateTime& saved = project.project.LastModified();
    return project.format == ProjectFormat::Json ? RenderJsonProject(view, saved)
                                                 : RenderProject(view, kProgramVersion, saved).bytes;
}

/// The project saved and opened again, if every record comes back as it was written: then each can be saved
/// and opened by itself.
std::optional<StudyProject> OpenedInPieces(const StudyProject& project, const EntryRules& rules) {
    try {
        StudyProject opened = Reopened(project, rules);
        return TextOf(opened) == TextOf(project) ? std::optional(std::move(opened)) : std::nullopt;
    } catch (const RaisedError&) {
        return std::nullopt;
    }
}

/// A project of the same site without a word or a load.
StudyProject BareProject(const StudyProject& project) {
    StudyProject bare{.project = project.project,
                      .powerSystem = project.powerSystem,
                      .loadProfile = {},
                      .limits = project.limits,
                      .format = project.format};
    bare.project.ProjName("");
    bare.project.Customer("");
    bare.project.Description("");
    bare.project.UserName("");
    return bare;
}

bool IsWord(const std::string& text) {
    return !text.empty() && std::ranges::all_of(text, [](char sign) {
        return (sign >= '0' && sign <= '9') || (sign >= 'A' && sign <= 'Z') || (sign >= 'a' && sign <= 'z');
    });
}

/// Whether a changed load has only texts that were opened before, or that no format could mistake.
bool HasPlainTexts(const Load& load, const Load& before) {
    return std::ranges::all_of(LoadProperties(load.LoadType()), [&](const Property<Load>& row) {
        if (row.facts.type != PropertyType::Text) {
            return true;
        }
        const PropertyValue text = row.get(load);
        return text == row.get(before) || IsWord(std::get<std::string>(text));
    });
}

}  // namespace

VariedProject::VariedProject(const StudyProject& project, const EntryRules& rules)
    : m_base(&project),
      m_rules(&rules),
      m_given(project),
      m_opened(OpenedInPieces(project, rules)),
      m_openedSite(m_opened ? m_opened->powerSystem : project.powerSystem),
      m_written(BareProject(project)),
      m_read(m_written) {}

StudyProject& VariedProject::With(std::span<const MemberValue> changes) {
    TakeBack();
    m_isOfPieces = m_opened && Vary(changes);
    if (m_isOfPieces) {
        return *m_opened;
    }
    TakeBack();
    return m_whole.emplace(Changed(*m_base, changes, *m_rules));
}

/// Changes the records in place; false where the project must be opened as a whole, if only to learn why it
/// cannot be.
bool VariedProject::Vary(std::span<const MemberValue> changes) {
    try {
        for (const MemberValue& change : changes) {
            if (!Mark(ParsePath(change.path))) {
                return false;
            }
            Change(m_given, change, *m_rules);
        }
        // What is rebuilt of a load depends on the voltage.
        if (m_given.powerSystem.Voltage() != m_base->powerSystem.Voltage() || !OpenPieces()) {
            return false;
        }
    } catch (const RaisedError&) {
        return false;
    }
    m_opened->limits = m_given.limits;
    return true;
}

/// Notes which record a path leads into, before it is changed; false for one that is not opened by itself.
bool VariedProject::Mark(const PropertyPath& path) {
    const auto isStep = [&](std::int32_t step) {
        return step >= 1 && step <= m_given.loadProfile.NumLoadSteps();
    };
    if (path.step > 0 && !isStep(path.step)) {
        return false;
    }
    if (path.load > 0) {
        const bool isLoad = path.load <= m_given.loadProfile.LoadStep(path.step).NumLoads();
        if (isLoad) {
            MarkLoad(path.step, path.load);
        }
        return isLoad;
    }
    if (path.step > 0) {
        m_dips.push_back(path.step);
        return path.member == kDip;
    }
    m_changesSite = m_changesSite || path.record == "PowerSystem";
    return path.record == "PowerSystem" || path.record == "Designer";
}

void VariedProject::MarkLoad(std::int32_t step, std::int32_t load) {
    const auto isIt = [&](const Exchange& row) { return row.step == step && row.load == load; };
    if (std::ranges::none_of(m_loads, isIt)) {
        CLoadStep& given = m_given.loadProfile.LoadStep(step);
        std::unique_ptr<Load> copy = std::next(given.begin(), load - 1)->Clone();
        m_loads.push_back({step, load, given.ExchangeLoad(load, std::move(copy)), nullptr});
    }
}

/// Saves and opens what is changed; false where it is not certain to be the same in its place.
bool VariedProject::OpenPieces() {
    const bool isPlain = std::ranges::all_of(m_loads, [this](const Exchange& row) {
        const CLoadStep& step = m_given.loadProfile.LoadStep(row.step);
        return HasPlainTexts(*std::next(step.begin(), row.load - 1), *row.given);
    });
    if (!isPlain) {
        return false;
    }
    if (m_changesSite || !m_dips.empty() || !m_loads.empty()) {
        WritePieces();
        ReopenInto(m_written, *m_rules, m_read);
        TakePieces();
    }
    return true;
}

/// Each changed load stands in a step of its own, and behind them the limits.
void VariedProject::WritePieces() {
    m_written.powerSystem = m_given.powerSystem;
    CLoadProfile& pieces = m_written.loadProfile;
    pieces.DeleteAllLoadSteps();
    for (const Exchange& row : m_loads) {
        const CLoadStep& step = m_given.loadProfile.LoadStep(row.step);
        pieces.AddLoadStep("", kStepVoltageDip.greatest, 0);
        pieces.LoadStep(pieces.NumLoadSteps()).AddLoad(std::next(step.begin(), row.load - 1)->Clone());
    }
    for (const std::int32_t step : m_dips) {
        pieces.AddLoadStep("", m_given.loadProfile.LoadStep(step).MaxVoltageDipOverride(), 0);
    }
}

void VariedProject::TakePieces() {
    m_opened->powerSystem = m_read.powerSystem;
    std::int32_t piece = 0;
    for (Exchange& row : m_loads) {
        CLoadStep& step = m_read.loadProfile.LoadStep(++piece);
        row.opened = m_opened->loadProfile.LoadStep(row.step).ExchangeLoad(row.load,
                                                                           step.TakeLoad(step.begin()->ID()));
    }
    for (const std::int32_t step : m_dips) {
        m_opened->loadProfile.LoadStep(step).MaxVoltageDipOverride(
            m_read.loadProfile.LoadStep(++piece).MaxVoltageDipOverride());
    }
}

void VariedProject::TakeBack() {
    if (!m_opened) {
        return;
    }
    for (Exchange& row : m_loads) {
        (void)m_given.loadProfile.LoadStep(row.step).ExchangeLoad(row.load, std::move(row.given));
        if (row.opened) {
            (void)m_opened->loadProfile.LoadStep(row.step).ExchangeLoad(row.load, std::move(row.opened));
        }
    }
    m_loads.clear();
    for (const std::int32_t step : m_dips) {
        const std::int32_t dip = m_base->loadProfile.LoadStep(step).MaxVoltageDipOverride();
        m_given.loadProfile.LoadStep(step).MaxVoltageDipOverride(dip);
        m_opened->loadProfile.LoadStep(step).MaxVoltageDipOverride(dip);
    }
    m_dips.clear();
    m_given.powerSystem = m_base->powerSystem;
    m_opened->powerSystem = m_openedSite;
    m_changesSite = false;
    m_given.limits = m_base->limits;
    m_opened->limits = m_base->limits;
}

}  // namespace genvara
