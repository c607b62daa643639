#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace genvara {

/// A field of a database row that a reader takes as a number.
///
/// It is converted when it is asked for and not when the row is read: a Null or a text in a field that
/// nobody needs does no harm.
class DbNumber {
  public:
    DbNumber() noexcept = default;
    explicit DbNumber(double value) noexcept : m_value(value), m_state(State::Number) {}
    /// A field that holds something other than a number or Null.
    [[nodiscard]] static DbNumber Unreadable() noexcept;

    [[nodiscard]] bool IsNull() const noexcept { return m_state == State::Null; }

    /// @throws RaisedError 13 "Type mismatch" from `member` for a Null or a text that is no number.
    [[nodiscard]] double Real(std::string_view member) const {
        if (m_state != State::Number) {
            RaiseUnreadable(member);
        }
        return m_value;
    }

    /// The 32-bit integer nearest to the number.
    /// @throws RaisedError 13 as `Real`; 6 "Overflow" from `member` beyond 32 bits.
    [[nodiscard]] std::int32_t Integer(std::string_view member) const;
    /// Whether `Integer` succeeds.
    [[nodiscard]] bool IsInteger() const noexcept;

  private:
    enum class State : std::uint8_t { Null, Number, Unreadable };

    [[noreturn]] static void RaiseUnreadable(std::string_view member);

    double m_value = 0.0;
    State m_state = State::Null;
};

/// A field of a database row that a reader takes as text. A number reads as its plain text.
class DbText {
  public:
    void Assign(std::string_view text) {
        m_text.assign(text);
        m_null = false;
    }
    void AssignNull() noexcept { m_null = true; }
    [[nodiscard]] bool IsNull() const noexcept { return m_null; }

    /// @throws RaisedError 13 "Type mismatch" from `member` for a Null.
    [[nodiscard]] const std::string& Text(std::string_view member) const;

  private:
    std::string m_text;
    bool m_null = true;
};

}  // namespace genvara
