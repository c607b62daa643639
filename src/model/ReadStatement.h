#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "DateTime.h"
#include "ValueReader.h"

namespace genvara {

/// Reads several values at once: the first that cannot be read fails the statement and leaves it and the
/// rest at their zeros, and reading goes on behind it.
/// @return true if all were read.
template <typename... Targets>
bool ReadStatement(ValueReader& reader, Targets&... targets) {
    struct Take {
        static std::optional<std::int32_t> From(ValueReader& values, std::int32_t& /*kind*/) {
            return values.TakeInteger();
        }
        static std::optional<double> From(ValueReader& values, double& /*kind*/) { return values.TakeReal(); }
        static std::optional<std::string> From(ValueReader& values, std::string& /*kind*/) {
            return values.TakeText();
        }
        static std::optional<bool> From(ValueReader& values, bool& /*kind*/) { return values.TakeBoolean(); }
        static std::optional<DateTime> From(ValueReader& values, DateTime& /*kind*/) {
            return values.TakeDate();
        }
    };
    const auto read = [&reader](auto& target) {
        auto value = Take::From(reader, target);
        if (value) {
            target = std::move(*value);
        }
        return value.has_value();
    };
    return (read(targets) && ...);
}

}  // namespace genvara
