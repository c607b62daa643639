#include "ValueReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "ReadStatement.h"

namespace genvara {
namespace {

/// Reads the values of a text; more of it follows the reader's buffer at every byte if `piece` is 1.
class PieceSource final : public ByteSource {
  public:
    PieceSource(std::string bytes, std::size_t piece) : m_bytes(std::move(bytes)), m_piece(piece) {}

    [[nodiscard]] std::size_t Read(std::span<char> buffer) override {
        const std::size_t count = std::min({buffer.size(), m_piece, m_bytes.size() - m_next});
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(m_next), count, buffer.begin());
        m_next += count;
        return count;
    }

  private:
    std::string m_bytes;
    std::size_t m_piece;
    std::size_t m_next = 0;
};

/// Never ends, as a device may.
class EndlessSource final : public ByteSource {
  public:
    explicit EndlessSource(char byte) : m_byte(byte) {}

    [[nodiscard]] std::size_t Read(std::span<char> buffer) override {
        m_given += buffer.size();
        std::ranges::fill(buffer, m_byte);
        return buffer.size();
    }
    [[nodiscard]] std::size_t Given() const noexcept { return m_given; }

  private:
    char m_byte;
    std::size_t m_given = 0;
};

std::vector<std::string> Texts(const std::string& bytes, std::size_t piece = 65536) {
    PieceSource source(bytes, piece);
    ValueReader reader(source);
    std::vector<std::string> texts;
    while (!reader.AtEnd()) {
        texts.push_back(reader.TakeText().value_or("nothing"));
    }
    return texts;
}

TEST(ValueReader, SplitsTextIntoValues) {
    struct Row {
        std::string bytes;
        std::vector<std::string> texts;
    };
    const Row rows[] = {
        {"", {}},
        {" \t ", {}},
        {"a", {"a"}},
        {"a,b\r\nc\nd\re", {"a", "b", "c", "d", "e"}},
        {"a\r\n", {"a"}},
        {"a,", {"a"}},
        {",,\r\n", {"", "", ""}},  // the comma at the line's end leaves an empty value before the line end
        {"  a b ,\tc", {"a b ", "c"}},
        {R"("a","b")", {"a", "b"}},
        {R"("a,b",c)", {"a,b", "c"}},
        {"\"a\r\nb\"\r\nc", {"a\r\nb", "c"}},
        {R"("","")", {"", ""}},
        {R"("  a  ",b)", {"  a  ", "b"}},
        {"\"a\" \t ,b", {"a", "b"}},  // blanks between the quote and its delimiter
        {"\"a\" \r\nb", {"a", "b"}},
        {R"("a"b,c)", {"a", "b", "c"}},  // what follows the quote begins the next value
        {R"("a""b")", {"a", "b"}},
        {R"("a" "b")", {"a", "b"}},
        {R"(a"b",c)", {"a\"b\"", "c"}},  // a quote within a text is a character
        {R"("a,b)", {"a,b"}},            // never closed
        {"\"", {""}},
        {"#TRUE#,#x", {"#TRUE#", "#x"}},
        {"\xFC\x80", {"ü€"}},
        {std::string("a\0b", 3), {std::string("a\0b", 3)}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Texts(row.bytes), row.texts) << row.bytes;
        EXPECT_EQ(Texts(row.bytes, 1), row.texts) << row.bytes << " byte by byte";
    }
}

/// The value of a text taken as a number, or nothing.
std::optional<double> Real(const std::string& bytes) {
    MemorySource source(bytes);
    return ValueReader(source).TakeReal();
}

std::optional<std::int32_t> Integer(const std::string& bytes) {
    MemorySource source(bytes);
    return ValueReader(source).TakeInteger();
}

TEST(ValueReader, ReadsNumbers) {
    const std::pair<const char*, double> good[] = {
        {"0", 0.0},     {"-0", 0.0},     {"0.85", 0.85},  {".85", 0.85},      {"-.5", -0.5},
        {"+3", 3.0},    {"1E+20", 1e20}, {"1e2", 100},    {"2.5E-3", 0.0025}, {"7 ", 7.0},
        {"  8\t", 8.0}, {"1.", 1.0},     {"1E-400", 0.0}, {"\"9\"", 9.0},     {"0007", 7.0},
    };
    for (const auto& [text, value] : good) {
        EXPECT_EQ(Real(text), value) << text;
    }
    for (const char* bad : {"",    ",",    "\r\n",     "x",     "1x",     "1 2",          "nan", "NaN",
                            "inf", "-inf", "INFINITY", "1E400", "-1E400", "0x10",         "1E",  "E5",
                            ".",   "-",    "+-1",      "1.2.3", "#TRUE#", "#2003-05-20#", "1;2", "\"\""}) {
        EXPECT_EQ(Real(bad), std::nullopt) << bad;
        EXPECT_EQ(Integer(bad), std::nullopt) << bad;
    }
}

TEST(ValueReader, RoundsIntegersHalfToEven) {
    const std::pair<const char*, std::int32_t> good[] = {
        {"0.5", 0},
        {"1.5", 2},
        {"2.5", 2},
        {"3.5", 4},
        {"-0.5", 0},
        {"-1.5", -2},
        {"-2.5", -2},
        {"2.4999", 2},
        {"2.5001", 3},
        {"1E3", 1000},
        {"2147483647.4", 2147483647},
        {"-2147483648", std::numeric_limits<std::int32_t>::min()},
    };
    for (const auto& [text, value] : good) {
        EXPECT_EQ(Integer(text), value) << text;
    }
    for (const char* bad : {"2147483648", "2147483647.5", "-2147483649", "1E20"}) {
        EXPECT_EQ(Integer(bad), std::nullopt) << bad;
    }
}

TEST(ValueReader, ReadsBooleansAndDatesBetweenMarks) {
    MemorySource source("#TRUE#,#FALSE#,#true#,TRUE,1,#,#2003-05-20#\r\n");
    ValueReader reader(source);
    EXPECT_EQ(reader.TakeBoolean(), true);
    EXPECT_EQ(reader.TakeBoolean(), false);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(reader.TakeBoolean(), std::nullopt) << i;
    }
    EXPECT_TRUE(reader.AtEnd());
    MemorySource dates(
        "#2003-05-20 09:15:00# ,#2004-02-29#,#1899-12-30#,#2003-02-29#,#2003-05-20 24:00:00#,2003-05-20,"
        "#2003-5-20#,#,##,#2003-05-20");
    ValueReader days(dates);
    EXPECT_EQ(days.TakeDate(), (DateTime{2003, 5, 20, 9, 15, 0}));
    EXPECT_EQ(days.TakeDate(), (DateTime{2004, 2, 29, 0, 0, 0}));
    EXPECT_EQ(days.TakeDate(), DateTime{});
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(days.TakeDate(), std::nullopt) << i;
    }
    EXPECT_TRUE(days.AtEnd());
}

