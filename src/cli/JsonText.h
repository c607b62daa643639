#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace genvara {

/// JSON on one line, written as it comes. Doubles stand in the shortest text that reads back to the same
/// value, and null where they are not finite.
class JsonText {
  public:
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
    void Separate();

    std::string m_text;
    bool m_needsComma = false;
};

}  // namespace genvara
