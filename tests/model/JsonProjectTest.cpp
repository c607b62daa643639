#include "JsonProject.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <bit>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>

#include "AllKindsOfLoad.h"
#include "PrjLosses.h"
#include "PropertyText.h"
#include "RandomProject.h"
#include "TemporaryFolder.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr DateTime kSaved{2003, 5, 21, 17, 2, 11};

/// Notes what the reader tells.
class NotingObserver final : public ProjectReadObserver {
  public:
    std::vector<std::string> items;
    std::vector<std::string> events;
    std::optional<std::int32_t> phases;

    void FormatFound(ProjectFormat format) override {
        events.emplace_back(format == ProjectFormat::Json ? "JSON" : "records");
    }
    void ProjectRead() override { events.emplace_back("project"); }
    void PowerSystemRead() override { events.emplace_back("site"); }
    void StepsCleared() override { events.emplace_back("cleared"); }
    void StepAdded(std::int32_t stepId) override { events.push_back("step " + std::to_string(stepId)); }
    void LoadAdded(std::int32_t stepNumber, std::int32_t loadId) override {
        events.push_back("load " + std::to_string(loadId) + " of " + std::to_string(stepNumber));
    }
    void Skipped(const SkippedItem& item) override {
        items.push_back(std::to_string(item.line) + " " + item.record + ": " + item.expected + ", " +
                        item.found);
    }
    void PhasesPassedOver(std::int32_t count) override { phases = count; }
};

struct Model {
    CDefaults defaults;
    CProject project{defaults, [] { return kSaved; }};
    CPwrSys site{defaults};
    CLoadProfile profile;
    NotingObserver observer;

    [[nodiscard]] ProjectModel All() { return {project, site, profile, kRandomMotors}; }
    [[nodiscard]] ProjectView View() const { return {project, site, profile}; }
    void Read(const std::string& json) {
        MemorySource source(json);
        ReadJsonProject(source, "job.json", All(), observer);
    }
    [[nodiscard]] std::string Json() const { return RenderJsonProject(View(), project.LastModified()); }
    [[nodiscard]] std::string Prj() const {
        return RenderProject(View(), {8, 0, 0}, project.LastModified()).bytes;
    }
    /// What the faults of a text are; that nothing was read but they.
    std::vector<std::string> FaultsOf(const std::string& json) {
        const std::string before = Json();
        observer = {};
        EXPECT_THROW(Read(json), RaisedError);
        EXPECT_EQ(Json(), before);
        EXPECT_THAT(observer.events, IsEmpty());
        return observer.items;
    }
};

/// A project with these members behind format and version.
std::string Project(const std::string& members) {
    return R"({"Format": "genvara-project", "Version": 1)" + (members.empty() ? "" : ", " + members) + "}";
}

std::string Site(const std::string& members) {
    return Project(R"("PowerSystem": {)" + members + "}");
}

std::string Loads(const std::string& loads) {
    return Project(R"("LoadProfile": [{"Loads": [)" + loads + "]}]");
}

TEST(JsonProject, WritesEveryMemberOfEveryRecordByName) {
    Model model;
    model.project.ProjName("Mill");
    model.project.Customer("Miller & \"Sons\"");
    model.project.Description("two\r\nlines");
    model.project.UserName("Größe");
    model.project.Created({2003, 5, 20, 9, 15, 0});
    model.project.LastModified({2003, 5, 21, 0, 0, 0});
    model.site.Altitude(0.1);
    model.site.Fuel(9);
    model.site.Freq(50);
    model.profile.AddLoadStep("Start", 15, 0);
    auto motor = std::make_unique<CMtrLoad>();
    motor->name("Pump");
    motor->HP(50);
    motor->CodeLetter("g");
    motor->StartingAppPower(200000);
    motor->StartingPF(-0.0);
    model.profile.LoadStep(1).AddLoad(std::move(motor));
    model.profile.AddLoadStep("Nothing", 16, 0);
    EXPECT_EQ(model.Json(), R"({
  "Format": "genvara-project",
  "Version": 1,
  "Project": {
    "ProjName": "Mill",
    "Customer": "Miller & \"Sons\"",
    "Description": "two\r\nlines",
    "UserName": "Größe",
    "Created": "2003-05-20T09:15:00",
    "LastModified": "2003-05-21T00:00:00"
  },
  "PowerSystem": {
    "Altitude": 0.1,
    "AmbTemp": 21.1111111111,
    "Freq": 50,
    "GensetsInParallel": 1,
    "Phases": 3,
    "Fuel": 9,
    "RiseDutyCode": "130C Standby",
    "Voltage": 480,
    "ConnectCode": 1,
    "MaxFreqDipEnabled": false,
    "MaxHarmonicsEnabled": false,
    "MaxVoltageDip": 20,
    "MaxFreqDip": 20,
    "MaxHarmonics": 15
  },
  "LoadProfile": [
    {
      "Description": "Start",
      "MaxVoltageDipOverride": 15,
      "Loads": [
        {
          "LoadType": "Motor",
          "name": "Pump",
          "Description": "",
          "Quantity": 1,
          "Phases": "3 Phase",
          "DataEntryMethod": "Horsepower",
          "CodeLetter": "G",
          "StartingMethod": "Across the Line",
          "StartsLoaded": true,
          "FirePump": false,
          "HP": 50,
          "StartingAppPower": 200000,
          "StartingPF": -0.0,
          "SolidStateCurrentLimit": 300
        }
      ]
    },
    {
      "Description": "Nothing",
      "MaxVoltageDipOverride": 16,
      "Loads": []
    }
  ]
}
)");
}

