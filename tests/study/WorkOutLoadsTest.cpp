#include "WorkOutLoads.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "CBatChrgLoad.h"
#include "EngineFixture.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

/// A load of which one figure cannot be worked out: the apparent power of its start, for which no engine
/// asks.
class NoApparentStart final : public Load {
  public:
    NoApparentStart() : Load({"test", "test"}) {}
    [[nodiscard]] std::unique_ptr<Load> Clone() const override {
        return std::make_unique<NoApparentStart>(*this);
    }
    [[nodiscard]] std::int32_t LoadType() const noexcept override { return load_type::kMiscellaneous; }
    [[nodiscard]] bool HoldsSame(const Load& other) const override { return this == &other; }
    [[nodiscard]] std::string Summary() const override { return {}; }
    [[nodiscard]] double RunningRealPower() const override { return 1000.0; }
    [[nodiscard]] double RunningAppPower() const override { return 1000.0; }
    [[nodiscard]] double RunningImgPower() const override { return 0.0; }
    [[nodiscard]] double StartingRealPower() const override { return 1000.0; }
    [[nodiscard]] double StartingAppPower() const override {
        throw RaisedError(6, "test::StartingAppPower", "Overflow");
    }
    [[nodiscard]] double StartingImgPower() const override { return 0.0; }
    [[nodiscard]] std::vector<std::string> GetProps() const override { return {}; }
};

TEST(WorkOutLoads, LetsSoundLoadsPass) {
    EngineFixture fixture;
    fixture.AddKilowatts(10);
    EXPECT_NO_THROW(WorkOutLoads(fixture.profile));
    EXPECT_NO_THROW(WorkOutLoads(CLoadProfile()));
}

TEST(WorkOutLoads, FindsAFigureOfALaterStepThatNoRunAsksFor) {
    EngineFixture fixture;
    fixture.AddKilowatts(10);
    fixture.AddStep().AddLoad(std::make_unique<NoApparentStart>());
    EXPECT_NO_THROW((void)FiguresOf(fixture.profile, fixture.site));
    EXPECT_THAT([&] { WorkOutLoads(fixture.profile); }, Raises(6, "test::StartingAppPower", "Overflow"));
}

TEST(WorkOutLoads, NamesTheTotalOfAStepBeforeItsLoads) {
    // Two chargers of 1e308 VA: each is a number, their sum is none.
    EngineFixture fixture;
    CLoadStep& step = fixture.AddStep();
    for (int i = 0; i < 2; ++i) {
        auto charger = std::make_unique<CBatChrgLoad>();
        charger->BatteryVoltage(4e153);
        charger->ChargeCurrent(2e154);
        step.AddLoad(std::move(charger));
    }
    EXPECT_THAT([&] { WorkOutLoads(fixture.profile); },
                Raises(6, "CLoadStep::TotalRunningRealPower", "Overflow"));
}

}  // namespace
}  // namespace genvara
