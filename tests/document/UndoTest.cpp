// What a document keeps of its changes: taken back one by one, they lead to the project as it was.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <random>

#include "CMiscLoad.h"
#include "Document.h"
#include "LoadChanges.h"
#include "RandomProject.h"
#include "SmallCatalogue.h"

namespace genvara {
namespace {

using testing::Optional;

class UndoTest : public testing::Test {
  protected:
    UndoTest() {
        BuildSmallCatalogue(folder, {{"Connections", "ID,Connection Type,Phases\n1,Wye,3\n4,Series,1\n"}});
        catalogue.emplace(folder / "Genvara.db");
        catalogue->RequireFit();
        document.emplace(defaults, *catalogue, [] { return DateTime{2026, 3, 4, 5, 6, 7}; });
    }

    CLoadProfile& Profile() { return document->LoadProfile(); }
    std::int32_t AddStep(const std::string& name) {
        std::int32_t id = -1;
        document->Change("Add " + name, [&] { id = Profile().AddLoadStep(name, 20, 0); });
        return id;
    }
    std::int32_t AddLoad(std::int32_t step, const std::string& name, double watts) {
        std::int32_t id = -1;
        document->Change("Add " + name, [&] {
            auto load = std::make_unique<CMiscLoad>();
            load->name(name);
            load->RunningRealPower(watts);
            id = Profile().LoadStep(step).AddLoad(std::move(load));
        });
        return id;
    }
    /// The project as its file would have it.
    std::string Bytes() {
        return RenderProject({document->Project(), document->PowerSystem(), document->LoadProfile()},
                             {8, 0, 0}, {})
            .bytes;
    }