TEST(JsonProject, TellsOfItsReadingInTheOrderOfAnyProject) {
    Model model;
    model.profile.AddLoadStep("old", 20, 0);
    model.Read(Project(R"("LoadProfile": [{"Loads": [{"LoadType": "Office"}, {"LoadType": "Office"}]}, {}, )"
                       R"({"Loads": [{"LoadType": 6}]}])"));
    EXPECT_THAT(model.observer.events, ElementsAre("project", "site", "cleared", "step 1", "step 2", "step 3",
                                                   "load 0 of 1", "load 1 of 1", "load 0 of 3"));
    EXPECT_THAT(model.observer.items, IsEmpty());
}

TEST(JsonProject, TakesMembersInAnyOrderAndCodesByNameOrNumber) {
    Model model;
    model.Read(R"({"LoadProfile": [{"Loads": [{"RunningAmps": 60, "StartingAmps": 350, "DataEntryMethod": 2,
        "CodeLetter": "h", "StartingAppPower": 2.5e5, "LoadType": 5, "StartingMethod": "Solid State",
        "Phases": "Phase B"}, {"Tonnage": 5, "DataEntryMethod": "Tonnage", "LoadType": "AirConditioner"}],
        "Description": "x"}], "PowerSystem": {"Fuel": 2, "RiseDutyCode": "105C Prime", "Voltage": 480.0,
        "Freq": 5e1}, "Version": 1.0, "Format": "genvara-project"})");
    EXPECT_EQ(model.site.Fuel(), fuel::kNaturalGas);
    EXPECT_EQ(model.site.RiseDutyCode(), 1);
    EXPECT_EQ(model.site.Freq(), 50);
    const auto& motor = dynamic_cast<const CMtrLoad&>(*model.profile.LoadStep(1).LoadItem(0));
    EXPECT_EQ(motor.StartingMethod(), starting_method::kSolidState);
    EXPECT_EQ(motor.Phases(), 2);
    EXPECT_EQ(motor.CodeLetter(), "H");
    EXPECT_EQ(motor.HP(), kNotGiven);
    // Worked out as any reader does: 60 A x 480 V on one phase.
    EXPECT_DOUBLE_EQ(motor.RunningAppPower(), 28800);
    const auto& aircond = dynamic_cast<const CAirCondLoad&>(*model.profile.LoadStep(1).LoadItem(1));
    EXPECT_EQ(aircond.BTU(), kNotGiven);
    EXPECT_DOUBLE_EQ(aircond.StartingAppPower(), 59500);  // 10 hp x 5.95 kVA
}

TEST(JsonProject, MembersThatAreMissingKeepWhatANewRecordHolds) {
    Model model;
    model.defaults.UserName("Ann");
    model.defaults.VoltageLL(208);
    RandomProject(1, Letters::Any).Fill(model.All());
    model.site.MaxVoltageDip(7);
    model.Read(Project(R"("LoadProfile": [{}])"));
    Model fresh;
    fresh.defaults.UserName("Ann");
    fresh.defaults.VoltageLL(208);
    fresh.project.ResetDefaults();
    fresh.site.ResetDefaults();
    fresh.profile.AddLoadStep("", fresh.site.MaxVoltageDip(), 0);
    EXPECT_EQ(model.Json(), fresh.Json());
    EXPECT_EQ(model.project.Created(), DateTime{});
}

