#include "RecoveryFiles.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <functional>
#include <nlohmann/json.hpp>
#include <system_error>
#include <tuple>
#include <utility>

#include "AtomicFile.h"
#include "JsonProject.h"
#include "JsonText.h"
#include "ProgramVersion.h"
#include "ProjectFile.h"
#include "RaisedError.h"

namespace genvara {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSource = "Recovery";
constexpr std::string_view kRunning = "running-";
constexpr std::string_view kDropped = "dropped-";
constexpr std::string_view kLock = ".lock";
/// Says nothing of the format, which is told from the content.
constexpr std::string_view kProject = ".project";
constexpr std::string_view kOrigin = ".origin";
constexpr mode_t kOwnerOnly = 0600;

fs::path WithEnding(const fs::path& file, std::string_view ending) {
    fs::path other = file;
    return other.replace_extension(ending);
}

void WriteWhole(const fs::path& file, std::string_view bytes) {
    AtomicFile target(file);
    target.Write(bytes);
    target.Commit();
}

std::string OriginText(const KeptOrigin& origin) {
    JsonText json;
    json.BeginObject().Member("File", origin.file);
    if (origin.stamp) {
        // As texts: a number of JSON has no room for 64 bits.
        json.Member("Size", fmt::format("{}", origin.stamp->size))
            .Member("Changed", fmt::format("{}", origin.stamp->changed))
            .Member("Hash", fmt::format("{}", origin.stamp->hash));
    }
    return json.EndObject().Text();
}

std::optional<FileStamp> ReadStamp(const nlohmann::json& json) {
    if (!json.contains("Hash")) {
        return std::nullopt;
    }
    return FileStamp{.size = std::stoull(json.at("Size").get<std::string>()),
                     .changed = std::stoll(json.at("Changed").get<std::string>()),
                     .hash = std::stoull(json.at("Hash").get<std::string>())};
}

/// Where a project came from; nothing where that cannot be told, and the project is then one without a file.
KeptOrigin ReadOrigin(const fs::path& project) {
    try {
        std::ifstream file(WithEnding(project, kOrigin));
        const nlohmann::json json = nlohmann::json::parse(file);
        return {.file = json.at("File").get<std::string>(), .stamp = ReadStamp(json)};
    } catch (const std::exception&) {
        return {};
    }
}

std::chrono::system_clock::time_point ChangeTime(const fs::path& file) {
    std::error_code failure;
    const auto changed = fs::last_write_time(file, failure);
    return failure ? std::chrono::system_clock::time_point{} : std::chrono::file_clock::to_sys(changed);
}

KeptProject Describe(const fs::path& project) {
    return {.project = project, .origin = ReadOrigin(project), .keptAt = ChangeTime(project)};
}

/// The files of a folder whose names begin and end so.
std::vector<fs::path> Files(const fs::path& folder, std::string_view beginning, std::string_view ending) {
    std::vector<fs::path> files;
    std::error_code failure;
    fs::directory_iterator entry(folder, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(beginning) && name.ends_with(ending)) {
            files.push_back(entry->path());
        }
    }
    return files;
}

void Remove(const fs::path& file) noexcept {
    std::error_code failure;
    fs::remove(file, failure);
}

/// Takes a lock; false if somebody holds it, or removed the file before the lock was there.
bool Lock(int descriptor) {
    struct stat status {};
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0 && fstat(descriptor, &status) == 0 &&
           status.st_nlink > 0;
}

bool CanBeRead(const std::string& json, const ProjectMoment& moment, const MotorConversions& motors) {
    CProject project = *moment.project;
    CPwrSys site = *moment.powerSystem;
    CLoadProfile profile;
    ProjectReadObserver nobody;
    MemorySource source(json);
    try {
        ReadJsonProject(source, "",
                        {.project = project, .powerSystem = site, .loadProfile = profile, .motors = motors},
                        nobody);
        return true;
    } catch (const RaisedError&) {
        return false;
    }
}

/// Moves a project to the list of dropped ones.
std::optional<fs::path> MoveToDropped(const fs::path& project) {
    std::error_code failure;
    const fs::path dropped = NameForDropped(project.parent_path());
    fs::rename(WithEnding(project, kOrigin), WithEnding(dropped, kOrigin), failure);
    fs::rename(project, dropped, failure);
    return failure ? std::nullopt : std::optional(dropped);
}

}  // namespace

