#include "Recovery.h"

#include <chrono>
#include <utility>

namespace genvara {
namespace {

/// The least time between two writes of the project at hand: many changes at once are written once.
constexpr std::chrono::milliseconds kPause{500};

}  // namespace

Recovery::Recovery(std::filesystem::path folder, const MotorConversions& motors)
    : m_folder(std::move(folder)), m_motors(&motors) {}

Recovery::~Recovery() {
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
        m_keep.reset();
    }
    m_awaited.notify_all();
    if (m_thread.joinable()) {
        m_thread.join();
    }
    if (m_forGood && m_claim) {
        m_claim->Leave();
    }
}

void Recovery::Keep(ProjectMoment moment, KeptOrigin origin) {
    {
        const std::lock_guard lock(m_mutex);
        m_keep = Wanted{.moment = std::move(moment), .origin = std::move(origin)};
        m_forget = false;
    }
    Wake();
}

void Recovery::Forget() {
    if (!m_thread.joinable()) {
        return;  // nothing was ever kept
    }
    {
        const std::lock_guard lock(m_mutex);
        m_keep.reset();
        m_forget = true;
    }
    Wake();
}

void Recovery::Drop(ProjectMoment moment, KeptOrigin origin) {
    {
        const std::lock_guard lock(m_mutex);
        m_drops.push_back({.moment = std::move(moment), .origin = std::move(origin)});
    }
    Wake();
}

void Recovery::Wake() {
    if (!m_thread.joinable()) {
        m_thread = std::thread([this] { Work(); });
    }
    m_awaited.notify_all();
}

void Recovery::Finish() {
    std::unique_lock lock(m_mutex);
    m_hurried = true;
    m_awaited.notify_all();
    m_done.wait(lock, [this] { return !m_busy && !m_keep && !m_forget && m_drops.empty(); });
    m_hurried = false;
}

std::filesystem::path Recovery::KeepForGood(const ProjectMoment& moment, const KeptOrigin& origin) {
    const std::lock_guard writing(m_writing);
    m_forGood = true;
    Write({.moment = moment, .origin = origin});
    return m_claim->Project();
}

void Recovery::Write(const Wanted& wanted) {
    if (!m_claim) {
        std::filesystem::create_directories(m_folder);
        std::filesystem::permissions(m_folder, std::filesystem::perms::owner_all);
        m_claim.emplace(m_folder);
    }
    WriteKept(m_claim->Project(), wanted.moment, wanted.origin, *m_motors);
}

void Recovery::RemoveOwn() noexcept {
    if (m_claim && !m_forGood) {
        m_claim->RemoveKept();
    }
}

void Recovery::Work() {
    std::unique_lock lock(m_mutex);
    auto next = std::chrono::steady_clock::now();
    const auto isAsked = [this] { return m_ending || m_hurried || m_forget || !m_drops.empty(); };
    while (true) {
        m_awaited.wait(lock, [&] { return isAsked() || m_keep; });
        if (m_keep && !isAsked()) {
            m_awaited.wait_until(lock, next, isAsked);
        }
        if (!m_keep && !m_forget && m_drops.empty()) {
            m_done.notify_all();
            if (m_ending) {
                return;
            }
            m_awaited.wait(lock, [&] { return m_ending || m_keep || m_forget || !m_drops.empty(); });
            continue;
        }
        const std::optional<Wanted> keep = std::exchange(m_keep, std::nullopt);
        const bool forget = std::exchange(m_forget, false);
        const std::deque<Wanted> drops = std::exchange(m_drops, {});
        m_busy = true;
        lock.unlock();
        {
            const std::lock_guard writing(m_writing);
            try {
                for (const Wanted& dropped : drops) {
                    std::filesystem::create_directories(m_folder);
                    WriteKept(NameForDropped(m_folder), dropped.moment, dropped.origin, *m_motors);
                }
                if (forget) {
                    RemoveOwn();
                }
                if (keep && !m_forGood) {
                    Write(*keep);
                    next = std::chrono::steady_clock::now() + kPause;
                }
            } catch (const std::exception&) {
                // A folder that cannot be written must not keep anybody from his work.
            }
        }
        lock.lock();
        m_busy = false;
    }
}

}  // namespace genvara
