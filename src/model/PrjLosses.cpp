#include "PrjLosses.h"

#include <cstddef>
#include <string>
#include <variant>

#include "CodePage.h"
#include "NumberText.h"
#include "ProjectFile.h"
#include "Properties.h"
#include "PropertyText.h"

namespace genvara {
namespace {

/// What a reader passes over of the project that it is given back.
class Reading final : public ProjectReadObserver {
  public:
    explicit Reading(ProjectFaults& losses) : m_losses(&losses) {}
    void Skipped(const SkippedItem& item) override { m_losses->Tell(item); }

  private:
    ProjectFaults* m_losses;
};

/// Calls `visit` for every record with its place as a JSON pointer, its table, and the record.
template <typename Visitor>
void ForEachRecord(const ProjectView& project, Visitor visit) {
    visit("/Project", ProjectProperties(), project.project);
    visit("/PowerSystem", PowerSystemProperties(), project.powerSystem);
    std::size_t number = 0;
    for (const CLoadStep& step : project.loadProfile) {
        const std::string pointer = PointerTo("/LoadProfile", number++);
        visit(pointer, StepProperties(), step);
        std::size_t place = 0;
        for (const Load& load : step) {
            visit(PointerTo(PointerTo(pointer, "Loads"), place++), LoadProperties(load.LoadType()), load);
        }
    }
}

/// What a text would have to be for a `.prj` to hold it; empty for one that it holds.
std::string_view Unheld(const std::string& text) {
    if (text.find('"') != std::string::npos) {
        return "a text without a double quote";
    }
    return EncodeText(text).lostCharacters > 0 ? "letters of Windows-1252 alone" : std::string_view{};
}

void FindTexts(const ProjectView& project, ProjectFaults& losses) {
    ForEachRecord(project, [&](std::string_view place, const auto& table, const auto& record) {
        for (const auto& row : table) {
            const PropertyValue value = row.get(record);
            const auto* text = std::get_if<std::string>(&value);
            if (const std::string_view expected = text != nullptr ? Unheld(*text) : ""; !expected.empty()) {
                losses.Tell({.record = PointerTo(place, row.facts.name),
                             .expected = std::string(expected),
                             .found = DraftValue(*text).Shown()});
            }
        }
    });
}

}  // namespace

ProjectFaults FindPrjLosses(const ProjectView& project, const MotorConversions& motors) {
    ProjectFaults losses;
    FindTexts(project, losses);
    if (losses.Any()) {
        return losses;  // a quote moves all that follows: what would come back tells nothing
    }
    const ProjectText text = RenderProject(project, {}, {});
    CProject backProject = project.project;
    CPwrSys backSite = project.powerSystem;
    CLoadProfile backProfile;
    const ProjectModel back{backProject, backSite, backProfile, motors};
    Reading reading(losses);
    MemorySource source(text.bytes);
    (void)ReadProject(source, back, reading);
    if (!losses.Any() && RenderProject(back, {}, {}).bytes != text.bytes) {
        losses.Tell({.record = "", .expected = "a project that comes back as it is", .found = "another one"});
    }
    return losses;
}

}  // namespace genvara