RunningClaim::RunningClaim(const fs::path& folder) {
    while (true) {
        std::string name = (folder / (std::string(kRunning) + "XXXXXX" + std::string(kLock))).string();
        const int descriptor = mkostemps(name.data(), static_cast<int>(kLock.size()), O_CLOEXEC);
        if (descriptor < 0) {
            RaiseSystemError(errno, kSource);
        }
        if (Lock(descriptor)) {
            m_lock = name;
            m_descriptor = descriptor;
            return;
        }
        close(descriptor);
    }
}

std::optional<RunningClaim> RunningClaim::TakeOver(const fs::path& lock) {
    const int descriptor = open(lock.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    if (!Lock(descriptor)) {
        close(descriptor);
        return std::nullopt;
    }
    return RunningClaim(lock, descriptor);
}

RunningClaim::RunningClaim(RunningClaim&& other) noexcept
    : m_lock(std::move(other.m_lock)), m_descriptor(std::exchange(other.m_descriptor, -1)) {}

RunningClaim::~RunningClaim() {
    if (m_descriptor >= 0) {
        RemoveKept();
        Remove(m_lock);
        close(m_descriptor);
    }
}

fs::path RunningClaim::Project() const {
    return WithEnding(m_lock, kProject);
}

void RunningClaim::RemoveKept() const noexcept {
    genvara::RemoveKept(Project());
}

void RunningClaim::Leave() noexcept {
    close(std::exchange(m_descriptor, -1));
}

void WriteKept(const fs::path& project, const ProjectMoment& moment, const KeptOrigin& origin,
               const MotorConversions& motors) {
    CLoadProfile profile;
    profile.Restore(moment.steps);
    const ProjectView view{*moment.project, *moment.powerSystem, profile};
    // The origin first: a project without one would lose its file's name.
    WriteWhole(WithEnding(project, kOrigin), OriginText(origin));
    const DateTime& saved = moment.project->LastModified();
    const std::string json = RenderJsonProject(view, saved);
    WriteWhole(project,
               CanBeRead(json, moment, motors) ? json : RenderProject(view, kProgramVersion, saved).bytes);
    std::error_code ignored;
    fs::permissions(project, fs::perms(kOwnerOnly), ignored);
}

void RemoveKept(const fs::path& project) noexcept {
    Remove(project);
    Remove(WithEnding(project, kOrigin));
}

fs::path NameForDropped(const fs::path& folder) {
    std::vector<KeptProject> dropped = DroppedProjects(folder);
    while (dropped.size() >= kMostDropped) {
        RemoveKept(dropped.back().project);
        dropped.pop_back();
    }
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    fs::path name;
    for (int number = 0; name.empty() || fs::exists(name); ++number) {
        name = folder / fmt::format("{}{}-{}-{}{}", kDropped, ticks, getpid(), number, kProject);
    }
    return name;
}

std::vector<KeptProject> DroppedProjects(const fs::path& folder) {
    std::vector<KeptProject> dropped;
    for (const fs::path& project : Files(folder, kDropped, kProject)) {
        dropped.push_back(Describe(project));
    }
    std::ranges::sort(dropped, [](const KeptProject& left, const KeptProject& right) {
        return std::tie(right.keptAt, right.project) < std::tie(left.keptAt, left.project);
    });
    return dropped;
}

std::vector<KeptProject> TakeOverLost(const fs::path& folder) {
    RemoveAbandonedFiles(folder);
    std::vector<KeptProject> lost;
    for (const fs::path& lock : Files(folder, kRunning, kLock)) {
        const std::optional<RunningClaim> claim = RunningClaim::TakeOver(lock);
        std::error_code failure;
        if (claim && fs::exists(claim->Project(), failure)) {
            if (const auto project = MoveToDropped(claim->Project())) {
                lost.push_back(Describe(*project));
            }
        }
    }
    std::ranges::sort(lost, std::greater<>(), &KeptProject::keptAt);
    return lost;
}

}  // namespace genvara
