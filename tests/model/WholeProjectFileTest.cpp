#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "JsonProject.h"
#include "ProjectFile.h"

// A project with a load of every kind and every way to enter it, in which no two values of a record are
// the same: whatever is dropped or exchanged on its way to the file or back shows here.

namespace genvara {
namespace {

constexpr DateTime kCreated{2003, 5, 20, 9, 15, 7};
constexpr DateTime kSaved{2004, 11, 2, 17, 42, 31};

const std::string kWhole =
    "8,0,0,1\r\n"
    "#2003-05-20 09:15:07#,\"The customer\",\"What for\",#2004-11-02 17:42:31#,\"The job\",\"The "
    "engineer\"\r\n"
    "321.5,37.25,2,50,0,3\r\n"
    "12,#TRUE#,9,#FALSE#\r\n"
    "17,1,5,415\r\n"
    "3\r\n"
    "\"Cooling\",11\r\n"
    "\"Motors, large\",13\r\n"
    "\"\",34\r\n"
    "3\r\n"
    "1,0,\"By heat\",\"BTU\",2,0\r\n"
    "0,60000\r\n"
    "1,0,\"By tons\",\"Tonnage\",3,1\r\n"
    "1,4.5\r\n"
    "1,0,\"By power\",\"HP\",4,2\r\n"
    "2,7.25\r\n"
    "3\r\n"
    "2,5,\"Saw\",\"hp\",5,0\r\n"
    "0,\"G\",2,#TRUE#,#FALSE#\r\n"
    "10.5\r\n"
    "60500,0.41,310\r\n"
    "2,5,\"Sprinkler\",\"kW\",6,0\r\n"
    "1,\"H\",4,#FALSE#,#TRUE#\r\n"
    "8250\r\n"
    "61500,0.42,320\r\n"
    "2,5,\"Belt\",\"A\",7,3\r\n"
    "2,\"J\",6,#TRUE#,#TRUE#\r\n"
    "12.5,71.5\r\n"
    "62500,0.43,330\r\n"
    "9\r\n"
    "3,1,\"Charger\",\"of batteries\",8,1\r\n"
    "48,25.5,1,2\r\n"
    "3,2,\"Lamps\",\"of the hall\",9,2\r\n"
    "1,3,1500,0.91,1700,0.82\r\n"
    "3,3,\"Scanner\",\"of heads\",10,0\r\n"
    "20500,90500,0.83,0.74\r\n"
    "12,5\r\n"
    "3,4,\"Heater\",\"of water\",11,3\r\n"
    "10250,0.97\r\n"
    "3,6,\"Desks\",\"of the office\",12,1\r\n"
    "21,5,3,2\r\n"
    "3,7,\"Servers\",\"of the bank\",13,0\r\n"
    "2,1,40500,85,15,#TRUE#\r\n"
    "3,7,\"Server\",\"of the shop\",14,0\r\n"
    "1,2,3500,75,5,#FALSE#\r\n"
    "3,8,\"Fan\",\"of the roof\",15,0\r\n"
    "3,22.5,93,115,#FALSE#\r\n"
    "3,8,\"Pump\",\"of the cellar\",16,0\r\n"
    "4,33.5,88,125,#TRUE#\r\n";

/// The model, with motor tables of 0.8 kW and 1 kVA a horsepower.
struct Model {
    CDefaults defaults;
    CProject project{defaults, [] { return kCreated; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    MotorConversions motors{.MotorHP = {1, 10, 1000},
                            .MotorRunningKW = {0.8, 8, 800},
                            .MotorRunningKVA = {1, 10, 1000},
                            .MotorStartPF = {0.4, 0.4, 0.4}};

    [[nodiscard]] std::string Text() const {
        return RenderProject({project, site, profile}, {8, 0, 0}, kSaved).bytes;
    }
};

class Builder {
  public:
    explicit Builder(Model& model) : m_model(&model) {
        BuildHead();
        model.profile.AddLoadStep("Cooling", 11, 0);
        BuildAirConditioners();
        model.profile.AddLoadStep("Motors, large", 13, 0);
        BuildMotors();
        model.profile.AddLoadStep("", 34, 0);
        BuildTheRest();
    }

  private:
    template <typename Kind, typename... Tables>
    std::unique_ptr<Kind> Named(const char* name, const char* description, std::int32_t quantity,
                                std::int32_t phases, const Tables&... tables) {
        auto load = std::make_unique<Kind>(tables...);
        load->name(name);
        load->Description(description);
        load->Quantity(quantity);
        load->Phases(phases);
        return load;
    }
    void Add(std::unique_ptr<Load> load) {
        m_model->profile.LoadStep(m_model->profile.NumLoadSteps()).AddLoad(std::move(load));
    }

    void BuildHead() {
        m_model->project.Customer("The customer");
        m_model->project.Description("What for");
        m_model->project.ProjName("The job");
        m_model->project.UserName("The engineer");
        m_model->project.Created(kCreated);
        CPwrSys& site = m_model->site;
        site.Altitude(321.5);
        site.AmbTemp(37.25);
        site.ConnectCode(2);
        site.Freq(50);
        site.Fuel(0);
        site.GensetsInParallel(3);
        site.MaxFreqDip(12);
        site.MaxFreqDipEnabled(true);
        site.MaxHarmonics(9);
        site.MaxHarmonicsEnabled(false);
        site.MaxVoltageDip(17);
        site.Phases(1);
        site.RiseDutyCode(5);
        site.Voltage(415);
    }
    void BuildAirConditioners() {
        auto heat = Named<CAirCondLoad>("By heat", "BTU", 2, 0);
        heat->DataEntryMethod(aircond_entry::kBTU);
        heat->BTU(60000.0);
        Add(std::move(heat));
        auto tons = Named<CAirCondLoad>("By tons", "Tonnage", 3, 1);
        tons->DataEntryMethod(aircond_entry::kTonnage);
        tons->Tonnage(4.5);
        Add(std::move(tons));
        auto power = Named<CAirCondLoad>("By power", "HP", 4, 2);
        power->DataEntryMethod(aircond_entry::kHorsepower);
        power->HP(7.25);
        Add(std::move(power));
    }
    void BuildMotors() {
        auto saw = Named<CMtrLoad>("Saw", "hp", 5, 0);
        saw->DataEntryMethod(motor_entry::kHorsepower);
        saw->HP(10.5);
        Start(*saw, "G", starting_method::kAutotransformer80,
              {.volts = 60500.0, .factor = 0.41, .limit = 310});
        saw->StartsLoaded(true);
        saw->FirePump(false);
        Add(std::move(saw));
        auto sprinkler = Named<CMtrLoad>("Sprinkler", "kW", 6, 0);
        sprinkler->DataEntryMethod(motor_entry::kRunningKW);
        sprinkler->RunningRealPower(8250.0);
        Start(*sprinkler, "H", starting_method::kPartWinding,
              {.volts = 61500.0, .factor = 0.42, .limit = 320});
        sprinkler->StartsLoaded(false);
        sprinkler->FirePump(true);
        Add(std::move(sprinkler));
        auto belt = Named<CMtrLoad>("Belt", "A", 7, 3);
        belt->DataEntryMethod(motor_entry::kAmps);
        belt->RunningAmps(12.5);
        belt->StartingAmps(71.5);
        Start(*belt, "J", starting_method::kSolidState, {.volts = 62500.0, .factor = 0.43, .limit = 330});
        belt->StartsLoaded(true);
        belt->FirePump(true);
        Add(std::move(belt));
    }
    struct StartFigures {
        double volts;  // VA
        double factor;
        std::int32_t limit;
    };
    static void Start(CMtrLoad& motor, const char* letter, std::int32_t method, const StartFigures& start) {
        motor.CodeLetter(letter);
        motor.StartingMethod(method);
        motor.StartingAppPower(start.volts);
        motor.StartingPF(start.factor);
        motor.SolidStateCurrentLimit(start.limit);
    }
    void BuildTheRest() {
        auto charger = Named<CBatChrgLoad>("Charger", "of batteries", 8, 1);
        charger->BatteryVoltage(48.0);
        charger->ChargeCurrent(25.5);
        charger->ChargerInput(charger_input::kFerroResonant);
        charger->ChargerType(charger_type::kTelecom);
        Add(std::move(charger));
        auto lamps = Named<CLightLoad>("Lamps", "of the hall", 9, 2);
        lamps->LightType(light_type::kFluorescent);
        lamps->Ballast(ballast::kLowDistElectronic);
        lamps->RunningRealPower(1500.0);
        lamps->RunningPowerFactor(0.91);
        lamps->StartingRealPower(1700.0);
        lamps->StartingPowerFactor(0.82);
        Add(std::move(lamps));
        auto scanner = Named<CMedEquipLoad>("Scanner", "of heads", 10, 0);
        scanner->ContVA(20500.0);
        scanner->PeakVA(90500.0);
        scanner->ContPowerFactor(0.83);
        scanner->PeakPowerFactor(0.74);
        scanner->MaxPeakDemandVoltDip(12);
        scanner->InputType(input_type::kSinglePhase);
        Add(std::move(scanner));
        auto heater = Named<CMiscLoad>("Heater", "of water", 11, 3);
        heater->RunningRealPower(10250.0);
        heater->RunningPowerFactor(0.97);
        Add(std::move(heater));
        auto desks = Named<COfficeLoad>("Desks", "of the office", 12, 1);
        desks->NumPCs(21);
        desks->NumPrinters(5);
        desks->NumFaxes(3);
        desks->NumCopiers(2);
        Add(std::move(desks));
        AddUPS("Servers", "of the bank", 13,
               {input_type::kTwelvePulse, ups_family::kOnLine, 40500.0, 85, 15, true});
        AddUPS("Server", "of the shop", 14,
               {input_type::kSixPulse, ups_family::kOffLine, 3500.0, 75, 5, false});
        AddDrive("Fan", "of the roof", 15, {input_type::kAboveTwelvePulse, 22.5, 93, 115, false});
        AddDrive("Pump", "of the cellar", 16, {input_type::kActive, 33.5, 88, 125, true});
    }
    struct UPSFigures {
        std::int32_t input;
        std::int32_t family;
        double rating;  // VA
        std::int32_t loading;
        std::int32_t charging;
        bool filter;
    };
    void AddUPS(const char* name, const char* description, std::int32_t quantity, const UPSFigures& figures) {
        auto ups = Named<CUPSLoad>(name, description, quantity, 0);
        ups->InputType(figures.input);
        ups->Family(figures.family);
        ups->OutputRating(figures.rating);
        ups->Loading(figures.loading);
        ups->Charging(figures.charging);
        ups->InputFilterInstalled(figures.filter);
        Add(std::move(ups));
    }
    struct DriveFigures {
        std::int32_t input;
        double power;  // hp
        std::int32_t efficiency;
        std::int32_t limit;
        bool filter;
    };
    void AddDrive(const char* name, const char* description, std::int32_t quantity,
                  const DriveFigures& figures) {
        auto drive = Named<CVFDLoad>(name, description, quantity, 0, m_model->motors);
        drive->InputType(figures.input);
        drive->MtrRating(figures.power);
        drive->Efficiency(figures.efficiency);
        drive->KVALimit(figures.limit);
        drive->InputFilterInstalled(figures.filter);
        Add(std::move(drive));
    }

    Model* m_model;
};

TEST(WholeProjectFile, IsWrittenValueByValue) {
    Model model;
    const Builder built(model);
    EXPECT_EQ(model.Text(), kWhole);
}

TEST(WholeProjectFile, IsReadValueByValue) {
    Model model;
    MemorySource source(kWhole);
    ProjectReadObserver ignored;
    ASSERT_EQ(ReadProject(source, {model.project, model.site, model.profile, model.motors}, ignored),
              ReadResult::Done);
    EXPECT_EQ(model.project.LastModified(), kSaved);
    model.site.Phases(1);  // it is never read: whoever opens a file sets it from the connection
    EXPECT_EQ(model.Text(), kWhole);
}

TEST(WholeProjectFile, LosesNothingThroughJson) {
    Model model;
    const Builder built(model);
    Model other;
    const std::string json = RenderJsonProject({model.project, model.site, model.profile}, kSaved);
    MemorySource source(json);
    ProjectReadObserver ignored;
    ReadJsonProject(source, "whole.json", {other.project, other.site, other.profile, other.motors}, ignored);
    other.site.Phases(1);
    EXPECT_EQ(other.Text(), kWhole);
}

TEST(WholeProjectFile, DropsThePhasesOfItsSite) {
    for (const char* phases : {"3", "1"}) {
        Model model;
        model.site.Phases(phases[0] == '3' ? 1 : 3);
        const std::int32_t before = model.site.Phases();
        std::string text = kWhole;
        text.replace(text.find("17,1,5,415"), 4, std::string("17,") + phases);
        MemorySource source(text);
        ProjectReadObserver ignored;
        (void)ReadProject(source, {model.project, model.site, model.profile, model.motors}, ignored);
        EXPECT_EQ(model.site.Phases(), before);
        EXPECT_EQ(model.site.RiseDutyCode(), 5);  // and what follows keeps its place
        EXPECT_EQ(model.site.Voltage(), 415);
    }
}

TEST(WholeProjectFile, KeepsCodesThatStandForNothing) {
    std::string text = kWhole;
    const auto replace = [&text](const std::string& before, const std::string& after) {
        ASSERT_NE(text.find(before), std::string::npos) << before;
        text.replace(text.find(before), before.size(), after);
    };
    replace("321.5,37.25,2,50,0,3", "321.5,37.25,77,50,9,3");
    replace("17,1,5,415", "17,1,88,413");
    replace("48,25.5,1,2", "48,25.5,6,7");
    replace("1,3,1500", "8,9,1500");
    replace("\"G\",2,", "\"G\",11,");
    replace("2,1,40500", "12,13,40500");
    replace("3,22.5", "14,22.5");
    replace("12,5\r\n3,4", "12,15\r\n3,4");
    Model model;
    MemorySource source(text);
    ProjectReadObserver ignored;
    (void)ReadProject(source, {model.project, model.site, model.profile, model.motors}, ignored);
    model.site.Phases(1);
    EXPECT_EQ(model.Text(), text);
}

}  // namespace
}  // namespace genvara
