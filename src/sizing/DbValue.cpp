#include "DbValue.h"

#include "LanguageErrors.h"
#include "NumberText.h"

namespace genvara {

DbNumber DbNumber::Unreadable() noexcept {
    DbNumber field;
    field.m_state = State::Unreadable;
    return field;
}

std::int32_t DbNumber::Integer(std::string_view member) const {
    const auto integer = RoundToInteger(Real(member));
    if (!integer) {
        RaiseOverflow(member);
    }
    return *integer;
}

bool DbNumber::IsInteger() const noexcept {
    return m_state == State::Number && RoundToInteger(m_value).has_value();
}

void DbNumber::RaiseUnreadable(std::string_view member) {
    RaiseTypeMismatch(member);
}

const std::string& DbText::Text(std::string_view member) const {
    if (m_null) {
        RaiseTypeMismatch(member);
    }
    return m_text;
}

}  // namespace genvara
