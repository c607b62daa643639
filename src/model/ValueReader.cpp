#include "ValueReader.h"

#include <fmt/format.h>

#include <limits>

#include "CodePage.h"
#include "NumberText.h"

namespace genvara {
namespace {

constexpr std::size_t kBufferSize = 65536;
/// Longest value that is looked at as a number, a boolean or a date; more is no such thing, and a file of
/// rubbish without delimiters costs no memory.
constexpr std::size_t kLongestShortValue = 512;
constexpr std::size_t kLongestShown = 40;
constexpr int kEnd = -1;

bool EndsLine(int byte) {
    return byte == '\r' || byte == '\n';
}

/// True for what a terminal would act upon; the code page leaves five of its bytes to the second range.
bool IsControl(char32_t character) {
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

/// What the user is shown of a value: short, with control characters made visible, as "\x1B".
std::string Shown(const std::string& value) {
    std::string shown;
    for (const char byte : value.substr(0, kLongestShown)) {
        const std::string character = DecodeText({&byte, 1});
        shown += IsControl(DecodeUtf8(character).front())
                     ? fmt::format("\\x{:02X}", static_cast<unsigned char>(byte))
                     : character;
    }
    return value.size() > kLongestShown ? shown + "..." : shown;
}

/// The text between the marks of a #...# value.
std::optional<std::string> BetweenMarks(const std::string& value) {
    if (value.size() < 2 || value.front() != '#' || value.back() != '#') {
        return std::nullopt;
    }
    return value.substr(1, value.size() - 2);
}

void TrimEnd(std::string& value) {
    value.erase(value.find_last_not_of(" \t") + 1);
}

}  // namespace

ValueReader::ValueReader(ByteSource& source) : m_source(&source), m_buffer(kBufferSize) {}

std::optional<std::int32_t> ValueReader::TakeInteger() {
    constexpr std::string_view kExpected = "a whole number";
    const std::optional<std::string> value = TakeBounded(kExpected);
    const std::optional<double> number = value ? ParseNumber(*value) : std::nullopt;
    const std::optional<std::int32_t> integer = number ? RoundToInteger(*number) : std::nullopt;
    if (!integer && value) {
        Refuse(kExpected, value);
    }
    return integer;
}

std::optional<double> ValueReader::TakeReal() {
    constexpr std::string_view kExpected = "a number";
    const std::optional<std::string> value = TakeBounded(kExpected);
    const std::optional<double> number = value ? ParseNumber(*value) : std::nullopt;
    if (!number && value) {
        Refuse(kExpected, value);
    }
    return number;
}

std::optional<std::string> ValueReader::TakeText() {
    const std::optional<std::string> value = TakeValue(Length::Whole);
    if (!value) {
        Refuse("a text", value);
        return std::nullopt;
    }
    return DecodeText(*value);
}

std::optional<bool> ValueReader::TakeBoolean() {
    constexpr std::string_view kExpected = "#TRUE# or #FALSE#";
    const std::optional<std::string> value = TakeBounded(kExpected);
    if (value == "#TRUE#") {
        return true;
    }
    if (value == "#FALSE#") {
        return false;
    }
    if (value) {
        Refuse(kExpected, value);
    }
    return std::nullopt;
}

std::optional<DateTime> ValueReader::TakeDate() {
    constexpr std::string_view kExpected = "a date";
    const std::optional<std::string> value = TakeBounded(kExpected);
    const std::optional<std::string> text = value ? BetweenMarks(*value) : std::nullopt;
    const std::optional<DateTime> date = text ? ParseDateTime(*text) : std::nullopt;
    if (!date && value) {
        Refuse(kExpected, value);
    }
    return date;
}

bool ValueReader::AtEnd() {
    SkipBlanks();
    return Peek() == kEnd;
}

std::int64_t ValueReader::Line() {
    SkipBlanks();
    return m_line;
}

std::optional<std::string> ValueReader::TakeBounded(std::string_view expected) {
    std::optional<std::string> value = TakeValue(Length::Bounded);
    if (!value || value->size() > kLongestShortValue) {
        Refuse(expected, value);
        return std::nullopt;
    }
    TrimEnd(*value);
    return value;
}

std::optional<std::string> ValueReader::TakeValue(Length length) {
    SkipBlanks();
    m_valueLine = m_line;
    if (Peek() == kEnd) {
        return std::nullopt;
    }
    const std::size_t most =
        length == Length::Whole ? std::numeric_limits<std::size_t>::max() : kLongestShortValue;
    std::string value;
    if (Peek() == '"') {
        ReadQuoted(value, most);
    } else {
        ReadUnquoted(value, most);
    }
    return value;
}

/// Takes one byte of a value; of a longer one than is asked for, one byte too many tells of it.
void ValueReader::Collect(std::string& value, std::size_t most) {
    if (value.size() <= most) {
        value += static_cast<char>(Peek());
    } else if (!m_passOverLong) {
        m_ended = true;
        m_next = m_filled;
        return;
    }
    Advance();
}

void ValueReader::ReadQuoted(std::string& value, std::size_t most) {
    Advance();
    while (Peek() != kEnd && Peek() != '"') {
        Collect(value, most);
    }
    if (Peek() == '"') {
        Advance();
    }
    SkipBlanks();
    SkipDelimiter();
}

void ValueReader::ReadUnquoted(std::string& value, std::size_t most) {
    while (Peek() != kEnd && Peek() != ',' && !EndsLine(Peek())) {
        Collect(value, most);
    }
    SkipDelimiter();
}

void ValueReader::SkipDelimiter() {
    if (Peek() == ',' || Peek() == '\n') {
        Advance();
    } else if (Peek() == '\r') {
        Advance();
        if (Peek() == '\n') {
            Advance();
        }
    }
}

void ValueReader::SkipBlanks() {
    while (Peek() == ' ' || Peek() == '\t') {
        Advance();
    }
}

void ValueReader::Refuse(std::string_view expected, const std::optional<std::string>& found) {
    m_unread = {
        .line = m_valueLine, .expected = expected, .found = found ? Shown(*found) : "the end of the file"};
}

int ValueReader::Peek() {
    if (m_next == m_filled && !m_ended) {
        m_filled = m_source->Read(m_buffer);
        m_next = 0;
        m_ended = m_filled == 0;
    }
    return m_next < m_filled ? static_cast<unsigned char>(m_buffer[m_next]) : kEnd;
}

void ValueReader::Advance() {
    // A line ends with LF or with a CR that no LF follows; the latter is seen when the next byte comes.
    const char byte = m_buffer[m_next++];
    if (byte == '\n' || (byte == '\r' && Peek() != '\n')) {
        ++m_line;
    }
}

}  // namespace genvara
