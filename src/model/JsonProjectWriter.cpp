#include <cmath>
#include <variant>

#include "JsonProject.h"
#include "JsonText.h"
#include "LoadFactory.h"
#include "Properties.h"
#include "PropertyText.h"

namespace genvara {
namespace {

constexpr std::size_t kIndent = 2;

/// Writes a value of any type: a code by its name, a date as text.
struct ValueWriter {
    JsonText* json;
    const PropertyFacts* facts;

    void operator()(double number) const {
        // Without a point it would come back as a whole number, which has no negative zero.
        if (number == 0.0 && std::signbit(number)) {
            json->Raw("-0.0");
        } else {
            json->Value(number);
        }
    }
    void operator()(std::int32_t number) const {
        if (const std::optional<std::string_view> name = NameOfCode(*facts, number)) {
            json->Value(*name);
        } else {
            json->Value(number);
        }
    }
    void operator()(bool truth) const { json->Value(truth); }
    void operator()(const std::string& text) const { json->Value(text); }
    void operator()(const DateTime& moment) const { json->Value(RenderIso(moment)); }
};

void WriteMember(JsonText& json, const PropertyFacts& facts, const PropertyValue& value) {
    if (IsGiven(facts, value)) {
        json.Key(facts.name);
        std::visit(ValueWriter{&json, &facts}, value);
    }
}

template <typename Record>
void WriteMembers(JsonText& json, std::span<const Property<Record>> table, const Record& record) {
    for (const Property<Record>& row : table) {
        WriteMember(json, row.facts, row.get(record));
    }
}

void WriteLoad(JsonText& json, const Load& load) {
    json.BeginObject().Member("LoadType", FindLoadKindRow(load.LoadType())->name);
    for (const Property<Load>& row : LoadProperties(load.LoadType())) {
        if (Exists(row, load)) {
            WriteMember(json, row.facts, row.get(load));
        }
    }
    json.EndObject();
}

void WriteStep(JsonText& json, const CLoadStep& step) {
    json.BeginObject();
    WriteMembers(json, StepProperties(), step);
    json.Key("Loads").BeginArray();
    for (const Load& load : step) {
        WriteLoad(json, load);
    }
    json.EndArray().EndObject();
}

}  // namespace

std::string RenderJsonProject(const ProjectView& project, const DateTime& savedAt) {
    CProject head = project.project;
    head.LastModified(savedAt);
    JsonText json(kIndent);
    json.BeginObject().Member("Format", kJsonProjectFormat).Member("Version", kJsonProjectVersion);
    json.Key(record_kind::kProject).BeginObject();
    WriteMembers(json, ProjectProperties(), head);
    json.EndObject().Key(record_kind::kPowerSystem).BeginObject();
    WriteMembers(json, PowerSystemProperties(), project.powerSystem);
    json.EndObject().Key("LoadProfile").BeginArray();
    for (const CLoadStep& step : project.loadProfile) {
        WriteStep(json, step);
    }
    return json.EndArray().EndObject().Text() + "\n";
}

}  // namespace genvara
