#include <fmt/format.h>

#include <memory>
#include <optional>
#include <utility>

#include "FailureRegion.h"
#include "JsonProject.h"
#include "LoadFactory.h"
#include "LoadReader.h"
#include "ProjectFile.h"
#include "ReadStatement.h"
#include "ValueReader.h"

namespace genvara {
namespace {

/// Reads one project. Every step goes on whatever became of the one before; what was passed over is told.
class ProjectReader {
  public:
    ProjectReader(ByteSource& source, const ProjectModel& model, ProjectReadObserver& observer)
        : m_reader(source), m_model(&model), m_observer(&observer) {}

    ReadResult Read() {
        if (!IsCompatible()) {
            return ReadResult::Incompatible;
        }
        ReadProjectRecord();
        ReadPowerSystem();
        const std::int32_t steps = ReadStepTable();
        for (std::int32_t number = 1; number <= steps && !m_reader.AtEnd(); ++number) {
            ReadLoadsOf(number);
        }
        TellOfMissingLoads(steps);
        return ReadResult::Done;
    }

  private:
    bool IsCompatible() {
        std::int32_t major = 0;
        std::int32_t minor = 0;
        std::int32_t revision = 0;
        std::int32_t format = 0;
        // The version of the writing program plays no part.
        (void)ReadStatement(m_reader, major, minor, revision, format);
        m_reader.PassOverLongValues();
        return format == kProjectFormat;
    }

    void ReadProjectRecord() {
        DateTime created;
        DateTime saved;
        std::string customer;
        std::string description;
        std::string name;
        std::string user;
        Read("project", created, customer, description, saved, name, user);
        CProject& project = m_model->project;
        project.Created(created);
        project.LastModified(saved);
        project.Customer(std::move(customer));
        project.Description(std::move(description));
        project.ProjName(std::move(name));
        project.UserName(std::move(user));
        m_hooks.Run([this] { m_observer->ProjectRead(); });
    }

    void ReadPowerSystem() {
        double altitude = 0.0;
        double ambTemp = 0.0;
        std::int32_t connectCode = 0;
        std::int32_t freq = 0;
        std::int32_t fuelCode = 0;
        std::int32_t gensets = 0;
        std::int64_t lineA = m_reader.Line();
        Read("power system A", altitude, ambTemp, connectCode, freq, fuelCode, gensets);
        std::int32_t maxFreqDip = 0;
        bool maxFreqDipEnabled = false;
        std::int32_t maxHarmonics = 0;
        bool maxHarmonicsEnabled = false;
        std::int64_t lineB = m_reader.Line();
        Read("power system B", maxFreqDip, maxFreqDipEnabled, maxHarmonics, maxHarmonicsEnabled);
        std::int32_t maxVoltageDip = 0;
        std::int32_t phases = 0;  // follows the connection, never the file
        std::int32_t riseDuty = 0;
        std::int32_t voltage = 0;
        std::int64_t lineC = m_reader.Line();
        Read("power system C", maxVoltageDip, phases, riseDuty, voltage);

        CPwrSys& site = m_model->powerSystem;
        Set(lineA, "power system A", [&] { site.Altitude(altitude); });
        Set(lineA, "power system A", [&] { site.AmbTemp(ambTemp); });
        site.ConnectCode(connectCode);
        Set(lineA, "power system A", [&] { site.Freq(freq); });
        site.Fuel(fuelCode);
        Set(lineA, "power system A", [&] { site.GensetsInParallel(gensets); });
        Set(lineB, "power system B", [&] { site.MaxFreqDip(maxFreqDip); });
        site.MaxFreqDipEnabled(maxFreqDipEnabled);
        Set(lineB, "power system B", [&] { site.MaxHarmonics(maxHarmonics); });
        site.MaxHarmonicsEnabled(maxHarmonicsEnabled);
        Set(lineC, "power system C", [&] { site.MaxVoltageDip(maxVoltageDip); });
        site.RiseDutyCode(riseDuty);
        site.Voltage(voltage);
        m_hooks.Run([this, phases] { m_observer->PhasesPassedOver(phases); });
        m_hooks.Run([this] { m_observer->PowerSystemRead(); });
    }

    /// The number of steps that the file states, whatever became of them.
    std::int32_t ReadStepTable() {
        std::int32_t count = 0;
        Read("step count", count);
        m_model->loadProfile.DeleteAllLoadSteps();
        m_hooks.Run([this] { m_observer->StepsCleared(); });
        std::int32_t number = 1;
        // Behind the end of the file every step would be refused for its dip of 0, however many there are.
        for (; number <= count && !m_reader.AtEnd(); ++number) {
            ReadStep(number);
        }
        if (number <= count) {
            Tell(m_reader.Line(), fmt::format("step {}", number), "a step record", "the end of the file");
        }
        return count;
    }

