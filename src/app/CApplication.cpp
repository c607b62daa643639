#include "CApplication.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "FailureRegion.h"
#include "ProgramOptions.h"
#include "ProgramVersion.h"

namespace genvara {
namespace {

constexpr std::string_view kDatabaseName = "Genvara.db";
constexpr std::string_view kCompanyKey = "Software\\Morvane\\";

}  // namespace

std::filesystem::path ProgramFolder() {
    std::error_code failure;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failure);
    return failure ? std::filesystem::path(".") : program.parent_path();
}

CApplication::CApplication(StartConditions conditions)
    : m_conditions(std::move(conditions)), m_settings(m_conditions.settingsFile) {}

CApplication::~CApplication() {
    // An application that never came to its designer has no options of its own to keep.
    if (m_registry && m_document) {
        StoreOptions();
    }
}

void CApplication::ProjectPath(std::string folder) {
    m_projectPath = std::move(folder);
}

std::string CApplication::BaseRegistrySubkey() {
    // The version record names the product, whatever brand is shown.
    return fmt::format("{}{}\\{}\\", kCompanyKey, WordsOf(brand::kMorvane).productName, kProgramVersionText);
}

std::string CApplication::DBConnectStr() const {
    return fmt::format("Provider=SQLite.3;Data Source={};Mode=Read", DatabaseFile().string());
}

std::filesystem::path CApplication::DatabaseFile() const {
    return m_conditions.programFolder / kDatabaseName;
}

std::filesystem::path CApplication::ProgramFile(std::string_view relative) const {
    std::string path = m_conditions.programFolder.string() + std::string(relative);
    std::ranges::replace(path, '\\', '/');
    return path;
}

void CApplication::LoadMotorConversions() noexcept {
    FailureRegion region;
    region.Run([this] { m_catalogue->ReadMotorConversions(); });
}

bool CApplication::Run(const std::function<void(CApplication&)>& showMainWindow) {
    FailureRegion region;
    return region.Run([&] {
        Initialize();
        showMainWindow(*this);
    });
}

void CApplication::Initialize() {
    FailureRegion region;
    // A missing help file is told when somebody asks for help.
    region.Run([this] { m_helpFile.Filename(ProgramFile(HelpFileName()).string()); });
    m_registry = std::make_unique<clsTRX_Registry>(m_settings);
    m_defaults = std::make_unique<CDefaults>();
    // A first run has no defaults to read; the factory's stand.
    region.Run([this] { m_defaults->ReadDefaults(*m_registry, BaseRegistrySubkey() + "Defaults"); });

    // A failure of any of these ends the start.
    m_catalogue = std::make_unique<genvara::Catalogue>(DatabaseFile());
    m_document = std::make_unique<genvara::Document>(*m_defaults, *m_catalogue, m_conditions.clock);

    RestoreOptions();
}

void CApplication::RestoreOptions() {
    ReadOptions(*m_registry, BaseRegistrySubkey(),
                {.setProjectPath = [this](const std::string& folder) { ProjectPath(folder); },
                 .setIsMetric = [this](bool metric) { IsMetric(metric); },
                 .setMaxSetsRecommended = [this](std::int32_t n) { Designer().MaxSetsRecommended(n); },
                 .setMaxSetsUndersized = [this](std::int32_t n) { Designer().MaxSetsUndersized(n); },
                 .setMaxLoading = [this](std::int32_t percent) { Designer().MaxLoading(percent); },
                 .setMinLoading = [this](std::int32_t percent) { Designer().MinLoading(percent); }});
}

void CApplication::StoreOptions() {
    WriteOptions(*m_registry, BaseRegistrySubkey(),
                 {.projectPath = m_projectPath,
                  .isMetric = m_isMetric,
                  .maxSetsRecommended = Designer().MaxSetsRecommended(),
                  .maxSetsUndersized = Designer().MaxSetsUndersized(),
                  .maxLoading = Designer().MaxLoading(),
                  .minLoading = Designer().MinLoading()});
}

}  // namespace genvara