TEST(JsonProject, AStepWithoutADipHasThatOfItsSite) {
    Model model;
    model.Read(Project(
        R"("LoadProfile": [{}, {"MaxVoltageDipOverride": 9}], "PowerSystem": {"MaxVoltageDip": 31})"));
    EXPECT_EQ(model.profile.LoadStep(1).MaxVoltageDipOverride(), 31);
    EXPECT_EQ(model.profile.LoadStep(2).MaxVoltageDipOverride(), 9);
}

/// Every member of every kind of load, one at a time, left out of a load that has all of them.
TEST(JsonProject, AMemberThatALoadLacksIsThatOfANewLoad) {
    CLoadStep step;
    AddAllKinds(step);
    for (const Load& load : step) {
        Model full;
        full.profile.AddLoadStep("", 20, 0);
        full.profile.LoadStep(1).AddLoad(load.Clone());
        const std::string json = full.Json();
        const std::unique_ptr<Load> fresh = MakeLoad(load.LoadType(), kRandomMotors);
        for (const Property<Load>& row : LoadProperties(load.LoadType())) {
            if (!Exists(row, load) || row.facts.method || row.facts.name == kEntryMethodName) {
                continue;
            }
            SCOPED_TRACE(load.name() + "." + std::string(row.facts.name));
            const std::size_t from =
                json.find("\"" + std::string(row.facts.name) + "\":", json.find("LoadType"));
            ASSERT_NE(from, std::string::npos);
            std::string lacking = json;
            lacking.erase(from, lacking.find('\n', from) - from);
            // The last member of an object leaves a comma behind.
            const std::size_t comma = lacking.find_last_of(",{", from);
            if (lacking.find_first_not_of(" \n", from) == lacking.find('}', from)) {
                lacking.erase(comma, 1);
            }
            Model read;
            read.Read(lacking);
            const Load& back = *read.profile.LoadStep(1).begin();
            EXPECT_EQ(row.get(back), row.get(*fresh));
            EXPECT_NE(row.get(back), row.get(load)) << "a value of its own, or the test is blind";
        }
    }
}

TEST(JsonProject, TellsOfALoadThatLacksWhatItsFiguresNeed) {
    Model model;
    model.Read(Loads(R"({"LoadType": "Motor", "HP": 50}, {"LoadType": "Drive"})"));
    EXPECT_THAT(
        model.observer.items,
        ElementsAre("1 /LoadProfile/0/Loads/0/CodeLetter: a text of one character, nothing",
                    "1 /LoadProfile/0/Loads/0/StartingAppPower: a number above 0 up to 25000000, nothing",
                    "1 /LoadProfile/0/Loads/1/MtrRating: a number above 0 up to 1000, nothing"));
    EXPECT_EQ(model.profile.LoadStep(1).NumLoads(), 2);
    // What was never given is not written either.
    EXPECT_THAT(model.Json(), testing::Not(HasSubstr("CodeLetter")));
    EXPECT_THAT(model.Json(), testing::Not(HasSubstr("MtrRating")));
}

/// A text that is no project, and what is told of it.
struct Damage {
    const char* name;
    std::string json;
    std::vector<std::string> faults;
};

/// What a failure tells of its parameter.
void PrintTo(const Damage& damage, std::ostream* stream) {
    *stream << damage.name;
}

class DamagedJson : public testing::TestWithParam<Damage> {};

TEST_P(DamagedJson, IsToldAtItsPlaceAndNothingIsRead) {
    Model model;
    RandomProject(2, Letters::Any).Fill(model.All());
    EXPECT_EQ(model.FaultsOf(GetParam().json), GetParam().faults);
}

const std::string kKinds =
    R"(a kind of load: "AirConditioner", "BatteryCharger", "Lighting", "MedicalImaging", "Miscellaneous", "Motor", )"
    R"("Office", "UPS", "Drive")";

