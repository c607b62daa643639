#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "TableFields.h"

/// Words in cells of a table of loads.
namespace genvara {

/// Whether a cell holds nothing: blanks, a dash, "n/a".
[[nodiscard]] bool IsBlankCell(std::string_view cell);

/// The kind of load that a word means: the name of its form, as in the list of kinds, in a JSON project, or
/// what people call it; nothing for any other word.
[[nodiscard]] std::optional<std::int32_t> FindKindWord(std::string_view word);
/// The kinds as the list of kinds has them, for a sentence.
[[nodiscard]] std::string KindWords();
/// The kind as the list of kinds has it.
[[nodiscard]] std::string KindWord(std::int32_t loadType);

/// The code of a choice: the caption of its control, or what people call it.
[[nodiscard]] std::optional<std::int32_t> FindChoiceWord(const TableField& field, std::int32_t loadType,
                                                         std::string_view word);
/// The captions of a choice, for a sentence.
[[nodiscard]] std::string ChoiceWords(const TableField& field, std::int32_t loadType);
/// The caption of a code; the number for one of none.
[[nodiscard]] std::string ChoiceWord(const TableField& field, std::int32_t loadType, std::int32_t code);

/// A connection code, as in "3", "3 Phase", "A" or "Phase B - N / B - C"; -1 for "1", which does not tell the
/// phase; nothing for any other word.
inline constexpr std::int32_t kSomePhase = -1;
[[nodiscard]] std::optional<std::int32_t> FindPhaseWord(std::string_view word);

/// "yes", "no", "true", "x", "1" and the like; "loaded" and "unloaded".
[[nodiscard]] std::optional<bool> FindTruthWord(std::string_view word);

}  // namespace genvara
