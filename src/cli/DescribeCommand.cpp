#include <fmt/format.h>

#include <algorithm>

#include "CommandLine.h"
#include "JsonProject.h"
#include "JsonText.h"
#include "NearestNames.h"
#include "Output.h"
#include "Properties.h"
#include "PropertyText.h"
#include "SizedProject.h"
#include "TextTable.h"

namespace genvara {
namespace {

/// The member's sentence, with what else there is to say of it.
std::string MeaningOf(const RecordKind& kind, const PropertyFacts& facts) {
    std::string text(facts.meaning);
    if (!facts.entered.HoldAnything()) {
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
            return facts.Enterable().HoldAnything() ? "any number" : BoundsText(facts.Enterable());
        case PropertyType::Whole:
            if (!facts.only.empty()) {
                return ExpectedText(facts);
            }
            return facts.Enterable().HoldAnything() ? "any whole number" : BoundsText(facts.Enterable());
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

std::string CodesText(const PropertyFacts& facts) {
    std::string text;
    for (const CodeName& code : facts.codes) {
        text += fmt::format("{}{} \"{}\"", text.empty() ? "" : ", ", code.Code(), code.Name());
    }
    return text;
}

/// The kind's name, and a table of its members; a code's names stand in a row of their own.
std::string TextOf(const RecordKind& kind) {
    using Align = TextTable::Align;
    TextTable table(
        {{"Name", Align::Left}, {"Unit", Align::Left}, {"Values", Align::Left}, {"Meaning", Align::Left}});
    for (const PropertyFacts* facts : kind.members) {
        table.AddRow(
            {std::string(facts->name), std::string(facts->unit), ValuesOf(*facts), MeaningOf(kind, *facts)});
        if (facts->type == PropertyType::Code) {
            table.AddRow({"", "", "", CodesText(*facts)});
        }
    }
    return fmt::format("{}\n{}", kind.name, table.Text());
}

void AddBound(JsonText& json, std::string_view name, const std::optional<double>& bound) {
    json.Key(name);
    if (bound) {
        json.Value(*bound);
    } else {
        json.Null();
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
    json.Member("AboveLeast", facts.Enterable().aboveLeast);
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
            text += (text.empty() ? "" : "\n") + TextOf(kind);
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
