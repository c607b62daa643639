#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "RichTextReader.h"

/// What the control words of rich text mean to us.
namespace genvara::rich_words {

/// What a group's text is for.
enum class Destination { kText, kFonts, kNothing };

/// What a group takes over from the group around it, and loses at its end.
struct State {
    Destination destination = Destination::kText;
    RichFormat format;
    std::int32_t font = 0;
    RichAlignment alignment = RichAlignment::kLeft;
    std::vector<RichTabStop> stops;
    RichTabKind nextStop = RichTabKind::kLeft;
    bool isOnePiece = false;
    bool isWithNext = false;
    std::int32_t fallbackLength = 1;  // characters that stand in for one given by its number
};

/// The document in the making and the reader's state.
struct Context {
    RichDocument document;
    RichParagraph paragraph;
    State state;
    std::vector<State> outer;
    std::size_t depth = 0;  // of all groups, kept or not
    std::map<std::int32_t, std::string> faces;
    std::int32_t defaultFont = 0;
    std::int32_t fallbacksLeft = 0;
    char32_t highSurrogate = 0;
};

/// A control word's figure, where it has one.
using Figure = std::optional<std::int32_t>;

/// A unit of 16 bits: a character, or half of one.
void AppendUnit(Context& context, char32_t unit);

void EndParagraph(Context& context);

/// Does what a control word says; nothing for a word that we do not know.
void Act(Context& context, std::string_view word, Figure figure);

}  // namespace genvara::rich_words
