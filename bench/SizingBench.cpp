// How long a run takes against what it takes to read its candidates, and how the engine alone grows.
// `bench/report.py` turns the figures into the ratios of docs/performance.md.

#include <SQLiteCpp/SQLiteCpp.h>
#include <benchmark/benchmark.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "CDesigner.h"
#include "CLightLoad.h"
#include "CMiscLoad.h"
#include "CUPSLoad.h"
#include "GensetDatabase.h"
#include "GensetSchema.h"

namespace genvara {
namespace {

constexpr int kAlternators = 60;
constexpr int kDerateCodes = 12;

/// A database of the given number of candidates for one site, deleted with the object.
class BenchDatabase {
  public:
    explicit BenchDatabase(std::int64_t candidates)
        : m_file(std::filesystem::temp_directory_path() /
                 fmt::format("genvara-bench-{}-{}.db", getpid(), candidates)) {
        SQLite::Database database(m_file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        SQLite::Transaction transaction(database);
        for (const TableSchema& table : kGensetSchema) {
            std::string columns;
            for (const ColumnSchema& column : table.columns) {
                columns +=
                    fmt::format("{}\"{}\" {}", columns.empty() ? "" : ", ", column.name, TypeOf(column.kind));
            }
            database.exec(fmt::format("Create table [{}] ({})", table.name, columns));
        }
        database.exec("Insert into [Properties] values (1, '1.00', 'today', 'AB')");
        for (int i = 0; i < kDerateCodes; ++i) {
            database.exec(
                fmt::format("Insert into [Derate Codes] values ({}, {}, 1, 40, 2)", i, 500 + 10 * i));
        }
        for (int i = 0; i < kAlternators; ++i) {
            database.exec(
                fmt::format("Insert into [Alternators] values ({}, 'TN{}-A', {}, 480, 0.12)", i, i, 100 + i));
        }
        SQLite::Statement insert(
            database,
            "Insert into [Gensets] values (60, 1, 480, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 12.5, 1.1)");
        for (std::int64_t i = 0; i < candidates; ++i) {
            const double rating = 300.0 + static_cast<double>(i * 7919 % 2400);
            insert.bind(1, static_cast<int>(i % kDerateCodes));
            insert.bind(2, static_cast<int>(i % kAlternators));
            insert.bind(3, fmt::format("MV{}D", i));
            insert.bind(4, fmt::format("KD{}-9.0T", i % 40));
            for (int rise = 0; rise < 5; ++rise) {
                insert.bind(5 + rise, rating * (0.8 + 0.05 * rise));
            }
            insert.bind(10, rating * 2.6);
            insert.bind(11, rating * 1.1);
            insert.bind(12, rating * 0.7);
            insert.exec();
            insert.reset();
        }
        transaction.commit();
    }
    ~BenchDatabase() {
        std::error_code ignored;
        std::filesystem::remove(m_file, ignored);
    }
    BenchDatabase(const BenchDatabase&) = delete;
    BenchDatabase& operator=(const BenchDatabase&) = delete;
    BenchDatabase(BenchDatabase&&) = delete;
    BenchDatabase& operator=(BenchDatabase&&) = delete;

    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }

  private:
    static const char* TypeOf(ColumnKind kind) {
        return kind == ColumnKind::Integer ? "INTEGER" : kind == ColumnKind::Text ? "TEXT" : "REAL";
    }

    std::filesystem::path m_file;
};

/// A site and a profile whose every step has linear, rectifier and ballast load.
class BenchProject {
  public:
    explicit BenchProject(std::int64_t steps) {
        m_site.MaxHarmonicsEnabled(true);
        m_site.MaxFreqDipEnabled(true);
        const double share = 1000.0 / static_cast<double>(steps);
        for (std::int64_t s = 0; s < steps; ++s) {
            m_profile.AddLoadStep("step", 35, 0);
            CLoadStep& step = m_profile.LoadStep(m_profile.NumLoadSteps());
            auto linear = std::make_unique<CMiscLoad>();
            linear->RunningRealPower(400.0 * share);
            linear->RunningPowerFactor(0.85);
            step.AddLoad(std::move(linear));
            auto ups = std::make_unique<CUPSLoad>();
            ups->OutputRating(150.0 * share);
            ups->Family(ups_family::kOnLine);
            ups->InputType(input_type::kSixPulse);
            ups->InputFilterInstalled(true);
            step.AddLoad(std::move(ups));
            auto light = std::make_unique<CLightLoad>();
            light->LightType(light_type::kFluorescent);
            light->Ballast(ballast::kElectronic);
            light->RunningRealPower(60.0 * share);
            step.AddLoad(std::move(light));
        }
    }

