#include <fmt/format.h>

#include <array>
#include <utility>

#include "AtomicFile.h"
#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "CodePage.h"
#include "NumberText.h"
#include "ProjectFile.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::int32_t kFormatVersion = 1;

/// Text of a project file in the making.
class RecordWriter {
  public:
    /// Writes one record.
    template <typename... Values>
    void Record(const Values&... values) {
        std::string record;
        ((record += Field(values), record += ','), ...);
        record.pop_back();
        m_text.bytes += record;
        m_text.bytes += kLineEnd;
    }

    [[nodiscard]] ProjectText Release() { return std::move(m_text); }

  private:
    [[nodiscard]] static std::string Field(std::int32_t value) { return fmt::format("{}", value); }
    [[nodiscard]] static std::string Field(double value) { return RenderPlain(value); }
    [[nodiscard]] static std::string Field(bool value) { return value ? "#TRUE#" : "#FALSE#"; }
    [[nodiscard]] static std::string Field(const DateTime& value) {
        return "#" + RenderFileDate(value) + "#";
    }
    [[nodiscard]] std::string Field(const std::string& value) {
        EncodedText encoded = EncodeText(value);
        m_text.lostCharacters += encoded.lostCharacters;
        return "\"" + encoded.bytes + "\"";
    }

    ProjectText m_text;
};

void WriteAirCond(RecordWriter& file, const CAirCondLoad& load) {
    switch (load.DataEntryMethod()) {
        case aircond_entry::kBTU:
            file.Record(load.DataEntryMethod(), load.BTU());
            break;
        case aircond_entry::kTonnage:
            file.Record(load.DataEntryMethod(), load.Tonnage());
            break;
        case aircond_entry::kHorsepower:
            file.Record(load.DataEntryMethod(), load.HP());
            break;
        default:
            break;
    }
}

void WriteCharger(RecordWriter& file, const CBatChrgLoad& load) {
    file.Record(load.BatteryVoltage(), load.ChargeCurrent(), load.ChargerInput(), load.ChargerType());
}

void WriteLight(RecordWriter& file, const CLightLoad& load) {
    file.Record(load.LightType(), load.Ballast(), load.RunningRealPower(), load.RunningPowerFactor(),
                load.StartingRealPower(), load.StartingPowerFactor());
}

void WriteMedical(RecordWriter& file, const CMedEquipLoad& load) {
    file.Record(load.ContVA(), load.PeakVA(), load.ContPowerFactor(), load.PeakPowerFactor());
    file.Record(load.MaxPeakDemandVoltDip(), load.InputType());
}

void WriteMisc(RecordWriter& file, const CMiscLoad& load) {
    file.Record(load.RunningRealPower(), load.RunningPowerFactor());
}

void WriteMotor(RecordWriter& file, const CMtrLoad& load) {
    file.Record(load.DataEntryMethod(), load.CodeLetter(), load.StartingMethod(), load.StartsLoaded(),
                load.FirePump());
    switch (load.DataEntryMethod()) {
        case motor_entry::kHorsepower:
            file.Record(load.HP());
            break;
        case motor_entry::kRunningKW:
            file.Record(load.RunningRealPower());
            break;
        case motor_entry::kAmps:
            file.Record(load.RunningAmps(), load.StartingAmps());
            break;
        default:
            break;
    }
    file.Record(load.StartingAppPower(), load.StartingPF(), load.SolidStateCurrentLimit());
}

void WriteOffice(RecordWriter& file, const COfficeLoad& load) {
    file.Record(load.NumPCs(), load.NumPrinters(), load.NumFaxes(), load.NumCopiers());
}

void WriteUPS(RecordWriter& file, const CUPSLoad& load) {
    file.Record(load.InputType(), load.Family(), load.OutputRating(), load.Loading(), load.Charging(),
                load.InputFilterInstalled());
}

void WriteVFD(RecordWriter& file, const CVFDLoad& load) {
    file.Record(load.InputType(), load.MtrRating(), load.Efficiency(), load.KVALimit(),
                load.InputFilterInstalled());
}

/// The writer of a kind, for a load that says to be of it.
template <typename Kind, void (*Write)(RecordWriter&, const Kind&)>
void WriteKind(RecordWriter& file, const Load& load) {
    if (const auto* kind = dynamic_cast<const Kind*>(&load)) {
        Write(file, *kind);
    }
}

/// By load type.
constexpr std::array<void (*)(RecordWriter&, const Load&), 9> kKindWriters{
    WriteKind<CAirCondLoad, WriteAirCond>, WriteKind<CBatChrgLoad, WriteCharger>,
    WriteKind<CLightLoad, WriteLight>,     WriteKind<CMedEquipLoad, WriteMedical>,
    WriteKind<CMiscLoad, WriteMisc>,       WriteKind<CMtrLoad, WriteMotor>,
    WriteKind<COfficeLoad, WriteOffice>,   WriteKind<CUPSLoad, WriteUPS>,
    WriteKind<CVFDLoad, WriteVFD>};

void WriteLoad(RecordWriter& file, std::int32_t stepNumber, const Load& load) {
    file.Record(stepNumber, load.LoadType(), load.name(), load.Description(), load.Quantity(), load.Phases());
    const auto type = static_cast<std::size_t>(load.LoadType());
    if (load.LoadType() >= 0 && type < kKindWriters.size()) {
        kKindWriters[type](file, load);
    }
}

void WriteHead(RecordWriter& file, const ProjectView& view, const ProgramVersion& version,
               const DateTime& savedAt) {
    const CProject& project = view.project;
    const CPwrSys& site = view.powerSystem;
    file.Record(version[0], version[1], version[2], kFormatVersion);
    file.Record(project.Created(), project.Customer(), project.Description(), savedAt, project.ProjName(),
                project.UserName());
    file.Record(site.Altitude(), site.AmbTemp(), site.ConnectCode(), site.Freq(), site.Fuel(),
                site.GensetsInParallel());
    file.Record(site.MaxFreqDip(), site.MaxFreqDipEnabled(), site.MaxHarmonics(), site.MaxHarmonicsEnabled());
    file.Record(site.MaxVoltageDip(), site.Phases(), site.RiseDutyCode(), site.Voltage());
    file.Record(view.loadProfile.NumLoadSteps());
}

}  // namespace

ProjectText RenderProject(const ProjectView& project, const ProgramVersion& version,
                          const DateTime& savedAt) {
    RecordWriter file;
    WriteHead(file, project, version, savedAt);
    for (const CLoadStep& step : project.loadProfile) {
        file.Record(step.Description(), step.MaxVoltageDipOverride());
    }
    std::int32_t stepNumber = 1;
    for (const CLoadStep& step : project.loadProfile) {
        file.Record(step.NumLoads());
        for (const Load& load : step) {
            WriteLoad(file, stepNumber, load);
        }
        ++stepNumber;
    }
    return file.Release();
}

std::size_t WriteProjectFile(const std::filesystem::path& file, const ProjectView& project,
                             const ProgramVersion& version, const Clock& clock,
                             const std::function<void()>& opened) {
    const char* doing = "opening";
    try {
        AtomicFile target(file);
        doing = "writing";
        if (opened) {
            opened();
        }
        const ProjectText text = RenderProject(project, version, clock());
        target.Write(text.bytes);
        target.Commit();
        return text.lostCharacters;
    } catch (const RaisedError& failure) {
        throw RaisedError(failure.Number(), "frmMain::WriteProjectFile",
                          fmt::format("Error {} {}\r\n{}", doing, file.string(), failure.Description()));
    }
}

}  // namespace genvara
