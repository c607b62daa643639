#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "Stopping.h"

namespace genvara {

/// A study as it is worked on beside the window's thread.
class StudyTurn {
  public:
    explicit StudyTurn(std::function<void()> watch) : m_watch(std::move(watch)) {}

    [[nodiscard]] const StopFlag& Stop() const noexcept { return m_stop; }
    void Ask() noexcept { m_stop = true; }

    /// Tells how far the study has come, between two pieces of its work.
    /// @param total 0 where nobody knows
    void Done(std::int64_t done, std::int64_t total);
    [[nodiscard]] std::int64_t DoneSoFar() const noexcept { return m_done; }
    [[nodiscard]] std::int64_t Total() const noexcept { return m_total; }

  private:
    StopFlag m_stop = false;
    std::atomic<std::int64_t> m_done = 0;
    std::atomic<std::int64_t> m_total = 0;
    std::function<void()> m_watch;
};

/// Works on one study at a time, on a thread of its own. A study that begins takes the place of the one under
/// way, whose answer then never comes: what it was asked about no longer holds.
class BackgroundStudy final : public QObject {
    Q_OBJECT

  public:
    /// What to do with a study's result, on the window's thread.
    using Answer = std::function<void()>;
    /// Works on the study's thread; leaves with `StudyStopped` once it is told to stop.
    using Work = std::function<Answer(StudyTurn& turn)>;

    explicit BackgroundStudy(QObject* parent = nullptr);
    /// Stops the study under way and waits for the piece that it is at.
    ~BackgroundStudy() override;
    BackgroundStudy(const BackgroundStudy&) = delete;
    BackgroundStudy& operator=(const BackgroundStudy&) = delete;
    BackgroundStudy(BackgroundStudy&&) = delete;
    BackgroundStudy& operator=(BackgroundStudy&&) = delete;

    void Begin(Work work);
    void Stop();
    [[nodiscard]] bool IsWorking() const noexcept { return m_turn != nullptr; }

    /// Calls a routine on the study's thread between any two pieces of the studies that begin from now on.
    void BetweenPieces(std::function<void()> watch) { m_watch = std::move(watch); }

  signals:
    void WorkingChanged(bool working);
    /// From time to time while a study is worked on.
    void Progressed(qint64 done, qint64 total);

  private:
    struct Job {
        std::shared_ptr<StudyTurn> turn;
        Work work;
    };
    void Loop();
    void Answered(const std::shared_ptr<StudyTurn>& turn, const Answer& answer);

    std::shared_ptr<StudyTurn> m_turn;  ///< of the study under way; of the window's thread alone
    std::function<void()> m_watch;
    QTimer m_clock;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    Job m_next;
    bool m_isOver = false;
    std::thread m_thread;
};

}  // namespace genvara
