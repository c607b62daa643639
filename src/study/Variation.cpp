#include "Variation.h"

#include <fmt/format.h>

#include "JsonProject.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"
#include "RaisedError.h"
#include "WorkOutLoads.h"

namespace genvara {
namespace {

/// Keeps the first item that the reader of a `.prj` passed over.
class FirstSkipped final : public ProjectReadObserver {
  public:
    void Skipped(const SkippedItem& item) override {
        if (!m_item) {
            m_item = item;
        }
    }
    [[nodiscard]] const std::optional<SkippedItem>& Item() const noexcept { return m_item; }

  private:
    std::optional<SkippedItem> m_item;
};

constexpr std::string_view kName = "the changed project";

void ReadRecords(const ProjectView& from, const DateTime& savedAt, const ProjectModel& into) {
    const std::string bytes = RenderProject(from, kProgramVersion, savedAt).bytes;
    MemorySource source(bytes);
    FirstSkipped skipped;
    if (ReadProject(source, into, skipped) == ReadResult::Incompatible) {
        throw RaisedError(0, "", fmt::format("A .prj cannot hold {}.", kName));
    }
    if (const auto& item = skipped.Item()) {
        throw RaisedError(0, "",
                          fmt::format("A .prj cannot hold {}: {}: expected {}, found {}.", kName,
                                      item->record, item->expected, item->found));
    }
}

void ReadJson(const ProjectView& from, const DateTime& savedAt, const ProjectModel& into) {
    const std::string text = RenderJsonProject(from, savedAt);
    MemorySource source(text);
    FirstSkipped gaps;
    ReadJsonProject(source, kName, into, gaps);
}

}  // namespace

PathRoots RootsOf(StudyProject& project) noexcept {
    return {project.project, project.powerSystem, project.loadProfile, project.limits};
}

void Change(StudyProject& project, const MemberValue& change, const EntryRules& rules) {
    ChangeMember(FollowPath(change.path, RootsOf(project)), change.value, project.powerSystem, rules);
}

StudyProject Reopened(const StudyProject& project, const EntryRules& rules) {
    StudyProject opened{.project = project.project,
                        .powerSystem = project.powerSystem,
                        .loadProfile = {},
                        .limits = project.limits};
    ReopenInto(project, rules, opened);
    return opened;
}

void ReopenInto(const StudyProject& project, const EntryRules& rules, StudyProject& opened) {
    opened.limits = project.limits;
    opened.format = project.format;
    opened.powerSystem.ResetDefaults();
    const ProjectView from{project.project, project.powerSystem, project.loadProfile};
    const ProjectModel into{opened.project, opened.powerSystem, opened.loadProfile, rules.motors.conversions};
    if (project.format == ProjectFormat::Json) {
        ReadJson(from, project.project.LastModified(), into);
    } else {
        ReadRecords(from, project.project.LastModified(), into);
    }
    FollowConnection(opened.powerSystem, rules.phasesOf);
}

StudyProject Changed(const StudyProject& project, std::span<const MemberValue> changes,
                     const EntryRules& rules) {
    StudyProject changed = project;
    for (const MemberValue& change : changes) {
        Change(changed, change, rules);
    }
    return Reopened(changed, rules);
}

double TotalRating(double nominalRating, const CPwrSys& site) noexcept {
    return nominalRating * site.GensetsInParallel();
}

bool Sizing::IsSameRow(const Sizing& other) const noexcept {
    if (!set || !other.set) {
        return set.has_value() == other.set.has_value();
    }
    return row == other.row && !(filter < other.filter) && !(other.filter < filter);
}

void RequireSizable(const StudyProject& project, const EntryRules& rules) {
    RequireConnection(project.powerSystem, rules.phasesOf);
    RequireLoads(project.loadProfile);
}

Sizing ProjectSizer::Size(const StudyProject& project, DesignSearch::Goal goal) {
    RequireSizable(project, m_tables->rules);
    const CPwrSys& site = project.powerSystem;
    const CLoadProfile& profile = project.loadProfile;
    Sizing sizing;
    sizing.filter = FilterOf(site);
    const auto candidates = m_tables->candidates.Of(sizing.filter);
    const ProfileFigures figures = candidates->Rows().empty() ? ProfileFigures{} : FiguresOf(profile, site);
    const SearchAnswer answer = m_search.Find(candidates, site, figures, project.limits, goal);
    if (answer.first) {
        sizing.row = *answer.first;
        sizing.set = m_search.RecordAt(*answer.first);
        sizing.sets = site.GensetsInParallel();
        sizing.total = TotalRating(answer.nominalRating, site);
        sizing.tightest = answer.tightest;
    }
    sizing.numChosenSets = answer.numChosenSets;
    WorkOutLoads(profile);
    return sizing;
}

}  // namespace genvara
