#include "GensetColumns.h"

namespace genvara {
namespace {

/// A numeric field of [Gensets] with the member that takes it.
struct NumberField {
    const char* name;
    DbNumber GensetNumbers::*target;
};

constexpr std::array<NumberField, 8> kNumberFields{{{"Fuel", &GensetNumbers::Fuel},
                                                    {"DerateCode", &GensetNumbers::DerateCode},
                                                    {"AltModel", &GensetNumbers::AltModel},
                                                    {"LRkVA", &GensetNumbers::LRkVA},
                                                    {"StartingPower", &GensetNumbers::StartingPower},
                                                    {"BaseFreqDipKW", &GensetNumbers::BaseFreqDipKW},
                                                    {"BaseFreqDip", &GensetNumbers::BaseFreqDip},
                                                    {"ExpC", &GensetNumbers::ExpC}}};
/// By temperature rise and duty code.
constexpr std::array<const char*, 5> kRatingFields{"Rating80C", "Rating105C", "Rating125C", "Rating130C",
                                                   "Rating150C"};

}  // namespace

GensetColumns::GensetColumns(const SqlRows& rows)
    : m_gensetModel(rows.Column("GensetModel")), m_engineModel(rows.Column("EngineModel")) {
    for (std::size_t i = 0; i < kNumberFields.size(); ++i) {
        m_numbers.at(i) = rows.Column(kNumberFields.at(i).name);
    }
    for (std::size_t i = 0; i < kRatingFields.size(); ++i) {
        m_ratings.at(i) = rows.Column(kRatingFields.at(i));
    }
}

void GensetColumns::Read(const SqlRows& rows, GensetRow& row) const {
    for (std::size_t i = 0; i < m_numbers.size(); ++i) {
        row.*kNumberFields[i].target = rows.Number(m_numbers[i]);
    }
    for (std::size_t i = 0; i < m_ratings.size(); ++i) {
        row.Ratings[i] = rows.Number(m_ratings[i]);
    }
    rows.ReadText(m_gensetModel, row.GensetModel);
    rows.ReadText(m_engineModel, row.EngineModel);
}

DerateColumns::DerateColumns(const SqlRows& rows)
    : m_altDerateBase(rows.Column("AltDerateBase")),
      m_altDerateSlope(rows.Column("AltDerateSlope")),
      m_tempDerateBase(rows.Column("TempDerateBase")),
      m_tempDerateSlope(rows.Column("TempDerateSlope")) {}

DerateRow DerateColumns::Read(const SqlRows& rows) const {
    return {.AltDerateBase = rows.Number(m_altDerateBase),
            .AltDerateSlope = rows.Number(m_altDerateSlope),
            .TempDerateBase = rows.Number(m_tempDerateBase),
            .TempDerateSlope = rows.Number(m_tempDerateSlope)};
}

AlternatorColumns::AlternatorColumns(const SqlRows& rows)
    : m_id(rows.Column("ID")),
      m_modelNum(rows.Column("ModelNum")),
      m_basekW(rows.Column("BasekW")),
      m_baseVolts(rows.Column("BaseVolts")),
      m_subtransReact(rows.Column("SubtransReact")) {}

AlternatorRow AlternatorColumns::Read(const SqlRows& rows) const {
    AlternatorRow row{.ID = rows.Number(m_id),
                      .ModelNum = {},
                      .BasekW = rows.Number(m_basekW),
                      .BaseVolts = rows.Number(m_baseVolts),
                      .SubtransReact = rows.Number(m_subtransReact)};
    rows.ReadText(m_modelNum, row.ModelNum);
    return row;
}

}  // namespace genvara
