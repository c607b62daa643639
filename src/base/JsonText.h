#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// JSON, written as it comes: on one line, or a line for each member and element. Doubles stand in the
/// shortest text that reads back to the same value, and null where they are not finite.
class JsonText {
  public:
    /// @param indent blanks for each level on lines of their own; 0 for one line.
    explicit JsonText(std::size_t indent = 0) : m_indent(indent) {}

    JsonText& BeginObject();
    JsonText& EndObject();
    JsonText& BeginArray();
    JsonText& EndArray();
    /// A name of our own, which has nothing to escape.
    JsonText& Key(std::string_view name);

    JsonText& Value(double number);
    JsonText& Value(std::int32_t number);
    JsonText& Value(std::int64_t number);
    JsonText& Value(bool truth);
    /// UTF-8; a byte that is no part of a character becomes U+FFFD.
    JsonText& Value(std::string_view text);
    JsonText& Value(const std::string& text) { return Value(std::string_view(text)); }
    JsonText& Value(const char* text) { return Value(std::string_view(text)); }

    JsonText& Null();
    /// A value that is JSON already.
    JsonText& Raw(std::string_view json);

    /// Null for a value that is not there.
    template <typename Type>
    JsonText& Value(const std::optional<Type>& value) {
        return value ? Value(*value) : Null();
    }

    template <typename Element>
    JsonText& Value(const std::vector<Element>& elements) {
        BeginArray();
        for (const Element& element : elements) {
            Value(element);
        }
        return EndArray();
    }

    /// A member of the object at hand.
    template <typename Type>
    JsonText& Member(std::string_view name, const Type& value) {
        return Key(name).Value(value);
    }

    [[nodiscard]] const std::string& Text() const noexcept { return m_text; }

  private:
    JsonText& Begin(char bracket);
    JsonText& End(char bracket);
    void Separate();
    void BreakLine();

    std::string m_text;
    std::size_t m_indent;
    std::size_t m_depth = 0;
    bool m_needsComma = false;
    bool m_afterKey = false;
};

}  // namespace genvara