INSTANTIATE_TEST_SUITE_P(
    All, DamagedJson,
    testing::Values(
        Damage{"NoProject",
               "[]",
               {"1 : a project's object, an array", "0 /Format: \"genvara-project\", nothing",
                "0 /Version: 1, nothing"}},
        Damage{"AScalar",
               "5",
               {"1 : a project's object, 5", "0 /Format: \"genvara-project\", nothing",
                "0 /Version: 1, nothing"}},
        Damage{"NothingAtAll",
               "",
               {"1 : JSON, a fault in line 1, column 0: syntax error while parsing value - unexpected end of "
                "input; "
                "expected '[', '{', or a literal"}},
        Damage{"OtherFormat",
               R"({"Format": "genvara", "Version": 1, "PowerSystem": {"Freq": 0}})",
               {"1 /Format: \"genvara-project\", \"genvara\""}},
        Damage{"OtherVersion",
               R"({"Format": "genvara-project", "Version": 2, "PowerSystem": {"Freq": 0}})",
               {"1 /Version: 1, 2"}},
        Damage{"VersionAsText", R"({"Format": "genvara-project", "Version": "1"})", {"1 /Version: 1, \"1\""}},
        Damage{"UnknownMembers",
               Project(R"("Site": {}, "PowerSystem": {"Altitud": 1, "a/b~c": 2})"),
               {"1 /Site: a member that the record has (the nearest is Version), \"Site\"",
                "1 /PowerSystem/Altitud: a member that the record has (the nearest is Altitude), \"Altitud\"",
                "1 /PowerSystem/a~1b~0c: a member that the record has (the nearest is AmbTemp), "
                "\"a/b~c\""}},
        Damage{
            "WrongTypes",
            Site(R"("Altitude": "1", "Freq": 60.5, "MaxFreqDipEnabled": 1, "Fuel": true, "Voltage": null,
"ConnectCode": 2147483648, "RiseDutyCode": {})"),
            {"1 /PowerSystem/Altitude: a number from -500 to 4572, \"1\"",
             "1 /PowerSystem/Freq: a whole number 1 and above, 60.5",
             R"(1 /PowerSystem/Fuel: a code: "Any Fuel", "Diesel", "Nat. Gas", "L.P.", "Gasoline" or a number, true)",
             std::string(
                 R"(2 /PowerSystem/RiseDutyCode: a code: "80C Continuous", "105C Prime", "125C Prime", )")
                 .append(R"("130C Standby", "150C Standby" or a number, an object)"),
             "1 /PowerSystem/Voltage: a whole number, null",
             "2 /PowerSystem/ConnectCode: a whole number, 2147483648",
             "1 /PowerSystem/MaxFreqDipEnabled: true or false, 1"}},
        Damage{"RefusedValues",
               Site(R"("Altitude": 4572.1, "Phases": 2, "MaxVoltageDip": 4, "Fuel": "diesel")"),
               {"1 /PowerSystem/Altitude: a number from -500 to 4572, 4572.1",
                "1 /PowerSystem/Phases: 1 or 3, 2",
                "1 /PowerSystem/Fuel: a code: \"Any Fuel\", \"Diesel\", \"Nat. Gas\", \"L.P.\", \"Gasoline\" "
                "or a "
                "number, \"diesel\"",
                "1 /PowerSystem/MaxVoltageDip: a whole number from 5 to 35, 4"}},
        Damage{"Dates",
               Project(R"("Project": {"Created": "2003-02-30T00:00:00", "LastModified": "2003-05-21",
                                   "ProjName": 5})"),
               {"2 /Project/ProjName: a text, 5",
                "1 /Project/Created: a date as \"yyyy-mm-ddThh:mm:ss\", \"2003-02-30T00:00:00\"",
                "1 /Project/LastModified: a date as \"yyyy-mm-ddThh:mm:ss\", \"2003-05-21\""}},
        Damage{
            "MembersTwice",
            R"({"Format": "genvara-project", "Format": "x", "Version": 1, "PowerSystem":
{"Freq": 60, "Freq": 61, "Freq": {"Freq": []}}, "PowerSystem": {"Freq": 0}})",
            {"1 /Format: each member once, Format twice", "2 /PowerSystem/Freq: each member once, Freq twice",
             "2 /PowerSystem/Freq: each member once, Freq twice",
             "2 /PowerSystem: each member once, PowerSystem twice"}},
        Damage{"Containers",
               Project(R"("Project": [], "PowerSystem": 5, "LoadProfile": {"Loads": []})"),
               {"1 /Project: an object, an array", "1 /PowerSystem: an object, 5",
                "1 /LoadProfile: an array, an object"}},
        Damage{"StepsAndLoads",
               Project(R"("LoadProfile": [[], {"Loads": 5}, {"Loads": [{"LoadType": 6}, "x", {"LoadType": 9},
{}]}, {"MaxVoltageDipOverride": 36}])"),
               {"1 /LoadProfile/0: an object, an array", "1 /LoadProfile/1/Loads: an array, 5",
                "1 /LoadProfile/2/Loads/1: an object, \"x\"",
                "1 /LoadProfile/2/Loads/2/LoadType: " + kKinds + ", 9",
                "2 /LoadProfile/2/Loads/3/LoadType: " + kKinds + ", nothing",
                "2 /LoadProfile/3/MaxVoltageDipOverride: a whole number from 5 to 35, 36"}},
        Damage{"MembersOfAnotherEntryMethod",
               Loads(R"({"LoadType": "Motor", "DataEntryMethod": 1, "HP": 5, "RunningRealPower": 5000},
{"LoadType": "AirConditioner", "BTU": 60000, "Tonnage": 5})"),
               {"1 /LoadProfile/0/Loads/0/HP: a member that the entry method uses, HP",
                "2 /LoadProfile/0/Loads/1/Tonnage: a member that the entry method uses, Tonnage"}},
        Damage{"LoadsWithoutASize",
               Loads(R"({"LoadType": "Motor"}, {"LoadType": 0, "DataEntryMethod": 2},
{"LoadType": "Motor", "DataEntryMethod": 2, "RunningAmps": -5}, {"LoadType": 5, "DataEntryMethod": 7})"),
               {"1 /LoadProfile/0/Loads/0/HP: a number above 0 up to 1000, nothing",
                "1 /LoadProfile/0/Loads/1/HP: a number above 0 up to 1000, nothing",
                "2 /LoadProfile/0/Loads/2: a load that can be worked out, Running real power out of range. "
                "(CMtrLoad::RunningRealPower)",
                "2 /LoadProfile/0/Loads/3: a load that can be worked out, Running real power out of range. "
                "(CMtrLoad::RunningRealPower)"}},
        Damage{"NotANumber",
               Site(R"("Freq": 0, "Altitude": NaN)"),
               {"1 /PowerSystem/Altitude: JSON, a fault in line 1, column 84: syntax error while parsing "
                "value - "
                "invalid literal; last read: '\"Altitude\": N'",
                "1 /PowerSystem/Freq: a whole number 1 and above, 0"}},
        Damage{"BeyondADouble",
               Site(R"("Altitude": -1e309, "AmbTemp": 1e99999, "Freq": 0)"),
               {"1 /PowerSystem/Altitude: a number within the range of a double, -1e309",
                "1 /PowerSystem/AmbTemp: a number within the range of a double, 1e99999"}},
        Damage{"NoUtf8",
               Project("\"Project\": {\"ProjName\": \"\xFF\"}"),
               {"1 /Project/ProjName: JSON, a fault in line 1, column 70: syntax error while parsing value - "
                "invalid "
                "string: ill-formed UTF-8 byte; last read: '\"\uFFFD'"}},
        Damage{"HalfASurrogate",
               Project(R"("Project": {"ProjName": "\ud800"})"),
               {"1 /Project/ProjName: JSON, a fault in line 1, column 76: syntax error while parsing value - "
                "invalid "
                "string: surrogate U+D800..U+DBFF must be followed by U+DC00..U+DFFF; last read: "
                "'\"\\ud800\"'"}},
        Damage{
            "BrokenOff",
            R"({"Format": "genvara-project", "Version": 1, "LoadProfile": [{"Loads": [{"name": "x")",
            {"1 /LoadProfile/0/Loads/0/name: JSON, a fault in line 1, column 83: syntax error while parsing "
             "object - unexpected end of input; expected '}'"}},
        Damage{"TwoTexts",
               Project("") + " " + Project(""),
               {"1 : JSON, a fault in line 1, column 45: syntax error while parsing value - unexpected '{'; "
                "expected "
                "end of input"}}),
    [](const auto& damage) { return std::string(damage.param.name); });