    TemporaryFolder folder;
    CDefaults defaults;
    std::optional<Catalogue> catalogue;
    std::optional<Document> document;
    ProjectReadObserver nobody;
};

TEST_F(UndoTest, ANewProjectHasNothingToTakeBack) {
    EXPECT_EQ(document->UndoName(), std::nullopt);
    EXPECT_EQ(document->RedoName(), std::nullopt);
    EXPECT_FALSE(document->Undo());
    EXPECT_FALSE(document->Redo());
}

TEST_F(UndoTest, TakesBackAndMakesAgainUnderTheNameOfTheChange) {
    AddStep("Pumps");
    AddStep("Fans");
    EXPECT_THAT(document->UndoName(), Optional(std::string("Add Fans")));
    EXPECT_EQ(document->Undo()->name, "Add Fans");
    EXPECT_EQ(Profile().NumLoadSteps(), 1);
    EXPECT_EQ(Profile().LoadStep(1).Description(), "Pumps");
    EXPECT_THAT(document->UndoName(), Optional(std::string("Add Pumps")));
    EXPECT_THAT(document->RedoName(), Optional(std::string("Add Fans")));
    EXPECT_EQ(document->Redo()->name, "Add Fans");
    EXPECT_EQ(Profile().LoadStep(2).Description(), "Fans");
    document->Undo();
    document->Undo();
    EXPECT_EQ(Profile().NumLoadSteps(), 0);
    EXPECT_FALSE(document->Undo());
}

TEST_F(UndoTest, WhatWasTakenBackIsForgottenWithTheNextChange) {
    AddStep("Pumps");
    document->Undo();
    AddStep("Fans");
    EXPECT_EQ(document->RedoName(), std::nullopt);
    document->Undo();
    EXPECT_EQ(Profile().NumLoadSteps(), 0);
}

TEST_F(UndoTest, AStepComesBackWithItsIDAndItsCountOfAdditionsAndNoIDIsGivenTwice) {
    const std::int32_t pumps = AddStep("Pumps");
    AddLoad(1, "A", 1000);
    const std::int32_t second = AddLoad(1, "B", 2000);
    document->Change("Delete", [&] { Profile().DeleteLoadStep(pumps); });
    document->Undo();
    EXPECT_EQ(Profile().LoadStep(1).StepID(), pumps);
    EXPECT_NE(Profile().LoadStep(1).LoadItem(second), nullptr);
    EXPECT_EQ(AddLoad(1, "C", 3000), second + 1);
    document->Undo();
    document->Undo();  // B
    EXPECT_EQ(AddLoad(1, "D", 4000), second) << "the count goes back with the load";
    const std::int32_t other = AddStep("Fans");
    document->Undo();
    EXPECT_GT(AddStep("Fans again"), other) << "a step's ID is unique in the life of the profile";
}

TEST_F(UndoTest, AStepThatDidNotChangeStaysTheObjectThatItIs) {
    AddStep("Pumps");
    AddStep("Fans");
    AddLoad(2, "A", 1000);
    const CLoadStep* pumps = &Profile().LoadStep(1);
    document->Undo();
    EXPECT_EQ(&Profile().LoadStep(1), pumps);
    EXPECT_EQ(Profile().LoadStep(2).NumLoads(), 0);
}

TEST_F(UndoTest, TellsWhereAChangeIsToBeSeen) {
    ProfilePlace selected;
    document->SelectionTeller([&] { return selected; });
    const std::int32_t step = AddStep("Pumps");
    selected = {.stepId = step};
    const std::int32_t load = AddLoad(1, "A", 1000);
    selected = {.stepId = step, .loadId = load};
    document->Change("Delete", [&] { Profile().LoadStep(1).DeleteLoad(load); });
    selected = {};
    const auto undone = document->Undo();
    EXPECT_EQ(undone->place, (ProfilePlace{.stepId = step, .loadId = load})) << "selected before the change";
    EXPECT_TRUE(undone->loadProfile);
    EXPECT_FALSE(undone->project);
    EXPECT_FALSE(undone->powerSystem);
    EXPECT_EQ(document->Undo()->place, ProfilePlace{.stepId = step});
    EXPECT_EQ(document->Redo()->place, (ProfilePlace{.stepId = step, .loadId = load})) << "what came";
    document->Change("Edit Altitude", [&] { document->PowerSystem().Altitude(1234); });
    const auto site = document->Undo();
    EXPECT_TRUE(site->powerSystem);
    EXPECT_FALSE(site->loadProfile);
    EXPECT_FALSE(site->project);
    document->Change("Edit Customer", [&] { document->Project().Customer("Mill"); });
    EXPECT_TRUE(document->Undo()->project);
}

TEST_F(UndoTest, KeepsWhatWasWrittenBesideAnyChangeAsOneOfItsOwn) {
    document->PowerSystem().Altitude(700);
    EXPECT_TRUE(document->Keep("Edit Altitude"));
    EXPECT_FALSE(document->Keep("Edit Altitude")) << "nothing since";
    EXPECT_THAT(document->UndoName(), Optional(std::string("Edit Altitude")));
    document->Undo();
    EXPECT_EQ(document->PowerSystem().Altitude(), 152.4) << "500 ft, as the factory has it";
}

TEST_F(UndoTest, WhatIsSettledIsNoChange) {
    document->PowerSystem().Phases(1);  // as a store of the panel does
    document->Settle();
    EXPECT_EQ(document->UndoName(), std::nullopt);
    EXPECT_FALSE(document->IsChanged());
    AddStep("Pumps");
    document->Undo();
    EXPECT_EQ(document->PowerSystem().Phases(), 1);
}

TEST_F(UndoTest, AChangeWithinAChangeIsPartOfItAndOneThatDoesNothingIsNone) {
    document->Change("Apply Advice", [&] {
        AddStep("Pumps");
        AddStep("Fans");
    });
    EXPECT_THAT(document->UndoName(), Optional(std::string("Apply Advice")));
    document->Undo();
    EXPECT_EQ(Profile().NumLoadSteps(), 0);
    document->Redo();
    document->Change("Nothing", [] {});
    EXPECT_THAT(document->UndoName(), Optional(std::string("Apply Advice")));
}

TEST_F(UndoTest, AChangeThatFailsHalfWayCanBeTakenBack) {
    EXPECT_THROW(document->Change("Import",
                                  [&] {
                                      Profile().AddLoadStep("half", 20, 0);
                                      throw RaisedError(5, "test", "no");
                                  }),
                 RaisedError);
    EXPECT_THAT(document->UndoName(), Optional(std::string("Import")));
    document->Undo();
    EXPECT_EQ(Profile().NumLoadSteps(), 0);
    AddStep("after");
    EXPECT_THAT(document->UndoName(), Optional(std::string("Add after")))
        << "it is no longer within a change";
}

TEST_F(UndoTest, TheMarkGoesOutWhereTheFileIsAgain) {
    document->ProjectFile((folder / "a.prj").string());
    AddStep("Pumps");
    EXPECT_TRUE(document->IsChanged());
    document->Write();
    EXPECT_FALSE(document->IsChanged());
    document->Undo();
    EXPECT_TRUE(document->IsChanged()) << "the file has the step";
    document->Redo();
    EXPECT_FALSE(document->IsChanged());
    document->Change("Edit", [&] { document->PowerSystem().Altitude(9); });
    EXPECT_TRUE(document->IsChanged());
    document->Change("Edit", [&] { document->PowerSystem().Altitude(152.4); });
    EXPECT_FALSE(document->IsChanged()) << "entered back by hand";
    const std::int32_t load = AddLoad(1, "A", 1000);
    document->Write();
    document->Change("Delete", [&] { Profile().LoadStep(1).DeleteLoad(load); });
    AddLoad(1, "A", 1000);
    EXPECT_FALSE(document->IsChanged()) << "another ID is nothing that a file holds";
    AddLoad(1, "A", 1000.5);
    EXPECT_TRUE(document->IsChanged());
}

TEST_F(UndoTest, NewAndReadBeginAnew) {
    document->ProjectFile((folder / "a.prj").string());
    AddStep("Pumps");
    document->Write();
    EXPECT_TRUE(document->UndoName()) << "a save leaves what can be taken back";
    document->Read(folder / "a.prj", nobody);
    EXPECT_EQ(document->UndoName(), std::nullopt);
    AddStep("Fans");
    document->Undo();
    document->New(nobody);
    EXPECT_EQ(document->UndoName(), std::nullopt);
    EXPECT_EQ(document->RedoName(), std::nullopt);
}

TEST_F(UndoTest, KeepsItsPromiseOfTwoHundredChanges) {
    constexpr int kChanges = static_cast<int>(UndoHistory::kMost) + 7;
    static_assert(UndoHistory::kMost >= 200);
    for (int number = 1; number <= kChanges; ++number) {
        document->Change("Edit", [&] { document->PowerSystem().Altitude(number); });
    }
    int back = 0;
    while (document->Undo()) {
        ++back;
    }
    EXPECT_EQ(back, static_cast<int>(UndoHistory::kMost));
    EXPECT_EQ(document->PowerSystem().Altitude(), 7.0) << "the first seven are forgotten";
}

TEST_F(UndoTest, TellsOfEachMoment) {
    int told = 0;
    document->MomentTeller([&] { ++told; });
    AddStep("Pumps");
    EXPECT_EQ(told, 1);
    document->Undo();
    document->Redo();
    EXPECT_EQ(told, 3);
    document->ProjectFile((folder / "a.prj").string());
    document->Write();
    document->Read(folder / "a.prj", nobody);
    document->New(nobody);
    EXPECT_EQ(told, 6);
}

TEST_F(UndoTest, KnowsWhatAnotherProgramWroteIntoItsFile) {
    const std::string file = (folder / "a.prj").string();
    document->ProjectFile(file);
    document->Write();
    EXPECT_FALSE(document->ReplacesAnothers(file));
    const std::string bytes = ReadBytes(folder / "a.prj");
    WriteBytes(folder / "a.prj", bytes + " ");
    EXPECT_TRUE(document->ReplacesAnothers(file));
    EXPECT_FALSE(document->ReplacesAnothers(folder / "b.prj")) << "not the document's own";
    WriteBytes(folder / "a.prj", bytes);
    EXPECT_FALSE(document->ReplacesAnothers(file)) << "the same bytes, written anew";
    WriteBytes(folder / "a.prj", bytes + " ");
    document->Write();
    EXPECT_FALSE(document->ReplacesAnothers(file)) << "by its own save";
    document->Read(file, nobody);
    EXPECT_FALSE(document->ReplacesAnothers(file));
    std::filesystem::remove(file);
    EXPECT_FALSE(document->ReplacesAnothers(file)) << "there is nothing to replace";
    WriteBytes(folder / "a.prj", "x");
    document->New(nobody);
    EXPECT_FALSE(document->ReplacesAnothers(file)) << "a new project has no file";
}

TEST_F(UndoTest, KnowsWhetherLoadsAreOthersWhereverTheyStand) {
    AddStep("Pumps");
    AddStep("Fans");
    AddLoad(1, "A", 1000);
    AddLoad(1, "A", 2000);
    const ProjectMoment before = document->Moment();
    const auto differs = [&](const std::function<void()>& change) {
        document->Change("Change", change);
        const bool other = HasOtherLoads(before, document->Moment());
        if (document->UndoName() == "Change") {
            document->Undo();
        }
        return other;
    };
    const auto first = [this]() -> Load& { return *Profile().LoadStep(1).begin(); };
    EXPECT_FALSE(differs([] {}));
    EXPECT_FALSE(differs([&] { Profile().LowerLoadStep(2); }));
    EXPECT_FALSE(differs([&] { Profile().LoadStep(2).AddLoad(Profile().LoadStep(1).TakeLoad(0)); }));
    EXPECT_FALSE(differs([&] { Profile().AddLoadStep("new", 20, 0); }));
    EXPECT_FALSE(differs([&] { document->PowerSystem().Altitude(9); }));
    EXPECT_TRUE(differs([&] { first().Quantity(2); }));
    EXPECT_TRUE(differs([&] { first().name("B"); }));
    EXPECT_TRUE(differs([&] { Profile().LoadStep(1).DeleteLoad(0); }));
    EXPECT_TRUE(differs([&] { Profile().LoadStep(2).AddLoad(std::make_unique<CMiscLoad>()); }));
    EXPECT_TRUE(differs([&] { Profile().DeleteLoadStep(Profile().LoadStep(2).StepID()); })) << "an empty one";
}

/// One random change of a document, through what panels and forms do.
void ChangeAnything(Document& document, std::mt19937& dice, RandomProject& random) {
    const auto below = [&](int count) { return std::uniform_int_distribution<int>(0, count - 1)(dice); };
    CLoadProfile& profile = document.LoadProfile();
    const std::int32_t steps = profile.NumLoadSteps();
    const std::int32_t at = steps == 0 ? 0 : 1 + below(steps);
    const auto anyLoad = [&]() -> Load* {
        if (at == 0 || profile.LoadStep(at).NumLoads() == 0) {
            return nullptr;
        }
        auto load = profile.LoadStep(at).begin();
        std::advance(load, below(profile.LoadStep(at).NumLoads()));
        return &*load;
    };
    Load* load = anyLoad();
    switch (below(9)) {
        case 0:
            profile.AddLoadStep(random.Text(), 5 + below(31), below(steps + 1));
            break;
        case 1:
            if (at > 0) {
                profile.DeleteLoadStep(profile.LoadStep(at).StepID());
            }
            break;
        case 2:
            if (at > 0) {
                profile.LoadStep(at).AddLoad(
                    random.MakeOne(below(9), document.PowerSystem().Voltage(), kRandomMotors));
            }
            break;
        case 3:
            if (load != nullptr) {
                profile.LoadStep(at).DeleteLoad(load->ID());
            }
            break;
        case 4:
            if (load != nullptr) {
                const std::int32_t to = 1 + below(steps);
                profile.LoadStep(to).AddLoad(profile.LoadStep(at).TakeLoad(load->ID()));
            }
            break;
        case 5:
            if (at > 1) {
                profile.LowerLoadStep(at);
            }
            break;
        case 6:
            if (load != nullptr) {
                load->Quantity(1 + below(256));
                load->name(random.Text());
            }
            break;
        case 7:
            document.PowerSystem().Altitude(below(4000));
            document.PowerSystem().Fuel(below(5));
            break;
        default:
            document.Project().Customer(random.Text());
            break;
    }
}

TEST_F(UndoTest, AnySequenceOfChangesLeadsBackToTheFirstProjectAndOnToTheLast) {
    EXPECT_TRUE(rc::check([this](std::uint32_t seed) {
        std::mt19937 dice(seed);
        RandomProject random(seed, Letters::OfTheCodePage);
        document->New(nobody);
        std::vector<std::string> after{Bytes()};  // behind each change that can be taken back
        for (int action = 0; action < 60; ++action) {
            if (std::uniform_int_distribution<int>(0, 4)(dice) == 0) {
                if (document->Undo()) {
                    after.pop_back();
                    RC_ASSERT(Bytes() == after.back());
                }
                continue;
            }
            const std::string name = std::to_string(action);
            document->Change(name, [&] { ChangeAnything(*document, dice, random); });
            if (document->UndoName() == name) {  // it did change something
                after.push_back(Bytes());
            }
        }
        while (document->Redo()) {
            after.push_back(Bytes());
        }
        while (document->Undo()) {
            after.pop_back();
            RC_ASSERT(Bytes() == after.back());
        }
        RC_ASSERT(after.size() == 1U);
        RC_ASSERT(!document->IsChanged());
    }));
}

}  // namespace
}  // namespace genvara
