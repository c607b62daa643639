#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Brand.h"
#include "CDefaults.h"
#include "Catalogue.h"
#include "DateTime.h"
#include "Document.h"
#include "SettingsFile.h"
#include "StateFolder.h"
#include "clsTRX_HelpFile.h"
#include "clsTRX_Registry.h"

namespace genvara {

/// Folder from which the program was started.
[[nodiscard]] std::filesystem::path ProgramFolder();

/// What an application is started with; the defaults are those of the real program.
struct StartConditions {
    std::filesystem::path programFolder = ProgramFolder();
    std::filesystem::path settingsFile = SettingsFile::DefaultPath();
    std::filesystem::path stateFolder = genvara::StateFolder();
    std::int32_t brandLabel = BuiltBrand();
    Clock clock = LocalTime;
};

/// Root of the object graph: owns the catalogue, the project at hand with its designer, the user's defaults
/// and the settings store, and wires them.
class CApplication {
  public:
    explicit CApplication(StartConditions conditions = {});
    /// Writes the options and releases what the application owns.
    ~CApplication();
    CApplication(const CApplication&) = delete;
    CApplication& operator=(const CApplication&) = delete;
    CApplication(CApplication&&) = delete;
    CApplication& operator=(CApplication&&) = delete;

    /// Folder that the project file dialogs offer first; empty at construction.
    void ProjectPath(std::string folder);
    [[nodiscard]] const std::string& ProjectPath() const noexcept { return m_projectPath; }

    /// Whether panels and reports show SI units; false at construction. The model always stores them.
    void IsMetric(bool metric) noexcept { m_isMetric = metric; }
    [[nodiscard]] bool IsMetric() const noexcept { return m_isMetric; }

    /// Brand of this build.
    [[nodiscard]] std::int32_t BrandLabel() const noexcept { return m_conditions.brandLabel; }

    /// Key below which this version keeps its settings: each version has its own.
    [[nodiscard]] static std::string BaseRegistrySubkey();

    /// The genset database beside the program, as a connection string. The program opens the file itself and
    /// does not call it.
    [[nodiscard]] std::string DBConnectStr() const;
    /// File of that database.
    [[nodiscard]] std::filesystem::path DatabaseFile() const;

    /// A file that the program brings along, by its path below the program folder in the spelling of the
    /// string table ("\\GVHelp\\Helpfile.hlp").
    [[nodiscard]] std::filesystem::path ProgramFile(std::string_view relative) const;

    /// Picture of the program, for its windows; the file may be missing.
    [[nodiscard]] std::filesystem::path AppIcon() const { return ProgramFile("\\Resources\\FERN.ico"); }

    /// Tells the present time.
    [[nodiscard]] const Clock& Now() const noexcept { return m_conditions.clock; }
    /// Folder for what has to outlive a failed run.
    [[nodiscard]] const std::filesystem::path& StateFolder() const noexcept {
        return m_conditions.stateFolder;
    }
    /// Folder of the program and what it brings along.
    [[nodiscard]] const std::filesystem::path& Folder() const noexcept { return m_conditions.programFolder; }

    [[nodiscard]] clsTRX_HelpFile& HelpFile() noexcept { return m_helpFile; }

    // The objects of the graph; there from the end of `Run`'s initialisation on.
    [[nodiscard]] clsTRX_Registry& Registry() noexcept { return *m_registry; }
    [[nodiscard]] CDefaults& Defaults() noexcept { return *m_defaults; }
    [[nodiscard]] genvara::Document& Document() noexcept { return *m_document; }
    [[nodiscard]] CProject& Project() noexcept { return m_document->Project(); }
    [[nodiscard]] CPwrSys& PowerSystem() noexcept { return m_document->PowerSystem(); }
    [[nodiscard]] CDesigner& Designer() noexcept { return m_document->Designer(); }
    [[nodiscard]] CLoadProfile& LoadProfile() noexcept { return m_document->LoadProfile(); }
    [[nodiscard]] genvara::Catalogue& Catalogue() noexcept { return *m_catalogue; }
    [[nodiscard]] const MotorConversions& Motors() const noexcept { return m_catalogue->Motors(); }

    /// Reads the motor tables into the object that loads and reader share; what cannot be read is left out
    /// without a word.
    void LoadMotorConversions() noexcept;

    /// Creates the objects, reads the options and shows the main window.
    /// @param showMainWindow loads and shows the window; called at most once.
    /// @return false if anything failed on the way: the program then ends without a word.
    bool Run(const std::function<void(CApplication&)>& showMainWindow);

  private:
    void Initialize();
    void RestoreOptions();
    void StoreOptions();

    StartConditions m_conditions;
    std::string m_projectPath;
    bool m_isMetric = false;
    clsTRX_HelpFile m_helpFile;
    SettingsFile m_settings;
    std::unique_ptr<clsTRX_Registry> m_registry;
    std::unique_ptr<CDefaults> m_defaults;
    std::unique_ptr<genvara::Catalogue> m_catalogue;
    std::unique_ptr<genvara::Document> m_document;
};

}  // namespace genvara
