#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "Paths.h"
#include "ProjectFile.h"
#include "ProjectModel.h"
#include "PythonCatalogue.h"

namespace genvara::python {

/// A project in the hands of Python, with the catalogue whose motor tables its loads are worked out by.
class PythonProject {
  public:
    explicit PythonProject(std::shared_ptr<PythonCatalogue> catalogue);

    /// Fills the records from a file of either format.
    /// @throws RaisedError as `ReadProjectFile`; 0 for a file that is no project.
    void Read(const std::filesystem::path& file);
    /// Fills the records from a JSON text.
    /// @throws RaisedError as `ReadJsonProject`.
    void ReadJson(std::string_view text, std::string_view name);
    /// @return characters that the file's code page could not hold.
    /// @throws RaisedError as `WriteProjectFile`; 0 for an ending that is neither ".prj" nor ".json".
    std::size_t Save(const std::filesystem::path& file) const;
    [[nodiscard]] std::string Json() const;

    /// Changes a member as its entry form would, with what follows from it.
    /// @throws RaisedError as `ChangeMember`; the record is then as before.
    void Change(const PathTarget& target, const PropertyValue& value);

    [[nodiscard]] CProject& Project() noexcept { return m_project; }
    [[nodiscard]] const CProject& Project() const noexcept { return m_project; }
    [[nodiscard]] CPwrSys& PowerSystem() noexcept { return m_powerSystem; }
    [[nodiscard]] const CPwrSys& PowerSystem() const noexcept { return m_powerSystem; }
    [[nodiscard]] CLoadProfile& LoadProfile() noexcept { return m_loadProfile; }
    [[nodiscard]] const CLoadProfile& LoadProfile() const noexcept { return m_loadProfile; }
    [[nodiscard]] const std::shared_ptr<PythonCatalogue>& Tables() const noexcept { return m_catalogue; }
    /// The format that it was read in.
    [[nodiscard]] ProjectFormat Format() const noexcept { return m_format; }
    void Format(ProjectFormat format) noexcept { m_format = format; }
    /// What of the file could not be used.
    [[nodiscard]] const std::vector<SkippedItem>& Skipped() const noexcept { return m_skipped; }

  private:
    [[nodiscard]] ProjectModel Model() noexcept;

    std::shared_ptr<PythonCatalogue> m_catalogue;
    CProject m_project;
    CPwrSys m_powerSystem;
    CLoadProfile m_loadProfile;
    ProjectFormat m_format = ProjectFormat::Json;
    std::vector<SkippedItem> m_skipped;
};

/// What new records start from: the factory's values, whoever runs the script.
[[nodiscard]] const CDefaults& FactoryDefaults();

/// A profile as it is worked out by the motor tables of another catalogue.
/// @param volts line-to-line voltage of the site.
/// @throws RaisedError as `RebuildPowers`.
[[nodiscard]] CLoadProfile ProfileWith(const MotorConversions& motors, const CLoadProfile& profile,
                                       double volts);

/// The powers that loads keep beside their inputs, in the order of the profile: what a project's text does
/// not tell, and a copy of the project has to.
[[nodiscard]] std::vector<double> KeptPowers(const CLoadProfile& profile);
/// Puts them back.
void RestorePowers(CLoadProfile& profile, const std::vector<double>& powers);

}  // namespace genvara::python
