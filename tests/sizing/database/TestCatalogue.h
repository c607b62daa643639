#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <string>

#include "CatalogueBuilder.h"
#include "TemporaryFolder.h"

namespace genvara {

/// The program's own catalogue, as tables to damage and as a database to damage.
class TestCatalogue {
  public:
    TestCatalogue() {
        std::filesystem::copy(CATALOGUE_FOLDER, Tables());
        m_built = Build();
    }

    [[nodiscard]] std::filesystem::path Tables() const { return m_folder / "tables"; }
    [[nodiscard]] std::filesystem::path Database() const { return m_folder / "Genvara.db"; }
    [[nodiscard]] const CatalogueBuild& Built() const { return m_built; }

    CatalogueBuild Build() const {
        return BuildCatalogue(Tables(), Database(), [](std::string_view, std::int64_t) {});
    }
    void Execute(const std::string& statement) const {
        SQLite::Database(Database().string(), SQLite::OPEN_READWRITE).exec(statement);
    }

  private:
    TemporaryFolder m_folder;
    CatalogueBuild m_built;
};

}  // namespace genvara
