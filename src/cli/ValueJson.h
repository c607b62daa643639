#pragma once

#include <string_view>

#include "JsonText.h"
#include "Property.h"

namespace genvara {

/// A member's value under a name: a code by its name where it has one, a date as text.
void ValueMember(JsonText& json, std::string_view name, const PropertyFacts& facts,
                 const PropertyValue& value);

}  // namespace genvara
