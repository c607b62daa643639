#include "CMtrLoad.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

#include "CodePage.h"
#include "LinearPower.h"
#include "RangeCheck.h"

namespace genvara {
namespace {

/// What a starting method reads as, and the share of the voltage that it leaves the motor.
struct MethodTexts {
    std::int32_t code;
    std::string_view property;
    std::string_view summary;
    double torqueFactor;
};

/// The five starters of fixed reduction; solid state starts by its current limit.
constexpr std::array<MethodTexts, 5> kMethods{{
    {starting_method::kAcrossTheLine, "Across the Line", ", w/ A.T.L. starting", 1.0},
    {starting_method::kAutotransformer80, "80% Tapped Autotransformer", ", w/ 80% Autotransformer starting",
     0.8},
    {starting_method::kAutotransformer65, "65% Tapped Autotransformer", ", w/ 65% Autotransformer starting",
     0.65},
    {starting_method::kPartWinding, "Part Winding", ", w/ part-winding starting", 0.84},
    {starting_method::kWyeDelta, "Wye-Delta", ", w/ wye-delta starting", 0.577},
}};

const MethodTexts* FindMethod(std::int32_t code) {
    for (const MethodTexts& method : kMethods) {
        if (method.code == code) {
            return &method;
        }
    }
    return nullptr;
}

std::string_view PropertyText(std::int32_t code) {
    if (code == starting_method::kSolidState) {
        return "Solid State";
    }
    const MethodTexts* method = FindMethod(code);
    return method != nullptr ? method->property : "Unknown";
}

std::string SummaryText(std::int32_t code, std::int32_t currentLimit) {
    if (code == starting_method::kSolidState) {
        return fmt::format(", w/ {}% solid start starting", currentLimit);
    }
    const MethodTexts* method = FindMethod(code);
    return std::string(method != nullptr ? method->summary : "");
}

std::string AmpsText(double starting, double running) {
    return RenderFixed(starting, 1) + "/" + RenderFixed(running, 1);
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Upper case of the Latin letters that project files hold, whatever the process's locale.
constexpr char32_t UpperCase(char32_t character) {
    constexpr char32_t kToUpper = U'a' - U'A';
    constexpr char32_t kDivisionSign = U'\u00F7';  // stands among the letters
    const bool lower = (character >= U'a' && character <= U'z') ||
                       (character >= U'\u00E0' && character <= U'\u00FE' && character != kDivisionSign);
    return lower ? character - kToUpper : character;
}

}  // namespace

std::string CMtrLoad::Summary() const {
    std::string text;
    switch (m_dataEntryMethod) {
        case motor_entry::kHorsepower:
            text = RenderFixed(m_hp, 2) + " HP, ";
            break;
        case motor_entry::kRunningKW:
            text = KiloText(m_runningRealPower) + " kW, ";
            break;
        case motor_entry::kAmps:
            text = AmpsText(m_startingAmps, m_runningAmps) + " A, ";
            break;
        default:
            break;
    }
    return fmt::format("{}{}code {}, {}{}motor{}{}", text, Phases() == 0 ? "3 phase, " : "1 phase, ",
                       m_codeLetter, m_startsLoaded ? "loaded" : "unloaded",
                       m_firePump ? ", fire pump " : " ", PluralEnding(Quantity()),
                       SummaryText(m_startingMethod, m_solidStateCurrentLimit));
}

void CMtrLoad::CodeLetter(const std::string& letter) {
    const std::u32string characters = DecodeUtf8(Trimmed(letter));
    if (characters.size() != 1) {
        throw RaisedError(19, "CMtrLoad::CodeLetter", "Code letter is invalid.");
    }
    m_codeLetter.clear();
    AppendUtf8(m_codeLetter, UpperCase(characters.front()));
}

void CMtrLoad::DataEntryMethod(std::int32_t code) noexcept {
    m_dataEntryMethod = code;
    if (code == motor_entry::kHorsepower || code == motor_entry::kRunningKW) {
        m_runningAmps = kNotGiven;
        m_startingAmps = kNotGiven;
    }
    if (code == motor_entry::kHorsepower || code == motor_entry::kAmps) {
        m_runningRealPower = kNotGiven;
    }
    if (code == motor_entry::kRunningKW || code == motor_entry::kAmps) {
        m_hp = kNotGiven;
    }
}

void CMtrLoad::HP(double horsepower) {
    RequireRange(horsepower, motor_limits::kHP, {15, "Horsepower out of range.", "CMtrLoad::HP"});
    m_hp = horsepower;
}

void CMtrLoad::RunningRealPower(double watts) {
    RequireRange(watts, motor_limits::kRunningRealPower,
                 {17, "Running real power out of range.", "CMtrLoad::RunningRealPower"});
    m_runningRealPower = watts;
}

void CMtrLoad::RunningAppPower(double voltAmperes) {
    RequireRange(voltAmperes, motor_limits::kRunningAppPower,
                 {18, "Running apparent power (VA) out of range.", "CMtrLoad::RunningAppPower"});
    m_runningAppPower = voltAmperes;
}

void CMtrLoad::StartingAppPower(double voltAmperes) {
    RequireRange(voltAmperes, motor_limits::kStartingAppPower,
                 {18, "Starting apparent power (VA) out of range.", "CMtrLoad::StartingAppPower"});
    m_startingAppPower = voltAmperes;
}

double CMtrLoad::RunningImgPower() const {
    return ImaginaryRest(m_runningAppPower, m_runningRealPower, "CMtrLoad::RunningImgPower");
}

double CMtrLoad::StartingImgPower() const {
    return ImaginaryOfApparent(m_startingAppPower, m_startingPF, "CMtrLoad::StartingImgPower");
}

double CMtrLoad::StartingRealPower() const {
    if (m_startingPF == kNotGiven || m_startingAppPower == kNotGiven) {
        return kNotGiven;
    }
    return Finite(m_startingPF * m_startingAppPower, "CMtrLoad::StartingRealPower");
}

double CMtrLoad::StartingTorque(double dip) const {
    constexpr std::string_view kMember = "CMtrLoad::StartingTorque";
    double factor = 1.0;
    if (m_startingMethod == starting_method::kSolidState) {
        factor = SquareRoot(Quotient(1.0, m_solidStateCurrentLimit / 100.0, kMember), kMember);
    } else if (const MethodTexts* method = FindMethod(m_startingMethod)) {
        factor = method->torqueFactor;
    }
    const double voltage = (1.0 - dip / 100.0) * factor;
    return Finite(voltage * voltage, kMember);
}

std::vector<std::string> CMtrLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps();
    rows.push_back(PropertyRow("Starts Loaded", YesNo(m_startsLoaded)));
    rows.push_back(PropertyRow("Starting Method", PropertyText(m_startingMethod)));
    rows.push_back(PropertyRow("Code Letter", m_codeLetter));
    AddEntryRows(rows);
    rows.push_back(PropertyRow("Starting PF", RenderFixed(m_startingPF, 2)));
    rows.push_back(PropertyRow("Starting kVA", KiloText(m_startingAppPower)));
    rows.push_back(PropertyRow("SS Start Current Limit", fmt::format("{}", m_solidStateCurrentLimit)));
    rows.push_back(PropertyRow("Fire Pump", YesNo(m_firePump)));
    return rows;
}

void CMtrLoad::AddEntryRows(std::vector<std::string>& rows) const {
    const auto add = [&rows](std::string_view method, std::string_view label, std::string_view value) {
        rows.push_back(PropertyRow("Data Entry Method", method));
        rows.push_back(PropertyRow(label, value));
    };
    switch (m_dataEntryMethod) {
        case motor_entry::kHorsepower:
            add("HP", "HP", RenderPlain(m_hp));
            break;
        case motor_entry::kRunningKW:
            add("Running KW", "Running kW", KiloText(m_runningRealPower));
            break;
        case motor_entry::kAmps:
            add("Start/Run Amps", "Start/Run Amps", AmpsText(m_startingAmps, m_runningAmps));
            break;
        default:
            add("Unknown", "---", "---");
            break;
    }
}

bool CMtrLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
