#include "JsonSource.h"

namespace genvara {
namespace {

constexpr std::size_t kBufferSize = 65536;

bool IsBlank(char byte) noexcept {
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

}  // namespace

JsonSource::JsonSource(ByteSource& source) : m_source(&source), m_buffer(kBufferSize) {
    Advance();
}

void JsonSource::Advance() {
    m_passed = m_place;
    if (!m_inText && IsBlank(m_current)) {
        SkipBlanks();
    }
    if (!Fill() || ++m_passedOn > kMostBytes) {
        m_ended = true;
        return;
    }
    m_current = m_buffer[m_next++];
    CountPlace(m_current);
    FollowText();
}

/// Makes sure that a byte is at hand; false at the end.
bool JsonSource::Fill() {
    if (m_next == m_filled) {
        m_filled = m_source->Read(m_buffer);
        m_next = 0;
    }
    return m_filled > 0;
}

void JsonSource::SkipBlanks() {
    while (Fill()) {
        while (m_next < m_filled && IsBlank(m_buffer[m_next])) {
            CountPlace(m_buffer[m_next++]);
        }
        if (m_next < m_filled) {
            return;
        }
    }
}

void JsonSource::CountPlace(char byte) noexcept {
    if (m_lineEnded) {
        ++m_place.line;
        m_place.column = 0;
    }
    ++m_place.column;
    m_lineEnded = byte == '\n';
}

void JsonSource::FollowText() noexcept {
    if (m_inText && m_escaped) {
        m_escaped = false;
    } else if (m_inText && m_current == '\\') {
        m_escaped = true;
    } else if (m_current == '"') {
        m_inText = !m_inText;
    }
}

}  // namespace genvara
