#pragma once

#include <string_view>

#include "JsonText.h"
#include "Order.h"

namespace genvara {

/// The loads of each step under a name, each as in "Step[1].Load[2]".
void OrderMember(JsonText& json, std::string_view name, const LoadOrder& order);

}  // namespace genvara