TEST(JsonProject, EveryMemberOfTheWrongTypeIsTold) {
    CLoadStep step;
    AddAllKinds(step);
    Model model;
    model.profile.AddLoadStep("", 20, 0);
    for (const Load& load : step) {
        std::string members = R"({"LoadType": )" + std::to_string(load.LoadType());
        std::size_t count = 0;
        for (const Property<Load>& row : LoadProperties(load.LoadType())) {
            if (Exists(row, *MakeLoad(load.LoadType(), kRandomMotors))) {
                members += ", \"" + std::string(row.facts.name) + "\": null";
                ++count;
            }
        }
        EXPECT_EQ(model.FaultsOf(Loads(members + "}")).size(), count) << load.name();
    }
}

TEST(JsonProject, NestedAsDeepAsAnyoneLikesItIsRefusedAtItsTop) {
    Model model;
    constexpr std::size_t kDepth = 100000;
    const std::string brackets = std::string(kDepth, '[') + std::string(kDepth, ']');
    EXPECT_THAT(model.FaultsOf(Site("\"Altitude\": " + brackets + ", \"Freq\": 0")),
                ElementsAre("1 /PowerSystem/Altitude: a number from -500 to 4572, an array",
                            "1 /PowerSystem/Freq: a whole number 1 and above, 0"));
    EXPECT_EQ(model.FaultsOf(std::string(kDepth, '[')).size(), 2U);
    std::string objects;
    for (std::size_t i = 0; i < kDepth; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_EQ(model.FaultsOf(Project("\"PowerSystem\": " + objects)).size(), 2U);
}

/// So many blanks, without the memory that they would take.
class Blanks final : public ByteSource {
  public:
    Blanks(std::size_t count, std::string behind) : m_left(count), m_behind(std::move(behind)) {}
    [[nodiscard]] std::size_t Read(std::span<char> buffer) override {
        if (m_left > 0) {
            const std::size_t count = std::min(m_left, buffer.size());
            std::fill_n(buffer.begin(), count, m_left % 3 == 0 ? '\n' : ' ');
            m_left -= count;
            return count;
        }
        const std::size_t count = std::min(m_behind.size(), buffer.size());
        std::copy_n(m_behind.begin(), count, buffer.begin());
        m_behind.erase(0, count);
        return count;
    }

  private:
    std::size_t m_left;
    std::string m_behind;
};

TEST(JsonProject, BlanksCostNoMemory) {
    constexpr std::size_t kMany = std::size_t{70} * 1024 * 1024;  // more than a text may have bytes
    Model model;
    Blanks behind(kMany, Site("\"Freq\": 55"));
    ReadJsonProject(behind, "job.json", model.All(), model.observer);
    EXPECT_EQ(model.site.Freq(), 55);
    Blanks nothing(kMany, "");
    EXPECT_THROW(ReadJsonProject(nothing, "job.json", model.All(), model.observer), RaisedError);
}

/// A text without an end.
class Endless final : public ByteSource {
  public:
    explicit Endless(std::string begin) : m_begin(std::move(begin)) {}
    [[nodiscard]] std::size_t Read(std::span<char> buffer) override {
        std::fill(buffer.begin(), buffer.end(), 'x');
        std::copy_n(m_begin.begin(), m_begin.size(), buffer.begin());
        const std::size_t count = m_begin.empty() ? buffer.size() : m_begin.size();
        m_begin.clear();
        return count;
    }

  private:
    std::string m_begin;
};

TEST(JsonProject, ATextWithoutAnEndIsGivenUp) {
    Model model;
    Endless text(R"({"Format": "genvara-project", "Version": 1, "Project": {"ProjName": ")");
    EXPECT_THROW(ReadJsonProject(text, "job.json", model.All(), model.observer), RaisedError);
    EXPECT_THAT(model.observer.items, ElementsAre("1 /Project/ProjName: a project, longer than any project"));
}

TEST(JsonProject, OfVeryManyFaultsTheFirstAreTold) {
    Model model;
    std::string members;
    for (int i = 0; i < 1000; ++i) {
        members += "\"x" + std::to_string(i) + "\": 1, ";
    }
    try {
        model.Read(Site(members + "\"y\": 1"));
        FAIL();
    } catch (const RaisedError& failure) {
        EXPECT_EQ(failure.Number(), 0);
        EXPECT_THAT(failure.Description(), testing::StartsWith("job.json is no project that can be used: "
                                                               "/PowerSystem/x0: expected a member"));
        EXPECT_THAT(failure.Description(), testing::EndsWith("; and 801 more."));
    }
    EXPECT_EQ(model.observer.items.size(), 200U);
}

TEST(JsonProject, AStepHasRoomForSoManyLoads) {
    const auto loads = [](int count) {
        std::string text = R"({"LoadType": 6})";
        for (int i = 1; i < count; ++i) {
            text += R"(, {"LoadType": 6})";
        }
        return Loads(text);
    };
    Model model;
    model.Read(loads(257));
    EXPECT_EQ(model.profile.LoadStep(1).NumLoads(), 257);
    EXPECT_THAT(
        model.FaultsOf(loads(258)),
        ElementsAre(
            "1 /LoadProfile/0/Loads/257: a step with room, Maximum number of loads per step exceeded."));
}

TEST(JsonProject, LinesAreThoseOfTheFile) {
    Model model;
    EXPECT_THAT(
        model.FaultsOf("{\n\n  \"Format\": \"genvara-project\",\r\n  \"Version\": 1,\n  \"PowerSystem\": {\n"
                       "    \"Freq\":\n\n 0}}"),
        ElementsAre("6 /PowerSystem/Freq: a whole number 1 and above, 0"));
}

// --- what comes back

std::vector<std::uint64_t> BitsOf(const Load& load) {
    std::vector<std::uint64_t> bits;
    for (const Property<Load>& row : LoadProperties(load.LoadType())) {
        const PropertyValue value = row.get(load);
        if (const auto* real = std::get_if<double>(&value)) {
            bits.push_back(std::bit_cast<std::uint64_t>(*real));
        }
    }
    return bits;
}

/// The figures that a load is sized by, to the last bit; a figure that cannot be worked out counts as its
/// error.
std::vector<std::uint64_t> FiguresOf(const Load& load) {
    std::vector<std::uint64_t> bits;
    const auto add = [&](auto figure) {
        try {
            bits.push_back(std::bit_cast<std::uint64_t>(figure()));
        } catch (const RaisedError& failure) {
            bits.push_back(static_cast<std::uint64_t>(failure.Number()));
        }
    };
    add([&] { return load.RunningRealPower(); });
    add([&] { return load.RunningAppPower(); });
    add([&] { return load.RunningImgPower(); });
    add([&] { return load.StartingRealPower(); });
    add([&] { return load.StartingAppPower(); });
    add([&] { return load.StartingImgPower(); });
    return bits;
}

bool SameLoads(const CLoadProfile& left, const CLoadProfile& right) {
    auto other = right.begin();
    for (const CLoadStep& step : left) {
        const CLoadStep& otherStep = *other++;
        auto otherLoad = otherStep.begin();
        for (const Load& load : step) {
            if (BitsOf(load) != BitsOf(*otherLoad) || FiguresOf(load) != FiguresOf(*otherLoad)) {
                return false;
            }
            ++otherLoad;
        }
    }
    return true;
}

TEST(JsonProject, ComesBackToTheLastBit) {
    EXPECT_TRUE(rc::check("model, JSON, model, JSON", [](std::uint32_t seed) {
        Model model;
        RandomProject(seed, Letters::Any).Fill(model.All());
        const std::string json = model.Json();
        Model back;
        back.Read(json);
        RC_ASSERT(back.observer.items.empty());
        RC_ASSERT(back.Json() == json);
        RC_ASSERT(std::bit_cast<std::uint64_t>(back.site.Altitude()) ==
                  std::bit_cast<std::uint64_t>(model.site.Altitude()));
        RC_ASSERT(SameLoads(model.profile, back.profile));
    }));
}

/// Reads a `.prj` as the program would convert it; what it passed over.
std::vector<std::string> ReadPrj(const std::string& bytes, Model& model) {
    MemorySource source(bytes);
    EXPECT_EQ(ReadProject(source, model.All(), model.observer), ReadResult::Done);
    model.site.Phases(model.observer.phases.value_or(3));
    return model.observer.items;
}

/// Holds a file that the program wrote against itself after a way through JSON.
void ExpectSameThroughJson(const std::string& written) {
    Model read;
    ASSERT_THAT(ReadPrj(written, read), IsEmpty());
    Model back;
    back.Read(read.Json());
    EXPECT_EQ(back.Prj(), written);
    EXPECT_TRUE(SameLoads(read.profile, back.profile));
    EXPECT_FALSE(FindPrjLosses(back.View(), kRandomMotors).Any());
}

TEST(JsonProject, APrjComesBackByteForByte) {
    std::int32_t loads = 0;
    for (std::uint32_t seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(seed);
        Model model;
        RandomProject(seed, Letters::OfTheCodePage).Fill(model.All());
        for (const CLoadStep& step : model.profile) {
            loads += step.NumLoads();
        }
        ExpectSameThroughJson(model.Prj());
    }
    EXPECT_GT(loads, 2000);
}

TEST(JsonProject, EveryPrjOfThisTreeComesBackByteForByte) {
    int files = 0;
    for (const char* folder :
         {SAMPLES_FOLDER, TESTS_FOLDER "/fuzz/corpus/project", TESTS_FOLDER "/believability/cases"}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().extension() != ".prj") {
                continue;
            }
            SCOPED_TRACE(entry.path().string());
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            Model model;
            (void)ReadPrj(bytes, model);
            ExpectSameThroughJson(model.Prj());
            ++files;
        }
    }
    EXPECT_GE(files, 30);
}

