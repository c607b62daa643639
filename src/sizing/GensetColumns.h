#pragma once

#include <array>
#include <cstddef>

#include "GensetRecords.h"
#include "SqlRows.h"

/// Where the fields of the tables stand in the rows of a query, looked up once a query, and the reading of a
/// row.
namespace genvara {

class GensetColumns {
  public:
    explicit GensetColumns(const SqlRows& rows);

    /// Fills a row, whose texts keep their room from one to the next.
    void Read(const SqlRows& rows, GensetRow& row) const;

  private:
    static constexpr std::size_t kNumbers = 8;
    static constexpr std::size_t kRatings = 5;

    std::array<int, kNumbers> m_numbers{};
    std::array<int, kRatings> m_ratings{};
    int m_gensetModel;
    int m_engineModel;
};

class DerateColumns {
  public:
    explicit DerateColumns(const SqlRows& rows);
    [[nodiscard]] DerateRow Read(const SqlRows& rows) const;

  private:
    int m_altDerateBase;
    int m_altDerateSlope;
    int m_tempDerateBase;
    int m_tempDerateSlope;
};

class AlternatorColumns {
  public:
    explicit AlternatorColumns(const SqlRows& rows);
    [[nodiscard]] AlternatorRow Read(const SqlRows& rows) const;

  private:
    int m_id;
    int m_modelNum;
    int m_basekW;
    int m_baseVolts;
    int m_subtransReact;
};

}  // namespace genvara
