#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "LoadFactory.h"
#include "RaisedErrorMatcher.h"

namespace genvara {
namespace {

const MotorConversions kNoMotors;

struct CommonCase {
    std::int32_t loadType;
    const char* quantitySource;
    const char* phasesSource;
};

TEST(Loads, ShareTheRangesOfQuantityAndPhasesUnderTheirOwnSources) {
    const CommonCase cases[] = {
        {load_type::kAirConditioning, "CMtrLoad::Quantity", "CMtrLoad::Phases"},
        {load_type::kBatteryCharger, "CBatChrgLoad::Quantity", "CBatChrgLoad::Phases"},
        {load_type::kLighting, "CLightLoad::Quantity", "CLightLoad::Phases"},
        {load_type::kMedicalImaging, "CMedEquipLoad::Quantity", "CMedEquipLoad::Phases"},
        {load_type::kMiscellaneous, "CMiscLoad::Quantity", "CMiscLoad::Phases"},
        {load_type::kMotor, "CMtrLoad::Quantity", "CMtrLoad::Phases"},
        {load_type::kOffice, "CMtrLoad::Quantity", "COfficeLoad::Phases"},
        {load_type::kUPS, "CUSPLoad::Quantity", "CUPSLoad::Phases"},
        {load_type::kVFD, "CVFDLoad::Quantity", "CVFDLoad::Phases"},
    };
    for (const CommonCase& row : cases) {
        const std::unique_ptr<Load> load = MakeLoad(row.loadType, kNoMotors);
        ASSERT_EQ(load->LoadType(), row.loadType);
        EXPECT_EQ(load->ID(), 0);
        EXPECT_EQ(load->Quantity(), 1);
        EXPECT_EQ(load->Phases(), 0);
        load->Quantity(256);
        load->Phases(3);
        for (const std::int32_t quantity : {0, 257, -1}) {
            EXPECT_THAT([&] { load->Quantity(quantity); },
                        Raises(2, row.quantitySource, "Load quantity out of range"));
        }
        for (const std::int32_t phases : {-1, 4}) {
            EXPECT_THAT([&] { load->Phases(phases); },
                        Raises(7, row.phasesSource, "Invalid number of phases"));
        }
        EXPECT_EQ(load->Quantity(), 256);
        EXPECT_EQ(load->Phases(), 3);
    }
    EXPECT_EQ(MakeLoad(9, kNoMotors), nullptr);
    EXPECT_EQ(MakeLoad(-1, kNoMotors), nullptr);
}

/// A setter with the bounds of what it takes.
template <typename Kind>
struct RangeCase {
    const char* what;
    std::function<void(Kind&, double)> set;
    std::function<double(const Kind&)> get;
    double accepted[2];
    double refused[2];
    std::int32_t number;
    const char* source;
    const char* description;
};

template <typename Kind>
void CheckRange(Kind& load, const RangeCase<Kind>& row) {
    for (const double value : row.accepted) {
        row.set(load, value);
        EXPECT_EQ(row.get(load), value) << row.what;
    }
    for (const double value : {row.refused[0], row.refused[1], std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_THAT([&] { row.set(load, value); }, Raises(row.number, row.source, row.description))
            << row.what;
        EXPECT_EQ(row.get(load), row.accepted[1]) << row.what;
    }
}

#define SETTER(Kind, Member) \
    [](Kind& load, double value) { load.Member(value); }, [](const Kind& load) { return load.Member(); }

TEST(Loads, CheckTheirRealInputs) {
    CMiscLoad misc;
    CheckRange<CMiscLoad>(misc, {"misc power",
                                 SETTER(CMiscLoad, RunningRealPower),
                                 {0, 2000000},
                                 {-0.5, 2000000.5},
                                 17,
                                 "CMiscLoad::RunningRealPower",
                                 "Running real power out of range"});
    CheckRange<CMiscLoad>(misc, {"misc pf",
                                 SETTER(CMiscLoad, RunningPowerFactor),
                                 {0.6, 1.0},
                                 {0.59, 1.01},
                                 16,
                                 "CMiscLoad::RunningPowerFactor",
                                 "Running power factor out of range"});
    CLightLoad light;
    CheckRange<CLightLoad>(light, {"light power",
                                   SETTER(CLightLoad, RunningRealPower),
                                   {0, 2000000},
                                   {-1, 2000001},
                                   17,
                                   "CLightLoad::RunningRealPower",
                                   "Running real power out of range"});
    CheckRange<CLightLoad>(light, {"light pf",
                                   SETTER(CLightLoad, RunningPowerFactor),
                                   {0.6, 1.0},
                                   {0.59, 1.01},
                                   16,
                                   "CLightLoad::RunningPowerFactor",
                                   "Running power factor out of range"});
    CheckRange<CLightLoad>(light, {"light start",
                                   SETTER(CLightLoad, StartingRealPower),
                                   {0, 2000000},
                                   {-1, 2000001},
                                   17,
                                   "CLightLoad::RunningRealPower",
                                   "Starting real power out of range"});
    CheckRange<CLightLoad>(light, {"light start pf",
                                   SETTER(CLightLoad, StartingPowerFactor),
                                   {0.6, 1.0},
                                   {0.59, 1.01},
                                   16,
                                   "CLightLoad::StartingPowerFactor",
                                   "Running power factor out of range"});
    CMtrLoad motor;
    CheckRange<CMtrLoad>(motor, {"motor hp",
                                 SETTER(CMtrLoad, HP),
                                 {0.1, 1000},
                                 {0, 1000.1},
                                 15,
                                 "CMtrLoad::HP",
                                 "Horsepower out of range."});
    CheckRange<CMtrLoad>(motor, {"motor W",
                                 SETTER(CMtrLoad, RunningRealPower),
                                 {1, 798000},
                                 {0, 798001},
                                 17,
                                 "CMtrLoad::RunningRealPower",
                                 "Running real power out of range."});
    CheckRange<CMtrLoad>(motor, {"motor VA",
                                 SETTER(CMtrLoad, RunningAppPower),
                                 {1, 887000},
                                 {0, 887001},
                                 18,
                                 "CMtrLoad::RunningAppPower",
                                 "Running apparent power (VA) out of range."});
    CheckRange<CMtrLoad>(motor, {"motor start",
                                 SETTER(CMtrLoad, StartingAppPower),
                                 {1, 25000000},
                                 {0, 25000001},
                                 18,
                                 "CMtrLoad::StartingAppPower",
                                 "Starting apparent power (VA) out of range."});
    CAirCondLoad cooler;
    CheckRange<CAirCondLoad>(cooler, {"cooler W",
                                      SETTER(CAirCondLoad, RunningRealPower),
                                      {1, 798000},
                                      {0, 798001},
                                      17,
                                      "CAirCondLoad::RunningRealPower",
                                      "Running real power out of range."});
    CheckRange<CAirCondLoad>(cooler, {"cooler VA",
                                      SETTER(CAirCondLoad, RunningAppPower),
                                      {1, 887000},
                                      {0, 887001},
                                      18,
                                      "CAirCondLoad::RunningAppPower",
                                      "Running apparent power (VA) out of range."});
    CheckRange<CAirCondLoad>(cooler, {"cooler start",
                                      SETTER(CAirCondLoad, StartingAppPower),
                                      {1, 5300000},
                                      {0, 5300001},
                                      18,
                                      "CAirCondLoad::StartingAppPower",
                                      "Starting apparent power (VA) out of range."});
    CUPSLoad ups;
    CheckRange<CUPSLoad>(ups, {"ups",
                               SETTER(CUPSLoad, OutputRating),
                               {0.5, 2500000},
                               {0, 2500001},
                               22,
                               "CUPSLoad::OutputRating",
                               "Output rating out of range."});
    CVFDLoad drive(kNoMotors);
    CheckRange<CVFDLoad>(drive, {"drive",
                                 SETTER(CVFDLoad, MtrRating),
                                 {0.5, 1000},
                                 {0, 1000.5},
                                 25,
                                 "CVFDLoad::MtrRating",
                                 "Motor rating out of range."});
}

#undef SETTER

TEST(AirCondLoad, TellsTheLimitThatItsSizeExceeds) {
    struct Case {
        std::function<void(CAirCondLoad&)> set;
        std::int32_t number;
        const char* source;
        const char* description;
    };
    const Case cases[] = {
        {[](CAirCondLoad& l) { l.HP(0); }, 15, "CAirCondLoad::HP", "Horsepower must be greater than 0."},
        {[](CAirCondLoad& l) { l.HP(1000.5); }, 15, "CAirCondLoad::HP",
         "Horsepower must be less than 1000.0."},
        {[](CAirCondLoad& l) { l.BTU(-1); }, 20, "CAirCondLoad::BTU", "BTU/hr must be greater than 0."},
        {[](CAirCondLoad& l) { l.BTU(6250001); }, 20, "CAirCondLoad::BTU",
         "BTU/hr must be less than 6250000."},
        {[](CAirCondLoad& l) { l.Tonnage(0); }, 21, "CAirConLoad::Tonnage",
         "A/C tonnage must be greater than 0."},
        {[](CAirCondLoad& l) { l.Tonnage(500.1); }, 21, "CAirConLoad::Tonnage",
         "A/C tonnage must be less than 500.00."},
    };
    for (const Case& row : cases) {
        CAirCondLoad load;
        load.HP(10);
        load.BTU(60000);
        load.Tonnage(5);
        EXPECT_THAT([&] { row.set(load); }, Raises(row.number, row.source, row.description));
        EXPECT_EQ(load.HP(), 10);
        EXPECT_EQ(load.BTU(), 60000);
        EXPECT_EQ(load.Tonnage(), 5);
    }
    CAirCondLoad load;
    load.HP(1000);
    load.BTU(6250000);
    load.Tonnage(500);
    EXPECT_EQ(load.Tonnage(), 500.0);
}

/// A setter of whole numbers with the bounds of what it takes.
struct CountCase {
    const char* source;
    std::int32_t number;
    const char* description;
    std::function<void(std::int32_t)> set;
    std::function<std::int32_t()> get;
    std::vector<std::int32_t> accepted;
    std::vector<std::int32_t> refused;
};

#define COUNT(load, Member) [&](std::int32_t value) { (load).Member(value); }, [&] { return (load).Member(); }

TEST(Loads, CheckTheirPercentagesAndCounts) {
    constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
    CUPSLoad ups;
    CVFDLoad drive(kNoMotors);
    COfficeLoad office;
    const CountCase cases[] = {
        {"CUPSLoad::Loading", 23, "Percent loading out of range.", COUNT(ups, Loading), {50, 100}, {49, 101}},
        {"CUPSLoad::Charging",
         24,
         "Percent battery charging out of range.",
         COUNT(ups, Charging),
         {0, 25},
         {-1, 26}},
        {"CVFDLoad::Efficiency",
         26,
         "Drive efficiency out of range.",
         COUNT(drive, Efficiency),
         {70, 99},
         {69, 100}},
        {"CVFDLoad::KVALimit",
         27,
         "Run/Start KVA limit out of range.",
         COUNT(drive, KVALimit),
         {100, 150},
         {99, 151}},
        {"COfficeLoad::NumPCs",
         28,
         "Negative number of PCs",
         COUNT(office, NumPCs),
         {0, kMost},
         {-1, kLeast}},
        {"COfficeLoad::NumPrinters",
         28,
         "Negative number of printers",
         COUNT(office, NumPrinters),
         {0, kMost},
         {-1, kLeast}},
        {"COfficeLoad::NumFaxes",
         28,
         "Negative number of fax machines",
         COUNT(office, NumFaxes),
         {0, kMost},
         {-1, kLeast}},
        {"COfficeLoad::NumCopiers",
         28,
         "Negative number of copiers",
         COUNT(office, NumCopiers),
         {0, kMost},
         {-1, kLeast}},
    };
    for (const CountCase& row : cases) {
        SCOPED_TRACE(row.source);
        for (const std::int32_t value : row.accepted) {
            row.set(value);
            EXPECT_EQ(row.get(), value);
        }
        for (const std::int32_t value : row.refused) {
            EXPECT_THAT([&] { row.set(value); }, Raises(row.number, row.source, row.description));
            EXPECT_EQ(row.get(), row.accepted.back());
        }
    }
}

#undef COUNT

TEST(MotorLoad, TakesOneCharacterAsCodeLetter) {
    CMtrLoad motor;
    EXPECT_EQ(motor.CodeLetter(), "NA");
    motor.CodeLetter(" g ");
    EXPECT_EQ(motor.CodeLetter(), "G");
    for (const char* letter : {"", "AB", "  ", "A B", "\xC3\xA9\xC3\xA9"}) {
        EXPECT_THAT([&] { motor.CodeLetter(letter); },
                    Raises(19, "CMtrLoad::CodeLetter", "Code letter is invalid."));
    }
    EXPECT_EQ(motor.CodeLetter(), "G");
    const std::pair<const char*, const char*> letters[] = {
        {"a", "A"}, {"z", "Z"}, {"7", "7"}, {"\xC3\xA9", "\xC3\x89"}, {"\xC3\xB7", "\xC3\xB7"}};
    for (const auto& [given, kept] : letters) {
        motor.CodeLetter(given);
        EXPECT_EQ(motor.CodeLetter(), kept);
    }
}

TEST(MotorLoad, ForgetsTheInputsOfTheOtherEntryMethods) {
    struct Case {
        std::int32_t method;
        bool keepsHP;
        bool keepsPower;
        bool keepsAmps;
    };
    for (const Case& row : {Case{0, true, false, false}, Case{1, false, true, false},
                            Case{2, false, false, true}, Case{3, true, true, true}}) {
        CMtrLoad motor;
        motor.HP(10);
        motor.RunningRealPower(8000);
        motor.RunningAmps(12);
        motor.StartingAmps(70);
        motor.DataEntryMethod(row.method);
        EXPECT_EQ(motor.HP(), row.keepsHP ? 10 : -10) << row.method;
        EXPECT_EQ(motor.RunningRealPower(), row.keepsPower ? 8000 : -10) << row.method;
        EXPECT_EQ(motor.RunningAmps(), row.keepsAmps ? 12 : -10) << row.method;
        EXPECT_EQ(motor.StartingAmps(), row.keepsAmps ? 70 : -10) << row.method;
    }
}

TEST(AirCondLoad, ForgetsTheInputsOfTheOtherEntryMethods) {
    for (const std::int32_t method : {0, 1, 2, 3}) {
        CAirCondLoad load;
        load.HP(10);
        load.BTU(60000);
        load.Tonnage(5);
        load.DataEntryMethod(method);
        const bool none = method == 3;
        EXPECT_EQ(load.BTU(), method == 0 || none ? 60000 : -10);
        EXPECT_EQ(load.Tonnage(), method == 1 || none ? 5 : -10);
        EXPECT_EQ(load.HP(), method == 2 || none ? 10 : -10);
    }
}

}  // namespace
}  // namespace genvara