TEST(JsonProject, EveryLetterOfTheCodePageComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        if (byte != '"') {
            all += static_cast<char>(byte);
        }
    }
    Model model;
    model.project.ProjName(DecodeText(all));
    model.profile.AddLoadStep(DecodeText(all), 20, 0);
    ExpectSameThroughJson(model.Prj());
    EXPECT_THAT(model.Prj(), HasSubstr(all));
}

// --- files

TEST(JsonProject, IsReadAndWrittenByTheSameCallsAsAnyProject) {
    const TemporaryFolder folder;
    const std::filesystem::path json = folder.Path() / "job.JSON";
    const std::filesystem::path prj = folder.Path() / "job.prj";
    Model model;
    model.project.ProjName("Mill \u65E5");
    EXPECT_EQ(WriteProjectFile(json, model.View(), {8, 0, 0}, [] { return kSaved; }), 0U);
    EXPECT_EQ(WriteProjectFile(prj, model.View(), {8, 0, 0}, [] { return kSaved; }), 1U);
    Model read;
    EXPECT_EQ(ReadProjectFile(json, read.All(), read.observer), ReadResult::Done);
    EXPECT_EQ(read.project.ProjName(), "Mill \u65E5");
    EXPECT_EQ(read.project.LastModified(), kSaved);
    EXPECT_EQ(read.observer.events.front(), "JSON");
    EXPECT_EQ(ReadProjectFile(prj, read.All(), read.observer = {}), ReadResult::Done);
    EXPECT_EQ(read.project.ProjName(), "Mill ?");
    EXPECT_EQ(read.observer.events.front(), "records");
}

