#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cmath>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"

// Apparent power is the root of the squares of real and imaginary power, running and starting, for every kind
// and all that can be entered.

namespace genvara {
namespace {

const MotorConversions kMotors{.MotorHP = {1, 10, 1000},
                               .MotorRunningKW = {0.9, 8.4, 798},
                               .MotorRunningKVA = {1.4, 10.5, 887},
                               .MotorStartPF = {0.8, 0.5, 0.25}};

void AssertTriangle(double real, double imaginary, double apparent) {
    RC_ASSERT(imaginary >= 0.0);
    RC_ASSERT(std::abs(std::hypot(real, imaginary) - apparent) <= 1e-9 * (apparent + 1.0));
}

void AssertTriangles(const Load& load) {
    AssertTriangle(load.RunningRealPower(), load.RunningImgPower(), load.RunningAppPower());
    AssertTriangle(load.StartingRealPower(), load.StartingImgPower(), load.StartingAppPower());
}

/// A share of a range's width, from lowest to highest inclusive.
double Within(double lowest, double highest, std::uint32_t share) {
    return lowest + (highest - lowest) * (share / 4294967295.0);
}

TEST(PowerTriangle, HoldsForLoadsGivenByPowerAndFactor) {
    EXPECT_TRUE(rc::check("misc", [](std::uint32_t watts, std::uint32_t factor) {
        CMiscLoad load;
        load.RunningRealPower(Within(0, 2000000, watts));
        load.RunningPowerFactor(Within(0.6, 1, factor));
        AssertTriangles(load);
    }));
    EXPECT_TRUE(rc::check("light", [](std::uint32_t watts, std::uint32_t factor, std::uint32_t starting,
                                      std::uint32_t startingFactor) {
        CLightLoad load;
        load.RunningRealPower(Within(0, 2000000, watts));
        load.RunningPowerFactor(Within(0.6, 1, factor));
        load.StartingRealPower(Within(0, 2000000, starting));
        load.StartingPowerFactor(Within(0.6, 1, startingFactor));
        AssertTriangles(load);
    }));
    EXPECT_TRUE(rc::check("medical", [](std::uint32_t continuous, std::uint32_t factor, std::uint32_t peak,
                                        std::uint32_t peakFactor) {
        CMedEquipLoad load;
        load.ContVA(Within(0, 500000, continuous));
        load.ContPowerFactor(Within(0, 1, factor));
        load.PeakVA(Within(0, 5000000, peak));
        load.PeakPowerFactor(Within(0, 1, peakFactor));
        AssertTriangles(load);
    }));
}

TEST(PowerTriangle, HoldsForMotorsWhosePowersAgree) {
    EXPECT_TRUE(rc::check("motor", [](std::uint32_t apparent, std::uint32_t share, std::uint32_t starting,
                                      std::uint32_t factor) {
        CMtrLoad load;
        load.RunningAppPower(Within(1, 798000, apparent));
        load.RunningRealPower(load.RunningAppPower() * Within(0.01, 1, share));
        load.StartingAppPower(Within(1, 25000000, starting));
        load.StartingPF(Within(0, 1, factor));
        AssertTriangles(load);
    }));
    EXPECT_TRUE(rc::check("air conditioner", [](std::uint32_t apparent, std::uint32_t share,
                                                std::uint32_t starting, std::uint32_t factor) {
        CAirCondLoad load;
        load.RunningAppPower(Within(1, 798000, apparent));
        load.RunningRealPower(load.RunningAppPower() * Within(0.01, 1, share));
        load.StartingAppPower(Within(1, 5300000, starting));
        load.StartingPF(Within(0.01, 1, factor));
        AssertTriangles(load);
    }));
}

TEST(PowerTriangle, HoldsForElectronics) {
    EXPECT_TRUE(rc::check("ups", [](std::uint32_t rating, std::uint8_t family, std::uint8_t phases,
                                    std::uint8_t loading, std::uint8_t charging) {
        CUPSLoad load;
        load.OutputRating(Within(1, 2500000, rating));
        load.Family(family % 4);
        load.Phases(phases % 4);
        load.Loading(50 + loading % 51);
        load.Charging(charging % 26);
        AssertTriangles(load);
    }));
    EXPECT_TRUE(rc::check("drive", [](std::uint32_t rating, std::uint8_t efficiency, std::uint8_t kvaLimit) {
        CVFDLoad load(kMotors);
        load.MtrRating(Within(0.1, 1000, rating));
        load.Efficiency(70 + efficiency % 30);
        load.KVALimit(100 + kvaLimit % 51);
        AssertTriangles(load);
    }));
    EXPECT_TRUE(rc::check(
        "charger", [](std::uint32_t volts, std::uint32_t amperes, std::uint8_t type, std::uint8_t phases) {
            CBatChrgLoad load;
            load.BatteryVoltage(Within(0, 600, volts));
            load.ChargeCurrent(Within(0, 1000, amperes));
            load.ChargerType(type % 4);
            load.Phases(phases % 4);
            AssertTriangles(load);
        }));
    EXPECT_TRUE(rc::check(
        "office", [](std::uint16_t pcs, std::uint16_t printers, std::uint16_t faxes, std::uint16_t copiers) {
            COfficeLoad load;
            load.NumPCs(pcs);
            load.NumPrinters(printers);
            load.NumFaxes(faxes);
            load.NumCopiers(copiers);
            AssertTriangles(load);
        }));
}

}  // namespace
}  // namespace genvara
