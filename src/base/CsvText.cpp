#include "CsvText.h"

#include "NumberText.h"

namespace genvara {
namespace {

/// Characters with which a formula begins; spreadsheets pass over blanks before it.
constexpr std::string_view kFormulaMarks = "=+-@";

}  // namespace

std::string WithoutFormula(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    const bool isFormula = first != std::string_view::npos && first + 1 < text.size() &&
                           kFormulaMarks.find(text[first]) != std::string_view::npos && !ParseNumber(text);
    return (isFormula ? "'" : "") + std::string(text);
}

std::string CsvCell(std::string_view text) {
    const std::string cell = WithoutFormula(text);
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
        return cell;
    }
    std::string quoted = "\"";
    for (const char character : cell) {
        quoted += character;
        if (character == '"') {
            quoted += character;
        }
    }
    return quoted + "\"";
}

}  // namespace genvara
