#include "VariedProject.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <bit>
#include <random>

#include "JsonProject.h"
#include "Paths.h"
#include "RaisedError.h"
#include "RandomProject.h"

namespace genvara {
namespace {

const std::vector<CodeLetterRecord> kLetters{{"F", 5.3}, {"G", 6}, {"H", 6.7}};
const std::vector<double> kMultipliers{1, 0.64, 0.42, 0.7, 0.33};

EntryRules Rules() {
    return {.motors = {kRandomMotors, kLetters, kMultipliers}, .phasesOf = [](std::int32_t code) {
                return code < 0 ? std::nullopt : std::optional(code % 2 == 0 ? 3 : 1);
            }};
}

StudyProject Fresh(const CDefaults& defaults) {
    return {.project = CProject(defaults, LocalTime),
            .powerSystem = CPwrSys(defaults),
            .loadProfile = {},
            .limits = {},
            .format = ProjectFormat::Records};
}

/// Everything of a project to the last bit: its members, and what is rebuilt of its loads.
std::string AllOf(const StudyProject& project) {
    std::string text = RenderJsonProject({project.project, project.powerSystem, project.loadProfile},
                                         project.project.LastModified());
    text += fmt::format(" {} {}", project.powerSystem.Phases(), project.limits.MaxLoading());
    const auto add = [&](const auto& figure) {
        try {
            text += fmt::format(" {}", std::bit_cast<std::uint64_t>(figure()));
        } catch (const RaisedError& failure) {
            text += fmt::format(" {}", failure.Number());
        }
    };
    for (const CLoadStep& step : project.loadProfile) {
        for (const Load& load : step) {
            text += fmt::format(" {}", load.ID());
            add([&] { return load.RunningRealPower(); });
            add([&] { return load.RunningAppPower(); });
            add([&] { return load.StartingAppPower(); });
        }
    }
    return text;
}

/// What comes of making a project: all of it, or why it could not be made.
template <typename Make>
std::string ResultOf(Make make) {
    try {
        return AllOf(make());
    } catch (const RaisedError& failure) {
        return fmt::format("{} {} {}", failure.Number(), failure.Source(), failure.Description());
    }
}

/// Changes of one project's members to what another has there.
class RandomChanges {
  public:
    RandomChanges(StudyProject& project, std::uint32_t seed) : m_project(&project), m_dice(seed) {}

    std::vector<MemberValue> Some() {
        std::vector<MemberValue> changes;
        for (int left = 1 + Below(3); left > 0; --left) {
            changes.push_back(One());
        }
        return changes;
    }

  private:
    MemberValue One() {
        const std::int32_t step = Below(m_project->loadProfile.NumLoadSteps() + 2);
        const std::int32_t loads = step >= 1 && step <= m_project->loadProfile.NumLoadSteps()
                                       ? m_project->loadProfile.LoadStep(step).NumLoads()
                                       : 0;
        if (loads > 0 && Below(5) > 0) {
            const std::int32_t load = 1 + Below(loads);
            const Load& old = *std::next(m_project->loadProfile.LoadStep(step).begin(), load - 1);
            const std::unique_ptr<Load> other =
                RandomProject(Seed(), Letters::Any).MakeOne(old.LoadType(), 480, kRandomMotors);
            const auto rows = LoadProperties(old.LoadType());
            const Property<Load>& row = rows[static_cast<std::size_t>(Below(static_cast<int>(rows.size())))];
            return {fmt::format("Step[{}].Load[{}].{}", step, load, row.facts.name), row.get(*other)};
        }
        if (step > 0) {
            return {fmt::format("Step[{}].MaxVoltageDipOverride", step), 4 + Below(33)};
        }
        if (Below(4) == 0) {
            return {"Designer.MaxLoading", 40 + Below(70)};
        }
        CPwrSys other(m_defaults);
        CProject project(m_defaults, LocalTime);
        CLoadProfile profile;
        RandomProject(Seed(), Letters::Any).Fill({project, other, profile, kRandomMotors});
        const auto rows = PowerSystemProperties();
        const Property<CPwrSys>& row = rows[static_cast<std::size_t>(Below(static_cast<int>(rows.size())))];
        return {fmt::format("PowerSystem.{}", row.facts.name), row.get(other)};
    }
    std::uint32_t Seed() { return static_cast<std::uint32_t>(m_dice()); }
    int Below(int bound) { return static_cast<int>(m_dice() % static_cast<unsigned>(bound)); }

    CDefaults m_defaults;
    StudyProject* m_project;
    std::mt19937 m_dice;
};

TEST(VariedProject, IsTheProjectThatIsSavedAndOpenedAsAWhole) {
    const CDefaults defaults;
    const EntryRules rules = Rules();
    int ofPieces = 0;
    int changed = 0;
    for (std::uint32_t seed = 1; seed <= 200; ++seed) {
        StudyProject project = Fresh(defaults);
        const Letters letters = seed % 4 == 0 ? Letters::Any : Letters::OfTheCodePage;
        RandomProject(seed, letters)
            .Fill({project.project, project.powerSystem, project.loadProfile, kRandomMotors});
        project.powerSystem.Phases(rules.phasesOf(project.powerSystem.ConnectCode()).value_or(3));
        project.format = seed % 2 == 0 ? ProjectFormat::Json : ProjectFormat::Records;
        VariedProject varied(project, rules);
        RandomChanges changes(project, seed);
        const std::string unchanged = ResultOf([&] { return Changed(project, {}, rules); });
        for (int i = 0; i < 12; ++i) {
            const std::vector<MemberValue> some = changes.Some();
            const std::string expected = ResultOf([&] { return Changed(project, some, rules); });
            EXPECT_EQ(ResultOf([&]() -> StudyProject& { return varied.With(some); }), expected)
                << "seed " << seed << ", " << some.front().path;
            ofPieces += varied.IsOfPieces() ? 1 : 0;
            changed += varied.IsOfPieces() && expected != unchanged ? 1 : 0;
        }
    }
    // Most come the short way, and the changes do change something.
    EXPECT_GT(ofPieces, 400);
    EXPECT_GT(changed, 300);
}

}  // namespace
}  // namespace genvara
