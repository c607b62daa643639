#include "frmMiscLoad.h"

#include <gtest/gtest.h>

#include <QTest>

#include "FormsFixture.h"

namespace genvara {
namespace {

using MiscLoadForm = FormsTest;

TEST_F(MiscLoadForm, ANewOneHasAPowerFactorOfOneAndNoPower) {
    const auto form = New<frmMiscLoad>();
    EXPECT_EQ(TextOf(*form, "txtkW"), "");
    EXPECT_EQ(TextOf(*form, "txtPF"), "1.00");
}

TEST_F(MiscLoadForm, StoresKilowattsInWatts) {
    const struct {
        const char* kW;
        const char* pF;
        double watts;
        double powerFactor;
    } rows[] = {{"0", "1.00", 0.0, 1.0},
                {"12.5", "0.8", 12500.0, 0.8},
                {"2000", "0.6", 2000000.0, 0.6},
                {".5", "1", 500.0, 1.0}};
    for (const auto& row : rows) {
        const auto form = New<frmMiscLoad>();
        Type(*form, "txtkW", row.kW);
        Type(*form, "txtPF", row.pF);
        Click(*form, "cmdOK");
        const auto& load = dynamic_cast<const CMiscLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.RunningRealPower(), row.watts);
        EXPECT_EQ(load.RunningPowerFactor(), row.powerFactor);
    }
}

TEST_F(MiscLoadForm, ShowsAStoredLoad) {
    CMiscLoad load;
    load.RunningRealPower(1234.5);
    load.RunningPowerFactor(0.9);
    const auto form = Edit<frmMiscLoad>(load);
    EXPECT_EQ(TextOf(*form, "txtkW"), "1.2345");
    EXPECT_EQ(TextOf(*form, "txtPF"), "0.90");
}

TEST_F(MiscLoadForm, OkAtOnceChangesNothing) {
    // A power factor with more than two decimals would change: the field shows two.
    for (std::int32_t i = 0; i <= 40; ++i) {
        CMiscLoad load;
        load.name("Load");
        load.Quantity(1 + i * 6);
        load.Phases(i % 4);
        load.RunningRealPower(i * 12345.5);
        load.RunningPowerFactor((60 + i) / 100.0);
        host.phases = i % 2 == 0 ? 3 : 1;
        ExpectOkChangesNothing<frmMiscLoad>(load);
    }
}

TEST_F(MiscLoadForm, OkRoundsAPowerFactorToWhatTheFieldShows) {
    CMiscLoad load;
    load.RunningPowerFactor(0.856);
    const auto form = Edit<frmMiscLoad>(load);
    EXPECT_EQ(TextOf(*form, "txtPF"), "0.86");
    Click(*form, "cmdOK");
    EXPECT_EQ(load.RunningPowerFactor(), 0.86);
}

TEST_F(MiscLoadForm, TakesDigitsAndOneSeparator) {
    const auto form = New<frmMiscLoad>();
    for (const char* name : {"txtkW", "txtPF"}) {
        Type(*form, name, "-1.2.3e");
        EXPECT_EQ(TextOf(*form, name), "1.23");
    }
}

}  // namespace
}  // namespace genvara
