#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

#include "RaisedError.h"

namespace genvara {

/// A callable raises the error with the number (also as 0x8004....), source and description.
[[nodiscard]] inline auto Raises(std::int64_t number, const std::string& source,
                                 const std::string& description) {
    using testing::AllOf;
    using testing::Property;
    return testing::Throws<RaisedError>(
        AllOf(Property("Number", &RaisedError::Number, static_cast<std::int32_t>(number)),
              Property("Source", &RaisedError::Source, source),
              Property("Description", &RaisedError::Description, description)));
}

}  // namespace genvara
