#include "PythonProject.h"

#include <fmt/format.h>

#include <optional>
#include <utility>

#include "CAirCondLoad.h"
#include "CMtrLoad.h"
#include "JsonProject.h"
#include "LoadFactory.h"
#include "MotorPower.h"
#include "ProgramVersion.h"
#include "ProjectFormat.h"

namespace genvara::python {
namespace {

/// Keeps the format that a reader found, and what it passed over.
class ReadNotes final : public ProjectReadObserver {
  public:
    ReadNotes(ProjectFormat& format, std::vector<SkippedItem>& items) : m_format(&format), m_items(&items) {}

    void FormatFound(ProjectFormat format) override { *m_format = format; }
    void Skipped(const SkippedItem& item) override { m_items->push_back(item); }

  private:
    ProjectFormat* m_format;
    std::vector<SkippedItem>* m_items;
};

std::unique_ptr<Load> LoadWith(const MotorConversions& motors, const Load& load, double volts) {
    std::unique_ptr<Load> made = MakeLoad(load.LoadType(), motors);
    for (const Property<Load>& property : LoadProperties(load.LoadType())) {
        const PropertyValue value = property.get(load);
        if (Exists(property, load) && IsGiven(property.facts, value)) {
            property.set(*made, value);
        }
    }
    RebuildPowers(*made, volts, motors);
    return made;
}

/// Calls `motor` or `compressor` with what keeps powers of its own.
template <typename Motor, typename Compressor>
void AskKeeper(Load& load, Motor motor, Compressor compressor) {
    if (auto* asMotor = dynamic_cast<CMtrLoad*>(&load)) {
        motor(*asMotor);
    } else if (auto* asCompressor = dynamic_cast<CAirCondLoad*>(&load)) {
        compressor(*asCompressor);
    }
}

}  // namespace

const CDefaults& FactoryDefaults() {
    static const CDefaults defaults;
    return defaults;
}

PythonProject::PythonProject(std::shared_ptr<PythonCatalogue> catalogue)
    : m_catalogue(std::move(catalogue)),
      m_project(FactoryDefaults(), LocalTime),
      m_powerSystem(FactoryDefaults()) {}

void PythonProject::Read(const std::filesystem::path& file) {
    ReadNotes observer(m_format, m_skipped);
    if (ReadProjectFile(file, Model(), observer) == ReadResult::Incompatible) {
        throw RaisedError(0, "frmMain::ReadProjectFile", WhyIncompatible(file));
    }
    m_catalogue->Data().FollowConnection(m_powerSystem);
}

void PythonProject::ReadJson(std::string_view text, std::string_view name) {
    ReadNotes observer(m_format, m_skipped);
    MemorySource source(text);
    ReadJsonProject(source, name, Model(), observer);
    m_catalogue->Data().FollowConnection(m_powerSystem);
}

std::size_t PythonProject::Save(const std::filesystem::path& file) const {
    if (!FormatOfName(file)) {
        throw RaisedError(0, "",
                          fmt::format("{} names no format: a project is a .prj or a .json.", file.string()));
    }
    return WriteProjectFile(file, {m_project, m_powerSystem, m_loadProfile}, kProgramVersion, LocalTime);
}

std::string PythonProject::Json() const {
    return RenderJsonProject({m_project, m_powerSystem, m_loadProfile}, m_project.LastModified());
}

void PythonProject::Change(const PathTarget& target, const PropertyValue& value) {
    ChangeMember(target, value, m_powerSystem, m_catalogue->Rules());
}

ProjectModel PythonProject::Model() noexcept {
    return {.project = m_project,
            .powerSystem = m_powerSystem,
            .loadProfile = m_loadProfile,
            .motors = m_catalogue->Data().Motors()};
}

CLoadProfile ProfileWith(const MotorConversions& motors, const CLoadProfile& profile, double volts) {
    CLoadProfile made;
    for (const CLoadStep& step : profile) {
        made.AddLoadStep(step.Description(), step.MaxVoltageDipOverride(), 0);
        CLoadStep& last = made.LoadStep(made.NumLoadSteps());
        for (const Load& load : step) {
            last.AddLoad(LoadWith(motors, load, volts));
        }
    }
    return made;
}

std::vector<double> KeptPowers(const CLoadProfile& profile) {
    CLoadProfile copy = profile;
    std::vector<double> powers;
    for (CLoadStep& step : copy) {
        for (Load& load : step) {
            AskKeeper(
                load,
                [&powers](const CMtrLoad& motor) {
                    powers.insert(powers.end(), {motor.RunningRealPower(), motor.RunningAppPower()});
                },
                [&powers](const CAirCondLoad& compressor) {
                    powers.insert(powers.end(), {compressor.RunningRealPower(), compressor.RunningAppPower(),
                                                 compressor.StartingAppPower(), compressor.StartingPF()});
                });
        }
    }
    return powers;
}

void RestorePowers(CLoadProfile& profile, const std::vector<double>& powers) {
    auto next = powers.begin();
    const auto restore = [&](auto setter) {
        if (next == powers.end()) {
            throw RaisedError(0, "", "The copy of a project is damaged.");
        }
        // What was never given, no setter takes: a new load holds it already.
        if (const double power = *next++; power > 0.0) {
            setter(power);
        }
    };
    for (CLoadStep& step : profile) {
        for (Load& load : step) {
            AskKeeper(
                load,
                [&](CMtrLoad& motor) {
                    restore([&](double watts) { motor.RunningRealPower(watts); });
                    restore([&](double va) { motor.RunningAppPower(va); });
                },
                [&](CAirCondLoad& compressor) {
                    restore([&](double watts) { compressor.RunningRealPower(watts); });
                    restore([&](double va) { compressor.RunningAppPower(va); });
                    restore([&](double va) { compressor.StartingAppPower(va); });
                    restore([&](double perUnit) { compressor.StartingPF(perUnit); });
                });
        }
    }
}

}  // namespace genvara::python
