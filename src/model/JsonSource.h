#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <vector>

#include "ProjectSource.h"

namespace genvara {

/// Bytes of a JSON text, one by one, with the line on which each stands. Of a run of blanks outside texts one
/// is passed on: a parser that keeps what it reads would keep a file of blanks.
class JsonSource {
  public:
    explicit JsonSource(ByteSource& source);

    [[nodiscard]] bool AtEnd() const noexcept { return m_ended; }
    /// Whether the end is that of our patience: 64 MiB, blanks aside, are longer than any project.
    [[nodiscard]] bool IsCutOff() const noexcept { return m_passedOn > kMostBytes; }
    /// The byte at hand.
    [[nodiscard]] char Current() const noexcept { return m_current; }
    /// Goes on to the next byte.
    void Advance();

    /// Line of the last byte that was gone by, from 1, and its place in the line in bytes: a parser goes on
    /// before it looks at what it took.
    [[nodiscard]] std::int64_t Line() const noexcept { return m_passed.line; }
    [[nodiscard]] std::int64_t Column() const noexcept { return m_passed.column; }

  private:
    static constexpr std::size_t kMostBytes = std::size_t{64} * 1024 * 1024;

    struct Place {
        std::int64_t line = 1;
        std::int64_t column = 0;
    };

    [[nodiscard]] bool Fill();
    void SkipBlanks();
    void CountPlace(char byte) noexcept;
    void FollowText() noexcept;

    ByteSource* m_source;
    std::vector<char> m_buffer;
    std::size_t m_next = 0;
    std::size_t m_filled = 0;
    std::size_t m_passedOn = 0;
    Place m_place;
    Place m_passed;
    char m_current = ' ';
    bool m_ended = false;
    bool m_lineEnded = false;
    bool m_inText = false;
    bool m_escaped = false;
};

/// Walks a source; two of them are equal at its end.
class JsonIterator {
  public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = char;

    /// The end of any source.
    JsonIterator() = default;
    explicit JsonIterator(JsonSource& source) : m_source(&source) {}

    char operator*() const noexcept { return m_source->Current(); }
    JsonIterator& operator++() {
        m_source->Advance();
        return *this;
    }
    JsonIterator operator++(int) {
        const JsonIterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const JsonIterator& left, const JsonIterator& right) noexcept {
        return left.AtEnd() == right.AtEnd();
    }

  private:
    [[nodiscard]] bool AtEnd() const noexcept { return m_source == nullptr || m_source->AtEnd(); }

    JsonSource* m_source = nullptr;
};

}  // namespace genvara
