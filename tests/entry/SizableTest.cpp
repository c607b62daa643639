#include "Sizable.h"

#include <gtest/gtest.h>

#include <memory>

#include "CDefaults.h"
#include "CMiscLoad.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

/// Connection 3 has one phase, 1 has three, and there is no other.
std::optional<std::int32_t> PhasesOf(std::int32_t code) {
    return code == 1 ? std::optional(3) : code == 3 ? std::optional(1) : std::nullopt;
}

TEST(Sizable, ASiteFollowsAConnectionThatIsKnown) {
    const CDefaults defaults;
    CPwrSys site(defaults);
    site.ConnectCode(3);
    FollowConnection(site, PhasesOf);
    EXPECT_EQ(site.Phases(), 1);
    site.ConnectCode(2);
    FollowConnection(site, PhasesOf);
    EXPECT_EQ(site.Phases(), 1) << "as it was";
    site.ConnectCode(1);
    FollowConnection(site, PhasesOf);
    EXPECT_EQ(site.Phases(), 3);
}

TEST(Sizable, AConnectionHasToBeKnown) {
    const CDefaults defaults;
    CPwrSys site(defaults);
    site.ConnectCode(3);
    EXPECT_NO_THROW(RequireConnection(site, PhasesOf));
    site.ConnectCode(2);
    EXPECT_THAT([&] { RequireConnection(site, PhasesOf); },
                Raises(0, "", "The connection code 2 is not in the genset database."));
    EXPECT_THAT([&] { RequireConnection(site, PhasesOf, " of the project"); },
                Raises(0, "", "The connection code 2 of the project is not in the genset database."));
}

TEST(Sizable, TheFirstStepHasToHaveALoad) {
    const auto nothing = Raises(0, "", "At least one load and load step must be entered.");
    CLoadProfile profile;
    EXPECT_FALSE(HasLoads(profile));
    EXPECT_THAT([&] { RequireLoads(profile); }, nothing);
    profile.AddLoadStep("first", 20, 0);
    profile.AddLoadStep("second", 20, 0);
    profile.LoadStep(2).AddLoad(std::make_unique<CMiscLoad>());
    EXPECT_FALSE(HasLoads(profile));
    EXPECT_THAT([&] { RequireLoads(profile); }, nothing);
    profile.LoadStep(1).AddLoad(std::make_unique<CMiscLoad>());
    EXPECT_TRUE(HasLoads(profile));
    EXPECT_NO_THROW(RequireLoads(profile));
}

}  // namespace
}  // namespace genvara
