#include "LoadReader.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "LoadFactory.h"
#include "MotorPower.h"
#include "Properties.h"

namespace genvara {
namespace {

template <typename Value>
std::optional<PropertyValue> AsProperty(std::optional<Value> value) {
    return value ? std::optional<PropertyValue>(std::move(*value)) : std::nullopt;
}

/// Nothing where the statement at hand cannot be read.
std::optional<PropertyValue> Take(ValueReader& reader, PropertyType type) {
    switch (type) {
        case PropertyType::Real:
            return AsProperty(reader.TakeReal());
        case PropertyType::Truth:
            return AsProperty(reader.TakeBoolean());
        case PropertyType::Text:
            return AsProperty(reader.TakeText());
        case PropertyType::Moment:
            return AsProperty(reader.TakeDate());
        case PropertyType::Whole:
        case PropertyType::Code:
            break;
    }
    return AsProperty(reader.TakeInteger());
}

using Setting = std::pair<const Property<Load>*, PropertyValue>;

/// The values of a load's records, those of its entry method alone; nothing where one of them cannot be read.
std::optional<std::vector<Setting>> ReadSettings(std::int32_t loadType, ValueReader& reader) {
    std::vector<Setting> settings;
    std::optional<std::int32_t> method;
    for (const Property<Load>& property : LoadProperties(loadType)) {
        if (property.facts.method && property.facts.method != method) {
            continue;
        }
        std::optional<PropertyValue> value = Take(reader, property.facts.type);
        if (!value) {
            return std::nullopt;
        }
        settings.emplace_back(&property, std::move(*value));
        if (property.facts.name == kEntryMethodName) {
            method = std::get<std::int32_t>(settings.back().second);
        }
    }
    const bool sized = std::ranges::any_of(
        settings, [](const Setting& setting) { return setting.first->facts.method.has_value(); });
    // One size stands there whatever the method.
    if (loadType == load_type::kAirConditioning && !sized && !Take(reader, PropertyType::Real)) {
        return std::nullopt;
    }
    return settings;
}

}  // namespace

std::optional<std::unique_ptr<Load>> ReadLoad(std::int32_t loadType, ValueReader& reader,
                                              const LoadContext& context) {
    std::unique_ptr<Load> load = MakeLoad(loadType, context.motors);
    if (load == nullptr) {
        return load;
    }
    const std::optional<std::vector<Setting>> settings = ReadSettings(loadType, reader);
    if (!settings) {
        return std::nullopt;
    }
    for (const auto& [property, value] : *settings) {
        property->set(*load, value);
    }
    RebuildPowers(*load, context.voltage, context.motors);
    return load;
}

}  // namespace genvara