TEST(JsonProject, IsToldFromAPrjByItsFirstByteAndThenByItsName) {
    const TemporaryFolder folder;
    const auto formatOf = [&](const std::string& bytes, const char* name) {
        MemorySource source(bytes);
        return FormatOf(PeekedSource(source), folder.Path() / name);
    };
    const std::string blanks(5000, ' ');
    for (const char* name : {"job.prj", "job.json", "job", "job.txt"}) {
        EXPECT_EQ(formatOf(" \r\n\t{", name), ProjectFormat::Json) << name;
        EXPECT_EQ(formatOf("\xEF\xBB\xBF{", name), ProjectFormat::Json) << name;
    }
    for (const std::string& text : {std::string("8,0,0,1"), std::string(), blanks + "{", std::string("[")}) {
        EXPECT_EQ(formatOf(text, "job.prj"), ProjectFormat::Records);
        EXPECT_EQ(formatOf(text, "job"), ProjectFormat::Records);
        EXPECT_EQ(formatOf(text, "job.Json"), ProjectFormat::Json);
    }
    EXPECT_EQ(FormatOfName("a/b.PRJ"), ProjectFormat::Records);
    EXPECT_EQ(FormatOfName("a.json/b"), std::nullopt);
    EXPECT_EQ(FormatOfName("a.prj.bak"), std::nullopt);
}

