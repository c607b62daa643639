#include "CsvTable.h"

#include <csv.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <exception>

namespace genvara {
namespace {

constexpr std::size_t kBufferSize = 65536;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// What the parser's callbacks fill. They are called from C, which no exception may cross.
struct CsvState {
    const CsvRowHandler* handler;
    std::vector<std::string> fields;
    std::int64_t line = 1;     ///< line at which the parser stands
    std::int64_t rowLine = 1;  ///< line on which the present row began
    bool inRow = false;        ///< whether one has begun and not ended
    std::exception_ptr failure;
};

void OnField(void* text, std::size_t length, void* data) {
    auto* state = static_cast<CsvState*>(data);
    state->fields.emplace_back(static_cast<const char*>(text), text == nullptr ? 0 : length);
}

void OnRow(int /*terminator*/, void* data) {
    auto* state = static_cast<CsvState*>(data);
    try {
        if (!state->failure) {
            (*state->handler)(state->rowLine, state->fields);
        }
    } catch (...) {
        state->failure = std::current_exception();
    }
    state->fields.clear();
    state->inRow = false;
}

/// libcsv's parser with its buffers.
class CsvParser {
  public:
    explicit CsvParser(const CsvRules& rules) {
        csv_init(&m_parser, rules.strict ? CSV_STRICT | CSV_STRICT_FINI : CSV_STRICT_FINI);
        csv_set_delim(&m_parser, static_cast<unsigned char>(rules.delimiter));
    }
    ~CsvParser() { csv_free(&m_parser); }
    CsvParser(const CsvParser&) = delete;
    CsvParser& operator=(const CsvParser&) = delete;
    CsvParser(CsvParser&&) = delete;
    CsvParser& operator=(CsvParser&&) = delete;

    /// False at the first breach of the rules.
    bool Parse(std::string_view bytes, CsvState& state) {
        return csv_parse(&m_parser, bytes.data(), bytes.size(), OnField, OnRow, &state) == bytes.size();
    }
    bool Finish(CsvState& state) { return csv_fini(&m_parser, OnField, OnRow, &state) == 0; }
    [[nodiscard]] std::string Fault() { return csv_strerror(csv_error(&m_parser)); }

  private:
    csv_parser m_parser{};
};

/// Feeds a piece line by line, so that every row knows the line it began on.
bool ParseLines(CsvParser& parser, std::string_view bytes, CsvState& state) {
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        const std::string_view line = bytes.substr(0, end == std::string_view::npos ? end : end + 1);
        if (!state.inRow && line.find_first_not_of(" \t\r\n") != std::string_view::npos) {
            state.inRow = true;
            state.rowLine = state.line;
        }
        if (!parser.Parse(line, state)) {
            return false;
        }
        state.line += end == std::string_view::npos ? 0 : 1;
        bytes.remove_prefix(line.size());
    }
    return true;
}

}  // namespace

std::string ReadCsv(ByteSource& source, const CsvRowHandler& handler, const CsvRules& rules) {
    CsvParser parser(rules);
    CsvState state{.handler = &handler, .fields = {}, .failure = nullptr};
    std::vector<char> buffer(kBufferSize);
    bool valid = true;
    bool atStart = true;
    for (std::size_t count = source.Read(buffer); count > 0 && valid; count = source.Read(buffer)) {
        std::string_view bytes(buffer.data(), count);
        if (atStart && bytes.starts_with(kByteOrderMark)) {
            bytes.remove_prefix(kByteOrderMark.size());
        }
        atStart = false;
        valid = ParseLines(parser, bytes, state);
        if (state.failure) {
            std::rethrow_exception(state.failure);
        }
    }
    valid = valid && parser.Finish(state);
    if (state.failure) {
        std::rethrow_exception(state.failure);
    }
    return valid ? std::string() : fmt::format("line {}: {}", state.line, parser.Fault());
}

}  // namespace genvara
