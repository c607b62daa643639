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
PropertyValue Require(std::optional<Value> value) {
    if (!value) {
        throw UnreadStatement{};
    }
    return PropertyValue(std::move(*value));
}

PropertyValue Take(ValueReader& reader, PropertyType type) {
    switch (type) {
        case PropertyType::Real:
            return Require(reader.TakeReal());
        case PropertyType::Truth:
            return Require(reader.TakeBoolean());
        case PropertyType::Text:
            return Require(reader.TakeText());
        case PropertyType::Moment:
            return Require(reader.TakeDate());
        case PropertyType::Whole:
        case PropertyType::Code:
            break;
    }
    return Require(reader.TakeInteger());
}

using Setting = std::pair<const Property<Load>*, PropertyValue>;

/// The values of a load's records, those of its entry method alone.
std::vector<Setting> ReadSettings(std::int32_t loadType, ValueReader& reader) {
    std::vector<Setting> settings;
    std::optional<std::int32_t> method;
    for (const Property<Load>& property : LoadProperties(loadType)) {
        if (property.facts.method && property.facts.method != method) {
            continue;
        }
        settings.emplace_back(&property, Take(reader, property.facts.type));
        if (property.facts.name == kEntryMethodName) {
            method = std::get<std::int32_t>(settings.back().second);
        }
    }
    const bool sized = std::ranges::any_of(
        settings, [](const Setting& setting) { return setting.first->facts.method.has_value(); });
    if (loadType == load_type::kAirConditioning && !sized) {
        // One size stands there whatever the method.
        (void)Take(reader, PropertyType::Real);
    }
    return settings;
}

}  // namespace

std::unique_ptr<Load> ReadLoad(std::int32_t loadType, ValueReader& reader, const LoadContext& context) {
    std::unique_ptr<Load> load = MakeLoad(loadType, context.motors);
    if (load == nullptr) {
        return nullptr;
    }
    for (const auto& [property, value] : ReadSettings(loadType, reader)) {
        property->set(*load, value);
    }
    RebuildPowers(*load, context.voltage, context.motors);
    return load;
}

}  // namespace genvara