TEST(ValueReader, AStatementStopsAtItsFirstBadValueAndGoesOnBehindIt) {
    MemorySource source("1,x,3\r\n4\r\n");
    ValueReader reader(source);
    std::int32_t first = 0;
    double second = 0.0;
    std::int32_t third = 0;
    EXPECT_FALSE(ReadStatement(reader, first, second, third));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0.0);
    EXPECT_EQ(third, 0);
    EXPECT_EQ(reader.LastUnread().line, 1);
    EXPECT_EQ(reader.LastUnread().expected, "a number");
    EXPECT_EQ(reader.LastUnread().found, "x");
    EXPECT_TRUE(ReadStatement(reader, first, third));
    EXPECT_EQ(first, 3);
    EXPECT_EQ(third, 4);
    EXPECT_FALSE(ReadStatement(reader, first));
    EXPECT_EQ(reader.LastUnread().found, "the end of the file");
    EXPECT_EQ(first, 3);
}

TEST(ValueReader, CountsLinesWhateverEndsThem) {
    MemorySource source("a\nb\r\nc\rd,\"e\r\nf\"\r\ng");
    ValueReader reader(source);
    std::vector<std::int64_t> lines;
    while (!reader.AtEnd()) {
        lines.push_back(reader.Line());
        (void)reader.TakeText();
    }
    EXPECT_THAT(lines, testing::ElementsAre(1, 2, 3, 4, 4, 6));
}

TEST(ValueReader, ShowsWhatItCouldNotReadShortAndHarmless) {
    const auto shown = [](const std::string& bytes) {
        MemorySource source(bytes);
        ValueReader reader(source);
        EXPECT_EQ(reader.TakeReal(), std::nullopt);
        return reader.LastUnread().found;
    };
    EXPECT_EQ(shown("\x1B[31m\x7F\x9D\xFC?"), "\\x1B[31m\\x7F\\x9Dü?");
    EXPECT_EQ(shown("\"a\r\nb\""), "a\\x0D\\x0Ab");
    EXPECT_EQ(shown(std::string(40, 'x')), std::string(40, 'x'));
    EXPECT_EQ(shown(std::string(41, 'x')), std::string(40, 'x') + "...");
    EXPECT_EQ(shown(std::string(1000000, 'x')), std::string(40, 'x') + "...");
}

TEST(ValueReader, ANumberIsNotCutToWhatCouldBeRead) {
    // 512 bytes are the most that is looked at; a longer one is refused, not read up to there.
    const std::string longest = "1" + std::string(511, '\x20');
    EXPECT_EQ(Real(longest + ",2"), 1.0);
    EXPECT_EQ(Real(longest + " x,2"), std::nullopt);
    EXPECT_EQ(Real("0." + std::string(510, '1')), Real("0.11111111111111111111"));
    EXPECT_EQ(Real("0." + std::string(511, '1')), std::nullopt);
}

TEST(ValueReader, PassesOverALongValueOnceItIsTold) {
    const std::string bytes = std::string(200000, 'x') + ",7";
    MemorySource source(bytes);
    ValueReader reader(source);
    reader.PassOverLongValues();
    EXPECT_EQ(reader.TakeInteger(), std::nullopt);
    EXPECT_EQ(reader.TakeInteger(), 7);
    EXPECT_TRUE(reader.AtEnd());
}

TEST(ValueReader, LeavesOffAtOnceFromWhatHasNoEnd) {
    for (const char byte : {'\0', 'x', '"', '1'}) {
        EndlessSource source(byte);
        ValueReader reader(source);
        std::int32_t first = 0;
        std::int32_t second = 0;
        EXPECT_FALSE(ReadStatement(reader, first, second));
        EXPECT_LE(source.Given(), 65536U);
    }
}

}  // namespace
}  // namespace genvara
