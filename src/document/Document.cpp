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

constexpr std::int32_t kCountRiseDuties = 5;  // codes from 0

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
      m_designer(gensets, m_powerSystem, m_loadProfile) {}

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
    m_changed = false;
}

ReadResult Document::Read(const std::filesystem::path& file, ProjectReadObserver& observer) {
    m_unread.push_back(file);  // until it has been read
    const ReadResult result = ReadProjectFile(file, Model(), observer);
    if (result == ReadResult::Done) {
        ForgetUnread(file);
        m_designer.ForgetRun();
        m_changed = false;
        FailureRegion region;  // without a list of connections the site keeps its phases
        region.Run([this] { FollowConnection(); });
    }
    return result;
}

std::size_t Document::Write(const std::function<void()>& opened) {
    const std::size_t lost = WriteProjectFile(m_file, Model(), kProgramVersion, m_clock, opened);
    ForgetUnread(m_file);
    m_changed = false;
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

void Document::ForgetUnread(const std::filesystem::path& file) {
    std::erase_if(m_unread, [&](const auto& unread) { return IsSameFile(unread, file); });
}

std::filesystem::path Document::Rescue(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::string moment = RenderIso(m_clock());
    std::erase(moment, ':');
    std::filesystem::path file;
    for (int number = 1; file.empty() || std::filesystem::exists(file); ++number) {
        file = folder / ("rescued-" + moment + (number == 1 ? "" : "-" + std::to_string(number)) + ".prj");
    }
    WriteProjectFile(file, Model(), kProgramVersion, m_clock);
    return file;
}

void Document::Change(std::string /*name*/, const std::function<void()>& change) {
    change();
    Touch();
}

void Document::FollowConnection() {
    m_catalogue->FollowConnection(m_powerSystem);
}

bool Document::KnowsConnection() const {
    return m_catalogue->PhasesOf(m_powerSystem.ConnectCode()).has_value();
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
    look(SiteChoice::Frequency, site.Freq(), [](std::int32_t hertz) { return hertz == 50 || hertz == 60; });
    look(SiteChoice::Fuel, site.Fuel(),
         [](std::int32_t code) { return code >= fuel::kAny && code <= fuel::kGasoline; });
    look(SiteChoice::RiseDuty, site.RiseDutyCode(),
         [](std::int32_t code) { return code >= 0 && code < kCountRiseDuties; });
    return unoffered;
}

bool Document::HasLoads() const {
    return m_loadProfile.NumLoadSteps() > 0 && m_loadProfile.LoadStep(1).NumLoads() > 0;
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
