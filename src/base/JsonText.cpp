#include "JsonText.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>

#include "NumberText.h"

namespace genvara {

JsonText& JsonText::BeginObject() {
    return Begin('{');
}

JsonText& JsonText::EndObject() {
    return End('}');
}

JsonText& JsonText::BeginArray() {
    return Begin('[');
}

JsonText& JsonText::EndArray() {
    return End(']');
}

JsonText& JsonText::Key(std::string_view name) {
    Separate();
    m_text.append(1, '"').append(name).append(m_indent > 0 ? "\": " : "\":");
    m_afterKey = true;
    return *this;
}

JsonText& JsonText::Value(double number) {
    Separate();
    m_text += std::isfinite(number) ? RenderShortest(number) : "null";
    return *this;
}

JsonText& JsonText::Value(std::int32_t number) {
    Separate();
    fmt::format_to(std::back_inserter(m_text), "{}", number);
    return *this;
}

JsonText& JsonText::Value(std::int64_t number) {
    Separate();
    fmt::format_to(std::back_inserter(m_text), "{}", number);
    return *this;
}

JsonText& JsonText::Null() {
    Separate();
    m_text += "null";
    return *this;
}

JsonText& JsonText::Value(bool truth) {
    Separate();
    m_text += truth ? "true" : "false";
    return *this;
}

JsonText& JsonText::Value(std::string_view text) {
    Separate();
    m_text += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    return *this;
}

JsonText& JsonText::Raw(std::string_view json) {
    Separate();
    m_text += json;
    return *this;
}

JsonText& JsonText::Begin(char bracket) {
    Separate();
    m_text += bracket;
    m_needsComma = false;
    ++m_depth;
    return *this;
}

JsonText& JsonText::End(char bracket) {
    --m_depth;
    if (m_needsComma) {
        BreakLine();
    }
    m_text += bracket;
    m_needsComma = true;
    return *this;
}

/// What comes before a value or a key: nothing between a key and its value.
void JsonText::Separate() {
    if (m_afterKey) {
        m_afterKey = false;
    } else {
        if (m_needsComma) {
            m_text += ',';
        }
        if (m_depth > 0) {
            BreakLine();
        }
    }
    m_needsComma = true;
}

void JsonText::BreakLine() {
    if (m_indent > 0) {
        m_text.append(1, '\n').append(m_depth * m_indent, ' ');
    }
}

}  // namespace genvara