    void ReadStep(std::int32_t number) {
        const std::string record = fmt::format("step {}", number);
        const std::int64_t line = m_reader.Line();
        std::string description;
        std::int32_t dip = 0;
        Read(record, description, dip);
        Set(line, record, [&] {
            const std::int32_t id = m_model->loadProfile.AddLoadStep(std::move(description), dip, 0);
            m_hooks.Run([&] { m_observer->StepAdded(id); });
        });
    }

    void ReadLoadsOf(std::int32_t stepNumber) {
        m_lastStep = stepNumber;
        std::int32_t count = 0;
        Read(fmt::format("load count of step {}", stepNumber), count);
        std::int32_t number = 1;
        for (; number <= count && !m_reader.AtEnd(); ++number) {
            ReadOneLoad(stepNumber, number);
        }
        if (number <= count) {
            Tell(m_reader.Line(), LoadRecord(stepNumber, number), "a load record", "the end of the file");
        }
    }

    void ReadOneLoad(std::int32_t stepNumber, std::int32_t number) {
        std::string record = LoadRecord(stepNumber, number);
        const std::int64_t line = m_reader.Line();
        std::int32_t position = 0;  // the load belongs to the step whose loads are read
        std::int32_t loadType = 0;
        Read(record, position, loadType);
        if (const LoadKindRow* kind = FindLoadKindRow(loadType); kind != nullptr) {
            record += fmt::format(" ({})", kind->className);
        }
        try {
            const LoadContext context{.motors = m_model->motors, .voltage = m_model->powerSystem.Voltage()};
            std::optional<std::unique_ptr<Load>> load = ReadLoad(loadType, m_reader, context);
            if (!load) {
                TellUnread(record);
            } else if (*load == nullptr) {
                Tell(line, record, fmt::format("a load type from 0 to {}", load_type::kCount - 1),
                     fmt::format("{}", loadType));
            } else {
                const std::int32_t id = m_model->loadProfile.LoadStep(stepNumber).AddLoad(std::move(*load));
                m_hooks.Run([&] { m_observer->LoadAdded(stepNumber, id); });
            }
        } catch (const RaisedError& refusal) {
            TellRefusal(line, record, refusal);
        }
    }

    void TellOfMissingLoads(std::int32_t steps) {
        if (m_lastStep < steps && m_lastStep < m_model->loadProfile.NumLoadSteps()) {
            Tell(m_reader.Line(), fmt::format("load count of step {}", m_lastStep + 1), "a whole number",
                 "the end of the file");
        }
    }

    [[nodiscard]] static std::string LoadRecord(std::int32_t stepNumber, std::int32_t number) {
        return fmt::format("load {} of step {}", number, stepNumber);
    }

    template <typename... Targets>
    void Read(const std::string& record, Targets&... targets) {
        if (!ReadStatement(m_reader, targets...)) {
            TellUnread(record);
        }
    }

    template <typename Setter>
    void Set(std::int64_t line, const std::string& record, Setter&& setter) {
        FailureRegion region;
        if (!region.Run(std::forward<Setter>(setter))) {
            TellRefusal(line, record, *region.Pending());
        }
    }

    void TellUnread(const std::string& record) {
        const UnreadValue& value = m_reader.LastUnread();
        Tell(value.line, record, std::string(value.expected), value.found);
    }

    void TellRefusal(std::int64_t line, const std::string& record, const RaisedError& refusal) {
        Tell(line, record, "a value that is accepted",
             fmt::format("{} ({})", refusal.Description(), refusal.Source()));
    }

    void Tell(std::int64_t line, std::string record, std::string expected, std::string found) {
        const SkippedItem item{.line = line,
                               .record = std::move(record),
                               .expected = std::move(expected),
                               .found = std::move(found)};
        m_hooks.Run([&] { m_observer->Skipped(item); });
    }

    ValueReader m_reader;
    const ProjectModel* m_model;
    ProjectReadObserver* m_observer;
    FailureRegion m_hooks;  ///< what an observer raises stops nothing
    std::int32_t m_lastStep = 0;
};

}  // namespace

std::string WhyIncompatible(const std::filesystem::path& file) {
    return fmt::format("{} is no project file of a compatible version.", file.string());
}

ReadResult ReadProject(ByteSource& source, const ProjectModel& model, ProjectReadObserver& observer) {
    return ProjectReader(source, model, observer).Read();
}

ReadResult ReadProjectFile(const std::filesystem::path& file, const ProjectModel& model,
                           ProjectReadObserver& observer) {
    FileSource source(file, "frmMain::ReadProjectFile");
    PeekedSource peeked(source);
    const ProjectFormat format = FormatOf(peeked, file);
    FailureRegion().Run([&] { observer.FormatFound(format); });
    if (format == ProjectFormat::Json) {
        ReadJsonProject(peeked, file.string(), model, observer);
        return ReadResult::Done;
    }
    return ReadProject(peeked, model, observer);
}

}  // namespace genvara
