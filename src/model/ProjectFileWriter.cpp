#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <variant>

#include "AtomicFile.h"
#include "CodePage.h"
#include "JsonProject.h"
#include "NumberText.h"
#include "ProjectFile.h"
#include "Properties.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// Text of a project file in the making.
class RecordWriter {
  public:
    /// Writes one record.
    template <typename... Values>
    void Record(const Values&... values) {
        (Add(values), ...);
        EndRecord();
    }

    // A record in the making.
    template <typename Value>
    void Add(const Value& value) {
        m_text.bytes += m_separator;
        m_text.bytes += Field(value);
        m_separator = ",";
    }
    void EndRecord() {
        m_text.bytes += kLineEnd;
        m_separator = "";
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
    std::string_view m_separator;
};

/// An air conditioner whose entry method is none of the three has nothing of its kind in the file.
bool IsWritten(const Property<Load>& property, const Load& load) {
    if (load.LoadType() == load_type::kAirConditioning && property.facts.name == kEntryMethodName) {
        const auto code = std::get<std::int32_t>(property.get(load));
        return std::ranges::any_of(property.facts.codes,
                                   [code](const CodeName& name) { return name.Code() == code; });
    }
    return Exists(property, load);
}

/// The records of a load: one for all kinds, then the kind's own. One without a value is left out.
void WriteLoad(RecordWriter& file, std::int32_t stepNumber, const Load& load) {
    file.Add(stepNumber);
    file.Add(load.LoadType());
    std::int32_t record = 0;
    for (const Property<Load>& property : LoadProperties(load.LoadType())) {
        if (!IsWritten(property, load)) {
            continue;
        }
        if (property.facts.record != record) {
            record = property.facts.record;
            file.EndRecord();
        }
        std::visit([&file](const auto& value) { file.Add(value); }, property.get(load));
    }
    file.EndRecord();
}

void WriteHead(RecordWriter& file, const ProjectView& view, const ProgramVersion& version,
               const DateTime& savedAt) {
    const CProject& project = view.project;
    const CPwrSys& site = view.powerSystem;
    file.Record(version[0], version[1], version[2], kProjectFormat);
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
        const ProjectText text = FormatOfName(file) == ProjectFormat::Json
                                     ? ProjectText{.bytes = RenderJsonProject(project, clock())}
                                     : RenderProject(project, version, clock());
        target.Write(text.bytes);
        target.Commit();
        return text.lostCharacters;
    } catch (const RaisedError& failure) {
        throw RaisedError(failure.Number(), "frmMain::WriteProjectFile",
                          fmt::format("Error {} {}\r\n{}", doing, file.string(), failure.Description()));
    }
}

}  // namespace genvara
