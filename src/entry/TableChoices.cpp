#include "TableChoices.h"

#include <algorithm>
#include <array>

#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMtrLoad.h"
#include "CUPSLoad.h"
#include "InputTypes.h"
#include "LoadFactory.h"
#include "LoadKinds.h"
#include "Properties.h"
#include "PropertyText.h"
#include "StringTable.h"

namespace genvara {
namespace {

/// A word in plain letters, and what it means.
struct KindRow {
    std::string_view word;
    std::int32_t loadType;
};
constexpr std::array<KindRow, 21> kKindWords{{{"ac", load_type::kAirConditioning},
                                              {"aircon", load_type::kAirConditioning},
                                              {"aircond", load_type::kAirConditioning},
                                              {"airconditioner", load_type::kAirConditioning},
                                              {"charger", load_type::kBatteryCharger},
                                              {"light", load_type::kLighting},
                                              {"lights", load_type::kLighting},
                                              {"medical", load_type::kMedicalImaging},
                                              {"medicalimaging", load_type::kMedicalImaging},
                                              {"medicalequipment", load_type::kMedicalImaging},
                                              {"misc", load_type::kMiscellaneous},
                                              {"miscload", load_type::kMiscellaneous},
                                              {"linear", load_type::kMiscellaneous},
                                              {"linearload", load_type::kMiscellaneous},
                                              {"misclinear", load_type::kMiscellaneous},
                                              {"miscellaneousload", load_type::kMiscellaneous},
                                              {"motors", load_type::kMotor},
                                              {"office", load_type::kOffice},
                                              {"officeequip", load_type::kOffice},
                                              {"drive", load_type::kVFD},
                                              {"variablefrequencydrive", load_type::kVFD}}};

struct ChoiceRow {
    std::string_view member;
    std::string_view word;
    std::int32_t code;
};
constexpr std::array<ChoiceRow, 40> kChoiceWords{
    {{"StartingMethod", "atl", starting_method::kAcrossTheLine},
     {"StartingMethod", "dol", starting_method::kAcrossTheLine},
     {"StartingMethod", "directonline", starting_method::kAcrossTheLine},
     {"StartingMethod", "fullvoltage", starting_method::kAcrossTheLine},
     {"StartingMethod", "autotransformer80%", starting_method::kAutotransformer80},
     {"StartingMethod", "autotransformer80", starting_method::kAutotransformer80},
     {"StartingMethod", "autotransformer65%", starting_method::kAutotransformer65},
     {"StartingMethod", "autotransformer65", starting_method::kAutotransformer65},
     {"StartingMethod", "stardelta", starting_method::kWyeDelta},
     {"StartingMethod", "yd", starting_method::kWyeDelta},
     {"StartingMethod", "softstarter", starting_method::kSolidState},
     {"StartingMethod", "softstart", starting_method::kSolidState},
     {"StartingMethod", "solidstatestarter", starting_method::kSolidState},
     {"DataEntryMethod", "hp", motor_entry::kHorsepower},
     {"DataEntryMethod", "kw", motor_entry::kRunningKW},
     {"DataEntryMethod", "amps", motor_entry::kAmps},
     {"InputType", "6pulse", input_type::kSixPulse},
     {"InputType", "sixpulse", input_type::kSixPulse},
     {"InputType", "12pulse", input_type::kTwelvePulse},
     {"InputType", "twelvepulse", input_type::kTwelvePulse},
     {"InputType", ">12pulse", input_type::kAboveTwelvePulse},
     {"InputType", "18pulse", input_type::kAboveTwelvePulse},
     {"InputType", "24pulse", input_type::kAboveTwelvePulse},
     {"InputType", "activefrontend", input_type::kActive},
     {"Family", "online", ups_family::kOnLine},
     {"Family", "doubleconversion", ups_family::kOnLine},
     {"Family", "offline", ups_family::kOffLine},
     {"Family", "standby", ups_family::kOffLine},
     {"LightType", "hid", light_type::kHID},
     {"LightType", "fluorescent", light_type::kFluorescent},
     {"LightType", "incandescent", light_type::kIncandescent},
     {"Ballast", "magnetic", ballast::kHighEffMagnetic},
     {"Ballast", "higheffmagnetic", ballast::kHighEffMagnetic},
     {"Ballast", "none", ballast::kNone},
     {"Ballast", "lowdistortion", ballast::kLowDistElectronic},
     {"ChargerInput", "ferro", charger_input::kFerroResonant},
     {"ChargerInput", "ferroresonant", charger_input::kFerroResonant},
     {"ChargerInput", "thyristor", charger_input::kSCR},
     {"ChargerType", "telecommunication", charger_type::kTelecom},
     {"ChargerType", "telecoms", charger_type::kTelecom}}};

struct PhaseRow {
    std::string_view word;
    std::int32_t code;
};
constexpr std::array<PhaseRow, 36> kPhaseWords{{{"3", 0},
                                                {"3phase", 0},
                                                {"3phases", 0},
                                                {"3ph", 0},
                                                {"three", 0},
                                                {"threephase", 0},
                                                {"even", 0},
                                                {"evenlydistributed", 0},
                                                {"balanced", 0},
                                                {"abc", 0},
                                                {"1", kSomePhase},
                                                {"1phase", kSomePhase},
                                                {"1ph", kSomePhase},
                                                {"single", kSomePhase},
                                                {"singlephase", kSomePhase},
                                                {"a", 1},
                                                {"1a", 1},
                                                {"phasea", 1},
                                                {"an", 1},
                                                {"ab", 1},
                                                {"l1", 1},
                                                {"phaseanab", 1},
                                                {"b", 2},
                                                {"1b", 2},
                                                {"phaseb", 2},
                                                {"bn", 2},
                                                {"bc", 2},
                                                {"l2", 2},
                                                {"phasebnbc", 2},
                                                {"c", 3},
                                                {"1c", 3},
                                                {"phasec", 3},
                                                {"cn", 3},
                                                {"ca", 3},
                                                {"l3", 3},
                                                {"phasecnca", 3}}};

struct TruthRow {
    std::string_view word;
    bool truth;
};
constexpr std::array<TruthRow, 16> kTruthWords{{{"yes", true},
                                                {"y", true},
                                                {"true", true},
                                                {"1", true},
                                                {"x", true},
                                                {"on", true},
                                                {"loaded", true},
                                                {"installed", true},
                                                {"no", false},
                                                {"n", false},
                                                {"false", false},
                                                {"0", false},
                                                {"off", false},
                                                {"none", false},
                                                {"unloaded", false},
                                                {"notinstalled", false}}};

template <typename Rows>
auto FindWord(const Rows& rows, std::string_view word) -> decltype(rows.begin()) {
    const std::string plain = PlainLetters(word);
    return std::ranges::find_if(rows, [&](const auto& row) { return row.word == plain; });
}

std::span<const CodeName> CodesOf(const TableField& field, std::int32_t loadType) {
    const Property<Load>* property = FindProperty(LoadProperties(loadType), field.member);
    return property == nullptr ? std::span<const CodeName>() : property->facts.codes;
}

/// Whether a form offers a code to be selected: a single-phase input follows from the phases, and no ballast
/// from the lamp.
bool IsOffered(const TableField& field, std::int32_t code) {
    return !(field.member == "InputType" && code == input_type::kSinglePhase) &&
           !(field.member == "Ballast" && code == ballast::kNone);
}

/// "A, B or C".
template <typename Words>
std::string Either(const Words& words) {
    std::string text;
    for (std::size_t at = 0; at < words.size(); ++at) {
        text += at == 0 ? "" : at + 1 == words.size() ? " or " : ", ";
        text += words[at];
    }
    return text;
}

}  // namespace

bool IsBlankCell(std::string_view cell) {
    constexpr std::array<std::string_view, 6> kNothings{"", "-", "\u2013", "\u2014", "n/a", "N/A"};
    std::string bare;
    for (const char character : cell) {
        if (character != ' ' && character != '\t' && character != '\r' && character != '\n') {
            bare += character;
        }
    }
    for (const std::string_view blank : {"\u00A0", "\u202F"}) {
        for (std::size_t at = bare.find(blank); at != std::string::npos; at = bare.find(blank)) {
            bare.erase(at, blank.size());
        }
    }
    return std::ranges::find(kNothings, bare) != kNothings.end();
}

std::optional<std::int32_t> FindKindWord(std::string_view word) {
    const std::string plain = PlainLetters(word);
    for (const LoadKindRow& kind : LoadKindRows()) {
        if (plain == PlainLetters(kind.name) || plain == PlainLetters(KindWord(kind.loadType)) ||
            plain == PlainLetters(FindLoadKind(kind.loadType)->title)) {
            return kind.loadType;
        }
    }
    const auto* const found = FindWord(kKindWords, word);
    return found == kKindWords.end() ? std::nullopt : std::optional(found->loadType);
}

std::string KindWord(std::int32_t loadType) {
    return std::string(StringTable::Text(FindLoadKind(loadType)->listString));
}

std::string KindWords() {
    std::vector<std::string> words;
    for (const LoadKind& kind : LoadKinds()) {
        words.push_back(KindWord(kind.loadType));
    }
    return Either(words);
}

std::optional<std::int32_t> FindChoiceWord(const TableField& field, std::int32_t loadType,
                                           std::string_view word) {
    const std::string plain = PlainLetters(word);
    for (const CodeName& code : CodesOf(field, loadType)) {
        if (PlainLetters(code.Name()) == plain && !plain.empty()) {
            return code.Code();
        }
    }
    const auto* const found = std::ranges::find_if(
        kChoiceWords, [&](const ChoiceRow& row) { return row.member == field.member && row.word == plain; });
    const bool isOther = field.member == kEntryMethodName && loadType != load_type::kMotor;
    return found == kChoiceWords.end() || isOther ? std::nullopt : std::optional(found->code);
}

std::string ChoiceWords(const TableField& field, std::int32_t loadType) {
    std::vector<std::string_view> words;
    for (const CodeName& code : CodesOf(field, loadType)) {
        if (IsOffered(field, code.Code())) {
            words.push_back(code.Name());
        }
    }
    return Either(words);
}

std::string ChoiceWord(const TableField& field, std::int32_t loadType, std::int32_t code) {
    const auto codes = CodesOf(field, loadType);
    const auto found = std::ranges::find(codes, code, &CodeName::Code);
    return found == codes.end() ? std::to_string(code) : std::string(found->Name());
}

std::optional<std::int32_t> FindPhaseWord(std::string_view word) {
    const auto* const found = FindWord(kPhaseWords, word);
    return found == kPhaseWords.end() ? std::nullopt : std::optional(found->code);
}

std::optional<bool> FindTruthWord(std::string_view word) {
    const auto* const found = FindWord(kTruthWords, word);
    return found == kTruthWords.end() ? std::nullopt : std::optional(found->truth);
}

}  // namespace genvara
