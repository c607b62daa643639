#include "TypographicQuotes.h"

namespace genvara {
namespace {

constexpr std::string_view kOpening = "\u201C";
constexpr std::string_view kClosing = "\u201D";  // behind a figure read as inches

}  // namespace

std::string TypographicQuotes(std::string_view text, bool opens) {
    std::string quoted;
    for (const char character : text) {
        if (character == '"') {
            quoted += opens ? kOpening : kClosing;
        } else {
            quoted += character;
        }
        opens = std::string_view(" \t\r\n([{/-").find(character) != std::string_view::npos;
    }
    return quoted;
}

}  // namespace genvara
