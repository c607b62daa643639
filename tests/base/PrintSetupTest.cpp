#include "PrintSetup.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

#include "SettingsFile.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

/// A4 on its side; every length is another.
PrintSetup SomeSetup() {
    return {.printer = "Büro 2",
            .width = 16838,
            .height = 11906,
            .left = 900,
            .right = 800,
            .top = 700,
            .bottom = 600};
}

struct Store {
    TemporaryFolder folder;
    SettingsFile file{folder / "settings.json"};
    clsTRX_Registry registry{file};
    PrintSettings settings{registry, "Software\\Morvane\\Genvara\\8.0.0\\"};
};

TEST(PrintSettings, AreTheReportsOwnPageOnAFirstRun) {
    const Store store;
    EXPECT_EQ(store.settings.Read(), PrintSetup{});
}

TEST(PrintSettings, ComeBackInAnotherRun) {
    const Store store;
    store.settings.Write(SomeSetup());
    SettingsFile again(store.folder / "settings.json");
    clsTRX_Registry registry(again);
    EXPECT_EQ(PrintSettings(registry, "Software\\Morvane\\Genvara\\8.0.0\\").Read(), SomeSetup());
    EXPECT_EQ(PrintSettings(registry, "Software\\Morvane\\Genvara\\9.0.0\\").Read(), PrintSetup{});
}

TEST(PrintSettings, AreTheDefaultsWhereAValueIsMissingOrRefused) {
    Store store;
    store.settings.Write(SomeSetup());
    const auto change = [&store](const char* name, std::int32_t type, const clsTRX_Registry::Variant& value) {
        store.registry.OpenKey();
        store.registry.Value(name, type, value);
    };
    change("Left Margin", registry_type::REG_DWORD, 12000);
    EXPECT_EQ(store.settings.Read(), PrintSetup{}) << "no room is left for the text";
    change("Left Margin", registry_type::REG_DWORD, 900);
    EXPECT_EQ(store.settings.Read(), SomeSetup());
    change("Paper Width", registry_type::REG_SZ, std::string("wide"));
    EXPECT_EQ(store.settings.Read(), PrintSetup{});
}

struct FaultCase {
    const char* name;
    std::function<void(PrintSetup&)> change;
    PrintFault fault;
};

/// What a failure tells of its parameter.
void PrintTo(const FaultCase& tested, std::ostream* out) {
    *out << tested.name;
}

class PrintFaults : public testing::TestWithParam<FaultCase> {};

TEST_P(PrintFaults, AreFound) {
    PrintSetup setup;
    GetParam().change(setup);
    EXPECT_EQ(FaultOf(setup), GetParam().fault);
}

INSTANTIATE_TEST_SUITE_P(
    Setups, PrintFaults,
    testing::Values(FaultCase{"None", [](PrintSetup&) {}, PrintFault::kNone},
                    FaultCase{"NoWidth", [](PrintSetup& s) { s.width = 0; }, PrintFault::kPaper},
                    FaultCase{"LongestSide", [](PrintSetup& s) { s.height = 31680; }, PrintFault::kNone},
                    FaultCase{"TooLong", [](PrintSetup& s) { s.height = 31681; }, PrintFault::kPaper},
                    FaultCase{"LeastLeft", [](PrintSetup& s) { s.left = 283; }, PrintFault::kNone},
                    FaultCase{"NoLeft", [](PrintSetup& s) { s.left = 282; }, PrintFault::kMargins},
                    FaultCase{"NoRight", [](PrintSetup& s) { s.right = 282; }, PrintFault::kMargins},
                    FaultCase{"NoTop", [](PrintSetup& s) { s.top = 282; }, PrintFault::kMargins},
                    FaultCase{"LeastBottom", [](PrintSetup& s) { s.bottom = 567; }, PrintFault::kNone},
                    FaultCase{"NoBottom", [](PrintSetup& s) { s.bottom = 566; }, PrintFault::kMargins},
                    // A sum that no 32 bits hold is none.
                    FaultCase{"EndlessMargins", [](PrintSetup& s) { s.left = s.right = 2'000'000'000; },
                              PrintFault::kMargins},
                    // 12240 less 1080 and 6120 are 5040.
                    FaultCase{"LeastText", [](PrintSetup& s) { s.left = 6120; }, PrintFault::kNone},
                    FaultCase{"NarrowText", [](PrintSetup& s) { s.left = 6121; }, PrintFault::kTextWidth},
                    // 15840 less 720 and 11520 are 3600.
                    FaultCase{"LeastHeight", [](PrintSetup& s) { s.bottom = 11520; }, PrintFault::kNone},
                    FaultCase{"LowText", [](PrintSetup& s) { s.top = 11521; }, PrintFault::kTextHeight}),
    [](const testing::TestParamInfo<FaultCase>& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace genvara