TEST(JsonProject, BytesThatWereLookedAtAreReadAllTheSame) {
    std::string bytes(10000, ' ');
    bytes += "{}";
    MemorySource source(bytes);
    PeekedSource peeked(source);
    EXPECT_EQ(peeked.FirstMark(), '\0');
    std::string read;
    std::array<char, 77> piece{};
    while (const std::size_t count = peeked.Read(piece)) {
        read.append(piece.data(), count);
    }
    EXPECT_EQ(read, bytes);
}

// --- what a .prj cannot hold

std::vector<std::string> LossesOf(const Model& model) {
    std::vector<std::string> places;
    const ProjectFaults losses = FindPrjLosses(model.View(), kRandomMotors);
    for (const SkippedItem& loss : losses.Kept()) {
        places.push_back(loss.record + ": " + loss.expected);
    }
    return places;
}

TEST(PrjLosses, AreTextsWithQuotesOrLettersOfOtherCodePages) {
    Model model;
    model.project.Customer("Miller \"& Sons\"");
    model.profile.AddLoadStep("Schritt \u65E5", 20, 0);
    model.profile.AddLoadStep("Größe €", 20, 0);
    auto load = std::make_unique<CMiscLoad>();
    load->Description("12\" pipe");
    load->name("fine");
    model.profile.LoadStep(2).AddLoad(std::make_unique<CMiscLoad>());
    model.profile.LoadStep(2).AddLoad(std::move(load));
    EXPECT_THAT(LossesOf(model),
                ElementsAre("/Project/Customer: a text without a double quote",
                            "/LoadProfile/0/Description: letters of Windows-1252 alone",
                            "/LoadProfile/1/Loads/1/Description: a text without a double quote"));
}

TEST(PrjLosses, AreWhatItsReaderWouldRefuse) {
    Model model;
    model.Read(Loads(R"({"LoadType": "Office"}, {"LoadType": "Motor", "HP": 50, "StartingAppPower": 1000})"));
    EXPECT_THAT(LossesOf(model), ElementsAre("load 2 of step 1 (CMtrLoad): a value that is accepted"));
    model.Read(Loads(R"({"LoadType": "Motor", "HP": 50, "StartingAppPower": 1000, "CodeLetter": "G"})"));
    EXPECT_THAT(LossesOf(model), IsEmpty());
}

}  // namespace
}  // namespace genvara
