#pragma once

#include <filesystem>
#include <vector>

#include "GensetDatabase.h"
#include "MotorConversions.h"
#include "SizedProject.h"

namespace genvara {

/// A database that is fit to size with, and what of it is read once.
class OpenCatalogue {
  public:
    /// @throws RaisedError if the database is missing or unfit.
    explicit OpenCatalogue(const std::filesystem::path& file)
        : m_database(file),
          m_motors((m_database.RequireSchema(), m_database.ReadMotorConversions())),
          m_connections(m_database.Connections()) {
        (void)m_database.Properties();
    }

    [[nodiscard]] GensetDatabase& Database() noexcept { return m_database; }
    /// What projects share, with the candidates from `gensets`.
    [[nodiscard]] SharedCatalogue Shared(GensetSource& gensets) const noexcept {
        return {.gensets = gensets, .motors = m_motors, .connections = m_connections};
    }

  private:
    GensetDatabase m_database;
    MotorConversions m_motors;
    std::vector<ConnectionRecord> m_connections;
};

}  // namespace genvara
