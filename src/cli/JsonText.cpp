#include "JsonText.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>

#include "NumberText.h"

namespace genvara {

JsonText& JsonText::BeginObject() {
    Separate();
    m_text += '{';
    m_needsComma = false;
    return *this;
}

JsonText& JsonText::EndObject() {
    m_text += '}';
    m_needsComma = true;
    return *this;
}

JsonText& JsonText::BeginArray() {
    Separate();
    m_text += '[';
    m_needsComma = false;
    return *this;
}

JsonText& JsonText::EndArray() {
    m_text += ']';
    m_needsComma = true;
    return *this;
}

JsonText& JsonText::Key(std::string_view name) {
    Separate();
    m_text.append(1, '"').append(name).append("\":");
    m_needsComma = false;
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

void JsonText::Separate() {
    if (m_needsComma) {
        m_text += ',';
    }
    m_needsComma = true;
}

}  // namespace genvara
