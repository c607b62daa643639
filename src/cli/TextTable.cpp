#include "TextTable.h"

#include <algorithm>
#include <utility>

namespace genvara {
namespace {

constexpr std::string_view kIndent = "  ";
constexpr std::string_view kGap = "  ";
constexpr std::string_view kEllipsis = "...";

bool StartsCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

}  // namespace

TextTable::TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {}

void TextTable::AddRow(std::vector<std::string> cells) {
    m_rows.push_back(std::move(cells));
}

std::string TextTable::Text() const {
    std::vector<std::string> titles;
    std::vector<std::size_t> widths;
    for (const Column& column : m_columns) {
        titles.push_back(column.title);
        widths.push_back(DisplayWidth(column.title));
    }
    for (const auto& row : m_rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], DisplayWidth(row[i]));
        }
    }
    std::size_t total = 0;
    for (const std::size_t width : widths) {
        total += width + kGap.size();
    }
    std::string text = Line(titles, widths);
    text += std::string(kIndent) + std::string(total - kGap.size(), '-') + "\n";
    for (const auto& row : m_rows) {
        text += Line(row, widths);
    }
    return text;
}

std::string TextTable::Line(const std::vector<std::string>& cells,
                            const std::vector<std::size_t>& widths) const {
    std::string line(kIndent);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string padding(widths[i] - DisplayWidth(cells[i]), ' ');
        const bool left = m_columns[i].align == Align::Left;
        line += (left ? cells[i] + padding : padding + cells[i]) + std::string(kGap);
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::size_t DisplayWidth(std::string_view text) noexcept {
    return static_cast<std::size_t>(std::ranges::count_if(text, StartsCharacter));
}

std::string OneLine(std::string_view text, std::size_t most) {
    std::string line;
    std::size_t width = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (StartsCharacter(text[i]) && ++width > most) {
            return line + std::string(kEllipsis);
        }
        line += static_cast<unsigned char>(text[i]) < 0x20 || text[i] == 0x7F ? ' ' : text[i];
    }
    return line;
}

}  // namespace genvara
