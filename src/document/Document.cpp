#include "Document.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "FailureRegion.h"
#include "FileIdentity.h"
#include "ProgramVersion.h"
#include "WriteObstacle.h"

namespace genvara {
namespace {

std::string_view RemedyFor(const RunCulprit& culprit) {
    if (culprit.set) {
        return "Such a set can only be corrected in the catalogue.";
    }
    return culprit.load == 0 ? "Edit or delete one of them." : "Edit it, or delete it and add it anew.";
}

std::string Explain(std::string_view failed, const RaisedError& error,
                    const std::optional<RunCulprit>& culprit) {
    return culprit ? fmt::format("{} because of {}: {}\r\n{}", failed, CulpritText(*culprit),
                                 error.Description(), RemedyFor(*culprit))
                   : fmt::format("{}: {}", failed, error.Description());
}

}  // namespace

Document::Document(const CDefaults& defaults, Catalogue& catalogue, GensetSource& gensets, Clock clock)
    : m_catalogue(&catalogue),
      m_clock(std::move(clock)),
      m_project(defaults, m_clock),
      m_powerSystem(defaults),
      m_designer(gensets, m_powerSystem, m_loadProfile) {
    BeginHistory();
}

void Document::New(ProjectReadObserver& observer) {
    m_file.clear();
    m_powerSystem.ResetDefaults();
    observer.PowerSystemRead();
    m_project.SetCreationTime();
    m_project.ResetDefaults();
    observer.ProjectRead();
    m_loadProfile.DeleteAllLoadSteps();
    observer.StepsCleared();
    m_designer.ForgetRun();
    StampFile({}, std::nullopt);
    BeginHistory();
    TellMoment();
}

ReadResult Document::Read(const std::filesystem::path& file, ProjectReadObserver& observer) {
    m_unread.push_back(file);  // until it has been read
    // Before it is read: what another program writes meanwhile is then found at the next save.
    const std::optional<FileStamp> stamp = StampOf(file);
    const ReadResult result = ReadProjectFile(file, Model(), observer);
    if (result == ReadResult::Done) {
        ForgetUnread(file);
        m_designer.ForgetRun();
        FailureRegion region;  // without a list of connections the site keeps its phases
        region.Run([this] { FollowConnection(); });
        StampFile(file.string(), stamp);
        BeginHistory();
        TellMoment();
    }
    return result;
}

std::size_t Document::Write(const std::function<void()>& opened) {
    const std::size_t lost = WriteProjectFile(m_file, Model(), kProgramVersion, m_clock, opened);
    ForgetUnread(m_file);
    Settle();
    m_saved = m_history.Now();
    m_touched = false;
    StampFile(m_file, StampOf(m_file));
    TellMoment();
    return lost;
}

std::optional<std::string> Document::SaveObstacle(const std::filesystem::path& file) const {
    return IsSameFile(file, m_catalogue->File()) ? "this is the genset catalogue" : WriteObstacle(file);
}

std::optional<std::string> Document::OutputObstacle(const std::filesystem::path& file) const {
    if (IsSameFile(file, m_file)) {
        return "this is the file of the project";
    }
    return IsSameFile(file, m_catalogue->File()) ? std::optional("this is the genset catalogue")
                                                 : std::nullopt;
}

bool Document::ReplacesUnread(const std::filesystem::path& file) const {
    return std::ranges::any_of(m_unread, [&](const auto& unread) { return IsSameFile(unread, file); });
}

void Document::Recover(const std::filesystem::path& kept, const std::string& file,
                       const std::optional<FileStamp>& stamp, ProjectReadObserver& observer) {
    ReadProjectFile(kept, Model(), observer);
    m_designer.ForgetRun();
    FailureRegion region;  // without a list of connections the site keeps its phases
    region.Run([this] { FollowConnection(); });
    m_file = file;
    StampFile(file, stamp);
    BeginHistory();
    m_saved.reset();
    TellMoment();
}

bool Document::ReplacesAnothers(const std::filesystem::path& file) const {
    return m_stamp && IsSameFile(file, m_stampedFile) && HoldsOtherBytes(file, *m_stamp);
}

void Document::StampFile(const std::string& file, const std::optional<FileStamp>& stamp) {
    m_stampedFile = file;
    m_stamp = stamp;
}

void Document::ForgetUnread(const std::filesystem::path& file) {
    std::erase_if(m_unread, [&](const auto& unread) { return IsSameFile(unread, file); });
}

void Document::FollowConnection() {
    m_catalogue->FollowConnection(m_powerSystem);
}

void Document::RequireConnection(std::string_view whose) const {
    genvara::RequireConnection(
        m_powerSystem, [this](std::int32_t code) { return m_catalogue->PhasesOf(code); }, whose);
}

std::vector<UnofferedChoice> Document::UnofferedChoices() const {
    const CPwrSys& site = m_powerSystem;
    std::vector<UnofferedChoice> unoffered;
    FailureRegion region;
    const auto look = [&](SiteChoice choice, std::int32_t value, const auto& isOffered) {
        region.Run([&] {
            if (!isOffered(value)) {
                unoffered.push_back({choice, value});
            }
        });
    };
    look(SiteChoice::Voltage, site.Voltage(),
         [this](std::int32_t volts) { return std::ranges::count(m_catalogue->VoltagesLL(), volts) > 0; });
    look(SiteChoice::Connection, site.ConnectCode(),
         [this](std::int32_t code) { return m_catalogue->PhasesOf(code).has_value(); });
    const auto hasRow = [](const auto& table) {
        return [&table](std::int32_t code) { return FindRow(table, code) != nullptr; };
    };
    look(SiteChoice::Frequency, site.Freq(), hasRow(kFrequencies));
    look(SiteChoice::Fuel, site.Fuel(), hasRow(kFuels));
    look(SiteChoice::RiseDuty, site.RiseDutyCode(), hasRow(kRiseDuties));
    return unoffered;
}

void Document::Size() {
    CDesigner::Results before = m_designer.LastRun();
    try {
        m_designer.SelectGensets();
        m_designer.ChooseSets();
    } catch (const RaisedError&) {
        m_designer.LastRun(std::move(before));
        throw;
    }
}

std::optional<RunCulprit> Document::Culprit(const RaisedError& error) const {
    return FindCulprit(error, m_loadProfile, m_powerSystem, m_designer.StoppedAt());
}

std::string Document::WhyNotSized(const RaisedError& error) const {
    return Explain("The gensets cannot be worked out", error, Culprit(error));
}

std::string Document::WhyNotReported(const RaisedError& error) const {
    return Explain("The report cannot be worked out", error, Culprit(error));
}

ReportSources Document::Sources(bool metricUnits) const noexcept {
    return {.project = m_project, .site = m_powerSystem, .designer = m_designer, .metricUnits = metricUnits};
}

ProjectModel Document::Model() noexcept {
    return {.project = m_project,
            .powerSystem = m_powerSystem,
            .loadProfile = m_loadProfile,
            .motors = m_catalogue->Motors()};
}

}  // namespace genvara
