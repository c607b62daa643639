#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "CommandLine.h"
#include "JsonProject.h"
#include "JsonText.h"
#include "NearestNames.h"
#include "Output.h"
#include "Properties.h"
#include "PropertyText.h"
#include "SizedProject.h"

namespace genvara {
namespace {

/// The member's sentence, with what else there is to say of it.
std::string MeaningOf(const RecordKind& kind, const PropertyFacts& facts) {
    std::string text(facts.meaning);
    if (!facts.entered.Any()) {
        text += " The range is that of its entry form.";
    }
    if (facts.method) {
        const auto found = std::ranges::find(kind.members, kEntryMethodName, &PropertyFacts::name);
        text +=
            fmt::format(" For the entry method {} alone.", NameOfCode(**found, *facts.method).value_or(""));
    }
    return text;
}

std::string ValuesOf(const PropertyFacts& facts) {
    switch (facts.type) {
        case PropertyType::Real:
            return facts.Enterable().Any() ? "any number" : BoundsText(facts.Enterable());
        case PropertyType::Whole:
            if (!facts.only.empty()) {
                return ExpectedText(facts);
            }
            return facts.Enterable().Any() ? "any whole number" : BoundsText(facts.Enterable());
        case PropertyType::Truth:
            return "true or false";
        case PropertyType::Text:
            return facts.oneCharacter ? "one character" : "text";
        case PropertyType::Code:
        case PropertyType::Moment:
            break;
    }
    return std::string(TypeName(facts.type));
}

void AddText(std::string& text, const RecordKind& kind) {
    const auto end = std::back_inserter(text);
    fmt::format_to(end, "{}{}\n", text.empty() ? "" : "\n", kind.name);
    for (const PropertyFacts* facts : kind.members) {
        // The degree sign is one column and two bytes, which the width of a field does not know.
        const std::size_t unitWidth = facts->unit.starts_with("\u00B0") ? 8 : 7;
        fmt::format_to(end, "  {:<22} {:<{}} {:<20} {}\n", facts->name, facts->unit, unitWidth,
                       ValuesOf(*facts), MeaningOf(kind, *facts));
        if (facts->type == PropertyType::Code) {
            std::string codes;
            for (const CodeName& code : facts->codes) {
                codes += fmt::format("{}{} \"{}\"", codes.empty() ? "" : ", ", code.Code(), code.Name());
            }
            fmt::format_to(end, "  {:<22} {}\n", "", codes);
        }
    }
}

void AddBound(JsonText& json, std::string_view name, const std::optional<double>& bound) {
    json.Key(name);
    if (bound) {
        json.Value(*bound);
    } else {
        json.Raw("null");
    }
}

/// One object on one line.
std::string JsonOf(const RecordKind& kind, const PropertyFacts& facts) {
    JsonText json;
    json.BeginObject()
        .Member("Kind", kind.name)
        .Member("Name", facts.name)
        .Member("Type", TypeName(facts.type))
        .Member("Unit", facts.unit);
    AddBound(json, "Least", facts.Enterable().least);
    AddBound(json, "Greatest", facts.Enterable().greatest);
    json.Key("Codes").BeginArray();
    for (const CodeName& code : facts.codes) {
        json.BeginObject().Member("Code", code.Code()).Member("Name", code.Name()).EndObject();
    }
    json.EndArray().Member("Meaning", MeaningOf(kind, facts)).EndObject();
    return json.Text() + "\n";
}

bool IsAsked(const RecordKind& kind, const DescribeArguments& arguments) {
    return arguments.kind.empty() || SameLetters(kind.name, arguments.kind);
}

int RefuseKind(const std::string& wrong) {
    std::vector<std::string_view> names;
    for (const RecordKind& kind : RecordKinds()) {
        names.push_back(kind.name);
    }
    Complain(fmt::format("genvara-cli: there is no kind of record \"{}\"; {}.", wrong,
                         SuggestionText(wrong, names)));
    return static_cast<int>(Status::BadArguments);
}

}  // namespace

int RunDescribe(const DescribeArguments& arguments) {
    if (arguments.schema) {
        Print(JsonProjectSchema());
        return static_cast<int>(Status::Done);
    }
    std::string text;
    for (const RecordKind& kind : RecordKinds()) {
        if (!IsAsked(kind, arguments)) {
            continue;
        }
        if (!arguments.json) {
            AddText(text, kind);
            continue;
        }
        for (const PropertyFacts* facts : kind.members) {
            text += JsonOf(kind, *facts);
        }
    }
    if (text.empty()) {
        return RefuseKind(arguments.kind);
    }
    Print(text);
    return static_cast<int>(Status::Done);
}

}  // namespace genvara
