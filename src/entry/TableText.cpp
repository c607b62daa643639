#include "TableText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include "CodePage.h"
#include "CsvTable.h"
#include "ProjectSource.h"

namespace genvara {
namespace {

constexpr std::string_view kMark8 = "\xEF\xBB\xBF";
constexpr std::string_view kMark16Little = "\xFF\xFE";
constexpr std::string_view kMark16Big = "\xFE\xFF";
constexpr char32_t kReplacement = 0xFFFD;

/// Characters of UTF-16; a surrogate without its other half is no character.
std::string FromUtf16(std::string_view bytes, bool bigEndian) {
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char32_t>(bigEndian ? first << 8U | second : second << 8U | first);
    };
    std::string text;
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t character = unitAt(at);
        if (character >= 0xD800 && character <= 0xDFFF) {
            const bool paired = character <= 0xDBFF && at + 3 < bytes.size() && unitAt(at + 2) >= 0xDC00 &&
                                unitAt(at + 2) <= 0xDFFF;
            if (paired) {
                at += 2;
                character = 0x10000U + ((character - 0xD800U) << 10U) + (unitAt(at) - 0xDC00U);
            } else {
                character = kReplacement;
            }
        }
        AppendUtf8(text, character);
    }
    return text;
}

std::string Decoded(std::string_view bytes) {
    if (bytes.starts_with(kMark16Little) || bytes.starts_with(kMark16Big)) {
        return FromUtf16(bytes.substr(kMark16Little.size()), bytes.starts_with(kMark16Big));
    }
    if (bytes.starts_with(kMark8)) {
        bytes.remove_prefix(kMark8.size());
    }
    return IsUtf8(bytes) ? std::string(bytes) : DecodeText(bytes);
}

/// Line ends as all but the oldest programs write them.
void MendLineEnds(std::string& text) {
    if (text.find('\n') == std::string::npos) {
        std::ranges::replace(text, '\r', '\n');
    }
}

/// The sign of a line such as "sep=;", with which a table may tell it; 0 for any other line.
char ToldDelimiter(std::string_view line) {
    constexpr std::string_view kTold = "sep=";
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    std::string lower(line.substr(0, kTold.size()));
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return std::tolower(c); });
    const bool tells = lower == kTold && line.size() == kTold.size() + 1;
    return tells && std::string_view(",;\t").find(line.back()) != std::string_view::npos ? line.back() : '\0';
}

/// The sign that parts the heading's cells: a tab wherever there is one, else the more frequent of the two,
/// a semicolon if they stand equally often: a comma may stand in a heading.
char DelimiterOf(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of("\r\n"), text.size());
    bool quoted = false;
    std::array<std::size_t, 2> counts{};
    for (const char character : text.substr(begin)) {
        if (character == '"') {
            quoted = !quoted;
        } else if (!quoted && character == '\t') {
            return '\t';
        } else if (!quoted && (character == '\n' || character == '\r')) {
            break;
        } else if (!quoted) {
            counts[0] += character == ',' ? 1U : 0U;
            counts[1] += character == ';' ? 1U : 0U;
        }
    }
    return counts[1] > 0 && counts[1] >= counts[0] ? ';' : ',';
}

bool IsBlank(const std::vector<std::string>& cells) {
    return std::ranges::all_of(cells, [](const std::string& cell) {
        return cell.find_first_not_of(" \t\r\n") == std::string::npos;
    });
}

/// Gathers the rows of a table, until there is something wrong with one.
class RowGatherer {
  public:
    explicit RowGatherer(TableText& table, std::int32_t rowsBefore) : m_table(&table), m_before(rowsBefore) {}

    void Take(std::int64_t line, const std::vector<std::string>& cells) {
        // Line ends within cells are no rows to a spreadsheet.
        const auto number = static_cast<std::int32_t>(line - m_inCells) + m_before;
        std::size_t last = cells.size();
        for (const std::string& cell : cells) {
            m_inCells += std::ranges::count(cell, '\n');
            Check(cell, number);
        }
        while (last > 0 && cells[last - 1].empty()) {
            --last;
        }
        if (!m_table->fault.empty() || IsBlank(cells)) {
            return;
        }
        if (last > kMostTableColumns) {
            Refuse(fmt::format("Row {} has {} cells; a table of loads has {} columns at most.", number, last,
                               kMostTableColumns));
        } else if (m_table->rows.size() > kMostTableRows) {
            Refuse(fmt::format("The table has more than {} rows. Import it in parts.", kMostTableRows));
        } else {
            m_table->rows.push_back(
                {number, {cells.begin(), cells.begin() + static_cast<std::ptrdiff_t>(last)}});
        }
    }

  private:
    void Check(const std::string& cell, std::int32_t number) {
        if (cell.size() > kLongestTableCell) {
            Refuse(fmt::format("Row {} has a cell of more than {} characters.", number, kLongestTableCell));
        }
        if (m_table->delimiter == '\t' && cell.find('\t') != std::string::npos &&
            cell.find('\n') != std::string::npos) {
            // Marks stand for themselves here, and so may run together over rows.
            Refuse(fmt::format("The quotation marks in row {} do not match.", number));
        }
    }
    void Refuse(std::string sentence) {
        if (m_table->fault.empty()) {
            m_table->fault = std::move(sentence);
        }
    }

    TableText* m_table;
    std::int32_t m_before;
    std::int64_t m_inCells = 0;
};

}  // namespace

std::string TableBytes(ByteSource& source) {
    constexpr std::size_t kPiece = 65536;
    std::string bytes;
    std::array<char, kPiece> piece{};
    while (bytes.size() <= kMostTableBytes) {
        const std::size_t count = source.Read(piece);
        if (count == 0) {
            break;
        }
        bytes.append(piece.data(), count);
    }
    return bytes;
}

TableText ReadTableText(std::string_view bytes) {
    TableText table;
    if (bytes.size() > kMostTableBytes) {
        table.fault =
            fmt::format("The table is larger than {} MB. Import it in parts.", kMostTableBytes >> 20U);
        return table;
    }
    std::string text = Decoded(bytes);
    if (text.find('\0') != std::string::npos) {
        table.fault = "This is no table of text: it holds characters without meaning.";
        return table;
    }
    MendLineEnds(text);
    std::string_view body = text;
    std::int32_t rowsBefore = 0;
    const std::string_view first = body.substr(0, body.find('\n'));
    if (const char told = ToldDelimiter(first); told != '\0') {
        table.delimiter = told;
        body.remove_prefix(std::min(first.size() + 1, body.size()));
        rowsBefore = 1;
    } else {
        table.delimiter = DelimiterOf(body);
    }
    RowGatherer gatherer(table, rowsBefore);
    MemorySource source(body);
    const std::string breach = ReadCsv(
        source, [&](std::int64_t line, const std::vector<std::string>& cells) { gatherer.Take(line, cells); },
        {.delimiter = table.delimiter, .strict = table.delimiter != '\t'});
    if (table.fault.empty() && !breach.empty()) {
        table.fault = fmt::format("The quotation marks of a cell do not match ({}).", breach);
    }
    if (table.fault.empty() && table.rows.empty()) {
        table.fault = "The table is empty.";
    }
    if (!table.fault.empty()) {
        table.rows.clear();
    }
    return table;
}

}  // namespace genvara