    [[nodiscard]] const CPwrSys& Site() const { return m_site; }
    [[nodiscard]] const CLoadProfile& Profile() const { return m_profile; }

  private:
    CDefaults m_defaults;
    CPwrSys m_site{m_defaults};
    CLoadProfile m_profile;
};

constexpr SiteFilter kSite{.frequency = 60, .connectCode = 1, .voltage = 480, .fuel = 1};

/// Candidates that lie in memory as a database gave them.
class MemoryGensets final : public GensetSource {
  public:
    explicit MemoryGensets(const BenchDatabase& file) : m_database(file.File()) {
        const auto cursor = m_database.SelectGensets(kSite);
        while (const GensetRow* row = cursor->Next()) {
            m_rows.push_back(*row);
        }
    }
    [[nodiscard]] PropertiesRecord Properties() override { return m_database.Properties(); }
    [[nodiscard]] std::unique_ptr<GensetCursor> SelectGensets(const SiteFilter& /*filter*/) override {
        return std::make_unique<Cursor>(m_rows);
    }
    [[nodiscard]] DerateRow DerateCode(std::int32_t id) override { return m_database.DerateCode(id); }
    [[nodiscard]] AlternatorRow Alternator(std::int32_t id) override { return m_database.Alternator(id); }

  private:
    class Cursor final : public GensetCursor {
      public:
        explicit Cursor(const std::vector<GensetRow>& rows) : m_rows(&rows) {}
        [[nodiscard]] const GensetRow* Next() override {
            return m_next < m_rows->size() ? &(*m_rows)[m_next++] : nullptr;
        }

      private:
        const std::vector<GensetRow>* m_rows;
        std::size_t m_next = 0;
    };

    GensetDatabase m_database;
    std::vector<GensetRow> m_rows;
};

/// A connection and a query of the bare C interface.
class BareQuery {
  public:
    explicit BareQuery(const std::filesystem::path& file) {
        sqlite3_open_v2(file.c_str(), &m_connection, SQLITE_OPEN_READONLY, nullptr);
    }
    ~BareQuery() { sqlite3_close(m_connection); }
    BareQuery(const BareQuery&) = delete;
    BareQuery& operator=(const BareQuery&) = delete;
    BareQuery(BareQuery&&) = delete;
    BareQuery& operator=(BareQuery&&) = delete;

    /// Takes every row of a query by a function of its statement.
    template <typename Take>
    void Rows(const std::string& query, Take take) {
        sqlite3_stmt* rows = nullptr;
        sqlite3_prepare_v2(m_connection, query.c_str(), -1, &rows, nullptr);
        while (sqlite3_step(rows) == SQLITE_ROW) {
            take(rows);
        }
        sqlite3_finalize(rows);
    }

