#include <limits>
#include <nlohmann/json.hpp>

#include "CLoadStep.h"
#include "JsonProject.h"
#include "LoadFactory.h"
#include "Properties.h"
#include "PropertyText.h"

namespace genvara {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kIndent = 2;

/// Bounds of a number of a type that has its own.
Json Numbers(const char* type, const Bounds& bounds, double lowest, double highest) {
    Json schema{{"type", type}};
    const auto shown = [&](double bound) {
        const bool whole = std::string_view(type) == "integer";
        return whole ? Json(static_cast<std::int64_t>(bound)) : Json(bound);
    };
    schema[bounds.aboveLeast ? "exclusiveMinimum" : "minimum"] = shown(bounds.least.value_or(lowest));
    schema["maximum"] = shown(bounds.greatest.value_or(highest));
    return schema;
}

Json Integers(const Bounds& bounds) {
    using Limits = std::numeric_limits<std::int32_t>;
    return Numbers("integer", bounds, Limits::min(), Limits::max());
}

Json Codes(const PropertyFacts& facts) {
    Json names = Json::array();
    std::string comment;
    for (const CodeName& code : facts.codes) {
        names.push_back(code.Name());
        comment +=
            (comment.empty() ? "" : ", ") + std::to_string(code.Code()) + " " + std::string(code.Name());
    }
    return {{"anyOf", {Json{{"enum", std::move(names)}}, Integers(facts.range)}}, {"$comment", comment}};
}

Json ValueSchema(const PropertyFacts& facts) {
    switch (facts.type) {
        case PropertyType::Real: {
            using Limits = std::numeric_limits<double>;
            return Numbers("number", facts.range, Limits::lowest(), Limits::max());
        }
        case PropertyType::Whole:
            return facts.only.empty() ? Integers(facts.range) : Json{{"enum", facts.only}};
        case PropertyType::Truth:
            return {{"type", "boolean"}};
        case PropertyType::Text:
            return facts.oneCharacter ? Json{{"type", "string"}, {"pattern", "^ *[^ ] *$"}}
                                      : Json{{"type", "string"}};
        case PropertyType::Code:
            return Codes(facts);
        case PropertyType::Moment:
            break;
    }
    return {{"type", "string"},
            {"pattern",
             "^[0-9]{4}-(0[1-9]|1[0-2])-(0[1-9]|[12][0-9]|3[01])T([01][0-9]|2[0-3]):[0-5][0-9]:[0-5][0-9]$"}};
}

Json MemberSchema(const PropertyFacts& facts) {
    Json schema{{"description", facts.unit.empty()
                                    ? std::string(facts.meaning)
                                    : std::string(facts.meaning) + " [" + std::string(facts.unit) + "]"}};
    schema.update(ValueSchema(facts));
    return schema;
}

/// An object that has these members and no others.
Json ObjectSchema(Json properties, Json required = nullptr) {
    Json schema{{"type", "object"}, {"properties", std::move(properties)}, {"additionalProperties", false}};
    if (!required.is_null()) {
        schema["required"] = std::move(required);
    }
    return schema;
}

template <typename Record>
Json RecordProperties(std::span<const Property<Record>> table) {
    Json properties = Json::object();
    for (const Property<Record>& row : table) {
        properties[std::string(row.facts.name)] = MemberSchema(row.facts);
    }
    return properties;
}

/// For loads of one entry method: the size that it calls for, and none of the others.
/// @param isDefault whether a load without an entry method has this one.
Json MethodSchema(std::span<const Property<Load>> table, const CodeName& method, bool isDefault) {
    Json condition{{"properties", {{kEntryMethodName, {{"enum", {method.Name(), method.Code()}}}}}}};
    if (!isDefault) {
        condition["required"] = Json::array({kEntryMethodName});
    }
    Json none = Json::object();
    Json required = Json::array();
    for (const Property<Load>& row : table) {
        if (row.facts.method && *row.facts.method != method.Code()) {
            none[std::string(row.facts.name)] = false;
        } else if (row.facts.method && !row.facts.range.HoldAnything()) {
            required.push_back(row.facts.name);
        }
    }
    Json consequence{{"properties", std::move(none)}};
    if (!required.empty()) {
        consequence["required"] = std::move(required);
    }
    return {{"if", std::move(condition)}, {"then", std::move(consequence)}};
}

Json LoadSchema(const LoadKindRow& kind, const Load& fresh) {
    const auto table = LoadProperties(kind.loadType);
    Json properties{{"LoadType", {{"enum", {kind.name, kind.loadType}}}}};
    properties.update(RecordProperties(table));
    Json schema = ObjectSchema(std::move(properties), Json::array({"LoadType"}));
    if (const Property<Load>* method = FindProperty(table, kEntryMethodName)) {
        Json methods = Json::array();
        Json known = Json::array();
        for (const CodeName& code : method->facts.codes) {
            methods.push_back(MethodSchema(table, code, method->get(fresh) == PropertyValue(code.Code())));
            known.push_back(code.Name());
            known.push_back(code.Code());
        }
        // A size that is given in another way cannot be worked out.
        schema["properties"][std::string(kEntryMethodName)]["enum"] = std::move(known);
        schema["allOf"] = std::move(methods);
    }
    return schema;
}

Json StepSchema(Json loads) {
    Json properties = RecordProperties(StepProperties());
    properties["Loads"] = {{"description", "Loads that are switched on together."},
                           {"type", "array"},
                           {"maxItems", kMostLoadsOfStep}};
    properties["Loads"]["items"] = std::move(loads);
    return ObjectSchema(std::move(properties));
}

}  // namespace

std::string JsonProjectSchema() {
    const MotorConversions noMotors;
    Json kinds = Json::array();
    Json definitions = Json::object();
    for (const LoadKindRow& kind : LoadKindRows()) {
        const std::string name(kind.name);
        definitions[name] = LoadSchema(kind, *kind.make(noMotors));
        kinds.push_back({{"if", {{"properties", {{"LoadType", {{"enum", {kind.name, kind.loadType}}}}}}}},
                         {"then", {{"$ref", "#/$defs/" + name}}}});
    }
    Json types = Json::array();
    for (const LoadKindRow& kind : LoadKindRows()) {
        types.push_back(kind.name);
        types.push_back(kind.loadType);
    }
    definitions["Load"] = {{"type", "object"},
                           {"properties", {{"LoadType", {{"enum", std::move(types)}}}}},
                           {"required", {"LoadType"}},
                           {"allOf", std::move(kinds)}};
    Json properties{{"Format", {{"const", kJsonProjectFormat}}},
                    {"Version", {{"const", kJsonProjectVersion}}}};
    properties["Project"] = ObjectSchema(RecordProperties(ProjectProperties()));
    properties["PowerSystem"] = ObjectSchema(RecordProperties(PowerSystemProperties()));
    properties["LoadProfile"] = {{"description", "Steps in the order in which they are switched on."},
                                 {"type", "array"},
                                 {"items", StepSchema({{"$ref", "#/$defs/Load"}})}};
    Json schema{{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                {"title", "Genvara project"},
                {"description", "Site and load profile of a generator set to be sized."}};
    schema.update(ObjectSchema(std::move(properties), Json::array({"Format", "Version"})));
    schema["$defs"] = std::move(definitions);
    return schema.dump(kIndent) + "\n";
}

}  // namespace genvara
