#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "DateTime.h"
#include "ProjectSource.h"

namespace genvara {

/// A value that a statement could not read.
struct UnreadValue {
    std::int64_t line = 0;
    std::string_view expected;  ///< "a whole number", "a date", ...
    std::string found;          ///< what stood there, shortened
};

/// Reads a project's delimited values one after the other, whatever lines they stand on.
///
/// Commas and line ends both end a value, and leading blanks are skipped. A value that starts with a double
/// quote runs to the next one; a comma or line end behind that belongs to it, and anything else begins the
/// next value. Each `Take` answers nothing if the value cannot be read as what is asked for; the value is
/// consumed all the same.
class ValueReader {
  public:
    explicit ValueReader(ByteSource& source);

    [[nodiscard]] std::optional<std::int32_t> TakeInteger();
    [[nodiscard]] std::optional<double> TakeReal();
    [[nodiscard]] std::optional<std::string> TakeText();  ///< UTF-8
    [[nodiscard]] std::optional<bool> TakeBoolean();
    [[nodiscard]] std::optional<DateTime> TakeDate();

    /// From here on, a value that is longer than any of its kind is passed over like another that cannot be
    /// read. Before, it ends the reading: what begins like that is no project, and may have no end.
    void PassOverLongValues() noexcept { m_passOverLong = true; }

    /// True once no value is left.
    [[nodiscard]] bool AtEnd();

    /// Line on which the next value begins, from 1.
    [[nodiscard]] std::int64_t Line();

    /// The last value that could not be read.
    [[nodiscard]] const UnreadValue& LastUnread() const noexcept { return m_unread; }

  private:
    enum class Length { Whole, Bounded };

    /// Text of the next value; nothing at the end of the file.
    [[nodiscard]] std::optional<std::string> TakeValue(Length length);
    void Collect(std::string& value, std::size_t most);
    void ReadQuoted(std::string& value, std::size_t most);
    void ReadUnquoted(std::string& value, std::size_t most);
    void SkipDelimiter();
    void SkipBlanks();
    [[nodiscard]] std::optional<std::string> TakeBounded(std::string_view expected);
    void Refuse(std::string_view expected, const std::optional<std::string>& found);

    [[nodiscard]] int Peek();
    void Advance();

    ByteSource* m_source;
    std::vector<char> m_buffer;
    std::size_t m_next = 0;
    std::size_t m_filled = 0;
    std::int64_t m_line = 1;
    std::int64_t m_valueLine = 1;
    bool m_ended = false;
    bool m_passOverLong = false;
    UnreadValue m_unread;
};

}  // namespace genvara