  private:
    sqlite3* m_connection = nullptr;
};

constexpr const char* kSiteQuery =
    "Select * from [Gensets] where Frequency = 60 AND WindingConnection = 1 AND VoltageLL = 480 AND Fuel = 1";
constexpr int kFuelColumn = 3;
constexpr int kModelColumn = 6;
constexpr int kEngineColumn = 7;

/// The same fields as a designer's, with nothing around the database's own calls.
void ReadBare(benchmark::State& state) {
    const BenchDatabase file(state.range(0));
    BareQuery database(file.File());
    for (auto _ : state) {
        double sum = 0.0;
        database.Rows(kSiteQuery, [&sum](sqlite3_stmt* row) {
            for (int column = kFuelColumn; column < sqlite3_column_count(row); ++column) {
                if (column == kModelColumn || column == kEngineColumn) {
                    benchmark::DoNotOptimize(sqlite3_column_text(row, column));
                    sum += sqlite3_column_bytes(row, column);
                } else {
                    sum += sqlite3_column_double(row, column);
                }
            }
        });
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(ReadBare)->Arg(10000)->Unit(benchmark::kMillisecond);

void ReadCandidates(benchmark::State& state) {
    const BenchDatabase file(state.range(0));
    GensetDatabase database(file.File());
    for (auto _ : state) {
        const auto cursor = database.SelectGensets(kSite);
        while (const GensetRow* row = cursor->Next()) {
            benchmark::DoNotOptimize(row);
        }
    }
}
BENCHMARK(ReadCandidates)->Arg(10000)->Unit(benchmark::kMillisecond);

void WholeRun(benchmark::State& state) {
    const BenchDatabase file(state.range(0));
    const BenchProject project(state.range(1));
    GensetDatabase database(file.File());
    CDesigner designer(database, project.Site(), project.Profile());
    for (auto _ : state) {
        designer.SelectGensets();
        benchmark::DoNotOptimize(designer.ChooseSets());
    }
}
BENCHMARK(WholeRun)->Args({10000, 16})->Unit(benchmark::kMillisecond);

void EngineAlone(benchmark::State& state) {
    const BenchDatabase file(state.range(0));
    const BenchProject project(state.range(1));
    MemoryGensets gensets(file);
    CDesigner designer(gensets, project.Site(), project.Profile());
    for (auto _ : state) {
        designer.SelectGensets();
        benchmark::DoNotOptimize(designer.ChooseSets());
    }
}
BENCHMARK(EngineAlone)
    ->ArgsProduct({{100, 1000, 10000, 100000}, {16}})
    ->ArgsProduct({{10000}, {1, 4, 64, 256}})
    ->Unit(benchmark::kMillisecond);

/// Keys of derate codes and alternators that a small site's candidates have in the program's own catalogue.
struct SmallSite {
    explicit SmallSite(GensetDatabase& database) {
        const auto cursor = database.SelectGensets(kSite);
        while (const GensetRow* row = cursor->Next()) {
            derateCodes.insert(row->DerateCode.Integer("SmallSite"));
            alternators.insert(row->AltModel.Integer("SmallSite"));
        }
    }

    std::set<std::int32_t> derateCodes;
    std::set<std::int32_t> alternators;
};

/// What a run reads beside its candidates.
void ReadKeysOfSmallSite(benchmark::State& state) {
    GensetDatabase database(CATALOGUE_DATABASE);
    const SmallSite site(database);
    for (auto _ : state) {
        const auto begun = database.SelectGensets(kSite);
        for (const std::int32_t id : site.derateCodes) {
            benchmark::DoNotOptimize(database.DerateCode(id));
        }
        for (const std::int32_t id : site.alternators) {
            benchmark::DoNotOptimize(database.Alternator(id));
        }
    }
}
BENCHMARK(ReadKeysOfSmallSite)->Unit(benchmark::kMillisecond);

/// The same through the bare C interface, a query a key.
void ReadKeysOfSmallSiteBare(benchmark::State& state) {
    GensetDatabase database(CATALOGUE_DATABASE);
    const SmallSite site(database);
    BareQuery bare(CATALOGUE_DATABASE);
    const auto read = [](sqlite3_stmt* row) { benchmark::DoNotOptimize(sqlite3_column_double(row, 2)); };
    for (auto _ : state) {
        for (const std::int32_t id : site.derateCodes) {
            bare.Rows(fmt::format("Select * from [Derate Codes] where ID = {}", id), read);
        }
        for (const std::int32_t id : site.alternators) {
            bare.Rows(fmt::format("Select * from [Alternators] where ID = {}", id), read);
        }
    }
}
BENCHMARK(ReadKeysOfSmallSiteBare)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace genvara
