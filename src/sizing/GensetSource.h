#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "GensetRecords.h"

namespace genvara {

/// Source of the database's own failures.
inline constexpr const char* kDatabaseSource = "GensetDatabase";
/// Number of the failure to read a field where there is no row.
inline constexpr std::int32_t kNoRowError = 3021;

/// Candidates one after the other, in the database's order.
class GensetCursor {
  public:
    GensetCursor() = default;
    virtual ~GensetCursor() = default;
    GensetCursor(const GensetCursor&) = delete;
    GensetCursor& operator=(const GensetCursor&) = delete;
    GensetCursor(GensetCursor&&) = delete;
    GensetCursor& operator=(GensetCursor&&) = delete;

    /// The next candidate, valid until the next call; null behind the last one.
    /// @throws RaisedError with the database's own number if the row cannot be read.
    [[nodiscard]] virtual const GensetRow* Next() = 0;
};

/// What a designer asks of the genset database. Every question may raise the database's own error.
class GensetSource {
  public:
    GensetSource() = default;
    virtual ~GensetSource() = default;
    GensetSource(const GensetSource&) = delete;
    GensetSource& operator=(const GensetSource&) = delete;
    GensetSource(GensetSource&&) = delete;
    GensetSource& operator=(GensetSource&&) = delete;

    [[nodiscard]] virtual PropertiesRecord Properties() = 0;
    [[nodiscard]] virtual std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& filter) = 0;
    /// The number of a candidate's row in [Gensets]; nothing where there is none.
    /// @param position among the candidates of the filter, from 0.
    [[nodiscard]] virtual std::optional<std::int64_t> RowNumber(const SiteFilter& /*filter*/,
                                                                std::int64_t /*position*/) {
        return std::nullopt;
    }
    /// @throws RaisedError 3021 if no row has the key.
    [[nodiscard]] virtual DerateRow DerateCode(std::int32_t id) = 0;
    /// @throws RaisedError 3021 if no row has the key.
    [[nodiscard]] virtual AlternatorRow Alternator(std::int32_t id) = 0;
};

}  // namespace genvara
