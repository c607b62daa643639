#include "LoadMessages.h"

#include <fmt/format.h>

#include <cstdint>

#include "ErrorNumbers.h"

namespace genvara {
namespace {

std::string NumberedText(std::int64_t number, std::string_view description) {
    return fmt::format("Error #{}\r\n{}", number, description);
}

}  // namespace

std::string CreateFailureText(const RaisedError& failure) {
    return NumberedText(failure.Number(), "Unable to create load.") + "\r\nDo you want to try again?";
}

std::string StoreFailureText(const LoadKind& kind, const RaisedError& failure, std::string_view fieldText) {
    if (failure.Number() == errors::kTypeMismatch) {
        return std::string(fieldText.empty() ? kind.blankMessage : kind.notANumber);
    }
    if (failure.Number() == errors::kOverflow) {
        return {};
    }
    return NumberedText(failure.Number(), failure.Description());
}

std::string AddFailureText(const RaisedError& failure) {
    // In 64 bits: a small number of the language's own lies beyond 32 from the base.
    return NumberedText(static_cast<std::int64_t>(failure.Number()) - errors::kBase, failure.Description());
}

std::string DisplayFailureText(const RaisedError& failure) {
    return NumberedText(failure.Number(), failure.Description()) +
           "\r\nCan not display the last load added. Try saving and reloading the project.";
}

}  // namespace genvara
